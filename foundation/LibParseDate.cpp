#include "foundation/LibParseDate.h"

#include "foundation/DateReader.h"
#include "foundation/LibDateTime.h"
#include "foundation/PlainText.h"
#include "foundation/TypedNumbers.h"
#include "foundation/Utf8.h"

#include <algorithm>
#include <string>

namespace {

constexpr size_t kMostText = 255;
constexpr int32 kLastYear = 9999;

// The moment at which a clock of the parsed zone, or of the user's, shows date and time.
time_t MomentOf(const LibParsedDate& parsed)
{
    struct tm fields { };
    LibDateTime(parsed.date, parsed.time).GetDateTime(&fields);
    // timegm() takes the fields for UTC, mktime() for the zone of the user.
    return parsed.hasZone ? timegm(&fields) - parsed.zoneMinutes * 60 : mktime(&fields);
}

} // namespace

bool DateReader::Read(LibParsedDate& parsed)
{
    for (SkipBlanks(); !fRest.empty(); SkipBlanks()) {
        if (!ReadItem() || fRefused)
            return false;
        TakeText(",");
    }
    return Resolve(parsed);
}

bool DateReader::Try(Rule rule)
{
    const std::string_view before = fRest;
    if ((this->*rule)())
        return true;
    fRest = before;
    return false;
}

bool DateReader::ReadItem()
{
    // The first rule that fits is taken, so the order decides: a date comes before the time that
    // its first number could be, a zone before the distance that its sign could begin.
    constexpr Rule kRules[] = { &DateReader::NumericDate, &DateReader::JoinedDate,
        &DateReader::MonthThenNumber, &DateReader::NumberThenMonth, &DateReader::JoinedTime,
        &DateReader::TimeOfDay, &DateReader::Zone, &DateReader::SignedDistance,
        &DateReader::SpokenDistance, &DateReader::Neighbour, &DateReader::WeekDay,
        &DateReader::Keyword, &DateReader::Filler };
    return std::any_of(
        std::begin(kRules), std::end(kRules), [this](Rule rule) { return Try(rule); });
}

bool DateReader::NumericDate()
{
    using Order = LibDateConventions::Order;
    Number numbers[3];
    int32 count = 0;
    char kind = 0;
    if (!TakeNumbers(numbers, count, kind))
        return false;
    // Where points are written the day comes first, whatever the locale. Four digits can only be a
    // year.
    Order order = kind == '.' ? Order::kDayMonthYear : fConventions.order;
    if (numbers[0].digits == 4)
        order = Order::kYearMonthDay;
    if (count == 2) {
        // "3.12" and "3-12" are no dates; without its year, one of them begins with the month.
        if ((kind != 0 && kind != '/') || numbers[0].digits > 2 || numbers[1].digits > 2)
            return false;
        const bool dayFirst = order == Order::kDayMonthYear;
        return SetDate(
            fToday.GetYear(), numbers[dayFirst ? 1 : 0].value, numbers[dayFirst ? 0 : 1].value);
    }
    // Of month, day and year, in each order.
    constexpr size_t kPlaces[][3] = { { 0, 1, 2 }, { 1, 0, 2 }, { 1, 2, 0 } };
    const auto& places = kPlaces[static_cast<size_t>(order)];
    const Number& month = numbers[places[0]];
    const Number& day = numbers[places[1]];
    const Number& year = numbers[places[2]];
    if (month.digits > 2 || day.digits > 2)
        return false;
    return SetDate(LibTypedYear(year.value, year.digits), month.value, day.value);
}

bool DateReader::JoinedDate()
{
    int32 date = 0;
    return TakeDigits(8, date) && SetDate(date / 10000, date / 100 % 100, date % 100);
}

// The time that follows a date after a "T".
bool DateReader::JoinedTime()
{
    int32 time = 0;
    if (!fHasDate || !TakeText("t"))
        return false;
    if (TakeDigits(6, time))
        return SetTime(time / 10000, time / 100 % 100, time % 100);
    return TimeOfDay();
}

// "12 mar", "12th of March", "2001-Mar-12"
bool DateReader::NumberThenMonth()
{
    Number number;
    int32 month = 0;
    if (!TakeNumber(number))
        return false;
    SkipOrdinal();
    SkipLoosely();
    TakeWord("of");
    SkipBlanks();
    if (!TakeMonth(month))
        return false;
    if (number.digits == 4) {
        Number day;
        SkipLoosely();
        return TakeNumber(day) && day.digits <= 2 && SetDate(number.value, month, day.value);
    }
    if (!Try(&DateReader::TakeYear))
        fYear = fToday.GetYear();
    return number.digits <= 2 && SetDate(fYear, month, number.value);
}

// "mar 12", "March 12th, 2001", "March 2001"
bool DateReader::MonthThenNumber()
{
    Number number;
    int32 month = 0;
    if (!TakeMonth(month))
        return false;
    SkipLoosely();
    if (!TakeNumber(number))
        return false;
    // A month without a day means its first.
    if (number.digits == 4)
        return SetDate(number.value, month, 1);
    SkipOrdinal();
    if (!Try(&DateReader::TakeYear))
        fYear = fToday.GetYear();
    return number.digits <= 2 && SetDate(fYear, month, number.value);
}

bool DateReader::TimeOfDay()
{
    Number hours;
    int32 minutes = 0;
    int32 seconds = 0;
    if (!TakeNumber(hours) || hours.digits > 2)
        return false;
    const bool colon = TakeText(":");
    if (colon && (!TakeDigits(2, minutes) || (TakeText(":") && !TakeDigits(2, seconds))))
        return false;
    const std::string_view before = fRest;
    SkipBlanks();
    const bool am = TakeWord("am") || TakeText("a.m.");
    const bool pm = !am && (TakeWord("pm") || TakeText("p.m."));
    if (!am && !pm) {
        fRest = before;
        // A number by itself is no time: it may be the day of what follows.
        return colon && SetTime(hours.value, minutes, seconds);
    }
    if (hours.value < 1 || hours.value > 12)
        return false;
    return SetTime(hours.value % 12 + (pm ? 12 : 0), minutes, seconds);
}

bool DateReader::Zone()
{
    if (!fClockTime || fHasZone)
        return false;
    if (TakeWord("z") || TakeWord("utc") || TakeWord("gmt")) {
        fHasZone = true;
        return true;
    }
    const int sign = TakeText("+") ? 1 : TakeText("-") ? -1 : 0;
    int32 hours = 0;
    int32 minutes = 0;
    if (sign == 0)
        return false;
    if (TakeDigits(4, hours)) {
        minutes = hours % 100;
        hours /= 100;
    } else if (!TakeDigits(2, hours) || !TakeText(":") || !TakeDigits(2, minutes)) {
        return false;
    }
    const std::string_view before = fRest;
    SkipBlanks();
    Distance unit;
    // No zone is farther from UTC than 14 hours, which is Kiribati's.
    if (hours > 14 || minutes > 59 || TakeUnit(unit)) // "17:00 +1000 days"
        return false;
    fRest = before;
    fHasZone = true;
    fZoneMinutes = sign * (hours * 60 + minutes);
    return true;
}

bool DateReader::SignedDistance()
{
    const int sign = TakeText("-") ? -1 : 1;
    if (sign > 0 && !TakeText("+") && !TakeWord("in"))
        return false;
    Distance distance;
    if (!TakeDistance(distance))
        return false;
    fDistance.Add(distance, sign);
    fHasDistance = true;
    return true;
}

bool DateReader::SpokenDistance()
{
    Distance distance;
    const bool counted = TakeDistance(distance);
    if (!counted && !TakeUnit(distance)) // "the day after tomorrow"
        return false;
    int direction = 0;
    bool needsMore = false;
    if (!TakeDirection(direction, needsMore) || (!counted && !needsMore))
        return false;
    fDistance.Add(distance, direction);
    fHasDistance = true;
    fNeedsMore = needsMore;
    return true;
}

bool DateReader::Neighbour()
{
    const Which which = TakeWord("next")           ? Which::kNext
        : TakeWord("last") || TakeWord("previous") ? Which::kLast
        : TakeWord("this")                         ? Which::kThis
                                                   : Which::kNone;
    if (which == Which::kNone)
        return false;
    SkipBlanks();
    Distance unit;
    if (TakeUnit(unit)) {
        fDistance.Add(unit, which == Which::kNext ? 1 : which == Which::kLast ? -1 : 0);
        fHasDistance = true;
        return true;
    }
    return TakeWeekDay(which);
}

bool DateReader::TakeWeekDay(Which which)
{
    const LibDateConventions::Match match = fConventions.MatchWeekDay(fRest);
    if (match.index < 0)
        return false;
    fRest.remove_prefix(match.length);
    TakeText("."); // of a short name
    return SetWeekDay(which, match.index);
}

bool DateReader::WeekDay()
{
    return TakeWeekDay(Which::kThis);
}

bool DateReader::Keyword()
{
    if (TakeWord("today"))
        return SetDate(fToday);
    if (TakeWord("tomorrow"))
        return SetDate(fToday + 1);
    if (TakeWord("yesterday"))
        return SetDate(fToday - 1);
    if (TakeWord("noon"))
        return SetTime(12, 0, 0);
    if (TakeWord("midnight"))
        return SetTime(0, 0, 0);
    return TakeWord("now") && SetDate(fToday) && SetTime(fNow);
}

// Words without a meaning of their own, in front of something else.
bool DateReader::Filler()
{
    if (!TakeWord("at") && !TakeWord("on") && !TakeWord("the"))
        return false;
    SkipBlanks();
    return ReadItem();
}

bool DateReader::SetDate(const LibDate& date)
{
    // Of two dates nobody could say which one is meant.
    fRefused = fRefused || fHasDate;
    fHasDate = true;
    fNeedsMore = false;
    fDate = date;
    return true;
}

bool DateReader::SetDate(int32 year, int32 month, int32 day)
{
    const LibDate date(
        static_cast<uint32>(month), static_cast<uint32>(day), static_cast<uint32>(year));
    // The days left out in 1582 are in no calendar.
    if (!date.IsValidDate() || LibDate(date.GetJulian()).GetDay() != day)
        return false;
    return SetDate(date);
}

bool DateReader::SetTime(const LibTime& time)
{
    fRefused = fRefused || fHasTime;
    fHasTime = true;
    fNeedsMore = false;
    fTime = time;
    return true;
}

bool DateReader::SetTime(int32 hours, int32 minutes, int32 seconds)
{
    const LibTime time(hours, minutes, seconds);
    fClockTime = time.IsValidTime();
    return fClockTime && SetTime(time);
}

bool DateReader::SetWeekDay(Which which, int32 weekDay)
{
    fRefused = fRefused || fWhich != Which::kNone;
    fNeedsMore = false;
    fWhich = which;
    fWeekDay = weekDay;
    return true;
}

// Moves date, today or the one named, to the weekday named. False if they contradict each other.
bool DateReader::ResolveWeekDay(LibDate& date) const
{
    const auto weekDay = static_cast<LibWeekDay>(fWeekDay);
    if (fWhich == Which::kNone)
        return true;
    if (fHasDate)
        return fWhich == Which::kThis && date.DayOfWeek() == weekDay;
    if (fWhich == Which::kLast)
        date.SetToPrev(weekDay);
    else if (fWhich == Which::kNext || date.DayOfWeek() != weekDay)
        date.SetToNext(weekDay);
    return true;
}

bool DateReader::Resolve(LibParsedDate& parsed)
{
    const bool namesDay = fHasDate || fWhich != Which::kNone;
    if (fNeedsMore || !(namesDay || fHasTime || fHasDistance) || (fHasZone && !namesDay))
        return false;
    LibDate date = fHasDate ? fDate : fToday;
    if (!ResolveWeekDay(date))
        return false;
    if (fDistance.months != 0)
        date.AddMonths(LibToInt32(fDistance.months));
    date += LibToInt32(fDistance.days);
    parsed.date = date;
    // A day alone means its beginning, a distance alone is counted from now.
    parsed.time = fHasTime ? fTime : namesDay ? LibTime() : fNow;
    const int64 seconds = parsed.time.NumberOfSeconds() + fDistance.seconds;
    // Rounded down: below 0 the division rounds towards 0.
    const int64 days = seconds / kSecondsOfDay - (seconds % kSecondsOfDay < 0 ? 1 : 0);
    for (const LibDate& reached : { date, date + LibToInt32(days) }) {
        if (reached.GetYear() < 1 || reached.GetYear() > kLastYear)
            return false;
    }
    parsed.seconds = fDistance.seconds;
    parsed.hasDate = namesDay || fDistance.months != 0 || fDistance.days != 0;
    parsed.hasTime = fHasTime;
    parsed.hasZone = fHasZone;
    parsed.zoneMinutes = fZoneMinutes;
    return true;
}

bool LibParseDate(std::string_view text, const LibDateConventions& conventions,
    const LibDate& today, const LibTime& now, LibParsedDate& parsed)
{
    if (text.size() > kMostText)
        return false;
    // Once for the whole text: no rule need care for case, and the reader's views lie in it.
    const std::string folded = LibFoldCase(text);
    return DateReader(folded, conventions, today, now).Read(parsed);
}

time_t q_parsedate(const char* text, time_t now)
{
    const char* typed = text ? text : "";
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
