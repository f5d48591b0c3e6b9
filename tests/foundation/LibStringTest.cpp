#include "foundation/LibString.h"

#include "tests/support/Printed.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

TEST(LibString, NumbersAreCutToTheirBuffersAndIntegersNever)
{
    const std::pair<std::function<void(LibString&)>, const char*> rows[] = {
        { [](LibString& s) { s = INT32_MIN; }, "-2147483648>, buffer 12" },
        { [](LibString& s) { s = 7; }, "7>, buffer 11" },
        { [](LibString& s) { s = 1e30f; }, "1000000015>, buffer 11" },
        { [](LibString& s) { s = 0.25; }, "0.250000>, buffer 16" },
        { [](LibString& s) { s.SetFloat64(1.0 / 3, 100000); }, "0.3333333333333>, buffer 16" },
        { [](LibString& s) { s.SetFloat32(2.25f, 1); }, "2.2>, buffer 11" }, // to even, as printf
        { [](LibString& s) { s.SetFloat32(-0.5f, -1); }, "-0.500000>, buffer 11" },
        { [](LibString& s) { s.SetHex(0xaf); }, "AF>, buffer 3" },
        { [](LibString& s) { s.Formatted("%.600d", 1); }, nullptr }, // 511 zeros
        { [](LibString& s) { s = LibString(static_cast<const char*>(nullptr)); }, ">, buffer 0" },
        { [](LibString& s) { s.SetBuffer(-1); }, ">, buffer 1" },
        { [](LibString& s) { (s += 1e30f) += 1e30; }, "x1000000015100000000000000>, buffer 27" },
        { [](LibString& s) { s.SetBuffer(9), s = *&s; }, ">, buffer 10" },
        { [](LibString& s) { s.SetBuffer(9), s.Concat('a'), s = LibString(s); }, "a>, buffer 10" },
    };
    for (const auto& [change, result] : rows) {
        LibString text("x");
        change(text);
        EXPECT_EQ(Printed(text),
            "LibString:: <" + (result ? result : std::string(511, '0') + ">, buffer 512") + "\n");
    }
}

TEST(LibString, GettersTakeWhatTheNumberGrammarTakes)
{
    for (const Row& row : RowsOf("foundation/data/numbers.txt", 3)) {
        SCOPED_TRACE(row[0]);
        const LibString text(row[0] == "null" ? nullptr : row[0].c_str());
        const bool isNumeric = row[1] == "yes";
        const double expected = std::stod(row[2]);
        const auto get = [&](auto whole, bool (LibString::*getter)(decltype(whole)&) const) {
            whole = 99;
            EXPECT_EQ((text.*getter)(whole), isNumeric);
            EXPECT_EQ(whole, static_cast<decltype(whole)>(static_cast<int32>(expected)));
        };
        get(int8 {}, &LibString::GetInt8), get(uint8 {}, &LibString::GetUint8);
        get(int16 {}, &LibString::GetInt16), get(uint16 {}, &LibString::GetUint16);
        get(int32 {}, &LibString::GetInt32), get(uint32 {}, &LibString::GetUint32);
        float narrow = 99;
        double value = 99;
        EXPECT_TRUE(text.GetFloat64(value) == isNumeric && value == expected);
        EXPECT_TRUE(text.GetFloat32(narrow) == isNumeric && narrow == static_cast<float>(value));
    }
}

TEST(LibString, ReadsAFileBehindItsTextAndNumbersBeyondAllBounds)
{
    WriteFile(DataHome() / "file", "one\n\ntwo lines");
    LibString text("a: ");
    for (const int32 lineSize : { 1, 2, 100 })
        text.Read((DataHome() / "file").c_str(), lineSize);
    text.Read(nullptr, 100), text.Read("/nonexistent", 100);
    EXPECT_STREQ(text, "a: one\n\ntwo linesone\n\ntwo lines");
    EXPECT_EQ(ErrorsOf([&] { text.Read("/", 100); }), "Error reading </>: Is a directory\n");
    const std::string nines(400, '9'), zeros(400, '0');
    double value = 0;
    for (const auto& [number, expected] :
        { std::pair(nines, HUGE_VAL), { "1" + zeros, HUGE_VAL }, { "-" + nines, -HUGE_VAL },
            { "+" + zeros + "." + zeros + "1", 0.0 }, { zeros + "1.5", 1.5 } })
        EXPECT_TRUE(LibString(number.c_str()).GetFloat64(value) && value == expected) << number;
}

TEST(LibString, PartsAreComparedInAsManyBytesAsAsked)
{
    for (const Row& row : RowsOf("foundation/data/partial-orders.txt", 5)) {
        const LibString other(row[1] == "null" ? nullptr : row[1].c_str());
        const int32 order =
            LibString(row[0].c_str()).CompareSub(other, row[2] == "any case", std::stoi(row[3]), 2);
        EXPECT_EQ(std::to_string((order > 0) - (order < 0)), row[4]) << row[0] << " " << row[1];
    }
    EXPECT_EQ(LibString("a").CompareSub("a", false, -1, -3), 0);
    EXPECT_TRUE(LibString("a").CompareWildCard(nullptr, "*"));
    const std::string megabyte(1 << 20, ' ');
    EXPECT_FALSE(LibString(megabyte.c_str()).IsWildCard("* * * *x")); // soon
}

TEST(LibString, WordsAreTakenByTheirNumber)
{
    LibString text(" one\ttwo\n three"), word("old");
    EXPECT_TRUE(!text.Word(4, word) && word.Compare("") == 0 && !text.Word(0, word));
    EXPECT_TRUE(text.Word(1, word) && word.Compare("one") == 0 && LibString("x").Word(1, word));
    EXPECT_TRUE(text.Word(3, text) && text.Compare("three") == 0);
}
