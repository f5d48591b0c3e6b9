// That each group of the catalogue is whole, and that the manual names it.
#include "results/TestCatalogue.h"

#include "tests/support/Test.h"

namespace {

bool IsSentence(std::string_view text)
{
    return text.size() > 10 && text.back() == '.' && isupper(static_cast<unsigned char>(text[0]));
}

} // namespace

TEST(TestCatalogue, EveryGroupHasItsOwnNamesATestAndItsPlaceInTheManual)
{
    const std::string manual = ReadFile(TARVEX_TESTS "/../data/man/tarvex-run.1");
    std::set<std::string_view> names;
    std::set<uint32> messages;
    for (const TestGroup& group : kTestGroups) {
        SCOPED_TRACE(group.key);
        EXPECT_TRUE(names.insert(group.key).second);
        EXPECT_NE(std::string_view(group.status), "");
        EXPECT_NE(manual.find("\n.BR " + std::string(group.key) + " ,\n"), manual.npos)
            << "is missing in the manual page";
        const auto index = static_cast<int32>(&group - kTestGroups);
        EXPECT_TRUE(std::any_of(std::begin(kTestTypes), std::end(kTestTypes),
            [index](const TestType& type) { return type.group == index; }));
        if (group.box == GroupBox::kNone)
            continue;
        EXPECT_TRUE(names.insert(group.viewName).second);
        EXPECT_TRUE(messages.insert(group.what).second);
        EXPECT_NE(std::string_view(group.label), "");
        EXPECT_NE(std::string_view(group.tip), "");
        EXPECT_TRUE(IsSentence(group.help));
        EXPECT_GT(group.seconds, 0);
    }
}
