// A time of day. A setter takes what it is given; what adds, and CorrectTime(), brings the time
// into one day and returns the days that were carried.
#pragma once

#include <SupportDefs.h>

#include <compare>
#include <ctime>

class BMessage;

inline constexpr int64 kSecondsOfDay = 86400;

class LibTime {
public:
    // The present time, see SetNow(); else 00:00:00.
    explicit LibTime(const bool& now = false, const bool& local = true);
    LibTime(const int32& hours, const int32& minutes, const int32& seconds);
    LibTime(const LibTime& other) = default;
    LibTime& operator=(const LibTime& other) = default;
    virtual ~LibTime() = default;
    // "Time: hours:minutes:seconds" on standard error.
    virtual void PrintToStream() const;

    // The present time in the user's time zone, or in UTC.
    void SetNow(const bool& local = true);
    void SetTime(const int32& newHours, const int32& newMinutes, const int32& newSeconds);
    void SetTime(const struct tm* time); // null: nothing changes
    // The time of day at that moment, in the user's time zone or in UTC.
    void SetTime(const time_t& moment, const bool& local);
    // Minutes since midnight, as NumberOfMinutes() gives them, rounded to seconds, of any number
    // of days. What is no number changes nothing.
    void SetTime(const float& minutes);
    // Reads hours, minutes and seconds at characters 0, 3 and 6 ("04:05:06", any separators);
    // the seconds may be missing. False, a line on standard error, and nothing changes, if one of
    // them is no number or out of range.
    bool SetTime(const char* text);
    // Reads what people type: "17:30", "17.30.15", "1730", "530", "173015", "17", "5:30 pm", "5
    // pm", "noon", "midnight". False, a line on standard error, and nothing changes, for anything
    // else.
    bool SetUnformattedTime(const char* text);
    // Sets hour, minute and second of time, and nothing else in it.
    void GetTime(struct tm& time) const;

    int32 GetHours() const { return hours; }
    int32 GetMinutes() const { return minutes; }
    int32 GetSeconds() const { return seconds; }
    void SetHours(const int32& newHours) { hours = newHours; }
    void SetMinutes(const int32& newMinutes) { minutes = newMinutes; }
    void SetSeconds(const int32& newSeconds) { seconds = newSeconds; }

    // Each returns the days carried, negative where the time went back past midnight.
    int32 CorrectTime();
    int32 AddHours(const int32& added);
    int32 AddMinutes(const int32& added);
    int32 AddSeconds(const int32& added);
    // Moves the time, taken as UTC, to the zone that many hours ahead; returns the days carried.
    int32 TimeZone(const int& hoursAhead);

    // Whether each field lies in its range, hours 0 to 23.
    bool IsValidTime() const;
    float NumberOfMinutes() const; // since midnight, with the seconds as a fraction
    int32 NumberOfSeconds() const; // since midnight
    int32 operator-(const LibTime& other) const; // seconds
    bool operator==(const LibTime& other) const { return Total() == other.Total(); }
    auto operator<=>(const LibTime& other) const { return Total() <=> other.Total(); }

    // The int32 fields "hours", "minutes" and "seconds" of message; the status of BMessage, and
    // B_BAD_VALUE for an archive that is no time of day.
    status_t Archive(BMessage& message) const;
    status_t Restore(const BMessage& message); // after an error nothing has changed

protected:
    int32 hours = 0;
    int32 minutes = 0;
    int32 seconds = 0;

private:
    int64 Total() const { return int64 { hours } * 3600 + int64 { minutes } * 60 + seconds; }
    int32 SetTotal(int64 total);
    bool Take(const LibTime& typed);
};
