#include "TextCoding.h"

#include "tests/support/Rows.h"
#include "tests/support/Test.h"

TEST(TextCoding, CharactersAreReadFromBytesAndWrittenAsThem)
{
    for (const Row& row : RowsOf("kits/support/data/characters.txt", 2)) {
        SCOPED_TRACE(testing::PrintToString(row[0]));
        const auto number = static_cast<char32_t>(std::stoul(row[1], nullptr, 16));
        const std::string text = row[0] + "z";
        char32_t c = 0;
        EXPECT_EQ(DecodeUtf8(text, c), number == 0 ? 0 : row[0].size());
        const char* rest = text.data();
        EXPECT_EQ(NextCharacter(rest, text.data() + text.size()), number == 0 ? 0xfffd : number);
        EXPECT_EQ(rest - text.data(), number == 0 ? 1 : row[0].size());
        EXPECT_EQ(DecodeUtf8(row[0], c), number == 0 ? 0 : row[0].size()) << "at the end";
        if (number == 0)
            continue;
        std::string written = "before ";
        AppendUtf8(written, number);
        EXPECT_EQ(c, number);
        EXPECT_EQ(written, "before " + row[0]);
    }
}

TEST(TextCoding, APathIsEncodedButForItsPlainLetters)
{
    const std::string plain = "/azAZ09-._~";
    EXPECT_EQ(PercentEncoded(plain + " %\xe4@[`{:\n"), plain + "%20%25%E4%40%5B%60%7B%3A%0A");
}
