#include "foundation/TypedNumbers.h"

#include "foundation/PlainText.h"
#include "foundation/Utf8.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace {

// 12311999 is the longest that anybody writes without separators.
constexpr int32 kMostDateDigits = 8;
constexpr int32 kPowers[] = { 1, 10, 100, 1000, 10000, 100000, 1000000, 10000000 };

// The length of the run of characters at the front of text that belong together.
size_t RunLength(std::string_view text, bool (*belongs)(char))
{
    return static_cast<size_t>(std::find_if_not(text.begin(), text.end(), belongs) - text.begin());
}

void AddNumber(int32 value, int32 digits, TypedNumbers& numbers)
{
    const auto index = static_cast<size_t>(numbers.count++);
    numbers.values[index] = value;
    numbers.digits[index] = digits;
}

bool TakeNumber(std::string_view digits, TypedNumbers& numbers)
{
    if (numbers.count == static_cast<int32>(numbers.values.size())
        || digits.size() > kMostDateDigits)
        return false;
    int32 value = 0;
    // Cannot fail: an int32 holds any eight digits.
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    AddNumber(value, static_cast<int32>(digits.size()), numbers);
    return true;
}

bool TakeWord(std::string_view word, TypedNumbers& numbers)
{
    if (!numbers.word.empty())
        return false;
    numbers.word = word;
    return true;
}

} // namespace

bool LibReadTypedNumbers(std::string_view text, std::string_view separators, TypedNumbers& numbers)
{
    numbers = TypedNumbers();
    while (!text.empty()) {
        size_t length = 1;
        bool known = LibIsSpace(text[0]) || separators.find(text[0]) != std::string_view::npos;
        if (LibIsDigit(text[0])) {
            length = RunLength(text, LibIsDigit);
            known = TakeNumber(text.substr(0, length), numbers);
        } else if (LibIsLetter(text[0])) {
            length = RunLength(text, LibIsLetter);
            known = TakeWord(text.substr(0, length), numbers);
        }
        if (!known)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

void LibSplitDigits(TypedNumbers& numbers)
{
    const int32 digits = numbers.digits[0];
    if (numbers.count != 1 || digits < 3)
        return;
    int32 rest = numbers.values[0];
    int32 left = digits;
    numbers.count = 0;
    // Of an odd number of digits the first part has one: 530 is 5 and 30.
    for (const int32 size : { 2 - digits % 2, 2, digits }) {
        const int32 taken = std::min(size, left);
        if (taken == 0)
            return;
        left -= taken;
        AddNumber(rest / kPowers[left], taken, numbers);
        rest %= kPowers[left];
    }
}

int32 LibTypedYear(int32 value, int32 digits)
{
    if (digits == 4)
        return value;
    if (digits != 2)
        return 0;
    // The centuries are those of POSIX for %y.
    return value < 69 ? 2000 + value : 1900 + value;
}

bool LibRefuseDate(std::string_view text)
{
    constexpr size_t kMostShown = 80;
    fprintf(stderr, "Unable to read the date <%s>\n",
        std::string(LibCutUtf8(text, kMostShown)).c_str());
    return false;
}
