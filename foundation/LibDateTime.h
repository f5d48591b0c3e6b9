// A date and the time of that day.
#pragma once

#include "foundation/LibDate.h"
#include "foundation/LibString.h"
#include "foundation/LibTime.h"

#include <string>

class LibDateTime {
public:
    // The present moment in the user's time zone; else no date, at 00:00:00.
    explicit LibDateTime(const bool& now = false);
    LibDateTime(const uint32& month, const uint32& day, const uint32& year); // at 00:00:00
    LibDateTime(const LibDate& onDate, const LibTime& atTime) : date(onDate), time(atTime) { }
    // The date and the time as they print themselves, on standard error.
    void PrintToStream() const;

    LibDate& Date() { return date; }
    const LibDate& Date() const { return date; }
    LibTime& Time() { return time; }
    const LibTime& Time() const { return time; }

    // The moment moment seconds after 1970 in the user's time zone, or in UTC; the second also
    // takes those after 2038-01-19. Nothing changes for one beyond the C library's calendar.
    void SetDateTime(const int32& moment, const bool& local);
    void SetMoment(const time_t& moment, const bool& local);
    void SetDateTime(const struct tm* moment); // null: nothing changes
    void SetNow(const bool& local = true);
    // Reads what people type, as LibParseDate() does, starting from the present moment. False, a
    // line on standard error, and nothing changes, if that cannot be read, or names a time zone.
    bool Set(const LibString& text);
    // Sets all of moment but the daylight saving time, which becomes unknown.
    void GetDateTime(struct tm* moment) const;

    // "20010203T040506", moved by offsetHours first; with an offset other than 0 a "Z" follows.
    void GetIso8601(LibString& text, const int16& offsetHours) const;
    // Reads the same form, the "Z" where it is given, and moves the result back by offsetHours.
    // Years have four digits or more, with a sign before year 1. False, a line on standard error,
    // and nothing changes, for anything else.
    bool SetIso8601(const LibString& text, const int16& offsetHours);

    // Whole days are carried into the date.
    void AddSeconds(const int32& seconds);
    void AddMinutes(const int32& minutes);
    void AddHours(const int32& hours);
    // Whole minutes, cut off within the day: negative if other is later.
    int32 MinutesSince(const LibDateTime& other) const;
    int64 operator-(const LibDateTime& other) const; // seconds
    bool operator==(const LibDateTime& other) const = default;
    auto operator<=>(const LibDateTime& other) const = default; // the date first, then the time

    // The fields of date and time in one message; the first error of theirs.
    status_t Archive(BMessage& message) const;
    status_t Restore(const BMessage& message); // after an error nothing has changed

protected:
    LibDate date;
    LibTime time;

private:
    void Carry(int32 days);
};

// The present moment in the user's time zone, as strftime() writes it: at most 63 bytes.
[[nodiscard]] std::string LibLocalTimeText(const char* format);
