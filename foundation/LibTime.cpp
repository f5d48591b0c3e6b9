#include "foundation/LibTime.h"

#include "foundation/PlainText.h"
#include "foundation/TypedNumbers.h"

#include <Message.h>

#include <cmath>
#include <cstdio>
#include <string>

namespace {

constexpr char kHoursField[] = "hours";
constexpr char kMinutesField[] = "minutes";
constexpr char kSecondsField[] = "seconds";
constexpr int32 kNoHour = -1;

// The hour of a clock with am and pm as one of 0 to 23; kNoHour if the clock has no such hour.
int32 HourOf(int32 hour, const std::string& half)
{
    if (half.empty())
        return hour;
    if ((half != "am" && half != "pm") || hour < 1 || hour > 12)
        return kNoHour;
    // 12 am is midnight, and 12 pm noon.
    return hour % 12 + (half == "pm" ? 12 : 0);
}

// False if text is no time; time may still be out of range.
bool ReadTypedTime(std::string_view text, LibTime& time)
{
    TypedNumbers numbers;
    if (!LibReadTypedNumbers(text, ":.", numbers))
        return false;
    for (char& c : numbers.word)
        c = LibToLower(c);
    if (numbers.count == 0) {
        time.SetTime(numbers.word == "noon" ? 12 : 0, 0, 0);
        return numbers.word == "noon" || numbers.word == "midnight";
    }
    LibSplitDigits(numbers);
    for (const int32 digits : numbers.digits) {
        if (digits > 2)
            return false;
    }
    time.SetTime(HourOf(numbers.values[0], numbers.word), numbers.values[1], numbers.values[2]);
    return true;
}

} // namespace

LibTime::LibTime(const bool& now, const bool& local)
{
    if (now)
        SetNow(local);
}

LibTime::LibTime(const int32& hour, const int32& minute, const int32& second)
{
    SetTime(hour, minute, second);
}

void LibTime::PrintToStream() const
{
    fprintf(stderr, "Time: %2.2d:%2.2d:%2.2d\n", hours, minutes, seconds);
}

void LibTime::SetNow(const bool& local)
{
    SetTime(time(nullptr), local);
}

void LibTime::SetTime(const int32& newHours, const int32& newMinutes, const int32& newSeconds)
{
    hours = newHours;
    minutes = newMinutes;
    seconds = newSeconds;
}

void LibTime::SetTime(const struct tm* time)
{
    if (time)
        SetTime(time->tm_hour, time->tm_min, time->tm_sec);
}

void LibTime::SetTime(const time_t& moment, const bool& local)
{
    struct tm time { };
    if (!localtime_r(&moment, &time))
        return;
    SetTime(&time);
    // The zone's distance at that moment, summer time included.
    if (!local)
        SetTotal(Total() - time.tm_gmtoff);
}

void LibTime::SetTime(const float& newMinutes)
{
    // fmod first: lround of what a long cannot hold may give anything.
    if (std::isfinite(newMinutes))
        SetTotal(std::lround(std::fmod(static_cast<double>(newMinutes) * 60, kSecondsOfDay)));
}

bool LibTime::Take(const LibTime& typed)
{
    if (typed.IsValidTime())
        SetTime(typed.hours, typed.minutes, typed.seconds);
    return typed.IsValidTime();
}

bool LibTime::SetTime(const char* text)
{
    const std::string_view typed = text ? text : "";
    const auto field = [typed](size_t at) {
        const std::string_view two = typed.size() > at ? typed.substr(at, 2) : "00";
        const bool number = two.size() == 2 && LibIsDigit(two[0]) && LibIsDigit(two[1]);
        return number ? (two[0] - '0') * 10 + two[1] - '0' : -1;
    };
    return (typed.size() >= 5 && Take(LibTime(field(0), field(3), field(6))))
        || LibRefuseDate(typed);
}

bool LibTime::SetUnformattedTime(const char* text)
{
    const std::string_view typed = text ? text : "";
    LibTime time;
    return (ReadTypedTime(typed, time) && Take(time)) || LibRefuseDate(typed);
}

void LibTime::GetTime(struct tm& time) const
{
    time.tm_hour = hours;
    time.tm_min = minutes;
    time.tm_sec = seconds;
}

int32 LibTime::SetTotal(int64 total)
{
    // The remainder of a negative total is negative itself.
    const int64 ofDay = (total % kSecondsOfDay + kSecondsOfDay) % kSecondsOfDay;
    SetTime(static_cast<int32>(ofDay / 3600), static_cast<int32>(ofDay / 60 % 60),
        static_cast<int32>(ofDay % 60));
    return LibToInt32((total - ofDay) / kSecondsOfDay);
}

int32 LibTime::CorrectTime()
{
    return SetTotal(Total());
}

int32 LibTime::AddHours(const int32& added)
{
    // In 64 bits: 600,000 hours are more seconds than an int32 holds.
    return SetTotal(Total() + int64 { added } * 3600);
}

int32 LibTime::AddMinutes(const int32& added)
{
    return SetTotal(Total() + int64 { added } * 60);
}

int32 LibTime::AddSeconds(const int32& added)
{
    return SetTotal(Total() + added);
}

int32 LibTime::TimeZone(const int& hoursAhead)
{
    return AddHours(hoursAhead);
}

bool LibTime::IsValidTime() const
{
    // A leap second is none: the arithmetic here has days of 86,400 seconds.
    return hours >= 0 && hours < 24 && minutes >= 0 && minutes < 60 && seconds >= 0 && seconds < 60;
}

float LibTime::NumberOfMinutes() const
{
    return static_cast<float>(static_cast<double>(Total()) / 60.0);
}

int32 LibTime::NumberOfSeconds() const
{
    return LibToInt32(Total());
}

int32 LibTime::operator-(const LibTime& other) const
{
    return LibToInt32(Total() - other.Total());
}

status_t LibTime::Archive(BMessage& message) const
{
    status_t status = message.AddInt32(kHoursField, hours);
    if (status == B_OK)
        status = message.AddInt32(kMinutesField, minutes);
    if (status == B_OK)
        status = message.AddInt32(kSecondsField, seconds);
    return status;
}

status_t LibTime::Restore(const BMessage& message)
{
    // All three are read before one is taken, so that half an archive changes nothing.
    LibTime archived;
    status_t status = message.FindInt32(kHoursField, &archived.hours);
    if (status == B_OK)
        status = message.FindInt32(kMinutesField, &archived.minutes);
    if (status == B_OK)
        status = message.FindInt32(kSecondsField, &archived.seconds);
    if (status == B_OK && !Take(archived))
        status = B_BAD_VALUE;
    return status;
}
