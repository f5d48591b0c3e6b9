// Numbers with a decimal point as text and back, the same bytes under every locale.
#pragma once

#include <string>
#include <string_view>

// What printf gives for "%.*f" in the "C" locale: decimals digits after the point, six if
// decimals is negative, never more than 1100 (a double has no further ones but zeros); "inf",
// "nan" and their negatives for what is no number.
[[nodiscard]] std::string LibFixedText(double value, int decimals);

// As few digits as tell the number from all others, with an exponent where that is shorter.
[[nodiscard]] std::string LibShortestText(double value);

// The number that text begins with: sign, digits, point, digits, no exponent. 0 where there is
// none; plus or minus infinity where it is too large.
[[nodiscard]] double LibFixedValue(std::string_view text);
