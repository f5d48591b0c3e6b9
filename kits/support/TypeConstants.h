// Codes of the data types that messages, attributes and resources carry.
#pragma once

#include "SupportDefs.h"

enum {
    B_ANY_TYPE = 'ANYT',
    B_BOOL_TYPE = 'BOOL',
    B_DOUBLE_TYPE = 'DBLE',
    B_FLOAT_TYPE = 'FLOT',
    B_INT8_TYPE = 'BYTE',
    B_INT16_TYPE = 'SHRT',
    B_INT32_TYPE = 'LONG',
    B_INT64_TYPE = 'LLNG',
    B_MESSAGE_TYPE = 'MSGG',
    B_MESSENGER_TYPE = 'MSNG',
    B_MIME_STRING_TYPE = 'MIMS',
    B_MIME_TYPE = 'MIME', // data whose field's name is its MIME type
    B_POINT_TYPE = 'BPNT',
    B_POINTER_TYPE = 'PNTR',
    B_RAW_TYPE = 'RAWT',
    B_RECT_TYPE = 'RECT',
    B_REF_TYPE = 'RREF',
    B_RGB_COLOR_TYPE = 'RGBC',
    B_STRING_TYPE = 'CSTR',
    B_UINT8_TYPE = 'UBYT',
    B_UINT16_TYPE = 'USHT',
    B_UINT32_TYPE = 'ULNG',
    B_UINT64_TYPE = 'ULLG',
};
