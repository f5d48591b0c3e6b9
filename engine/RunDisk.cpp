// Both disk groups, in the system's temporary directory, which they leave as it was.
#include "engine/Benchmark.h"
#include "engine/BlockFile.h"
#include "engine/FileLife.h"

#include <FindDirectory.h>
#include <Path.h>

namespace {

constexpr long kFiles = 1000;
constexpr long kBlocks = 10000;
constexpr long kKilobytes = kBlocks * long(BlockFile::kBlockSize) / 1024;

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

    // False, with a line on standard error, if there was no thread to do it.
    bool Do(Mode mode)
    {
        status_t value = 0;
        if (wait_for_thread(Go(mode), &value) == B_OK)
            return true;
        fprintf(stderr, "No thread for <Disk File %s>, which is left out\n",
            mode == kCreate ? "Creation" : "Deletion");
        return false;
    }
};

} // namespace

void Benchmark::RunFileLifeCycle()
{
    TestFiles files;
    files.SetPathPrefix(TemporaryFile("tarvex_lc_test").Path());
    files.SetIndexRange(0, kFiles - 1);
    // Nothing would be there to delete.
    if (MeasureIfDone({ "Disk File Creation", kFiles, kFiles, 900, "files/second" },
            [&] { return files.Do(FileLife::kCreate); }))
        MeasureIfDone({ "Disk File Deletion", kFiles, kFiles, 901, "files/second" },
            [&] { return files.Do(FileLife::kRemove); });
}

void Benchmark::RunFileIO()
{
    BlockFile file(TemporaryFile("tarvex_io_test").Path());
    if (file.Open("wb")) {
        Measure({ "Disk File Output", kKilobytes, kBlocks, 800, "KB/sec" },
            [&] { file.Write(kBlocks); });
        file.Close();
    } else {
        fprintf(stderr, "Error writing <%s>\n", file.path.c_str());
    }
    if (file.Open("rb")) {
        Measure(
            { "Disk File Input", kKilobytes, kBlocks, 801, "KB/sec" }, [&] { file.Read(kBlocks); });
        file.Close();
    } else {
        fprintf(stderr, "Error reading <%s>\n", file.path.c_str());
    }
}
