// That each row of the catalogue is whole, that the manual names every group, and that the engine
// measures every test.
#include "results/TestCatalogue.h"

#include "tests/support/Test.h"

namespace {

std::string EngineSources()
{
    std::string text;
    for (const auto& entry :
        std::filesystem::recursive_directory_iterator(TARVEX_TESTS "/../engine"))
        if (entry.path().extension() == ".cpp")
            text += ReadFile(entry.path());
    return text;
}

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

TEST(TestCatalogue, EveryTestHasItsOwnNumberAndNameSaysWhatItMeasuresAndIsMeasured)
{
    const std::string engine = EngineSources();
    std::set<int32> ids;
    std::set<std::string_view> names;
    for (const TestType& type : kTestTypes) {
        SCOPED_TRACE(type.name);
        EXPECT_TRUE(ids.insert(type.id).second);
        EXPECT_TRUE(names.insert(type.name).second);
        EXPECT_EQ(type.better == Better::kLess, std::string_view(type.units) == "seconds");
        EXPECT_TRUE(IsSentence(type.measures) && IsSentence(type.measuresNot));
        EXPECT_EQ(FindTestType(type.id), &type);
        const std::string use = "TestNamed(\"" + std::string(type.name) + "\")";
        EXPECT_EQ(engine.find(use) != engine.npos, type.group != kOlderVersions);
    }
    EXPECT_EQ(FindTestType(1099), nullptr);
    // What saving a run takes for all tests: Dhrystone and two of older versions are not among
    // them.
    EXPECT_EQ(CompleteRunSize(), std::ssize(kTestTypes) - 3);
}
