#include "foundation/LinkList.h"

#include "tests/support/Test.h"

namespace {

// A list of one-letter texts. Leaks and double deletes are the sanitizers' to find.
class Letters : public LinkList<LibString> {
public:
    explicit Letters(const char* letters)
    {
        for (; *letters != '\0'; letters++)
            EXPECT_TRUE(Insert(New(*letters)));
    }
    using LinkList::operator=;
    static LibString* New(char letter) { return new LibString(std::string(1, letter).c_str()); }
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
    LibString a("a"), b("b"), c("c");
    Letters other("xy");
    const std::tuple<const char*, std::function<bool(L&)>, std::string> rows[] = {
        // The elements; whether the call succeeds, elements, cursor and its index after it.
        { "ab", [](L& l) { return l.First() && l.First() == l.Current(); }, "+ab a 0" },
        { "ab", [](L& l) { return l.First() && l.Next() == l.Current(); }, "+ab b 1" },
        { "ab", [](L& l) { return l.First() && l.Next() && l.Next(); }, "-ab none 2" },
        { "a", [](L& l) { return l.First() && !l.Next() && l.Next(); }, "-a none 1" },
        { "", [](L& l) { return l.First() || l.Remove() || l.Position(0); }, "- none 0" },
        { "", [](L& l) { return l.Clear(), true; }, "+ none 0" },
        { "abcd", [](L& l) { return l.Position(1) && l.Remove(); }, "+acd a 0" },
        { "abcd", [](L& l) { return l.Position(0) && l.Remove(); }, "+bcd b 0" },
        { "abcd", [](L& l) { return l.Position(3) && l.Remove(); }, "+abc c 2" },
        { "a", [](L& l) { return l.First() && l.Remove() && l.Remove(); }, "- none 0" },
        { "a", [](L& l) { return l.First() && l.Remove() && l.Insert(L::New('n')); }, "+n none 0" },
        { "", [](L& l) { return l.InsertBefore(L::New('b'), 0); }, "+b none -1" },
        { "ab", [](L& l) { return l.InsertBefore(L::New('x'), 0); }, "+xab x 0" },
        { "ab", [](L& l) { return l.InsertBefore(L::New('x'), 1); }, "+axb x 1" },
        { "ab", [&](L& l) { return l.InsertBefore(&a, 2); }, "-ab none -1" },
        { "baBa", [&](L& l) { return l.Get(&a); }, "+baBa a 1" },
        { "baBa", [&](L& l) { return l.InList(&c); }, "-baBa none -1" },
        { "baba", [&](L& l) { return l.Remove(&b, false); }, "+aba a 0" },
        { "baBba", [&](L& l) { return l.Remove(&b, true); }, "+aBa none -1" },
        { "baba", [&](L& l) { return l.Remove(&c, true); }, "-baba none -1" },
        { "aba", [](L& l) { return l.Remove(l.First(), true); }, "+b none -1" }, // the probe too
        { "ab", [](L& l) { return (l = *&l).First(); }, "+ab a 0" },
        { "abc", [&](L& l) { return (l = other).Get(1L); }, "+xy y 1" },
        { "ab", [&](L& l) { return l.Insert(other), !other.Current(); }, "+abxy none -1" },
        { "ab", [](L& l) { return l.Insert(l), true; }, "+abab a 2" },
        { "ab", [&](L& l) { return l.SortCompare(&b, &a) && !l.SortCompare(&b, &b); },
            "+ab none -1" },
    };
    for (const auto& [letters, call, state] : rows) {
        Letters list(letters);
        const std::string result = call(list) ? "+" : "-";
        EXPECT_EQ(result + list.State(), state) << letters;
    }
    EXPECT_EQ(other.State(), "xy none 2");
}
