// Both disk groups, in the system's temporary directory, which they leave as it was.
#include "engine/Benchmark.h"
#include "engine/BlockFile.h"
#include "engine/FileLife.h"

#include <FindDirectory.h>
#include <Path.h>

namespace {

constexpr long kFiles = 1000;
constexpr long kBlocks = 10000;
static_assert(TestNamed("Disk File Output").work == kBlocks * long(BlockFile::kBlockSize) / 1024);
static_assert(TestNamed("Disk File Creation").work == kFiles);

BPath TemporaryFile(const char* name)
{
    BPath path;
    find_directory(B_COMMON_TEMP_DIRECTORY, &path);
    path.Append(name);
    return path;
}

// Leaves no file behind, also when the run is ended in the middle.
struct TestFiles : FileLife {
    ~TestFiles() override
    {
        kill_thread(thread);
        Remove();
    }

    void Do(Mode mode)
    {
        status_t value = 0;
        wait_for_thread(Go(mode), &value);
    }
};

} // namespace

void Benchmark::RunFileLifeCycle()
{
    TestFiles files;
    files.SetPathPrefix(TemporaryFile("tarvex_lc_test").Path());
    files.SetIndexRange(0, kFiles - 1);
    Measure(TestNamed("Disk File Creation"), kFiles, [&] { files.Do(FileLife::kCreate); });
    Measure(TestNamed("Disk File Deletion"), kFiles, [&] { files.Do(FileLife::kRemove); });
}

void Benchmark::RunFileIO()
{
    BlockFile file(TemporaryFile("tarvex_io_test").Path());
    if (file.Open("wb")) {
        Measure(TestNamed("Disk File Output"), kBlocks, [&] { file.Write(kBlocks); });
        file.Close();
    } else {
        fprintf(stderr, "Error writing <%s>\n", file.path.c_str());
    }
    if (file.Open("rb")) {
        Measure(TestNamed("Disk File Input"), kBlocks, [&] { file.Read(kBlocks); });
        file.Close();
    } else {
        fprintf(stderr, "Error reading <%s>\n", file.path.c_str());
    }
}
