// The first byte chooses conventions, the rest is a text, and its first bytes are also a date.
#include <algorithm>
#include <cstring>
#include <string>

#include "foundation/LibDateTime.h"
#include "foundation/LibLocaleDate.h"
#include "foundation/LibParseDate.h"
#include "foundation/Utf8.h"
#include "tests/fuzz/Require.h"

namespace {

const LibDate kToday(10, 24, 2001);

LibDateConventions ConventionsOf(uint8_t choice)
{
    const char* formats[] = { "%m/%d/%y", "%d.%m.%Y", "%Y. %m. %d.", "%d %b %Y", "%Y-%m-%d",
        "%Y\xeb\x85\x84 %m\xec\x9b\x94 %d\xec\x9d\xbc" };
    LibDateConventions conventions = LibDateConventions::English();
    Require(LibReadDateFormat(formats[choice % std::size(formats)], conventions), "a date format");
    if (choice & 0x80)
        conventions.months[2] = "M\xc3\xa4rz";
    return conventions;
}

void CheckParsed(const std::string& text, const LibDateConventions& conventions)
{
    LibParsedDate parsed;
    if (!LibParseDate(text, conventions, kToday, LibTime(13, 30, 15), parsed))
        return;
    Require(parsed.date.IsValidDate() && parsed.time.IsValidTime(), "what is read is a date");
    Require(parsed.date.GetYear() >= 1 && parsed.date.GetYear() <= 9999, "within four digits");
    Require(parsed.hasDate || parsed.hasTime || parsed.seconds != 0 || text.find('0') != text.npos
            || text.find("now") != text.npos || LibFoldCase(text).find("this") != text.npos,
        "something was read");
    const LibLocaleDate shown(parsed.date, conventions);
    LibLocaleDate again(LibDate(), conventions);
    LibString form;
    shown.GetShort(form);
    Require(again.SetTyped(form, kToday) && again == shown, "the short form reads back");
    shown.GetLong(form);
    Require(again.SetTyped(form, kToday) && again == shown, "the long form reads back");
}

void CheckTyped(const char* text)
{
    LibDate date(kToday);
    if (date.SetDate(text) || date.SetUnformattedDate(text))
        Require(date.IsValidDate(), "a date that was typed is one");
    LibTime time;
    if (time.SetTime(text) || time.SetUnformattedTime(text))
        Require(time.IsValidTime(), "a time that was typed is one");
    LibDateTime moment;
    if (!moment.SetIso8601(text, 0))
        return;
    LibString shown;
    moment.GetIso8601(shown, 0);
    LibDateTime again;
    Require(again.SetIso8601(shown, 0) && again == moment, "ISO 8601 reads back");
}

void CheckArithmetic(const char* bytes, size_t size)
{
    uint32 numbers[4] = {};
    memcpy(numbers, bytes, std::min(size, sizeof(numbers)));
    LibDate date(numbers[0], numbers[1], numbers[2]);
    struct tm fields { };
    date.GetDate(&fields);
    date.AddMonths(static_cast<int>(numbers[3]));
    date.AddYears(static_cast<int>(numbers[3]));
    date.SetToNext(static_cast<LibWeekDay>(numbers[3] % 8));
    if (!date.CorrectDate())
        return;
    const LibDate again(static_cast<uint32>(date.GetMonth()), static_cast<uint32>(date.GetDay()),
        static_cast<uint32>(date.GetYear()));
    Require(again == date && LibDate(date.GetJulian()).GetDay() == date.GetDay(),
        "date and day number agree");
    LibTime time;
    time.SetTime(static_cast<int32>(numbers[0]), static_cast<int32>(numbers[1]),
        static_cast<int32>(numbers[2]));
    time.CorrectTime();
    Require(time.IsValidTime(), "a corrected time is one");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    CheckParsed(text, ConventionsOf(data[0]));
    CheckTyped(text.c_str());
    CheckArithmetic(text.data(), text.size());
    LibDateConventions conventions;
    [[maybe_unused]] const bool isFormat = LibReadDateFormat(text, conventions);
    Require(LibFoldCase(LibFoldCase(text)) == LibFoldCase(text), "folding twice changes nothing");
    return 0;
}
