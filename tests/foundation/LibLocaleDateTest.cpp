#include "foundation/LibLocaleDate.h"

#include "foundation/Utf8.h"
#include "tests/support/Rows.h"
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

enum Form { kShort, kLong };

std::string Shown(const LibLocaleDate& date, Form form)
{
    LibString text;
    form == kShort ? date.GetShort(text) : date.GetLong(text);
    return static_cast<const char*>(text);
}

// The date read from text under those conventions, as year-month-day; "" for a refused one.
std::string Typed(const LibDateConventions& conventions, const std::string& text)
{
    LibLocaleDate date(LibDate(), conventions);
    if (!date.SetTyped(text.c_str(), kToday))
        return "";
    return Shown(LibLocaleDate(date, Conventions("%F")), kShort);
}

} // namespace

TEST(LibLocaleDate, ShortFormFollowsTheDateFormatOfALanguage)
{
    for (const Row& row : RowsOf("foundation/data/date-formats.txt", 2)) {
        const LibLocaleDate date(LibDate(3, 12, 2001), Conventions(row[0].c_str()));
        EXPECT_EQ(Shown(date, kShort), row[1]);
        EXPECT_EQ(Typed(date.Conventions(), row[1]), "2001-03-12");
        EXPECT_EQ(Typed(date.Conventions(), Shown(date, kLong)), "2001-03-12")
            << Shown(date, kLong);
    }
    for (const Row& row : RowsOf("foundation/data/long-dates.txt", 3)) {
        const LibDate date(static_cast<uint32>(std::stoi(row[1])), 31, 2001);
        EXPECT_EQ(Shown(LibLocaleDate(date, Conventions(row[0].c_str())), kLong), row[2]);
    }
    LibDateConventions kept = Conventions("%Y. %m. %d.");
    for (const char* format : { "", "%", "%m/%y", "%Y-%d-%m", "%d%m%Y%d", "day" })
        EXPECT_FALSE(LibReadDateFormat(format, kept)) << format;
    EXPECT_EQ(Shown(LibLocaleDate(LibDate(3, 12, 2001), kept), kShort), "2001. 03. 12.");
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
    const std::map<std::string, LibDateConventions> all = { { "german", german },
        { "british", british }, { "swedish", swedish }, { "korean", korean },
        { "vietnamese", vietnamese } };
    for (const Row& row : RowsOf("foundation/data/typed-dates.txt", 3))
        EXPECT_EQ(Typed(all.at(row[0]), row[1]), row[2] == "-" ? "" : row[2]) << row[1];
}

TEST(LibLocaleDate, TakesNamesFromInstalledLocales)
{
    const TempFolder folder; // with locales, on a machine that may have none but "C"
    setenv("LOCPATH", folder.Path().c_str(), 1);
    const std::string before = setlocale(LC_ALL, nullptr);
    for (const Row& row : RowsOf("foundation/data/locales.txt", 5)) {
        const std::string name = row[0] + "." + row[1];
        SCOPED_TRACE(name);
        const std::string arguments = row[0] + " " + row[1] + " " + folder.Path();
        if (system((TARVEX_TESTS "/foundation/make-locale " + arguments).c_str()) != 0)
            GTEST_SKIP() << "no localedef, or no sources of " << name;
        const LibLocaleDate date(LibDate(3, 12, 2001), LibDateConventions::OfLocale(name.c_str()));
        EXPECT_EQ((Row { Shown(date, kShort), Shown(date, kLong) }), (Row { row[2], row[3] }));
        for (const size_t i : { 2u, 3u, 4u })
            EXPECT_EQ(Typed(date.Conventions(), row[i]), "2001-03-12") << row[i];
    }
    EXPECT_EQ(setlocale(LC_ALL, nullptr), before);
    unsetenv("LOCPATH");
}

TEST(Utf8, FoldsLettersAndKeepsWhatIsNoText)
{
    for (const Row& row : RowsOf("foundation/data/folded.txt", 2))
        EXPECT_EQ(LibFoldCase(row[0]), row[1]);
    EXPECT_EQ(LibFoldCase(std::string_view("\xc3\x84", 1)), "\xc3"); // cut
    // What a terminal obeys and what is no text is shown by its bytes; U+E000 and U+00A0 are texts.
    EXPECT_EQ(LibPrintable("a\xc3\xa4\xee\x80\x80\xc2\xa0 \x1b\x7f\xed\xa0\x80\xe2\x80\xae"),
        "a\xc3\xa4\xee\x80\x80\xc2\xa0 \\x1b\\x7f\\xed\\xa0\\x80\\xe2\\x80\\xae");
    EXPECT_EQ(LibPrintable("abc", 2) + LibPrintable(nullptr), "ab");
}
