// A rate as text: one home for the digits, so that list, table and files show the same.
#pragma once

#include "foundation/LibString.h"

// "%.1f", with a point in every locale.
[[nodiscard]] inline LibString FormatRate(const double& rate)
{
    LibString text;
    text.Formatted("%.1f", rate);
    return text;
}
