// How an error of the system is told in the platform's codes.
#pragma once

#include "SupportDefs.h"

// The status for a value of errno; B_ERROR for those without one of their own.
[[nodiscard]] status_t StatusOfErrno(int error);
// The status for errno as it stands.
[[nodiscard]] status_t StatusOfErrno();
