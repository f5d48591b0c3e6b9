// What the compiler made of the kernels.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <string>

namespace {

// Runs a shell command. Returns what it prints.
std::string OutputOf(const std::string& command)
{
    std::string output;
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (!pipe)
        return "cannot run " + command;
    for (int c; (c = fgetc(pipe)) != EOF;)
        output += char(c);
    pclose(pipe);
    return output;
}

const std::string kRounds = TARVEX_BUILD "/kernel_rounds ";

const bool kCanCount = !std::string(TARVEX_VALGRIND).ends_with("NOTFOUND");

// The instructions of a whole program, or 0.
long Instructions(const std::string& command)
{
    const std::string output =
        OutputOf(TARVEX_VALGRIND " --tool=callgrind --callgrind-out-file=/dev/null " + command);
    std::smatch match;
    const bool counted = std::regex_search(output, match, std::regex("Collected : (\\d+)"));
    EXPECT_TRUE(counted) << output;
    return counted ? std::stol(match[1]) : 0;
}

// At -O3 with link-time optimisation.
TEST(OptimisedKernels, HaveTheSameValuesAndStillDoTheirWorkInEveryRound)
{
    const struct {
        const char* kernel;
        const char* value; // of six rounds
        long least; // instructions of one
    } rows[] = {
        { "copy", "Tarvex tests system resources of the BeOS. 0\n", 10 }, // 43 bytes
        { "compare", ">arvex tests system resources of the BeOS? 0\n", 10 },
        { "memory", "6 0\n", 50 }, // 512 bytes besides the allocator's work
        { "ackerman", "61 0\n", 2432 * 3 }, // the evaluations in A(3, 3)
        { "sieve", "Tarvex tests system resources of the BeOS? 5460\n", 29673 * 3 }, // the steps
        { "savage", "7.000000 0\n", 5 * 20 }, // the calls
        { "fourier", "0.995 1.990 0\n", 200 * 199 * 40 },
        { "whetstone", "3.0 -1.130272 0\n", 12 * 24 + 14 * 6 * 24 + 345 * 6 + 210 * 20 }, // etc.
    };
    for (const auto& row : rows)
        EXPECT_EQ(OutputOf(kRounds + row.kernel + " 6"), row.value);
    if (!kCanCount)
        GTEST_SKIP() << "valgrind, which counts the instructions, is not installed";
    const long start = Instructions(kRounds + "none 0");
    for (const auto& row : rows) {
        const long rounds = row.least < 10000 ? 1000 : 5;
        EXPECT_GE(Instructions(kRounds + row.kernel + " " + std::to_string(rounds)) - start,
            rounds * row.least)
            << row.kernel;
    }
}

TEST(Kernels, CostNoMoreAndNoLessThanABareLoopOfTheSameWork)
{
    const std::string program = TARVEX_BUILD "/kernels";
    if (!kCanCount || !std::ifstream(program))
        GTEST_SKIP() << "needs valgrind and a build with the bench programs";
    const std::pair<const char*, int> rows[] = { { "Strings Copy", 50000 },
        { "Strings Compare", 50000 }, { "Memory", 10000 }, { "Savage", 5000 }, { "Ackerman", 100 },
        { "Fourier", 2 }, { "Whetstone", 40 }, { "Sieve", 20 }, { "Disk File Creation", 3000 },
        { "Disk File Output", 2000 } };
    const long start = Instructions(program + " --count Savage kernel 0");
    for (const auto& [test, rounds] : rows) {
        long counts[2] = {};
        for (const int isLoop : { 0, 1 })
            counts[isLoop] = Instructions(program + " --count '" + test + "' "
                                 + (isLoop ? "loop " : "kernel ") + std::to_string(rounds))
                - start;
        EXPECT_NEAR(double(counts[0]) / double(counts[1]), 1.0, 0.02) << test;
    }
}

} // namespace
