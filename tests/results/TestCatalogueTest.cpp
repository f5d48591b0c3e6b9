// That each row of the catalogue is whole, and that the manual names every group.
#include "results/TestCatalogue.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

namespace {

std::string ManualPage()
{
    std::ifstream file(TARVEX_TESTS "/../data/man/tarvex-run.1");
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

bool IsSentence(std::string_view text)
{
    return text.size() > 10 && text.back() == '.' && isupper(static_cast<unsigned char>(text[0]));
}

} // namespace

TEST(TestCatalogue, EveryGroupHasItsOwnNamesATestAndItsPlaceInTheManual)
{
    const std::string manual = ManualPage();
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

TEST(TestCatalogue, EveryTestHasItsOwnNumberAndNameAndSaysWhatItMeasures)
{
    std::set<int32> ids;
    std::set<std::string_view> names;
    for (const TestType& type : kTestTypes) {
        SCOPED_TRACE(type.name);
        EXPECT_TRUE(ids.insert(type.id).second);
        EXPECT_TRUE(names.insert(type.name).second);
        EXPECT_EQ(type.better == Better::kLess, std::string_view(type.units) == "seconds");
        EXPECT_TRUE(IsSentence(type.measures) && IsSentence(type.measuresNot));
        EXPECT_EQ(FindTestType(type.id), &type);
    }
    EXPECT_EQ(FindTestType(1099), nullptr);
    EXPECT_EQ(CompleteRunSize(), 27); // what saving a run takes for all tests
}
