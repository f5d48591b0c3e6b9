#include "foundation/LibString.h"

#include "tests/support/Test.h"

TEST(LibString, FloatsAreCutToTheirBuffersAndIntegersNever)
{
    LibString text;
    text = INT32_MIN;
    EXPECT_STREQ(text, "-2147483648");
    text = 1e30f;
    EXPECT_STREQ(text, "1000000015");
    text.SetFloat64(1.0 / 3, 100000);
    EXPECT_STREQ(text, "0.3333333333333");
    text.SetFloat32(2.25f, 1);
    EXPECT_STREQ(text, "2.2"); // to even, as printf
}

TEST(LibString, GettersTakeWhatTheNumberGrammarTakes)
{
    const std::tuple<const char*, bool, int32, double> rows[] = { { "", true, 0, 0 },
        { nullptr, true, 0, 0 }, { "12.9", true, 12, 12.9 }, { "+1.5", true, 1, 1.5 },
        { "-.5", true, 0, -0.5 }, { "7.", true, 7, 7 }, { "1-", false, 0, 0 },
        { "1.2.3", false, 0, 0 }, { " 1", false, 0, 0 }, { "1e3", false, 0, 0 } };
    for (const auto& [bytes, isNumeric, expectedWhole, expectedValue] : rows) {
        SCOPED_TRACE(bytes ? bytes : "null");
        const LibString text(bytes);
        int32 whole = 99;
        double value = 99;
        EXPECT_EQ(text.GetInt32(whole), isNumeric);
        EXPECT_EQ(whole, expectedWhole);
        EXPECT_EQ(text.GetFloat64(value), isNumeric);
        EXPECT_EQ(value, expectedValue);
    }
}

TEST(LibString, HexadecimalIsTwoDigitsOfEitherCase)
{
    const std::pair<const char*, uint8> rows[] = { { "fF", 255 }, { "0a", 10 }, { "G1", 1 },
        { "F", 0 }, { "FFF", 0 } };
    for (const auto& [text, value] : rows)
        EXPECT_EQ(LibString(text).GetHex(), value) << text;
    LibString text;
    text.SetHex(0xaf);
    EXPECT_STREQ(text, "AF");
}

TEST(LibString, CompareOrdersBySignedBytesAndPrefix)
{
    const std::tuple<const char*, const char*, bool, int32> rows[] = { { "abc", "abd", false, -1 },
        { "b", "a", false, 1 }, { "", "", false, 0 }, { "ab", "abc", false, -1 },
        { "a\xe9", "a", false, 1 }, // longer, though the byte is below the end mark
        { "\xe9", "a", false, -1 }, { "ABC", "abc", true, 0 }, { "ABC", "abc", false, -1 },
        { "_", "a", true, 1 }, // folded upwards: behind "A"
        { "a", nullptr, false, 1 }, { nullptr, nullptr, false, 1 }, { nullptr, "", false, 0 } };
    for (const auto& [a, b, ignoreCase, expected] : rows)
        EXPECT_EQ(LibString(a).Compare(b, ignoreCase), expected) << b;
}

TEST(LibString, SearchesFindTheFirstAndFoldOnlyWhenAsked)
{
    const LibString text("Tarvex test");
    // Begins with, ends with, contains.
    const std::tuple<const char*, bool, std::string> rows[] = { { "Tar", false, "b-c" },
        { "tar", false, "---" }, { "tar", true, "b-c" }, { "TEST", true, "-ec" },
        { "TEST", false, "---" }, { "VEX", true, "--c" }, { "", false, "-ec" }, { "", true, "-ec" },
        { "Tarvex test", false, "bec" }, { "a Tarvex test", true, "---" } };
    for (const auto& [wanted, ignoreCase, expected] : rows) {
        std::string found;
        found += text.BeginsWith(wanted, ignoreCase) ? 'b' : '-';
        found += text.EndsWith(wanted, ignoreCase) ? 'e' : '-';
        found += text.Contain(wanted, ignoreCase) ? 'c' : '-';
        EXPECT_EQ(found, expected) << wanted;
        const LibString same(wanted);
        EXPECT_EQ(text.BeginsWith(same, ignoreCase), expected[0] == 'b') << wanted;
        EXPECT_EQ(text.EndsWith(same, ignoreCase), expected[1] == 'e') << wanted;
        EXPECT_EQ(text.Contain(same, ignoreCase), expected[2] == 'c') << wanted;
    }
    EXPECT_EQ(text.Index("te"), 7);
    EXPECT_EQ(text.Index('n'), -1);
    EXPECT_EQ(text.Count('t'), 2);
}

TEST(LibString, WordsAreRunsWithoutWhiteSpace)
{
    LibString text(" one\ttwo\n three");
    EXPECT_EQ(text.Words(), 3);
    LibString word("old");
    EXPECT_FALSE(text.Word(4, word));
    EXPECT_TRUE(text.Word(1, word));
    EXPECT_STREQ(word, "one");
    EXPECT_TRUE(text.Word(3, text));
    EXPECT_STREQ(text, "three");
}

TEST(LibString, ExtractGivesNothingWhereTheRangeIsNotThere)
{
    const LibString text("a<bc>d>");
    const std::pair<LibString, const char*> rows[] = { { text.Extract(1, 6), "<bc>d>" },
        { text.Extract(-1, 2), "" }, { text.Extract(3, 2), "" }, { text.Extract(5, 7), "" },
        { text.Extract('<', '>', false), "<bc>" }, { text.Extract('<', '>', true), "bc" },
        { LibString("''").Extract('\'', '\'', true), "" },
        { text.Extract('d', '<', true), "" } }; // the close comes before the open
    for (const auto& [extracted, expected] : rows)
        EXPECT_STREQ(extracted, expected);
}

TEST(LibString, WildCardsMatchTheWholeText)
{
    const std::tuple<const char*, const char*, bool> rows[] = { { "a.txt", "*.txt", true },
        { "a.TXT", "*.txt", false }, { "a.txt.gz", "*.txt", false }, { "abc", "a?c", true },
        { "ac", "a?c", false }, { "ab", "abc", false }, { "abc", "***", true }, { "", "*", true },
        { "", "?", false }, { "a", "", false }, { "ab", "*??", true }, { "a", "*??", false },
        { "abab", "*ab", true }, // the first "ab" is the wrong one
        { "xaybzb", "x*b", true }, { "abc", nullptr, false } };
    for (const auto& [text, pattern, matches] : rows)
        EXPECT_EQ(LibString(text).IsWildCard(pattern), matches) << pattern;
    EXPECT_TRUE(LibString("ab").IsWildCard(LibString("a?")));
    const std::string megabyte(1 << 20, ' ');
    EXPECT_FALSE(LibString(megabyte.c_str()).IsWildCard("* * * *x")); // soon
}

TEST(LibString, ReadAppendsWholeFilesWhateverThePieces)
{
    const TempFolder folder;
    const std::string path = folder / "text";
    WriteFile(path, "first line\n\nlast");
    LibString text("> ");
    text.Read(path.c_str(), 4);
    EXPECT_STREQ(text, "> first line\n\nlast");
    text = "/";
    testing::internal::CaptureStderr();
    text.Read(text, 4); // a folder opens
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error reading </>: Is a directory\n");
}
