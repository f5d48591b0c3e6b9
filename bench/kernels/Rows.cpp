#include "Rows.h"

#include "BareLoops.h"
#include "engine/BlockFile.h"
#include "engine/FileLife.h"
#include "engine/Fourier.h"
#include "engine/Kernels.h"
#include "engine/Whetstone.h"

#include <FindDirectory.h>
#include <Path.h>

#include <chrono>
#include <string>
#include <type_traits>

namespace {

constexpr double kComputing = 0.97;
constexpr double kDisk = 0.9;

alignas(64) char gText[48] = "Tarvex tests system resources of the BeOS.";
alignas(64) char gCopy[48] = "Tarvex tests system resources of the BeOS.";
char gFlags[kSieveSize];

template <typename Work>
double Seconds(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
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

} // namespace

const std::vector<kernels::Row>& kernels::Rows()
{
    static const std::vector<Row> sRows = {
        { "Strings Copy", kComputing, Timed<[](long rounds) { CopyText(gCopy, gText, rounds); }>,
            Timed<bare::CopyText> },
        { "Strings Compare", kComputing,
            Timed<[](long rounds) { CompareText(gCopy, gText, rounds); }>,
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
