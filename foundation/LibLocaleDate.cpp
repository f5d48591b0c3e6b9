#include "foundation/LibLocaleDate.h"

#include "foundation/LibParseDate.h"
#include "foundation/PlainText.h"
#include "foundation/TypedNumbers.h"
#include "foundation/Utf8.h"

#include <TextCoding.h>

#include <clocale>
#include <cstdio>
#include <cwchar>
#include <langinfo.h>
#include <string>

namespace {

// Not setlocale(): it would change the numbers that other threads print meanwhile.
// The calling thread's locale for as long as this lives; the process's own stays.
class ThreadLocale {
public:
    explicit ThreadLocale(locale_t locale) : fBefore(uselocale(locale)) { }
    ~ThreadLocale() { uselocale(fBefore); }
    ThreadLocale(const ThreadLocale&) = delete;
    ThreadLocale& operator=(const ThreadLocale&) = delete;

private:
    locale_t fBefore;
};

// A text of the thread's locale as UTF-8; what is no text in it ends the result.
std::string ToUtf8(const char* text)
{
    std::string utf8;
    mbstate_t state {};
    std::string_view rest(text);
    while (!rest.empty()) {
        wchar_t c = 0;
        const size_t length = mbrtowc(&c, rest.data(), rest.size(), &state);
        if (length == 0 || length > rest.size())
            break;
        AppendUtf8(utf8, static_cast<char32_t>(c));
        rest.remove_prefix(length);
    }
    return utf8;
}

// The list of names that begins with that item of nl_langinfo().
template <size_t count>
void ReadNames(nl_item first, std::array<std::string, count>& names)
{
    for (size_t i = 0; i < count; i++)
        names[i] = ToUtf8(nl_langinfo(first + static_cast<nl_item>(i)));
}

// Whether folded begins with name as a whole word.
bool BeginsWithName(std::string_view folded, std::string_view name)
{
    return !name.empty() && folded.starts_with(name)
        && (folded.size() == name.size() || !LibIsWordByte(folded[name.size()]));
}

// Looks for longer matches in names, whose closing dot may be left out.
template <size_t count>
void MatchNames(std::string_view folded, const std::array<std::string, count>& names,
    LibDateConventions::Match& match)
{
    for (size_t i = 0; i < count; i++) {
        const std::string whole = LibFoldCase(names[i]);
        std::string_view name = whole;
        if (name.ends_with('.') && !folded.starts_with(name))
            name.remove_suffix(1);
        if (name.size() > match.length && BeginsWithName(folded, name))
            match = { static_cast<int32>(i), name.size() };
    }
}

// What a conversion of strftime stands for: 'd', 'm' or 'y'; 0 for none of them.
char PartOf(char conversion)
{
    switch (conversion) {
        case 'd':
        case 'e': return 'd';
        case 'm':
        case 'b':
        case 'B':
        case 'h': return 'm';
        case 'y':
        case 'Y': return 'y';
        default: return 0;
    }
}

std::string_view WithoutBlanks(std::string_view text)
{
    const size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos
        ? text.substr(0, 0)
        : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

const LibDateConventions& LibDateConventions::English()
{
    static const LibDateConventions sEnglish {
        .months = { "January", "February", "March", "April", "May", "June", "July", "August",
            "September", "October", "November", "December" },
        .shortMonths = { "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct",
            "Nov", "Dec" },
        .weekDays = { "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday",
            "Saturday" },
        .shortWeekDays = { "Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat" },
    };
    return sEnglish;
}

LibDateConventions LibDateConventions::OfLocale(const char* name)
{
    LibDateConventions conventions = English();
    locale_t locale = newlocale(LC_TIME_MASK | LC_CTYPE_MASK, name, nullptr);
    if (!locale) {
        fprintf(stderr, "Locale <%.80s> is not installed\n", name);
        return conventions;
    }
    // A block of its own: a locale must not be freed while the thread uses it.
    {
        const ThreadLocale use(locale);
        ReadNames(MON_1, conventions.months);
        ReadNames(ABMON_1, conventions.shortMonths);
        ReadNames(DAY_1, conventions.weekDays);
        ReadNames(ABDAY_1, conventions.shortWeekDays);
        LibReadDateFormat(ToUtf8(nl_langinfo(D_FMT)), conventions);
    }
    freelocale(locale);
    return conventions;
}

LibDateConventions::Match LibDateConventions::MatchMonth(std::string_view folded) const
{
    Match match;
    MatchNames(folded, months, match);
    MatchNames(folded, shortMonths, match);
    if (match.index < 0) {
        MatchNames(folded, English().months, match);
        MatchNames(folded, English().shortMonths, match);
    }
    return match;
}

LibDateConventions::Match LibDateConventions::MatchWeekDay(std::string_view folded) const
{
    Match match;
    MatchNames(folded, weekDays, match);
    MatchNames(folded, shortWeekDays, match);
    if (match.index < 0) {
        MatchNames(folded, English().weekDays, match);
        MatchNames(folded, English().shortWeekDays, match);
    }
    return match;
}

int32 LibDateConventions::Month(std::string_view word) const
{
    const std::string folded = LibFoldCase(word);
    const Match match = MatchMonth(folded);
    return match.length == folded.size() ? match.index + 1 : 0;
}

int32 LibDateConventions::WeekDay(std::string_view word) const
{
    const std::string folded = LibFoldCase(word);
    const Match match = MatchWeekDay(folded);
    return match.length == folded.size() ? match.index : -1;
}

bool LibReadDateFormat(std::string_view format, LibDateConventions& conventions)
{
    // The two conversions that stand for a whole date.
    if (format == "%D")
        format = "%m/%d/%y";
    if (format == "%F")
        format = "%Y-%m-%d";
    std::string parts;
    std::array<std::string, 3> between;
    for (size_t i = 0; i < format.size(); i++) {
        if (format[i] != '%') {
            if (!parts.empty() && parts.size() <= between.size())
                between[parts.size() - 1] += format[i];
            continue;
        }
        i = format.find_first_not_of("-_0^#EO", i + 1); // flags of the conversion
        if (i == std::string_view::npos)
            return false;
        if (PartOf(format[i]) != 0)
            parts += PartOf(format[i]);
    }
    constexpr std::string_view kOrders[] = { "mdy", "dmy", "ymd" }; // as in Order
    for (size_t i = 0; i < std::size(kOrders); i++) {
        if (parts == kOrders[i]) {
            conventions.order = static_cast<LibDateConventions::Order>(i);
            between[2] = WithoutBlanks(between[2]);
            conventions.separators = between;
            return true;
        }
    }
    return false;
}

namespace {

using Order = LibDateConventions::Order;

std::string Padded(int32 number, int digits)
{
    char text[16];
    snprintf(text, sizeof(text), "%.*d", digits, number);
    return text;
}

} // namespace

LibLocaleDate::LibLocaleDate(const LibDate& date, const LibDateConventions& conventions)
    : LibDate(date), fConventions(conventions)
{
}

void LibLocaleDate::GetShort(LibString& text) const
{
    const std::string d = Padded(day, 2);
    const std::string m = Padded(month, 2);
    const std::string y = Padded(year, 4);
    const auto& between = fConventions.separators;
    std::string numbers;
    switch (fConventions.order) {
        case Order::kMonthDayYear: numbers = m + between[0] + d + between[1] + y; break;
        case Order::kDayMonthYear: numbers = d + between[0] + m + between[1] + y; break;
        case Order::kYearMonthDay: numbers = y + between[0] + m + between[1] + d; break;
    }
    // Some languages have a point after the last number, too.
    text = (numbers + between[2]).c_str();
}

void LibLocaleDate::GetLong(LibString& text) const
{
    // A date that is none may have any month.
    const bool named = month >= 1 && month <= 12;
    const std::string m = named ? fConventions.months[static_cast<size_t>(month - 1)] : "";
    const std::string& w = fConventions.weekDays[static_cast<size_t>(LibDate::DayOfWeek())];
    const std::string d = std::to_string(day);
    const std::string y = Padded(year, 4); // "50" would be read as 2050
    std::string names;
    switch (fConventions.order) {
        case Order::kMonthDayYear: names = w + ", " + m + " " + d + ", " + y; break;
        case Order::kDayMonthYear: names = w + ", " + d + " " + m + " " + y; break;
        case Order::kYearMonthDay: names = w + ", " + y + " " + m + " " + d; break;
    }
    text = names.c_str();
}

bool LibLocaleDate::SetTyped(const char* text)
{
    return SetTyped(text, LibDate(true));
}

bool LibLocaleDate::SetTyped(const char* text, const LibDate& today)
{
    const char* typed = text ? text : "";
    LibParsedDate parsed;
    // A time, or a distance in hours, would be lost without a word: it is refused instead.
    if (!LibParseDate(typed, fConventions, today, LibTime(), parsed) || !parsed.hasDate
        || parsed.hasTime || parsed.seconds != 0)
        return LibRefuseDate(typed);
    SetDate(parsed.date.GetJulian());
    return true;
}
