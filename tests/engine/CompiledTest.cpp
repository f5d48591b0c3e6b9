// What the compiler made of the kernels.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
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

// The instructions of a whole kernel_rounds, or 0.
long Instructions(const std::string& kernel, int rounds)
{
    const std::string output =
        OutputOf(TARVEX_VALGRIND " --tool=callgrind --callgrind-out-file=/dev/null " + kRounds
            + kernel + " " + std::to_string(rounds));
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
    };
    for (const auto& row : rows)
        EXPECT_EQ(OutputOf(kRounds + row.kernel + " 6"), row.value);
    if (std::string(TARVEX_VALGRIND).ends_with("NOTFOUND"))
        GTEST_SKIP() << "valgrind, which counts the instructions, is not installed";
    for (const auto& row : rows)
        EXPECT_GE(Instructions(row.kernel, 101) - Instructions(row.kernel, 1), 100 * row.least)
            << row.kernel;
}

TEST(TarvexRun, CallsTheLibraryInItsKernels)
{
    if (std::string(TARVEX_OBJDUMP).ends_with("NOTFOUND"))
        GTEST_SKIP() << "objdump, which shows the compiled code, is not installed";
    const char* rows[][2] = {
        { "CopyText(char*, char const*, long)", "call.*<strcpy" },
        { "CompareText(char const*, char const*, long)", "call.*<strcmp" },
        { "AllocateAndClear(long)", "call.*<operator new\\[\\]" },
        { "AllocateAndClear(long)", "call.*<memset" },
        { "AllocateAndClear(long)", "call.*<operator delete\\[\\]" },
        { "(anonymous namespace)::Recurse(int, int)", "call.*Recurse\\(int, int\\)>\n" },
    };
    for (const auto& [symbol, call] : rows) {
        const std::string code = OutputOf(TARVEX_OBJDUMP " -d --demangle --disassemble='"
            + std::string(symbol) + "' " TARVEX_BUILD "/tarvex-run");
        EXPECT_TRUE(std::regex_search(code, std::regex(call))) << "no " << call << " in\n" << code;
    }
}

} // namespace
