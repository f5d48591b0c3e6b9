#include "foundation/LibLocaleDate.h"

#include "foundation/Utf8.h"
#include "tests/foundation/LocaleFolder.h"
#include "tests/support/Test.h"

#include <clocale>

namespace {

const LibDate kToday(10, 24, 2001);

LibDateConventions Conventions(const char* format)
{
    LibDateConventions conventions = LibDateConventions::English();
    EXPECT_TRUE(LibReadDateFormat(format, conventions)) << format;
    return conventions;
}

std::string ShortOf(const LibLocaleDate& date)
{
    LibString text;
    date.GetShort(text);
    return static_cast<const char*>(text);
}

std::string LongOf(const LibLocaleDate& date)
{
    LibString text;
    date.GetLong(text);
    return static_cast<const char*>(text);
}

// The date read from text under those conventions, as year-month-day; "" for a refused one.
std::string Typed(const LibDateConventions& conventions, const std::string& text)
{
    LibLocaleDate date(LibDate(), conventions);
    if (!date.SetTyped(text.c_str(), kToday))
        return "";
    return ShortOf(LibLocaleDate(date, Conventions("%F")));
}

} // namespace

TEST(LibLocaleDate, ShortFormFollowsTheDateFormatOfALanguage)
{
    const std::pair<const char*, const char*> rows[] = { { "%D", "03/12/2001" },
        { "%F", "2001-03-12" }, { "%e. %-m. %Y", "12. 03. 2001" },
        { "%Y. %m. %d.", "2001. 03. 12." }, { "%Y년 %m월 %d일", "2001년 03월 12일" },
        { "%Od-%Om-%EY", "12-03-2001" }, { "%d %b %Y", "12 03 2001" },
        { "%a %d/%m/%Y", "12/03/2001" } };
    for (const auto& [format, text] : rows) {
        const LibLocaleDate date(LibDate(3, 12, 2001), Conventions(format));
        EXPECT_EQ(ShortOf(date), text);
        EXPECT_EQ(Typed(date.Conventions(), text), "2001-03-12");
        EXPECT_EQ(Typed(date.Conventions(), LongOf(date)), "2001-03-12") << LongOf(date);
    }
    const std::tuple<const char*, uint32, const char*> longForms[] = {
        { "%D", 12, "Monday, December 31, 2001" }, { "%d.%m.%Y", 1, "Wednesday, 31 January 2001" },
        { "%D", 13, "Thursday,  31, 2001" }, { "%F", 0, "Sunday, 2001  31" } // of no month
    };
    for (const auto& [format, month, text] : longForms)
        EXPECT_EQ(LongOf(LibLocaleDate(LibDate(month, 31, 2001), Conventions(format))), text);
    LibDateConventions kept = Conventions("%Y. %m. %d.");
    for (const char* format : { "", "%", "%m/%y", "%Y-%d-%m", "%d%m%Y%d", "day" })
        EXPECT_FALSE(LibReadDateFormat(format, kept)) << format;
    EXPECT_EQ(ShortOf(LibLocaleDate(LibDate(3, 12, 2001), kept)), "2001. 03. 12.");
}

TEST(LibLocaleDate, ReadsNumbersInTheOrderOfTheLanguage)
{
    const LibDateConventions german = Conventions("%d.%m.%Y");
    const LibDateConventions british = Conventions("%d/%m/%Y");
    const LibDateConventions swedish = Conventions("%Y-%m-%d");
    LibDateConventions korean = Conventions("%Y년 %m월 %d일");
    for (size_t i = 0; i < korean.months.size(); i++)
        korean.months[i] = std::to_string(i + 1) + "월";
    korean.shortMonths.fill("");
    korean.weekDays.fill("요일");
    korean.shortWeekDays.fill("요");
    korean.shortMonths[4] = "o.";
    LibDateConventions vietnamese = british;
    vietnamese.months[9] = "thang muoi"; // the beginning of the next one
    vietnamese.months[10] = "thang muoi mot";
    const std::tuple<const LibDateConventions&, const char*, const char*> rows[] = {
        { german, "3.12.2001", "2001-12-03" }, { german, "3. 12. 01", "2001-12-03" },
        { german, "3.12.", "2001-12-03" }, { german, "31.4.2001", "" },
        { british, "3/12", "2001-12-03" }, { british, "12/31/2001", "" },
        { swedish, "01-12-03", "2001-12-03" }, { swedish, "03.12.2001", "2001-12-03" },
        { swedish, "03/12/2001", "" }, // could be either
        { korean, "2001년 12월 3일", "2001-12-03" }, { korean, "2월 3", "2001-02-03" },
        { korean, "wed, march 7", "2001-03-07" }, { korean, "monday, 7 feb", "" },
        { korean, "7 o 2001", "2001-05-07" }, { korean, "7 o. 2001", "2001-05-07" },
        { german, "in 1 day and 5 hours", "" }, { german, "noon", "" }, { german, "3,12,2001", "" },
        { german, "123.1.2001", "" }, { german, "1.123.2001", "" }, { german, "3.12.200", "" },
        { german, "tomorrow", "2001-10-25" }, { german, "in 2 weeks", "2001-11-07" },
        { german, "tomorrow noon", "" }, { vietnamese, "3 thang muoi mot 2001", "2001-11-03" },
        { german, "", "" }
    };
    for (const auto& [conventions, text, date] : rows)
        EXPECT_EQ(Typed(conventions, text), date) << text;
}

TEST(LibLocaleDate, TakesNamesFromInstalledLocales)
{
    const LocaleFolder folder;
    const std::string before = setlocale(LC_ALL, nullptr);
    const std::tuple<const char*, const char*, const char*, const char*, const char*> rows[] = {
        { "de_DE", "UTF-8", "12.03.2001", "Montag, 12 März 2001", "mo, 12. MÄRZ" },
        { "de_DE", "ISO-8859-1", "12.03.2001", "Montag, 12 März 2001", "12 mär 01" },
        { "ru_RU", "UTF-8", "12.03.2001", "Понедельник, 12 марта 2001", "12 МАРТА" },
        { "zh_CN", "UTF-8", "2001年03月12日", "星期一, 2001 三月 12", "三月 12" }
    };
    for (const auto& [language, charset, shortText, longText, typed] : rows) {
        const std::string name = std::string(language) + "." + charset;
        SCOPED_TRACE(name);
        if (!folder.Make(language, charset))
            GTEST_SKIP() << "no localedef, or no sources of " << name;
        const LibLocaleDate date(LibDate(3, 12, 2001), LibDateConventions::OfLocale(name.c_str()));
        EXPECT_EQ(ShortOf(date), shortText);
        EXPECT_EQ(LongOf(date), longText);
        for (const std::string& text : { ShortOf(date), LongOf(date), std::string(typed) })
            EXPECT_EQ(Typed(date.Conventions(), text), "2001-03-12") << text;
    }
    EXPECT_EQ(setlocale(LC_ALL, nullptr), before);
}

TEST(LibLocaleDate, UnknownLocaleIsNamedAndGivesEnglish)
{
    testing::internal::CaptureStderr();
    const LibDateConventions conventions = LibDateConventions::OfLocale("xx_XX");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Locale <xx_XX> is not installed\n");
    EXPECT_EQ(conventions.Month("may") * 100 + conventions.Month("march"), 503);
    EXPECT_EQ(conventions.Month("may 3"), 0);
    EXPECT_EQ(conventions.WeekDay("SUN") * 100 + conventions.WeekDay("saturday"), 6);
    EXPECT_EQ(conventions.WeekDay("sun "), -1);
}

TEST(Utf8, FoldsLettersAndKeepsWhatIsNoText)
{
    const std::pair<const char*, const char*> rows[] = {
        { "A-z\xc3\x84", "a-z\xc3\xa4" },
        { "\xf0\x90\x90\x80", "\xf0\x90\x90\xa8" }, // Deseret, four bytes
        { "\xc3Z", "\xc3z" }, { "\x80\xff", "\x80\xff" },
        { "\x7f\xc2\x80\xdf\xbf", "\x7f\xc2\x80\xdf\xbf" }, // the last and first of a length
        { "\xe0\xa0\x80\xef\xbf\xbf", "\xe0\xa0\x80\xef\xbf\xbf" },
        { "\xf0\x90\x80\x80Z\xf4\x8f\xbf\xbf", "\xf0\x90\x80\x80z\xf4\x8f\xbf\xbf" },
        { "\xc1\x81", "\xc1\x81" }, // "A" in two bytes
        { "\xf4\x90\x80\x80", "\xf4\x90\x80\x80" }, // beyond the last character
    };
    for (const auto& [text, folded] : rows)
        EXPECT_EQ(LibFoldCase(text), folded);
    EXPECT_EQ(LibFoldCase(std::string_view("\xc3\x84", 1)), "\xc3"); // cut
}
