#include "foundation/LibDateTime.h"

#include "foundation/LibParseDate.h"
#include "foundation/PlainText.h"
#include "foundation/TypedNumbers.h"

#include <Message.h>

#include <charconv>
#include <cmath>
#include <string_view>

namespace {

constexpr int64 kMinutesOfDay = 1440;

// Takes that many digits from the end of text. False if they are not there.
bool TakeDigits(std::string_view& text, size_t digits, int32& value)
{
    if (text.size() < digits)
        return false;
    const std::string_view number = text.substr(text.size() - digits);
    text.remove_suffix(digits);
    // from_chars would take a minus too.
    if (number.empty() || !LibIsDigit(number[0]))
        return false;
    const auto end = std::from_chars(number.data(), number.data() + number.size(), value);
    return end.ec == std::errc() && end.ptr == number.data() + number.size();
}

bool ReadIsoDate(std::string_view text, LibDate& date)
{
    int32 month = 0;
    int32 day = 0;
    int32 year = 0;
    // From the end: the year is what is left, with a sign or any number of digits.
    if (!TakeDigits(text, 2, day) || !TakeDigits(text, 2, month))
        return false;
    const bool negative = text.starts_with('-');
    if (negative)
        text.remove_prefix(1);
    if (text.empty() || !TakeDigits(text, text.size(), year))
        return false;
    date.SetDate(static_cast<uint32>(month), static_cast<uint32>(day),
        static_cast<uint32>(negative ? -year : year));
    return date.IsValidDate();
}

bool ReadIsoTime(std::string_view text, LibTime& time)
{
    int32 hours = 0;
    int32 minutes = 0;
    int32 seconds = 0;
    // Says nothing here: how far the zone is, the caller knows.
    if (text.ends_with('Z'))
        text.remove_suffix(1);
    if (text.size() != 6 || !TakeDigits(text, 2, seconds) || !TakeDigits(text, 2, minutes)
        || !TakeDigits(text, 2, hours))
        return false;
    time.SetTime(hours, minutes, seconds);
    return time.IsValidTime();
}

} // namespace

LibDateTime::LibDateTime(const bool& now)
{
    if (now)
        SetNow();
}

LibDateTime::LibDateTime(const uint32& month, const uint32& day, const uint32& year)
    : date(month, day, year)
{
}

void LibDateTime::PrintToStream() const
{
    date.PrintToStream();
    time.PrintToStream();
}

void LibDateTime::SetDateTime(const int32& moment, const bool& local)
{
    SetMoment(moment, local);
}

void LibDateTime::SetMoment(const time_t& moment, const bool& local)
{
    // The fields are our own: localtime() would share its with all other threads.
    struct tm fields { };
    SetDateTime(local ? localtime_r(&moment, &fields) : gmtime_r(&moment, &fields));
}

void LibDateTime::SetDateTime(const struct tm* moment)
{
    date.SetDate(moment);
    time.SetTime(moment);
}

void LibDateTime::SetNow(const bool& local)
{
    SetMoment(::time(nullptr), local);
}

bool LibDateTime::Set(const LibString& text)
{
    const char* buffer = text;
    const std::string_view typed = buffer ? buffer : "";
    // One moment for both: asked apart at midnight, date and time would be of two days.
    const LibDateTime now(true);
    LibParsedDate parsed;
    if (!LibParseDate(typed, LibDateConventions::English(), now.date, now.time, parsed)
        || parsed.hasZone)
        return LibRefuseDate(typed);
    date = parsed.date;
    time = parsed.time;
    // Days by themselves: 68 years are more seconds than an int32 holds.
    Carry(LibToInt32(parsed.seconds / kSecondsOfDay));
    AddSeconds(static_cast<int32>(parsed.seconds % kSecondsOfDay));
    return true;
}

void LibDateTime::GetDateTime(struct tm* moment) const
{
    if (!moment)
        return;
    date.GetDate(moment);
    time.GetTime(*moment);
    // Not known here; mktime() then finds out whether it was summer time.
    moment->tm_isdst = -1;
}

void LibDateTime::GetIso8601(LibString& text, const int16& offsetHours) const
{
    LibDateTime moved(*this);
    moved.AddHours(offsetHours);
    text.Formatted("%d%2.2d%2.2dT%2.2d%2.2d%2.2d%s", moved.date.GetYear(), moved.date.GetMonth(),
        moved.date.GetDay(), moved.time.GetHours(), moved.time.GetMinutes(),
        moved.time.GetSeconds(), offsetHours != 0 ? "Z" : "");
}

bool LibDateTime::SetIso8601(const LibString& text, const int16& offsetHours)
{
    const char* typed = text;
    const std::string_view all = typed ? typed : "";
    const size_t middle = all.find('T');
    // Read apart, so that a bad text leaves this one as it was.
    LibDateTime read;
    if (middle == std::string_view::npos || !ReadIsoDate(all.substr(0, middle), read.date)
        || !ReadIsoTime(all.substr(middle + 1), read.time))
        return LibRefuseDate(all);
    *this = read;
    AddHours(-offsetHours);
    return true;
}

void LibDateTime::Carry(int32 days)
{
    if (days != 0) // a date that is none stays none
        date += days;
}

void LibDateTime::AddSeconds(const int32& seconds)
{
    Carry(time.AddSeconds(seconds));
}

void LibDateTime::AddMinutes(const int32& minutes)
{
    Carry(time.AddMinutes(minutes));
}

void LibDateTime::AddHours(const int32& hours)
{
    Carry(time.AddHours(hours));
}

int32 LibDateTime::MinutesSince(const LibDateTime& other) const
{
    const float ofDay = std::trunc(time.NumberOfMinutes() - other.time.NumberOfMinutes());
    return LibToInt32(date.DaysSince(other.date) * kMinutesOfDay + static_cast<int64>(ofDay));
}

int64 LibDateTime::operator-(const LibDateTime& other) const
{
    return date.DaysSince(other.date) * kSecondsOfDay + (time - other.time);
}

status_t LibDateTime::Archive(BMessage& message) const
{
    const status_t status = date.Archive(message);
    return status == B_OK ? time.Archive(message) : status;
}

status_t LibDateTime::Restore(const BMessage& message)
{
    LibDateTime archived;
    status_t status = archived.date.Restore(message);
    if (status == B_OK)
        status = archived.time.Restore(message);
    if (status == B_OK)
        *this = archived;
    return status;
}

std::string LibLocalTimeText(const char* format)
{
    const time_t now = time(nullptr);
    struct tm local { };
    localtime_r(&now, &local);
    char text[64];
    return { text, strftime(text, sizeof text, format, &local) };
}
