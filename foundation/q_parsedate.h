// The moment that a person's words mean.
#pragma once

#include <ctime>

// Reads text as LibParseDate() does with English conventions, from the moment now (-1: the present
// one) in the user's time zone. Hours, minutes and seconds are added to the moment, so that they
// stay right where the clocks change. -1, and a line on standard error, for what cannot be read;
// the second before 1970 began in UTC cannot be told from that.
[[nodiscard]] time_t q_parsedate(const char* text, time_t now);
