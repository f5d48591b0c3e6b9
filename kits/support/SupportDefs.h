// The platform's basic types and status codes.
#pragma once

#include <cstdint>
#include <sys/types.h>

using int8 = int8_t;
using uint8 = uint8_t;
using int16 = int16_t;
using uint16 = uint16_t;
using int32 = int32_t;
using uint32 = uint32_t;
using int64 = int64_t;
using uint64 = uint64_t;

using status_t = int32; // B_OK, or one of the negative codes of Errors.h
using bigtime_t = int64; // microseconds
using type_code = uint32;
using perform_code = uint32;

#include "Errors.h"
