// What a file's attribute is.
#pragma once

#include "SupportDefs.h"

struct attr_info {
    uint32 type = 0; // B_STRING_TYPE and the like
    off_t size = 0; // in bytes
};
