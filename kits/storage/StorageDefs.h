// Limits of the storage kit, in bytes, the NUL at the end included.
#pragma once

#include "SupportDefs.h"

constexpr int32 B_MIME_TYPE_LENGTH = 240;
