// Both disk groups, in the common temporary directory, which they leave as it was.
#include "engine/Disk.h"

#include "engine/Benchmark.h"

#include <Entry.h>
#include <FindDirectory.h>
#include <Path.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <unistd.h>
#include <utility>

namespace {

// Whether all blocks were moved; what cannot be is passed over. A run can be ended between parts of
// 1 MB, however slow the disk is: a call of the kernel kit is a kill point.
template <class Move>
bool MoveBlocks(FILE* stream, long count, int& error, Move move)
{
    bool isDone = true;
    for (long block = 0; block < count; block++) {
        if (block % 256 == 0)
            system_time();
        if (move() == 1)
            continue;
        error = ferror(stream) ? errno : 0;
        isDone = false;
    }
    return isDone;
}

} // namespace

BlockFile::~BlockFile()
{
    if (fStream)
        fclose(fStream);
    unlink(path.c_str());
}

bool BlockFile::Open(const char* mode)
{
    const bool isWritten = *mode == 'w';
    if (isWritten)
        unlink(path.c_str());
    errno = ENOENT; // what "wb" did not make
    if (isWritten || fIsMade)
        fStream = fopen(path.c_str(), isWritten ? "wbx" : mode);
    error = fStream ? 0 : errno;
    fIsMade = fIsMade || fStream;
    return fStream != nullptr;
}

bool BlockFile::Close()
{
    const bool isWritten = fclose(std::exchange(fStream, nullptr)) == 0;
    if (!isWritten)
        error = errno;
    return isWritten;
}

bool BlockFile::Write(long count)
{
    return MoveBlocks(
        fStream, count, error, [this] { return fwrite(fBlock, kBlockSize, 1, fStream); });
}

bool BlockFile::Read(long count)
{
    return MoveBlocks(
        fStream, count, error, [this] { return fread(fBlock, kBlockSize, 1, fStream); });
}

namespace {

constexpr int32 kPriority = 100;

// Calls action(path) for each file, and counts those for which it returns false.
template <typename Action>
void ForEachFile(FileLife& files, Action action)
{
    files.failures = files.error = 0;
    const char* prefix = files.prefix;
    const std::string start = std::string(prefix ? prefix : "") + ".";
    std::string path(start.size() + 12, '\0'); // with room for any number
    for (int64 number = files.first; number <= files.last; number++) {
        if (number % 100 == 0)
            system_time(); // a kill point, seldom: it must not cost what is to be measured
        snprintf(path.data(), path.size(), "%s%d", start.c_str(), static_cast<int>(number));
        if (!action(path.c_str()) && files.failures++ == 0)
            files.error = errno;
    }
}

} // namespace

FileLife::~FileLife()
{
    kill_thread(thread);
}

void FileLife::SetIndexRange(const long& newFirst, const long& newLast)
{
    first = static_cast<int32>(newFirst);
    last = static_cast<int32>(newLast);
}

thread_id FileLife::Go(const int& mode)
{
    const bool create = mode == kCreate;
    thread = spawn_thread(create ? CreateThread : RemoveThread,
        create ? "CreateThread" : "RemoveThread", kPriority, this);
    return thread;
}

int32 FileLife::CreateThread(void* self)
{
    return static_cast<FileLife*>(self)->Create();
}

int32 FileLife::RemoveThread(void* self)
{
    return static_cast<FileLife*>(self)->Remove();
}

int32 FileLife::Create()
{
    ForEachFile(*this, [](const char* path) {
        FILE* file = fopen(path, "wx");
        if (!file && errno == EEXIST && unlink(path) == 0)
            file = fopen(path, "wx");
        return file && fclose(file) == 0;
    });
    return 0;
}

int32 FileLife::Remove()
{
    ForEachFile(*this, [](const char* path) { return unlink(path) == 0; });
    return 0;
}

namespace {

constexpr long kFiles = 1000;
constexpr long kBlocks = 10000;
constexpr long kBytes = kBlocks * static_cast<long>(BlockFile::kBlockSize);
static_assert(TestNamed("Disk File Output").work
    == kBlocks * static_cast<long>(BlockFile::kBlockSize) / 1024);
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
    return BEntry(path).GetSize(&size) == B_OK ? static_cast<long>(size) : -1;
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
