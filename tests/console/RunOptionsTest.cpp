// What is read from right arguments; ProgramTest.cpp gives wrong ones.
#include "console/Run.h"
#include "tests/support/Test.h"

TEST(RunOptions, AreReadFromArguments)
{
    using Groups = std::vector<bool Benchmark::*>;
    Groups all;
    for (const GroupRun& run : kGroupRuns)
        if (run.key != "dhrystone")
            all.push_back(run.selected);
    Groups withDhrystone = all;
    withDhrystone.push_back(&Benchmark::dhrystone);
    const std::tuple<std::vector<std::string>, Groups, const char*> rows[] = {
        { { "--groups", "all", "--output", "a b" }, all, "a b" },
        { { "--groups", "io,sieve", "--output", "c" }, { &Benchmark::fileIO, &Benchmark::sieve },
            "c" },
        { { "--output=--a=b", "--groups=all,dhrystone" }, withDhrystone, "--a=b" },
    };
    for (const auto& [arguments, groups, output] : rows) {
        const auto options = std::get<RunOptions>(ParseRunOptions(arguments));
        EXPECT_EQ(options.task, RunOptions::Task::kRun);
        EXPECT_EQ(options.groups, groups);
        EXPECT_EQ(options.output, output);
        EXPECT_EQ(options.plan.repeats, 1);
        EXPECT_TRUE(options.plan.counts.empty());
    }
    const auto options = std::get<RunOptions>(ParseRunOptions({ "--groups", "io", "--output", "-",
        "--until", "2.5%", "--cpus", "1", "--label", "a", "--format", "tsv" }));
    EXPECT_EQ(options.plan.untilPercent, 2.5);
    EXPECT_EQ(options.plan.counts, std::vector<int32>({ 1 }));
    EXPECT_EQ(options.plan.groups, std::vector<std::string>({ "io" }));
    EXPECT_EQ(options.label, "a");
    EXPECT_EQ(options.format, TextFormat::kTsv);
}
