// What is read from right arguments; ProgramTest.cpp gives wrong ones.
#include "console/RunOptions.h"

#include <gtest/gtest.h>
#include <tuple>

TEST(RunOptions, AreReadFromArguments)
{
    typedef std::vector<bool Benchmark::*> Groups;
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
    }
}
