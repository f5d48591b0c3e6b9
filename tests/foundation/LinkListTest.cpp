#include "foundation/LinkList.h"

#include "tests/support/Test.h"

namespace {

// A list of one-letter texts. Leaks and double deletes are the sanitizers' to find.
class Letters : public LinkList<LibString> {
public:
    explicit Letters(const char* letters)
    {
        for (; *letters != '\0'; letters++)
            EXPECT_TRUE(Insert(new LibString(std::string(1, *letters).c_str())));
    }
    using LinkList::operator=;
    int32 CursorIndex() const { return cursorIndex; }
    const char* Letter() const
    {
        if (!cursor)
            return "none";
        return *cursor->item;
    }
    // All texts by the links in both directions, which must agree, without moving the cursor.
    std::string Text() const
    {
        std::string forward;
        std::string backward;
        for (auto* node = head; node; node = node->next)
            forward += *node->item;
        for (auto* node = tail; node; node = node->prev)
            backward.insert(0, *node->item);
        EXPECT_EQ(forward, backward);
        EXPECT_EQ(static_cast<size_t>(Size()), forward.size());
        return forward;
    }
};

} // namespace

TEST(LinkList, WalkingEndsWithoutCursorAndIsSafeBehindTheEnd)
{
    Letters list("ab");
    EXPECT_STREQ(*list.First(), "a");
    EXPECT_STREQ(*list.Next(), "b");
    for (int i = 0; i < 2; i++)
        EXPECT_EQ(list.Next(), nullptr);
    EXPECT_EQ(list.CursorIndex(), 2);
    Letters empty("");
    EXPECT_EQ(empty.First(), nullptr);
    EXPECT_FALSE(empty.Remove() || empty.Position(0));
}

TEST(LinkList, ARangeVisitsEveryElementAndLeavesTheCursorAlone)
{
    Letters list("abc");
    list.Position(1);
    for (LibString& letter : list)
        letter.ToUpperCase();
    EXPECT_EQ(list.Text(), "ABC");
    EXPECT_STREQ(list.Letter(), "B");
    const Letters empty("");
    EXPECT_EQ(empty.begin(), empty.end());
    EXPECT_STREQ(*list.Insert(std::make_unique<LibString>("D")), "D");
    EXPECT_EQ(list.Text(), "ABCD");
}

TEST(LinkList, PositionReachesEveryElementFromEveryOther)
{
    Letters list("abcdefgh");
    for (long from = 0; from < 8; from++) {
        for (long to = 0; to < 8; to++) {
            ASSERT_TRUE(list.Position(from));
            ASSERT_STREQ(*list.Get(to), std::string(1, static_cast<char>('a' + to)).c_str());
            ASSERT_EQ(list.CursorIndex(), to);
        }
    }
    for (const long bad : { -1L, 8L, LONG_MAX, LONG_MIN })
        EXPECT_FALSE(list.Position(bad));
    EXPECT_STREQ(list.Letter(), "h");
}

TEST(LinkList, RemoveGoesBackOneExceptAtTheHead)
{
    Letters list("abcd");
    list.Position(1);
    EXPECT_TRUE(list.Remove());
    EXPECT_STREQ(list.Letter(), "a");
    EXPECT_EQ(list.CursorIndex(), 0);
    EXPECT_TRUE(list.Remove()); // now c is head and cursor, so Next skips it
    EXPECT_STREQ(*list.Next(), "d");
    EXPECT_TRUE(list.Remove()); // the tail
    EXPECT_TRUE(list.Remove());
    EXPECT_FALSE(list.Remove());
    EXPECT_TRUE(list.Insert(new LibString("n"))); // the emptied list starts anew
    EXPECT_EQ(list.Text(), "n");
}

TEST(LinkList, InsertBeforeLeavesTheCursorOnTheNewElement)
{
    Letters list("");
    EXPECT_TRUE(list.InsertBefore(new LibString("b"), 0));
    EXPECT_TRUE(list.InsertBefore(new LibString("a"), 0));
    EXPECT_TRUE(list.InsertBefore(new LibString("x"), 1));
    EXPECT_STREQ(list.Letter(), "x");
    EXPECT_EQ(list.CursorIndex(), 1);
    EXPECT_EQ(list.Text(), "axb");
}

TEST(LinkList, SearchComparesTextsAndLeavesTheCursorOnTheMatchOrNowhere)
{
    Letters list("baBa");
    LibString a("a");
    LibString b("b");
    LibString missing("c");
    EXPECT_STREQ(*list.Get(&a), "a");
    EXPECT_EQ(list.CursorIndex(), 1);
    EXPECT_FALSE(list.InList(&missing));
    EXPECT_STREQ(list.Letter(), "none");
    EXPECT_TRUE(list.Remove(&b, false));
    EXPECT_FALSE(list.Remove(&b, true));
    EXPECT_TRUE(list.Remove(list.First(), true)); // the probe is deleted on the way
    EXPECT_EQ(list.Text(), "B");
}

TEST(LinkList, CopiesAreDeep)
{
    Letters list("abc");
    Letters other("xy");
    list = other;
    *list.First() = "z";
    EXPECT_EQ(other.Text(), "xy");
    list.Insert(list);
    EXPECT_EQ(list.Text(), "zyzy");
}
