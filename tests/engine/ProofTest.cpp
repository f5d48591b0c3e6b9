// A sitting on a machine whose C library does not do what it is asked for: such work has no figure.
#include "engine/Disk.h"
#include "engine/Sitting.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <new>

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

// clang-format off
#define BREAKABLE(result, call, parameters, arguments, isLost, instead) \
    result __real_##call parameters; \
    result __wrap_##call parameters { return isLost ? instead : __real_##call arguments; }

extern "C" {
BREAKABLE(char*, strcpy, (char* copy, const char* text), (copy, text), IsBroken("strcpy"), copy)
BREAKABLE(int, strcmp, (const char* one, const char* other), (one, other),
    strncmp(one, "Tarvex tests", 12) == 0 && IsBroken("strcmp"), 1)
BREAKABLE(double, atan, (double value), (value), IsBroken("atan"), 0)
BREAKABLE(double, pow, (double base, double exponent), (base, exponent), IsBroken("pow"), 0)
BREAKABLE(size_t, fwrite, (const void* data, size_t size, size_t count, FILE* file),
    (data, size, count, file), size == BlockFile::kBlockSize && IsBroken("fwrite"), count)
BREAKABLE(size_t, fread, (void* data, size_t size, size_t count, FILE* file),
    (data, size, count, file), size == BlockFile::kBlockSize && IsBroken("fread"), 0)
// Of what is removed the first thousand files: the next ones are from who cleans up.
BREAKABLE(int, unlink, (const char* path), (path),
    IsOf("/tarvex_lc_test.", path) && IsBroken("unlink") && gCalls <= 1000, 0)
// clang-format on

FILE* __real_fopen(const char* path, const char* mode);
FILE* __wrap_fopen(const char* path, const char* mode)
{
    errno = EACCES;
    if (IsOf("/tarvex_io_test", path) && IsBroken("open"))
        return nullptr;
    const bool isLost = IsOf("/tarvex_lc_test.", path) && IsBroken("fopen");
    return isLost ? __real_fopen("/dev/null", "w") : __real_fopen(path, mode);
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
