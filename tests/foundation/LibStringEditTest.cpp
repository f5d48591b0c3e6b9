#include "foundation/LibString.h"
#include "tests/support/Test.h"

#include <Font.h>
#include <Rect.h>

#include <sys/mman.h>

namespace {

using S = LibString;

// What is left of a text after an edit.
template <class Edit, class... Arguments>
std::string After(const char* text, Edit edit, Arguments... arguments)
{
    S s(text);
    std::invoke(edit, s, arguments...);
    const char* result = s;
    return result ? result : "(no buffer)";
}

// A text of so many megabytes that takes one: the same memory all over.
const char* RepeatedText(size_t megabytes)
{
    constexpr size_t kPiece = 1 << 20;
    const int file = memfd_create("text", 0);
    const std::string piece(kPiece, 'x');
    EXPECT_EQ(write(file, piece.data(), kPiece), ssize_t { kPiece });
    const auto map = [](char* where, size_t size, int flags, int from) {
        return static_cast<char*>(mmap(where, size, PROT_READ, MAP_PRIVATE | flags, from, 0));
    };
    char* bytes = map(nullptr, (megabytes + 1) * kPiece, MAP_ANONYMOUS, -1);
    for (size_t i = 0; i < megabytes; i++)
        EXPECT_EQ(map(bytes + i * kPiece, kPiece, MAP_FIXED, file), bytes + i * kPiece);
    return bytes;
}

void Expect(const std::vector<std::pair<std::string, const char*>>& rows)
{
    for (size_t i = 0; i < rows.size(); i++)
        EXPECT_EQ(rows[i].first, rows[i].second) << "row " << i;
}

} // namespace

TEST(LibStringEdit, CuttingByIndexKeepsToItsRanges)
{
    Expect({ { After("abc", &S::ToIndex, 1), "ab" }, { After("abc", &S::ToIndex, -1), "" },
        { After("abc", &S::ToIndex, -2), "abc" }, { After("abc", &S::ToIndex, 3), "abc" },
        { After("abc", &S::FromIndex, 1), "bc" }, { After("abc", &S::FromIndex, 3), "" },
        { After("abc", &S::FromIndex, -1), "" }, { After("abc", &S::FromIndex, 0), "abc" },
        { After("abc", &S::Remove, 2, 1), "abc" }, { After("abc", &S::Remove, 0, 0), "bc" },
        { After("abc", &S::ShiftFrom, -1, 2), "abc" },
        { After("abc", &S::ShiftFrom, 0, -1), "abc" }, { After("abc", &S::ShiftFrom, 3, 9), "abc" },
        { After("abc", &S::ToIndex, 2), "abc" }, { After("abc", &S::RemoveChar, 3), "abc" },
        { After("abcde", &S::Remove, 1, 3), "ae" }, { After("abc", &S::Remove, 1, INT32_MAX), "a" },
        { After("abc", &S::Remove, -1, 1), "abc" }, { After("abcde", &S::ShiftFrom, 1, 3), "ade" },
        { After("abc", &S::ShiftFrom, 1, 9), "a" }, { After("abc", &S::ShiftFrom, 2, 0), "abc" } });
}

TEST(LibStringEdit, CuttingByCharacterCountsOccurrencesFromZero)
{
    Expect({ { After("a:b:c", &S::ToChar, ':', 1, 0), "a:b" },
        { After("a:b", &S::ToChar, ':', 0, -9), "" }, // far in front of the text
        { After("a:b", &S::ToChar, ':', 0, 99), "a:b" },
        { After("a:b:c", &S::FromChar, ':', 1, 0), ":c" },
        { After("a:b", &S::FromChar, ':', 0, -2), "" },
        { After("a:b", &S::FromChar, ':', 0, 2), "" }, { After("/a/b", &S::ToLast, '/', 0), "/a/" },
        { After("/a", &S::ToLast, '/', -1), "" }, { After("/a", &S::ToLast, '/', -2), "/a" },
        { After("/a/b", &S::FromLast, '/', 1), "b" }, { After("/a/", &S::FromLast, '/', 1), "" },
        { After("ab", &S::FromLast, '/', 1), "ab" },
        { After("a:b:c", &S::ToChar, ':', 2, 0), "a:b:c" },
        { After("a:b", &S::ToChar, ':', -1, 0), "a:b" },
        { After("a:b", &S::FromChar, ':', 0, INT32_MAX), "" },
        { After("a:b", &S::FromChar, ':', 1, 0), "a:b" },
        { After("/a", &S::ToLast, '/', INT32_MAX), "/a" },
        { After("ab", &S::ToLast, '/', 1), "ab" }, { After("/a", &S::FromLast, '/', -1), "" } });
    EXPECT_TRUE(S("a:b").ToChar(':', 0, 0) && S("a:b").FromChar(':', 0, 0));
    EXPECT_FALSE(S("a:b").ToChar(':', 1, 0) || S("a:b").FromChar(':', 1, 0));
}

TEST(LibStringEdit, GrowingPutsTheTextWhereItIsSaid)
{
    Expect({ { After("abc", &S::Insert, 0, "X"), "aXbc" },
        { After("abc", &S::Insert, -1, "X"), "Xabc" }, { After("abc", &S::Insert, 9, "X"), "abcX" },
        { After("abc", &S::Insert, -2, "X"), "abcX" }, { After("", &S::Insert, 5, "X"), "X" },
        { After("aXbX", &S::Replace, "X", "yy"), "ayybX" },
        { After("aXXb", &S::Replace, "XX", nullptr), "ab" },
        { After("ab", &S::Replace, nullptr, "x"), "xab" },
        { After("ab", &S::Insert, 1, "X"), "abX" }, { After("abc", &S::Insert, 1, nullptr), "abc" },
        { After("ab", &S::PrePend, nullptr), "ab" },
        { After("XaXX", [](S& s) { s.ReplaceAll("X", "yy"); }), "yyayyyy" },
        { After("1", [](S& s) { ((s += -7) += 0.5f) += 0.25; }), "1-70.5000000.250000" },
        { After("", [](S& s) { s += INT32_MIN; }), "-2147483648" },
        { After("a", [](S& s) { s.ReplaceAll("", "x"); }), "a" },
        { After("a", [](S& s) { s = static_cast<const char*>(nullptr); }), "a" } });
}

TEST(LibStringEdit, TextsGivenMayLieInTheStringItself)
{
    Expect({ { After("abc", [](S& s) { s.Insert(1, s); }), "ababcc" },
        { After("ab", [](S& s) { s.Concat(s); }), "abab" },
        { After("abc", [](S& s) { s = static_cast<const char*>(s) + 1; }), "bc" },
        { After("ab", [](S& s) { s.PrePend(static_cast<const char*>(s) + 1); }), "bab" },
        { After("a a", [](S& s) { s.RemoveAllWords(static_cast<const char*>(s) + 2); }), " " },
        { After("abc", [](S& s) { s.Replace("b", s); }), "aabcc" },
        { After("abcdefghi", // with room to spare
              [](S& s) {
                  s.ToIndex(2);
                  s.Insert(0, s);
              }),
            "aabcbc" } });
}

TEST(LibStringEdit, WhatHasNoRoomIsRefusedAndTheTextStays)
{
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer writes down every byte read";
#endif
    const char* huge = RepeatedText(2048);
    testing::internal::CaptureStderr();
    Expect({ { After("abc", [=](S& s) { EXPECT_EQ(s.Concat(huge), nullptr); }), "abc" },
        { After("abc", [=](S& s) { EXPECT_EQ(s.Replace("b", huge), -1); }), "abc" },
        { After("abc", [=](S& s) { s.ReplaceAll("b", huge); }), "abc" },
        { After("abc", [=](S& s) { s.Insert(0, huge); }), "abc" },
        { After("abc", [=](S& s) { s.PrePend(huge); }), "abc" },
        { After("abc", [=](S& s) { s = huge; }), "abc" } });
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(said.substr(0, said.find('\n')), "No room for a text of <2147483652> bytes");
}

TEST(LibStringEdit, RemovingByKindLeavesTheRest)
{
    Expect({ { After("abca", &S::SwapChar, 'a', 'b'), "bbcb" },
        { After("one two one", &S::RemoveWord, "one"), " two one" },
        { After("oneone", &S::RemoveWord, "one"), "oneone" },
        { After("a one", &S::RemoveWord, "one"), "a " }, { After(" a", &S::RemoveWord, ""), " a" },
        { After("a b\ta", &S::RemoveAllWords, "a"), " b\t" },
        { After("aabbaa", &S::RemoveRepeatingChar, 'a'), "abba" },
        { After(" \ta ", &S::StripLeadingSpaces), "a " },
        { After(" a\n\r", &S::StripTrailingSpaces), " a" },
        { After("  ", &S::StripTrailingSpaces), "" }, { After(" a b\v", &S::StripAllSpaces), "ab" },
        { After("xxax", &S::StripLeadingChar, 'x'), "ax" },
        { After("xx", &S::StripLeadingChar, 'x'), "" },
        { After("xx", &S::StripTrailingChar, 'x'), "" },
        { After("xaxx", &S::StripTrailingChar, 'x'), "xa" },
        { After("a_b.c-~\xe9!", &S::StripPunct), "a_bc\xe9" },
        { After("az\xe4[`{", &S::ToUpperCase), "AZ\xe4[`{" },
        { After("AZ\xc4@[", &S::ToLowerCase), "az\xc4@[" } });
    EXPECT_TRUE(S("b a").RemoveWord("a") && !S("b").RemoveWord("a"));
    EXPECT_EQ(S("abc").Replace("c", "") * 10 + S("abc").Replace("x", ""), 19);
}

TEST(LibStringEdit, ProperCaseRaisesTheBeginningsOfWordsAndNames)
{
    Expect({ { After("hello wORLD", &S::ToProperCase), "Hello World" },
        { After("it's", &S::ToProperCase), "It's" },
        { After("o'neil and o'hara", &S::ToProperCase), "O'Neil And O'Hara" },
        { After("'twas", &S::ToProperCase), "'Twas" },
        { After("a 'word 's", &S::ToProperCase), "A 'Word 's" },
        { After("u.s.a. e.g", &S::ToProperCase), "U.S.A. E.g" },
        { After("at&t", &S::ToProperCase), "At&T" } });
}

TEST(LibStringEdit, Utf8CharactersAreCountedByTheirFirstByte)
{
    constexpr char kAccent[] = "\xc3\xa9x"; // an accented letter of two bytes, then x
    Expect({ { After(kAccent, &S::CharFromIndex, 1), "x" },
        { After(kAccent, &S::CharFromIndex, 2), kAccent },
        { After(kAccent, &S::CharToIndex, 1), kAccent },
        { After(kAccent, &S::CharToIndex, 0), "\xc3" }, // its first byte alone
        { After("abc", &S::CharToIndex, 1), "ab" }, { After("ab", &S::CharToIndex, 2), "ab" },
        { After("ab", &S::CharToIndex, -1), "ab" }, { After("ab", &S::CharFromIndex, -1), "ab" },
        { After("\xe2\x82\xac\xf0\x9f\x98\x80x", &S::CharFromIndex, 2), "x" },
        { After("\x80_x", &S::CharFromIndex, 1), "x" },
        { After("a\xf0\x9f", &S::CharFromIndex, 1), "\xf0\x9f" } }); // cut in a character
    EXPECT_EQ(S("a\xff").CharCount(), 2); // the second one would be eight bytes long
}

TEST(LibStringEdit, AStringWithoutBufferIsEditedAsAnEmptyOne)
{
    Expect({ { After(nullptr, &S::RemoveAllWords, nullptr), "(no buffer)" },
        { After(nullptr, &S::StripTrailingSpaces), "(no buffer)" },
        { After(nullptr, &S::ToProperCase), "(no buffer)" },
        { After(nullptr, &S::CharFromIndex, 0), "(no buffer)" },
        { After(nullptr, [](S& s) { s.Concat("a"); }), "a" } });
}

TEST(LibStringEdit, TruncateKeepsTheLongestBeginningThatFitsWithItsDots)
{
    const BFont font;
    const auto widthOf = [&font](const std::string& text) {
        return static_cast<int>(font.StringWidth(text.c_str()));
    };
    const std::string whole("Graphics Rectangles Unflushed");
    if (widthOf(whole) == 0)
        GTEST_SKIP() << "No display: texts have no width";
    for (int width = 0; width <= widthOf(whole) + 1; width++) {
        SCOPED_TRACE(width);
        LibString text(whole.c_str());
        BRect rect;
        text.Truncate(font, width, rect);
        const std::string result(static_cast<const char*>(text));
        const std::string kept = result.substr(0, result.find("..."));
        EXPECT_EQ(rect.left, 0);
        EXPECT_EQ(rect.right, widthOf(kept));
        EXPECT_TRUE(whole.starts_with(kept));
        EXPECT_TRUE(widthOf(result) < width || kept.empty()); // dots alone are never cut
        EXPECT_EQ(result, width > widthOf(whole) ? whole : kept + "...");
        const std::string longer = whole.substr(0, kept.size() + 1);
        EXPECT_TRUE(kept.size() >= whole.size() - 2 || widthOf(longer + "...") >= width);
    }
}
