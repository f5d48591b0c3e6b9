#include "foundation/LibString.h"
#include "tests/support/Calls.h"
#include "tests/support/Test.h"

#include <Font.h>
#include <Rect.h>

#include <new>

static size_t gMostBytes = SIZE_MAX; // that there is memory for at once

void* operator new[](size_t size, const std::nothrow_t&) noexcept
{
    return size > gMostBytes ? nullptr : ::operator new[](size);
}

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

void Expect(const std::vector<std::pair<std::string, const char*>>& rows)
{
    for (size_t i = 0; i < rows.size(); i++)
        EXPECT_EQ(rows[i].first, rows[i].second) << "row " << i;
}

#define CALL(name) std::pair(#name, Function(&S::name))
const Calls<S> kCalls = { CALL(ToIndex), CALL(FromIndex), CALL(Remove), CALL(ShiftFrom),
    CALL(RemoveChar), CALL(ToChar), CALL(FromChar), CALL(ToLast), CALL(FromLast), CALL(Insert),
    CALL(Replace), CALL(PrePend), CALL(SwapChar), CALL(RemoveWord), CALL(RemoveAllWords),
    CALL(RemoveRepeatingChar), CALL(StripLeadingSpaces), CALL(StripTrailingSpaces),
    CALL(StripAllSpaces), CALL(StripLeadingChar), CALL(StripTrailingChar), CALL(StripPunct),
    CALL(ToUpperCase), CALL(ToLowerCase), CALL(ToProperCase), CALL(CharFromIndex),
    CALL(CharToIndex), CALL(GetHex), CALL(Words), CALL(Count), CALL(IsBlank), CALL(IsNumeric),
    CALL(IndexOfAny), CALL(CharCount), CALL(PackSize),
    { "Compare", Function<const S&, const bool&>(&S::Compare) },
    { "BeginsWith", Function<const S&, const bool&>(&S::BeginsWith) },
    { "EndsWith", Function<const S&, const bool&>(&S::EndsWith) },
    { "Contain", Function<const S&, const bool&>(&S::Contain) },
    { "ContainByte", Function<const char&>(&S::Contain) },
    { "Index", Function<const S&>(&S::Index) }, { "IndexOfByte", Function<const char&>(&S::Index) },
    { "IsWildCard", Function<const S&>(&S::IsWildCard) },
    { "Extract", Function<const int32&, const int32&>(&S::Extract) },
    { "ExtractBetween", Function<const char&, const char&, const bool&>(&S::Extract) } };

} // namespace

TEST(LibStringEdit, DoesWhatItSaysAndNothingElse)
{
    for (const Row& row : RowsOf("foundation/data/strings.txt", 3)) {
        S s(row[0] == "null" ? nullptr : row[0].c_str());
        const std::string told = kCalls.at(row[1])(s, row);
        const char* left = s;
        const std::string after = left ? left : "(no buffer)";
        const bool isChanged = after != (row[0] == "null" ? "(no buffer)" : row[0]);
        const std::string change = isChanged ? " <" + after + ">" : "";
        EXPECT_EQ(told.empty() ? after : told + change, row.back()) << testing::PrintToString(row);
    }
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
    const std::string text(100, 'x');
    const char* huge = text.c_str();
    gMostBytes = 99;
    testing::internal::CaptureStderr();
    Expect({ { After("abc", [=](S& s) { EXPECT_EQ(s.Concat(huge), nullptr); }), "abc" },
        { After("abc", [=](S& s) { EXPECT_EQ(s.Replace("b", huge), -1); }), "abc" },
        { After("abc", [=](S& s) { s.ReplaceAll("b", huge); }), "abc" },
        { After("abc", [=](S& s) { s.Insert(0, huge); }), "abc" },
        { After("abc", [=](S& s) { s.PrePend(huge); }), "abc" },
        { After("abc", [=](S& s) { s = huge; }), "abc" },
        { After("abc", [=](S& s) { s.SetBuffer(INT32_MAX); }), "abc" } });
    gMostBytes = SIZE_MAX;
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(said.substr(0, said.find('\n')), "No room for a text of <104> bytes");
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
        BRect rect(9, 9, 9, 9);
        text.Truncate(font, width, rect);
        std::string kept = whole;
        if (widthOf(whole) >= width) // dots alone are never cut
            for (kept.resize(whole.size() - 2); !kept.empty() && widthOf(kept + "...") >= width;)
                kept.pop_back();
        EXPECT_STREQ(text, (kept == whole ? whole : kept + "...").c_str());
        EXPECT_TRUE(rect.left == 0 && rect.right == widthOf(kept)) << rect.right;
    }
}
