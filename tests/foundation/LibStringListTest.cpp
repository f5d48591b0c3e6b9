#include "foundation/LibStringList.h"

#include "tests/support/Test.h"

#include <Message.h>

namespace {

using Texts = std::vector<std::string>;

void Fill(LibStringList& list, const Texts& texts)
{
    for (const std::string& text : texts)
        EXPECT_TRUE(list.Add(text.c_str()));
}

Texts TextsOf(LibStringList& list)
{
    Texts texts;
    for (const LibString* entry = list.First(); entry; entry = list.Next())
        texts.emplace_back(static_cast<const char*>(*entry));
    return texts;
}

} // namespace

TEST(LibStringList, FindsAndRemovesTheFirstEqualEntry)
{
    LibStringList list;
    Fill(list, { "xyz", "ABC", "abd", "xyz" });
    EXPECT_FALSE(list.Add(nullptr));
    EXPECT_STREQ(*list.Find("ab", true, 2), "ABC");
    EXPECT_STREQ(*list.Find("ab", false, 2), "abd");
    EXPECT_EQ(list.Find("abcd", true, -1), nullptr);
    EXPECT_TRUE(list.InList("abd"));
    EXPECT_FALSE(list.InList("ABD"));
    EXPECT_TRUE(list.Remove("xyz"));
    EXPECT_EQ(TextsOf(list), (Texts { "ABC", "abd", "xyz" }));
    EXPECT_TRUE(list.Remove(*list.First())); // the probe may be the entry itself
    EXPECT_FALSE(list.Remove(LibString("ABC")));
}

TEST(LibStringList, GoesThroughAMessageInOrder)
{
    BMessage message;
    LibStringList list;
    Fill(list, { "b", "", "a" });
    list.GetFrom(message, "types");
    LibStringList other;
    Fill(other, { "old" });
    other.Append(message, "types");
    EXPECT_EQ(TextsOf(other), (Texts { "old", "b", "", "a" }));
    other.SetTo(message, "types");
    EXPECT_EQ(TextsOf(other), (Texts { "b", "", "a" }));
}
