#include "foundation/LibString.h"
#include "tests/support/Rows.h"
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

// A field of a row as what an edit is given.
template <class T>
T From(const std::string& field)
{
    if constexpr (std::is_same_v<T, int32>)
        return std::stoi(field);
    else if constexpr (std::is_same_v<T, char>)
        return field.at(0);
    else
        return field == "null" ? nullptr : field.c_str();
}

using Edit = std::function<void(S&, const Row&)>;

// The edit with what stands in the row from the third field on.
template <class Result, class... A>
Edit Given(Result (S::*edit)(A...))
{
    return [edit](S& s, const Row& row) {
        [&]<size_t... i>(std::index_sequence<i...>)
        {
            (s.*edit)(From<std::decay_t<A>>(row.at(i + 2))...);
        }
        (std::index_sequence_for<A...>());
    };
}

#define EDIT(name)                                                                                 \
    {                                                                                              \
#name, Given(&S::name)                                                                     \
    }
const std::map<std::string, Edit> kEdits = { EDIT(ToIndex), EDIT(FromIndex), EDIT(Remove),
    EDIT(ShiftFrom), EDIT(RemoveChar), EDIT(ToChar), EDIT(FromChar), EDIT(ToLast), EDIT(FromLast),
    EDIT(Insert), EDIT(Replace), EDIT(PrePend), EDIT(SwapChar), EDIT(RemoveWord),
    EDIT(RemoveAllWords), EDIT(RemoveRepeatingChar), EDIT(StripLeadingSpaces),
    EDIT(StripTrailingSpaces), EDIT(StripAllSpaces), EDIT(StripLeadingChar),
    EDIT(StripTrailingChar), EDIT(StripPunct), EDIT(ToUpperCase), EDIT(ToLowerCase),
    EDIT(ToProperCase), EDIT(CharFromIndex), EDIT(CharToIndex) };

} // namespace

TEST(LibStringEdit, ChangesWhatItSaysAndNothingElse)
{
    for (const Row& row : RowsOf("foundation/data/edits.txt", 3))
        EXPECT_EQ(After(From<const char*>(row[0]), kEdits.at(row[1]), row), row.back())
            << testing::PrintToString(row);
    EXPECT_TRUE(S("a:b").ToChar(':', 0, 0) && S("a:b").FromChar(':', 0, 0));
    EXPECT_FALSE(S("a:b").ToChar(':', 1, 0) || S("a:b").FromChar(':', 1, 0));
    EXPECT_TRUE(S("b a").RemoveWord("a") && !S("b").RemoveWord("a"));
    EXPECT_EQ(S("abc").Replace("c", "") * 10 + S("abc").Replace("x", ""), 19);
    EXPECT_EQ(S("a\xff").CharCount(), 2); // the second one would be eight bytes long
    Expect({ { After("XaXX", [](S& s) { s.ReplaceAll("X", "yy"); }), "yyayyyy" },
        { After("1", [](S& s) { ((s += -7) += 0.5f) += 0.25; }), "1-70.5000000.250000" },
        { After("", [](S& s) { s += INT32_MIN; }), "-2147483648" },
        { After("a", [](S& s) { s.ReplaceAll("", "x"); }), "a" },
        { After("a", [](S& s) { s = static_cast<const char*>(nullptr); }), "a" },
        { After(nullptr, [](S& s) { s.Concat("a"); }), "a" } });
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
