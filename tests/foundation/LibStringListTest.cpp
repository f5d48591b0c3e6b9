#include "foundation/LibStringList.h"

#include "tests/support/Printed.h"
#include "tests/support/Test.h"

#include <Message.h>

TEST(LibStringList, FindsRemovesAndGoesThroughAMessageInOrder)
{
    BMessage message;
    const auto filled = [](LibStringList& list, std::initializer_list<const char*> texts) {
        for (const char* text : texts)
            EXPECT_TRUE(list.Add(text));
    };
    LibStringList list, other;
    filled(list, { "xyz", "ABC", "abd", "xyz" });
    EXPECT_FALSE(list.Add(nullptr) || list.InList(static_cast<const char*>(nullptr)));
    EXPECT_STREQ(*list.Find("ab", true, 2), "ABC");
    EXPECT_STREQ(*list.Find("ab", false, 2), "abd");
    EXPECT_EQ(list.Find("abcd", true, -1), nullptr);
    EXPECT_TRUE(list.InList("abd") && list.Current() == list.Get(2L) && !list.InList("ABD"));
    EXPECT_TRUE(list.Remove("xyz") && list.Remove(*list.First())); // the probe may be the entry
    EXPECT_FALSE(list.Remove(LibString("ABC")));
    filled(list, { "" });
    list.GetFrom(message, "types");
    filled(other, { "types" });
    other.Append(message, "types");
    other.SetTo(message, "none");
    const std::string three = "LibString:: <abd>, buffer 4\nLibString:: <xyz>, buffer 4\n"
                              "LibString:: <>, buffer 1\n";
    EXPECT_EQ(Printed(other), "LibString:: <types>, buffer 6\n" + three);
    other.SetTo(message, *other.First()); // the name may be an entry
    EXPECT_EQ(Printed(other), three);
    message.AddString("one", "x");
    other.SetTo(message, "one");
    EXPECT_EQ(Printed(other), "LibString:: <x>, buffer 2\n");
}
