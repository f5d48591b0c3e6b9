#include "foundation/q_parsedate.h"

#include "foundation/LibDateTime.h"
#include "foundation/LibParseDate.h"
#include "foundation/TypedNumbers.h"

namespace {

// The moment at which a clock of the parsed zone, or of the user's, shows date and time.
time_t MomentOf(const LibParsedDate& parsed)
{
    struct tm fields { };
    LibDateTime(parsed.date, parsed.time).GetDateTime(&fields);
    return parsed.hasZone ? timegm(&fields) - parsed.zoneMinutes * 60 : mktime(&fields);
}

} // namespace

time_t q_parsedate(const char* text, time_t now)
{
    const char* typed = text != nullptr ? text : "";
    const time_t from = now == -1 ? time(nullptr) : now;
    struct tm fields { };
    LibParsedDate parsed;
    LibDateTime start;
    start.SetDateTime(localtime_r(&from, &fields));
    if (!LibParseDate(typed, LibDateConventions::English(), start.Date(), start.Time(), parsed)) {
        LibRefuseDate(typed);
        return -1;
    }
    // Where the clocks go back, date and time alone would not tell the present from an hour ago.
    const bool unmoved = !parsed.hasZone && LibDateTime(parsed.date, parsed.time) == start;
    return (unmoved ? from : MomentOf(parsed)) + parsed.seconds;
}
