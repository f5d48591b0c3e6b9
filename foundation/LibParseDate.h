// Dates as people type them. The words are English, with the names of months and weekdays and the
// order of numbers that the given conventions have:
//
//   days       today, tomorrow, yesterday, friday, next friday, last friday, 12 mar 2001, March 12,
//              12th of March, March 2001, 2001-03-12, 20010312, 12/31/1999, 31.12.1999, 12/31
//   times      17:30, 17:30:15, 5:30 pm, 5 pm, noon, midnight; after a date also T17:30, T173015
//   distances  3 days ago, in 2 weeks, +3 hours, an hour and 5 minutes from now, next month, last
//              year, the day after tomorrow, 2 weeks before 12 mar 2001
//   both       tomorrow at noon, last friday 5:30 pm, now
//   zones      Z, UTC, GMT or +0100 after the time of a named day
//
// A day named without a time begins at 00:00:00; a distance from the present keeps the time of day.
// "friday" is today if it is Friday, "next friday" and "last friday" never are. Years of two digits
// lie between 1969 and 2068; a date without a year is in the present one. The numbers of a date
// with "." are day, month, year unless the conventions use "." themselves. What has two meanings or
// none is refused: a day that its month does not have, a weekday on another date, a bare "3 days",
// a word too many.
#pragma once

#include "foundation/LibDate.h"
#include "foundation/LibLocaleDate.h"
#include "foundation/LibTime.h"

#include <ctime>
#include <string_view>

struct LibParsedDate {
    LibDate date;
    LibTime time;
    int64 seconds = 0; // to be added: distances in hours, minutes and seconds
    bool hasDate = false; // the text names a day, or a distance in days or more
    bool hasTime = false; // the text names a time of day
    bool hasZone = false; // date and time are not local but
    int32 zoneMinutes = 0; // this much ahead of UTC
};

// Reads text as said above, starting from that day and time. A function of its arguments alone.
// False, and parsed undefined, for a text that is refused, longer than 255 bytes, or leads out of
// the years 1 to 9999.
[[nodiscard]] bool LibParseDate(std::string_view text, const LibDateConventions& conventions,
    const LibDate& today, const LibTime& now, LibParsedDate& parsed);

// The moment that a person's words mean. Reads text as LibParseDate() does with English
// conventions, from the moment now (-1: the present one) in the user's time zone. Hours, minutes
// and seconds are added to the moment, so that they stay right where the clocks change. -1, and a
// line on standard error, for what cannot be read; the second before 1970 began in UTC cannot be
// told from that.
[[nodiscard]] time_t q_parsedate(const char* text, time_t now);
