#include "console/Run.h"
#include "tests/kits/kernel/MachineTree.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

namespace {

std::vector<std::string> Words(const std::string& line)
{
    std::istringstream words(line);
    return { std::istream_iterator<std::string>(words), {} };
}

// What is read of them, or the line that says why not.
std::string Told(const std::vector<std::string>& arguments)
{
    const auto parsed = ParseRunOptions(arguments);
    if (const auto* why = std::get_if<std::string>(&parsed))
        return *why;
    const auto& options = std::get<RunOptions>(parsed);
    const char* const tasks[] = { "run", "resume", "list", "explain", "help", "version" };
    const char* const formats[] = { "table", "csv", "tsv", "json" };
    std::ostringstream told;
    told << tasks[static_cast<int>(options.task)];
    EXPECT_EQ(options.groups.size(), options.plan.groups.size());
    for (const std::string& key : options.plan.groups)
        told << " " << key;
    for (const int32 count : options.plan.counts)
        told << " on " << count;
    if (options.plan.repeats != 1)
        told << " x" << options.plan.repeats;
    if (options.plan.untilPercent)
        told << " until " << *options.plan.untilPercent;
    told << " to <" << options.output << "> <" << options.label << "> <" << options.journal << "> "
         << formats[static_cast<int>(options.format)] << (options.anyway ? " anyway" : "");
    for (const TestType* test : options.tests)
        told << " " << test->id;
    return told.str();
}

TEST(RunOptions, AreReadFromArgumentsOrRefusedWithOneLine)
{
    const MachineTree tree;
    for (int number = 0; number < 9; number++)
        tree.Write("sys/devices/system/cpu/cpu" + std::to_string(number) + "/online", "1");
    const RootGuard root(tree.Path());
    for (const auto& [arguments, told] : ReadRows("console/data/run-options"))
        EXPECT_EQ(Told(Words(arguments)), told) << arguments;
    EXPECT_EQ(Told({}), "<--groups> is missing: which tests to run, see --help");
    const std::string longest(200, 'x');
    const auto labelled = [](const std::string& label) {
        return Told({ "--groups", "io", "--output", "a", "--label", label });
    };
    EXPECT_EQ(labelled(longest), "run io to <a> <" + longest + "> <> table");
    for (const std::string& label : { longest + "x", std::string("a\nb"), std::string("\x7f") })
        EXPECT_EQ(labelled(label), "<--label> takes one line of at most 200 bytes");
    EXPECT_EQ(FormatOfFile("a.table") || FormatOfFile("ajson"), false);
    EXPECT_NE(RunUsage().find("\nGroups: graphics, strings, memory, savage, ackerman, dhrystone, "
                              "fourier, whetstone, sieve, lifecycle, io\nall stands for all of "
                              "them but dhrystone.\n"),
        std::string::npos);
}

TEST(TestTexts, SayOfATestWhatItMeasuresAndWhatNot)
{
    const std::string all = ReadFile(TARVEX_TESTS "/console/data/explained");
    EXPECT_EQ(TestTexts(), all);
    EXPECT_TRUE(all.starts_with(TestTexts({ &kTestTypes[0], &kTestTypes[1] })));
}

} // namespace
