#include "foundation/LibStringList.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <Message.h>

namespace {

void Fill(LibStringList& list, const std::vector<const char*>& texts)
{
    for (const char* text : texts)
        EXPECT_TRUE(list.Add(text));
}

std::vector<std::string> TextsOf(LibStringList& list)
{
    std::vector<std::string> texts;
    for (const LibString* entry = list.First(); entry != nullptr; entry = list.Next())
        texts.emplace_back(static_cast<const char*>(*entry));
    return texts;
}

typedef std::vector<std::string> Texts;

} // namespace

TEST(LibStringList, FindComparesWholeTextsOrTheFirstBytes)
{
    LibStringList list;
    Fill(list, { "xyz", "ABC", "abd" });
    const struct {
        const char* text;
        bool ignoreCase;
        int bytes;
        const char* found;
    } rows[] = { { "ab", true, 2, "ABC" }, { "ab", false, 2, "abd" }, { "ab", false, -1, nullptr },
        { "ABD", true, -1, "abd" }, { "abcd", true, -1, nullptr } };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const LibString* found = list.Find(row.text, row.ignoreCase, row.bytes);
        EXPECT_STREQ(found != nullptr ? static_cast<const char*>(*found) : nullptr, row.found);
    }
}

TEST(LibStringList, RemovesTheFirstEqualEntryOnly)
{
    LibStringList list;
    Fill(list, { "a", "b", "a", "" });
    EXPECT_FALSE(list.Add(nullptr));
    EXPECT_TRUE(list.InList("b"));
    EXPECT_FALSE(list.InList("B"));
    EXPECT_FALSE(list.InList(static_cast<const char*>(nullptr)));
    EXPECT_TRUE(list.Remove("a"));
    EXPECT_EQ(TextsOf(list), (Texts { "b", "a", "" }));
    EXPECT_TRUE(list.Remove(*list.First())); // the probe may be the entry itself
    EXPECT_FALSE(list.Remove(LibString("b")));
    EXPECT_EQ(TextsOf(list), (Texts { "a", "" }));
}

TEST(LibStringList, GoesThroughAMessageInOrder)
{
    BMessage message;
    message.AddInt32("number", 1);
    LibStringList list;
    Fill(list, { "b", "", "a" });
    list.GetFrom(message, "types");
    list.GetFrom(message, "number"); // a field of another type: nothing is added
    LibStringList other;
    Fill(other, { "old" });
    other.SetTo(message, "missing");
    other.SetTo(message, "number");
    EXPECT_EQ(TextsOf(other), (Texts { "old" }));
    other.Append(message, "types");
    EXPECT_EQ(TextsOf(other), (Texts { "old", "b", "", "a" }));
    other.Append(message, "missing");
    other.SetTo(message, "types");
    EXPECT_EQ(TextsOf(other), (Texts { "b", "", "a" }));
}
