// kernels [PAIRS [TEST]]: do the groups measure the machine, or the program around them too? Each
// kernel's rate beside that of a bare loop of the same work, in one process: blocks of some
// milliseconds, the two in turn, since a machine may change its speed from second to second. The
// median of the pairs' ratios counts, status 1 if one is too low.
//
// kernels --count TEST kernel|loop ROUNDS...: does only those, one by one, for a tool that counts
// the instructions of each DoRounds().
#include "BareLoops.h"
#include "engine/Disk.h"
#include "engine/Kernels.h"
#include "engine/Whetstone.h"

#include <FindDirectory.h>
#include <Path.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

// Does that many rounds. Returns the seconds that they took, what prepares them left out.
using TimedRounds = double (*)(long);

// A test group's kernel and the bare loop of the same work.
struct Row {
    const char* name;
    double leastRatio; // of the kernel's rate to the loop's
    TimedRounds kernel;
    TimedRounds loop;
    long leastRounds = 1; // at a time: those of the group, where their number tells in the rate
};

constexpr double kBlockSeconds = 0.005;
// A slow row ends after this time, but not before so many pairs.
constexpr double kRowSeconds = 20;
constexpr int kLeastPairs = 21;

constexpr double kComputing = 0.97;
constexpr double kDisk = 0.9;

CopiedText gCopied;
char gFlags[kSieveSize];

template <typename Work>
double Seconds(Work work)
{
    const auto start = Clock::now();
    work();
    const std::chrono::duration<double> seconds = Clock::now() - start;
    return seconds.count();
}

// Whoever optimises must not find that nobody asks for the work's value.
template <auto work>
double Timed(long rounds)
{
    return Seconds([rounds] {
        if constexpr (std::is_arithmetic_v<decltype(work(rounds))>) [[maybe_unused]]
            const volatile auto value = work(rounds);
        else
            work(rounds);
    });
}

void SievePasses(long rounds)
{
    for (long i = 0; i < rounds; i++)
        SievePass(gFlags);
}

void RunFourier(long rounds)
{
    Fourier().Run(static_cast<int>(rounds));
}

void RunWhetstone(long rounds)
{
    Whetstone().Run(rounds);
}

// Where the groups have their files too.
std::string TemporaryPath()
{
    BPath path;
    find_directory(B_COMMON_TEMP_DIRECTORY, &path);
    path.Append("tarvex_bench");
    return path.Path();
}

double LifeOf(long rounds, bool createIsTimed)
{
    FileLife files;
    files.SetPathPrefix(TemporaryPath().c_str());
    files.SetIndexRange(0, rounds - 1);
    status_t value = 0;
    const double create = Seconds([&] { wait_for_thread(files.Go(FileLife::kCreate), &value); });
    const double remove = Seconds([&] { wait_for_thread(files.Go(FileLife::kRemove), &value); });
    return createIsTimed ? create : remove;
}

double BareLifeOf(long rounds, bool createIsTimed)
{
    const std::string prefix = TemporaryPath();
    const double create = Seconds([&] { bare::CreateFiles(prefix.c_str(), rounds); });
    const double remove = Seconds([&] { bare::RemoveFiles(prefix.c_str(), rounds); });
    return createIsTimed ? create : remove;
}

double BlocksOf(long rounds, bool writeIsTimed)
{
    BlockFile file(TemporaryPath().c_str());
    if (!file.Open("wb"))
        return 0;
    const double write = Seconds([&] { file.Write(rounds); });
    file.Close();
    if (!file.Open("rb"))
        return 0;
    const double read = Seconds([&] { file.Read(rounds); });
    return writeIsTimed ? write : read;
}

double BareBlocksOf(long rounds, bool writeIsTimed)
{
    const std::string path = TemporaryPath();
    FILE* file = fopen(path.c_str(), "wb");
    if (!file)
        return 0;
    const double write = Seconds([&] { bare::WriteBlocks(file, rounds); });
    file = freopen(path.c_str(), "rb", file);
    if (!file)
        return 0;
    const double read = Seconds([&] { bare::ReadBlocks(file, rounds); });
    fclose(file);
    remove(path.c_str());
    return writeIsTimed ? write : read;
}

const std::vector<Row>& Rows()
{
    static const std::vector<Row> sRows = {
        { "Strings Copy", kComputing,
            Timed<[](long rounds) { CopyText(gCopied.copy, gCopied.text, rounds); }>,
            Timed<bare::CopyText> },
        { "Strings Compare", kComputing,
            Timed<[](long rounds) { CompareText(gCopied.copy, gCopied.text, rounds); }>,
            Timed<bare::CompareText> },
        { "Memory", kComputing, Timed<AllocateAndClear>, Timed<bare::AllocateAndClear> },
        { "Savage", kComputing, Timed<SavageSteps>, Timed<bare::Savage> },
        { "Ackerman", kComputing, Timed<EvaluateAckerman>, Timed<bare::EvaluateAckerman> },
        { "Fourier", kComputing, Timed<RunFourier>, Timed<bare::Fourier> },
        { "Whetstone", kComputing, Timed<RunWhetstone>, Timed<bare::Whetstone> },
        { "Sieve", kComputing, Timed<SievePasses>, Timed<bare::SievePasses> },
        { "Disk File Creation", kDisk, [](long rounds) { return LifeOf(rounds, true); },
            [](long rounds) { return BareLifeOf(rounds, true); }, 1000 },
        { "Disk File Deletion", kDisk, [](long rounds) { return LifeOf(rounds, false); },
            [](long rounds) { return BareLifeOf(rounds, false); }, 1000 },
        { "Disk File Output", kDisk, [](long rounds) { return BlocksOf(rounds, true); },
            [](long rounds) { return BareBlocksOf(rounds, true); } },
        { "Disk File Input", kDisk, [](long rounds) { return BlocksOf(rounds, false); },
            [](long rounds) { return BareBlocksOf(rounds, false); } },
    };
    return sRows;
}

// The rounds that take the loop as long as a block.
long RoundsOfABlock(const Row& row)
{
    long rounds = row.leastRounds;
    while (row.loop(rounds) < kBlockSeconds && rounds < 100000000)
        rounds *= 2;
    return rounds;
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

bool Compare(const Row& row, int pairs)
{
    const long rounds = RoundsOfABlock(row);
    std::vector<double> kernelRates;
    std::vector<double> ratios;
    const auto end = Clock::now() + std::chrono::duration<double>(kRowSeconds);
    for (int pair = 0; pair < pairs; pair++) {
        if (pair >= kLeastPairs && Clock::now() > end)
            break;
        const bool loopFirst = pair % 2 == 1;
        double loop = loopFirst ? row.loop(rounds) : 0;
        const double kernel = row.kernel(rounds);
        if (!loopFirst)
            loop = row.loop(rounds);
        kernelRates.push_back(static_cast<double>(rounds) / kernel);
        ratios.push_back(loop / kernel);
    }
    printf("%-20s%16.1f%9.3f%7zu\n", row.name, Median(kernelRates), Median(ratios), ratios.size());
    fflush(stdout);
    return Median(ratios) >= row.leastRatio;
}

int CompareRows(int pairs, const char* only)
{
    bool keptUp = true;
    printf("%-20s%16s%9s%7s\n", "test", "rounds/second", "ratio", "pairs");
    for (const Row& row : Rows())
        if (!only || strcmp(only, row.name) == 0)
            keptUp &= Compare(row, pairs);
    return keptUp ? 0 : 1;
}

[[gnu::noinline]] int DoRounds(const char* name, const char* which, long rounds)
{
    for (const Row& row : Rows())
        if (strcmp(name, row.name) == 0)
            return strcmp(which, "loop") == 0 ? row.loop(rounds) < 0 : row.kernel(rounds) < 0;
    fprintf(stderr, "no such test: <%s>\n", name);
    return 2;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && strcmp(argv[1], "--count") == 0) {
        int status = 0;
        for (int i = 2; i + 2 < argc && status == 0; i += 3)
            status = DoRounds(argv[i], argv[i + 1], atol(argv[i + 2]));
        return status;
    }
    return CompareRows(argc > 1 ? std::max(1, atoi(argv[1])) : 201, argc > 2 ? argv[2] : nullptr);
}
