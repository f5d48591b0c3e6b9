#include "foundation/PlainText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

std::string LibFixedText(double value, int decimals)
{
    // No double has more than 1,074 digits after the point.
    constexpr int kMostDecimals = 1100;
    char text[kMostDecimals + 330]; // the largest double has 309 digits before the point
    const int precision = decimals < 0 ? 6 : std::min(decimals, kMostDecimals);
    const auto end =
        std::to_chars(std::begin(text), std::end(text), value, std::chars_format::fixed, precision);
    return std::string(text, end.ptr);
}

std::string LibShortestText(double value)
{
    // The longest has 24 characters: -2.2250738585072014e-308.
    char text[32];
    return { text, std::to_chars(text, std::end(text), value).ptr };
}

double LibFixedValue(std::string_view text)
{
    if (text.starts_with('+'))
        text.remove_prefix(1);
    double value = 0;
    const auto end =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    if (end.ec != std::errc::result_out_of_range)
        return value;
    // Out of range is also what is too small: then every digit before the point is a zero.
    const std::string_view whole = text.substr(0, text.find('.'));
    if (whole.find_first_of("123456789") == std::string_view::npos)
        return 0;
    return text.starts_with('-') ? -HUGE_VAL : HUGE_VAL;
}
