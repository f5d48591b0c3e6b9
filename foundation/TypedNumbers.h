// The numbers and the one word in a date or time that somebody typed.
#pragma once

#include <SupportDefs.h>

#include <array>
#include <string>
#include <string_view>

struct TypedNumbers {
    std::array<int32, 3> values {};
    std::array<int32, 3> digits {}; // how many each was written with
    int32 count = 0;
    std::string word; // letters, "" if there is none
};

// Takes text apart, in which blanks and any of separators may stand between numbers and word.
// False if there are more than three numbers, one of more than eight digits, two words, or any
// other character.
[[nodiscard]] bool LibReadTypedNumbers(
    std::string_view text, std::string_view separators, TypedNumbers& numbers);

// Splits a single number of three to eight digits, written without separators as 12311999 or 530,
// into a first number of one or two digits, a second of two, and what is left. Anything else stays
// as it is.
void LibSplitDigits(TypedNumbers& numbers);

// The year meant by a number of that many digits: two lie between 1969 and 2068, four are taken
// as they are. 0 for other numbers of digits.
[[nodiscard]] int32 LibTypedYear(int32 value, int32 digits);

// Says on standard error that text cannot be read as a date or time; returns false.
bool LibRefuseDate(std::string_view text);
