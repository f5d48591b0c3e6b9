#include "console/RunOptions.h"

#include <gtest/gtest.h>

namespace {

typedef std::vector<std::string> Arguments;
typedef std::vector<bool Benchmark::*> Groups;

// The options, or with a failure the default ones.
RunOptions Parsed(const Arguments& arguments)
{
    const auto parsed = ParseRunOptions(arguments);
    const auto* message = std::get_if<std::string>(&parsed);
    EXPECT_FALSE(message) << *message;
    return message ? RunOptions() : std::get<RunOptions>(parsed);
}

TEST(RunOptions, AreReadFromArguments)
{
    const Groups all = { &Benchmark::graphics, &Benchmark::strings, &Benchmark::memory,
        &Benchmark::savage, &Benchmark::ackerman, &Benchmark::fourier, &Benchmark::whetstone,
        &Benchmark::sieve, &Benchmark::fileLifeCycle, &Benchmark::fileIO };
    Groups withDhrystone = all;
    withDhrystone.push_back(&Benchmark::dhrystone);
    const Groups disk = { &Benchmark::fileIO, &Benchmark::fileLifeCycle };
    const struct {
        Arguments arguments;
        Groups groups;
        const char* output;
    } rows[] = {
        { { "--groups", "all", "--output", "a b" }, all, "a b" },
        { { "--output=--a=b", "--groups=io,lifecycle" }, disk, "--a=b" },
        { { "--groups", "all,dhrystone", "--output", "a" }, withDhrystone, "a" },
    };
    for (const auto& row : rows) {
        const RunOptions options = Parsed(row.arguments);
        EXPECT_EQ(options.task, RunOptions::Task::kRun);
        EXPECT_EQ(options.groups, row.groups);
        EXPECT_EQ(options.output, row.output);
    }
    EXPECT_EQ(Parsed({ "--groups", "io", "--help" }).task, RunOptions::Task::kHelp);
    EXPECT_EQ(Parsed({ "--version", "--nonsense" }).task, RunOptions::Task::kVersion);
}

TEST(RunOptions, WrongArgumentsGiveOneMessageThatNamesThem)
{
    const struct {
        Arguments arguments;
        const char* message;
    } rows[] = {
        { {}, "<--groups> is missing: which tests to run, see --help" },
        { { "--groups", "io" }, "<--output> is missing: the results file to write, see --help" },
        { { "--groups", "io,nonsense,more" }, "unknown test group <nonsense>" },
        { { "--groups", "strings," }, "unknown test group <>" },
        { { "--groups", "--output", "a" }, "<--groups> needs a list of test groups" },
        { { "--output" }, "<--output> needs a file name" },
        { { "--output=a", "--output", "b" }, "<--output> is given twice" },
        { { "--tests=io" }, "unknown argument <--tests=io>, see --help" },
        { { "strings" }, "unknown argument <strings>, see --help" },
    };
    for (const auto& row : rows) {
        const auto parsed = ParseRunOptions(row.arguments);
        const auto* message = std::get_if<std::string>(&parsed);
        EXPECT_EQ(message ? *message : "accepted", row.message);
    }
}

} // namespace
