// The platform's basic types and status codes.
#pragma once

#include <cstdint>
#include <sys/types.h>

typedef int8_t int8;
typedef uint8_t uint8;
typedef int16_t int16;
typedef uint16_t uint16;
typedef int32_t int32;
typedef uint32_t uint32;
typedef int64_t int64;
typedef uint64_t uint64;

typedef int32 status_t; // B_OK, or one of the negative codes of Errors.h
typedef int64 bigtime_t; // microseconds
typedef uint32 type_code;
typedef uint32 perform_code;

#include "Errors.h"
