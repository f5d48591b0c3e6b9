#include "foundation/LinkList.h"

#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <new>

static bool gIsFull = false; // that there is no memory for a link

void* operator new(size_t size, const std::nothrow_t&) noexcept
{
    return gIsFull ? nullptr : ::operator new(size);
}

namespace {

// A list of one-letter texts. Leaks and double deletes are the sanitizers' to find.
class Letters : public LinkList<LibString> {
public:
    explicit Letters(const std::string& letters)
    {
        for (const char letter : letters)
            EXPECT_TRUE(Insert(New(letter)));
    }
    using LinkList::operator=;
    static std::unique_ptr<LibString> New(char letter)
    {
        return std::make_unique<LibString>(std::string(1, letter).c_str());
    }
    // All texts by the links in both directions, which must agree; the cursor's and its index.
    std::string State() const
    {
        std::string forward;
        std::string backward;
        for (auto* node = head; node; node = node->next)
            forward += *node->item;
        for (auto* node = tail; node; node = node->prev)
            backward.insert(0, *node->item);
        EXPECT_EQ(forward, backward);
        EXPECT_EQ(static_cast<size_t>(Size()), forward.size());
        const std::string current = Current() ? static_cast<const char*>(*Current()) : "none";
        return forward + " " + current + " " + std::to_string(cursorIndex);
    }
};

} // namespace

TEST(LinkList, EveryCallLeavesElementsAndCursorAsItSays)
{
    using L = Letters;
    Letters other("xy");
    const std::map<std::string, std::function<bool(L&, char)>> calls = {
        { "first", [](L& l, char) { return l.First() && l.First() == l.Current(); } },
        { "next", [](L& l, char) { return l.Next() && l.Current(); } },
        { "position", [](L& l, char at) { return l.Get(long { at - '0' }) && l.Current(); } },
        { "clear", [](L& l, char) { return l.Clear(), true; } },
        { "append", [](L& l, char letter) { return l.Insert(L::New(letter)) != nullptr; } },
        { "insert",
            [](L& l, char at) {
                auto item = L::New('n');
                return l.InsertBefore(item.get(), at - '0') && item.release();
            } },
        { "find", [](L& l, char letter) { return l.InList(L::New(letter).get()); } },
        { "get", [](L& l, char letter) { return l.Get(L::New(letter).get()) == l.Current(); } },
        { "remove", [](L& l, char) { return l.Remove(); } },
        { "remove-one", [](L& l, char letter) { return l.Remove(L::New(letter).get(), false); } },
        { "remove-all", [](L& l, char letter) { return l.Remove(L::New(letter).get(), true); } },
        { "remove-its", [](L& l, char) { return l.Remove(l.First(), true); } }, // the probe too
        { "be-itself", [](L& l, char) { return (l = *&l).Size() > 0; } },
        { "be-other", [&](L& l, char) { return (l = other).Size() > 0; } },
        { "append-other", [&](L& l, char) { return l.Insert(other), !other.Current(); } },
        { "append-itself", [](L& l, char) { return l.Insert(l), true; } },
        { "fill-memory", [](L&, char) { return gIsFull = true; } },
    };
    for (const Row& row : RowsOf("foundation/data/lists.txt", 3)) {
        Letters list(row[0]);
        std::string results;
        for (size_t i = 1; i < row.size() - 1; i++)
            results +=
                calls.at(row[i].substr(0, row[i].find(' ')))(list, row[i].back()) ? "+" : "-";
        gIsFull = false;
        EXPECT_EQ(results + " " + list.State(), row.back()) << testing::PrintToString(row);
    }
    EXPECT_EQ(other.State(), "xy none 2");
    LibString a("a"), b("b");
    EXPECT_TRUE(other.SortCompare(&b, &a) && !other.SortCompare(&b, &b));
}
