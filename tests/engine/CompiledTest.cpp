// What the compiler made of the kernels: the instructions that they take.
#include "tests/support/Test.h"

namespace {

const struct {
    const char* test;
    int rounds;
    int least; // instructions of one round, however it is compiled
} kRows[] = {
    { "Strings Copy", 50000, 10 }, // 43 bytes
    { "Strings Compare", 50000, 10 },
    { "Memory", 10000, 50 }, // 512 bytes besides the allocator's work
    { "Savage", 5000, 5 * 20 }, // the calls
    { "Ackerman", 100, 2432 * 3 }, // the evaluations in A(3, 3)
    { "Fourier", 2, 200 * 199 * 40 },
    { "Whetstone", 40, 12 * 24 + 14 * 6 * 24 + 345 * 6 + 210 * 20 }, // etc.
    { "Sieve", 20, 29673 * 3 }, // the steps
    { "Disk File Creation", 2000, 0 },
    { "Disk File Output", 500, 0 },
};
constexpr size_t kComputing = 8; // of them

// Appends what each of the first rows takes as a kernel, then as a bare loop, in a program of
// bench/kernels.
void Count(const std::string& program, size_t rows, std::vector<double>& counts)
{
    const TempFolder folder;
    std::string command = TARVEX_VALGRIND
        " --tool=callgrind --dump-after='(anonymous*)::DoRounds(*'"
        " --callgrind-out-file="
        + folder / "out" + " " TARVEX_BUILD "/" + program + " --count Savage loop 0";
    for (size_t i = 0; i < rows; i++)
        for (const char* which : { " kernel ", " loop " })
            command +=
                " '" + std::string(kRows[i].test) + "'" + which + std::to_string(kRows[i].rounds);
    ASSERT_EQ(system((command + " 2>" + folder / "err").c_str()), 0) << ReadFile(folder / "err");
    for (size_t dump = 2; dump < 2 + 2 * rows; dump++) { // the first is that of the start
        const std::string counted = ReadFile(folder / ("out." + std::to_string(dump)));
        std::smatch match;
        ASSERT_TRUE(std::regex_search(counted, match, std::regex("\nsummary: (\\d+)\n")));
        counts.push_back(std::stod(match[1]));
    }
}

TEST(Kernels, CostNoMoreAndNoLessThanABareLoopAndCannotBeOptimisedAway)
{
    if (std::string(TARVEX_VALGRIND).ends_with("NOTFOUND"))
        GTEST_SKIP() << "valgrind, which counts the instructions, is not installed";
    std::vector<double> counts, pressed;
    Count("kernels", std::size(kRows), counts);
    for (size_t i = 0; i < counts.size(); i += 2)
        EXPECT_NEAR(counts[i] / counts[i + 1], 1.0, 0.02) << kRows[i / 2].test;
    Count("kernels_pressed", kComputing, pressed);
    for (size_t i = 0; i < pressed.size(); i += 2)
        EXPECT_GE(pressed[i], kRows[i / 2].rounds * kRows[i / 2].least) << kRows[i / 2].test;
}

} // namespace
