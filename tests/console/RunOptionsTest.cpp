// What is read from right arguments; ProgramTest.cpp gives wrong ones.
#include "console/Run.h"
#include "tests/support/Test.h"

TEST(RunOptions, AreReadFromArguments)
{
    const auto options =
        std::get<RunOptions>(ParseRunOptions({ "--groups=all,dhrystone", "--output=--a=b.tsv",
            "--until", "2.5%", "--cpus", "1", "--label", "a", "--format", "tsv" }));
    EXPECT_EQ(options.task, RunOptions::Task::kRun);
    EXPECT_EQ(options.groups.size(), std::size(kGroupRuns));
    EXPECT_EQ(options.output + options.label, "--a=b.tsva");
    EXPECT_EQ(options.plan.untilPercent, 2.5);
    EXPECT_EQ(options.plan.counts, std::vector<int32>({ 1 }));
    EXPECT_EQ(options.format, TextFormat::kTsv);
}
