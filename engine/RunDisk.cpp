// Both disk groups, in the common temporary directory, which they leave as it was.
#include "engine/Benchmark.h"
#include "engine/BlockFile.h"
#include "engine/FileLife.h"

#include <Entry.h>
#include <FindDirectory.h>
#include <Path.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

constexpr long kFiles = 1000;
constexpr long kBlocks = 10000;
constexpr long kBytes = kBlocks * long(BlockFile::kBlockSize);
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

    // How many of its files are there.
    long Count() const
    {
        long count = 0;
        for (int64 number = first; number <= last; number++) {
            BEntry file((std::string(prefix) + "." + std::to_string(number)).c_str());
            count += file.Exists();
        }
        return count;
    }
};

// 0 at the end of a file.
std::string ErrorText(int error)
{
    return error != 0 ? strerror(error) : "end of file";
}

long SizeOf(const char* path)
{
    off_t size = -1;
    return BEntry(path).GetSize(&size) == B_OK ? long(size) : -1;
}

} // namespace

void Benchmark::RunFileLifeCycle()
{
    TestFiles files;
    files.SetPathPrefix(TemporaryFile("tarvex_lc_test").Path());
    files.SetIndexRange(0, kFiles - 1);
    const auto measure = [&](const TestType& test, FileLife::Mode mode, long filesAfter) {
        bool isDone = true;
        Measure(
            test, kFiles, [&] { isDone = files.Do(mode); },
            [&](Metric&) {
                if (!isDone)
                    return ErrorText(files.error);
                return Unless(files.Count() == filesAfter, "its files are not there, or still");
            });
    };
    measure(TestNamed("Disk File Creation"), FileLife::kCreate, kFiles);
    measure(TestNamed("Disk File Deletion"), FileLife::kRemove, 0);
}

void Benchmark::RunFileIO()
{
    BlockFile file(TemporaryFile("tarvex_io_test").Path());
    const TestType& output = TestNamed("Disk File Output");
    bool isDone = false;
    if (file.Open("wb")) {
        Measure(
            output, kBlocks, [&] { isDone = file.Write(kBlocks); },
            [&](Metric&) {
                if (!file.Close() || !isDone)
                    return ErrorText(file.error);
                return Unless(SizeOf(file.path.c_str()) == kBytes, "its file is too short");
            });
    } else {
        fprintf(stderr, "Error writing <%s>\n", file.path.c_str());
        TellUndone(output, ErrorText(file.error));
    }

    const TestType& input = TestNamed("Disk File Input");
    if (file.Open("rb")) {
        Measure(
            input, kBlocks, [&] { isDone = file.Read(kBlocks); },
            [&](Metric&) { return isDone ? "" : ErrorText(file.error); });
        file.Close();
    } else {
        fprintf(stderr, "Error reading <%s>\n", file.path.c_str());
        TellUndone(input, ErrorText(file.error));
    }
}
