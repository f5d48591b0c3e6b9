#include "console/Run.h"
#include "tests/kits/kernel/MachineTree.h"
#include "tests/support/Test.h"

#include <sstream>

namespace {

// What is read of them, or the line that says why not. Arguments end in a |.
std::string Told(const std::string& arguments)
{
    std::istringstream words(arguments);
    std::vector<std::string> list;
    for (std::string word; std::getline(words, word, '|');)
        list.push_back(word);
    const auto parsed = ParseRunOptions(list);
    if (const auto* why = std::get_if<std::string>(&parsed))
        return *why;
    const auto& options = std::get<RunOptions>(parsed);
    const char* const tasks[] = { "run", "resume", "list", "explain", "help", "version" };
    const char* const formats[] = { "table", "csv", "tsv", "json" };
    std::ostringstream told;
    told << tasks[int(options.task)];
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
         << formats[int(options.format)] << (options.anyway ? " anyway" : "");
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
    const std::string run = "--groups|io|--output|a|";
    const std::string bytes(199, 'x');
    const std::string rows[][2] = {
        { "--groups=all,dhrystone|--output=--a=b.tsv|--until|2.5%|--cpus|1|--label|a b|--format|"
          "tsv|--anyway|",
            "run graphics strings memory savage ackerman fourier whetstone sieve lifecycle io "
            "dhrystone on 1 until 2.5 to <--a=b.tsv> <a b> <> tsv anyway" },
        { run + "--repeat|100|--label|y" + bytes, "run io x100 to <a> <y" + bytes + "> <> table" },
        { run + "--until|100|", "run io until 100 to <a> <> <> table" },
        { "--groups|io|--output|-|--cpus|2,3,4,5,6,7,8,9|",
            "run io on 2 on 3 on 4 on 5 on 6 on 7 on 8 on 9 to <-> <> <> table" },
        { "--resume|a|--format|json|--anyway|", "resume to <> <> <a> json anyway" },
        { "--list|", "list to <> <> <> table" },
        { "--explain|whetstone|", "explain to <> <> <> table 600 601 602" },
        { "--explain|MEMORY|", "explain to <> <> <> table 200" },
        { "--explain|902|", "explain to <> <> <> table 902" },
        { "--groups|none|--help|", "unknown test group <none>" },
        { "--help|--nonsense|", "help to <> <> <> table" },
        { "--groups|io|--version|--nonsense|", "version io to <> <> <> table" },
        { "", "<--groups> is missing: which tests to run, see --help" },
        { "--groups|io|", "<--output> is missing: the results file to write, see --help" },
        { "--groups|strings,|", "unknown test group <>" },
        { "--groups|--output|a|", "<--groups> needs a list of test groups" },
        { "--output|", "<--output> needs a file name" },
        { "--output=a|--output|b|", "<--output> is given twice" },
        { "strings|", "unknown argument <strings>, see --help" },
        { "--explain|Nonsense|", "unknown test <Nonsense>, see --list" },
        { run + "--cpus|0|", "<--cpus> takes numbers from 1 to 9, not <0>" },
        { run + "--cpus|1,10|", "<--cpus> takes numbers from 1 to 9, not <10>" },
        { run + "--cpus|1,2,3,4,5,6,7,8,9|", "<--cpus> takes eight numbers at most" },
        { run + "--cpus|1,1|", "<--cpus> names 1 twice" },
        { run + "--cpus|1|",
            "with <--cpus> a results file cannot hold the run: <--output> takes a name that ends "
            "in .json, .csv or .tsv" },
        { run + "--repeat|0|", "<--repeat> takes a number from 1 to 100, not <0>" },
        { run + "--repeat|101|", "<--repeat> takes a number from 1 to 100, not <101>" },
        { run + "--repeat|2x|", "<--repeat> takes a number from 1 to 100, not <2x>" },
        { run + "--until|100.1|", "<--until> takes a percentage above 0, to 100, not <100.1>" },
        { run + "--repeat|2|--until|5|", "<--repeat> and <--until> do not go together" },
        { run + "--format|xml|", "<--format> must be one of table, csv, tsv, json, not <xml>" },
        { run + "--label|yy" + bytes, "<--label> takes one line of at most 200 bytes" },
        { run + "--label|a\nb", "<--label> takes one line of at most 200 bytes" },
        { run + "--label|\x7f", "<--label> takes one line of at most 200 bytes" },
        { "--resume|a|--repeat|2|", "<--resume> goes on as the run was begun: without <--repeat>" },
    };
    for (const auto& [arguments, told] : rows)
        EXPECT_EQ(Told(arguments), told) << arguments;
    EXPECT_EQ(FormatOfFile("a.table") || FormatOfFile("ajson"), false);
    EXPECT_NE(RunUsage().find("\nGroups: graphics, strings, memory, savage, ackerman, dhrystone, "
                              "fourier, whetstone, sieve, lifecycle, io\nall stands for all of "
                              "them but dhrystone.\n"),
        std::string::npos);
}

TEST(TestTexts, SayOfATestWhatItMeasuresAndWhatNot)
{
    EXPECT_EQ(TestTexts({ &TestNamed("Memory"), &TestNamed("Ten Threaded Whetstones"),
                  &TestNamed("Disk File/Thread Creation") }),
        R"(Memory (200): MB/sec, more is better; group memory
    Blocks of 512 bytes allocated, cleared and freed: the allocator and the
    first-level cache.
    Not the bandwidth of main memory, which no block ever reaches.
    Differs by up to 4 percent between sittings of one machine: less is no real
    difference.
Ten Threaded Whetstones (602): seconds, less is better; group whetstone
    Ten Whetstones on ten threads at once: what each further processor brings.
    Not what programs bring that wait for memory or for each other.
    Differs by up to 2 percent between sittings of one machine: less is no real
    difference.
Disk File/Thread Creation (902): files/second, more is better; of older versions only
    Files created by a thread each, in older versions.
    Not the disk: all stays in the page cache, or in memory where the temporary
    folder does.
)");
    std::string all;
    for (const TestType& test : kTestTypes)
        all += TestTexts({ &test });
    EXPECT_EQ(TestTexts(), all);
}

} // namespace
