// A sitting on a machine whose C library does not do what it is asked for: such work has no figure.
#include "engine/Disk.h"
#include "engine/Sitting.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <new>
#include <regex>

namespace {

std::string gCall; // what is counted
std::atomic<long> gCalls = 0;
bool gIsBroken = false;

bool IsBroken(const char* call)
{
    const bool isMeant = gCall == call;
    gCalls += isMeant;
    return isMeant && gIsBroken;
}

bool IsOf(const char* group, const char* path)
{
    return std::string_view(path).find(group) != std::string_view::npos;
}

} // namespace

void* operator new[](size_t size, const std::nothrow_t&) noexcept
{
    if ((size == 512 && IsBroken("new 512")) || (size == 800 && IsBroken("new 800")))
        return nullptr;
    try {
        return ::operator new[](size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

extern "C" {
char* __real_strcpy(char* copy, const char* text);
char* __wrap_strcpy(char* copy, const char* text)
{
    return IsBroken("strcpy") ? copy : __real_strcpy(copy, text);
}

int __real_strcmp(const char* one, const char* other);
int __wrap_strcmp(const char* one, const char* other)
{
    const bool isOurs = strncmp(one, "Tarvex tests", 12) == 0;
    return isOurs && IsBroken("strcmp") ? 1 : __real_strcmp(one, other);
}

double __real_atan(double value);
double __wrap_atan(double value)
{
    return IsBroken("atan") ? 0 : __real_atan(value);
}

double __real_pow(double base, double exponent);
double __wrap_pow(double base, double exponent)
{
    return IsBroken("pow") ? 0 : __real_pow(base, exponent);
}

size_t __real_fwrite(const void* data, size_t size, size_t count, FILE* file);
size_t __wrap_fwrite(const void* data, size_t size, size_t count, FILE* file)
{
    const bool isLost = size == BlockFile::kBlockSize && IsBroken("fwrite");
    return isLost ? count : __real_fwrite(data, size, count, file);
}

size_t __real_fread(void* data, size_t size, size_t count, FILE* file);
size_t __wrap_fread(void* data, size_t size, size_t count, FILE* file)
{
    const bool isLost = size == BlockFile::kBlockSize && IsBroken("fread");
    return isLost ? 0 : __real_fread(data, size, count, file);
}

FILE* __real_fopen(const char* path, const char* mode);
FILE* __wrap_fopen(const char* path, const char* mode)
{
    errno = EACCES;
    if (IsOf("/tarvex_io_test", path) && IsBroken("open"))
        return nullptr;
    const bool isLost = IsOf("/tarvex_lc_test.", path) && IsBroken("fopen");
    return isLost ? __real_fopen("/dev/null", "w") : __real_fopen(path, mode);
}

int __real_unlink(const char* path);
int __wrap_unlink(const char* path)
{
    constexpr long kFiles = 1000; // the next ones are from who cleans up
    const bool isKept = IsOf("/tarvex_lc_test.", path) && IsBroken("unlink") && gCalls <= kFiles;
    return isKept ? 0 : __real_unlink(path);
}
}

namespace {

// Of a round with all processors.
std::string Told(const std::string& group)
{
    gCalls = 0;
    Sitting sitting { RunPlan() };
    sitting.record.plan.counts = { sitting.results.nbrCpus };
    for (const GroupRun& run : kGroupRuns)
        sitting.*run.selected = run.key == group;
    testing::internal::CaptureStderr();
    EXPECT_EQ(sitting.Go("benchmark", nullptr, 20, true), B_OK);
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_FALSE(sitting.record.series.empty());
    for (const Series& series : sitting.record.series) {
        const std::string name = "<" + std::string(series.test->name) + "> was not done: ";
        EXPECT_EQ(told.find(name + series.undone + "\n") != told.npos, series.spans.empty());
        EXPECT_EQ(series.undone.empty(), !series.spans.empty()) << name;
    }
    return std::regex_replace(told, std::regex("<[^>]*/"), "<");
}

} // namespace

TEST(Proof, WorkThatIsNotDoneHasNoFigureAndSaysWhy)
{
    for (const Row& row : RowsOf("engine/data/broken", 4)) {
        SCOPED_TRACE(row[0]);
        gCall = row[0];
        gIsBroken = false;
        EXPECT_EQ(Told(row[1]), "");
        EXPECT_EQ(std::to_string(gCalls), row[2]);
        gIsBroken = true;
        EXPECT_EQ(Told(row[1]), row[3]);
    }
}
