#include "foundation/DateReader.h"

#include "foundation/PlainText.h"
#include "foundation/TypedNumbers.h"
#include "foundation/Utf8.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace {

// So many fit an int32, whichever they are.
constexpr int32 kMostDigits = 9;

// Both forms of a unit count: "day" and "days".
const struct {
    const char* name;
    int64 months;
    int64 days;
    int64 seconds;
} kUnits[] = {
    { "second", 0, 0, 1 },
    { "sec", 0, 0, 1 },
    { "minute", 0, 0, 60 },
    { "min", 0, 0, 60 },
    { "hour", 0, 0, 3600 },
    { "hr", 0, 0, 3600 },
    { "day", 0, 1, 0 },
    { "week", 0, 7, 0 },
    { "month", 1, 0, 0 },
    { "year", 12, 0, 0 },
    { "yr", 12, 0, 0 },
};

const struct {
    const char* name;
    int32 value;
} kCounts[] = { { "a", 1 }, { "an", 1 }, { "one", 1 }, { "two", 2 }, { "three", 3 }, { "four", 4 },
    { "five", 5 }, { "six", 6 }, { "seven", 7 }, { "eight", 8 }, { "nine", 9 }, { "ten", 10 },
    { "eleven", 11 }, { "twelve", 12 } };

} // namespace

void DateReader::SkipBlanks()
{
    while (!fRest.empty() && LibIsSpace(fRest.front()))
        fRest.remove_prefix(1);
}

// Past what may stand between the parts of a date with a month's name.
void DateReader::SkipLoosely()
{
    SkipBlanks();
    if (!fRest.empty() && std::string_view("-./,").find(fRest.front()) != std::string_view::npos)
        fRest.remove_prefix(1);
    SkipBlanks();
}

bool DateReader::BeginsWithLetter() const
{
    return !fRest.empty() && LibIsWordByte(fRest.front());
}

bool DateReader::TakeNumber(Number& number)
{
    size_t length = 0;
    while (length < fRest.size() && LibIsDigit(fRest[length]))
        length++;
    if (length == 0 || length > kMostDigits)
        return false;
    number.digits = static_cast<int32>(length);
    std::from_chars(fRest.data(), fRest.data() + length, number.value);
    fRest.remove_prefix(length);
    return true;
}

// A number of just that many digits.
bool DateReader::TakeDigits(int32 digits, int32& value)
{
    const std::string_view before = fRest;
    Number number;
    if (TakeNumber(number) && number.digits == digits) {
        value = number.value;
        return true;
    }
    fRest = before;
    return false;
}

bool DateReader::TakeText(std::string_view text)
{
    const bool there = fRest.starts_with(text);
    if (there)
        fRest.remove_prefix(text.size());
    return there;
}

bool DateReader::TakeWord(std::string_view word)
{
    const bool there = fRest.starts_with(word)
        && (fRest.size() == word.size() || !LibIsWordByte(fRest[word.size()]));
    if (there)
        fRest.remove_prefix(word.size());
    return there;
}

bool DateReader::TakeMonth(int32& month)
{
    const LibDateConventions::Match match = fConventions.MatchMonth(fRest);
    fRest.remove_prefix(match.length);
    month = match.index + 1;
    return match.index >= 0;
}

// What stands after the index-th number of a date. kind tells separators apart: 0 is the
// conventions' own, which may have blanks around.
bool DateReader::TakeSeparator(size_t index, char& kind)
{
    const std::string_view before = fRest;
    std::string own = LibFoldCase(fConventions.separators[index]);
    own.erase(std::remove(own.begin(), own.end(), ' '), own.end());
    SkipBlanks();
    if ((!own.empty() || fRest.size() < before.size()) && TakeText(own)) {
        SkipBlanks();
        kind = 0;
        return true;
    }
    fRest = before;
    kind = fRest.empty() ? '\0' : fRest.front();
    return TakeText("/") || TakeText("-") || TakeText(".");
}

// Two or three numbers between separators of one kind, and the mark that some languages put after
// the last.
bool DateReader::TakeNumbers(Number (&numbers)[3], int32& count, char& kind)
{
    if (!TakeNumber(numbers[0]) || !TakeSeparator(0, kind) || !TakeNumber(numbers[1]))
        return false;
    std::string_view before = fRest;
    char second = 0;
    count = 3;
    if (!TakeSeparator(1, second) || second != kind || !TakeNumber(numbers[2])) {
        fRest = before;
        count = 2;
    }
    const std::string mark = LibFoldCase(fConventions.separators[static_cast<size_t>(count - 1)]);
    before = fRest;
    SkipBlanks();
    if (kind != 0 || (count == 2 && !mark.starts_with('.')) || mark.empty()
        || !TakeText(count == 2 ? "." : mark))
        fRest = before;
    return true;
}

// A year after a date with a month's name. Two digits are one only if they cannot begin a time or
// a distance.
bool DateReader::TakeYear()
{
    SkipLoosely();
    const bool marked = TakeText("'");
    Number number;
    if (!TakeNumber(number) || (number.digits != 4 && number.digits != 2))
        return false;
    fYear = LibTypedYear(number.value, number.digits);
    const std::string_view after = fRest;
    SkipBlanks();
    const bool free = !BeginsWithLetter() && !after.starts_with(':');
    fRest = after;
    return marked || number.digits == 4 || free;
}

void DateReader::SkipOrdinal()
{
    [[maybe_unused]] const bool found =
        TakeWord("st") || TakeWord("nd") || TakeWord("rd") || TakeWord("th");
}

bool DateReader::TakeCount(int32& count)
{
    Number number;
    if (TakeNumber(number)) {
        count = number.value;
        return true;
    }
    for (const auto& word : kCounts) {
        if (TakeWord(word.name)) {
            count = word.value;
            return true;
        }
    }
    return false;
}

bool DateReader::TakeUnit(Distance& length)
{
    for (const auto& unit : kUnits) {
        if (TakeWord(unit.name) || TakeWord(std::string(unit.name) + "s")) {
            length = { unit.months, unit.days, unit.seconds };
            return true;
        }
    }
    return false;
}

// "2 hours and 5 minutes"
bool DateReader::TakeDistance(Distance& distance)
{
    bool any = false;
    for (;;) {
        const std::string_view before = fRest;
        SkipBlanks();
        if (any && (TakeWord("and") || TakeText(",")))
            SkipBlanks();
        int32 count = 0;
        Distance unit;
        const bool counted = TakeCount(count);
        SkipBlanks();
        if (!counted || !TakeUnit(unit)) {
            fRest = before;
            return any;
        }
        distance.Add(unit, count);
        any = true;
    }
}

// The word that tells in which direction a distance goes, and from where.
bool DateReader::TakeDirection(int& direction, bool& needsMore)
{
    SkipBlanks();
    const bool back = TakeWord("ago");
    if (back || TakeWord("later") || TakeWord("hence")) {
        direction = back ? -1 : 1;
        return true;
    }
    const bool before = TakeWord("before");
    direction = before ? -1 : 1;
    needsMore = before || TakeWord("after") || TakeWord("from");
    return needsMore;
}
