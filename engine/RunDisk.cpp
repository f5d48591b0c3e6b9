// Both disk groups, in the common temporary directory, which they leave as it was.
#include "engine/Benchmark.h"
#include "engine/BlockFile.h"
#include "engine/FileLife.h"

#include <FindDirectory.h>
#include <Path.h>

#include <cerrno>
#include <cstdio>

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

    // Returns whether no file was passed over.
    bool Do(Mode mode)
    {
        status_t value = 0;
        if (wait_for_thread(Go(mode), &value) == B_OK)
            return failures == 0;
        error = EAGAIN; // no thread for it
        return false;
    }
};

} // namespace

void Benchmark::RunFileLifeCycle()
{
    TestFiles files;
    files.SetPathPrefix(TemporaryFile("tarvex_lc_test").Path());
    files.SetIndexRange(0, kFiles - 1);
    bool isDone = true;
    const TestType& creation = TestNamed("Disk File Creation");
    Measure(creation, kFiles, [&] { isDone = files.Do(FileLife::kCreate); });
    CheckWork(creation, isDone, files.error);
    const TestType& deletion = TestNamed("Disk File Deletion");
    Measure(deletion, kFiles, [&] { isDone = files.Do(FileLife::kRemove); });
    CheckWork(deletion, isDone, files.error);
}

void Benchmark::RunFileIO()
{
    BlockFile file(TemporaryFile("tarvex_io_test").Path());
    const TestType& output = TestNamed("Disk File Output");
    bool isDone = false;
    if (file.Open("wb")) {
        Measure(output, kBlocks, [&] { isDone = file.Write(kBlocks); });
        isDone = file.Close() && isDone;
    } else {
        fprintf(stderr, "Error writing <%s>\n", file.path.c_str());
    }
    CheckWork(output, isDone, file.error);

    const TestType& input = TestNamed("Disk File Input");
    isDone = false;
    if (file.Open("rb")) {
        Measure(input, kBlocks, [&] { isDone = file.Read(kBlocks); });
        file.Close();
    } else {
        fprintf(stderr, "Error reading <%s>\n", file.path.c_str());
    }
    CheckWork(input, isDone, file.error);
}
