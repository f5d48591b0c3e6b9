// A sitting on a machine whose C library does not do what it is asked for: such work has no figure.
#include "engine/Disk.h"
#include "engine/Sitting.h"
#include "tests/support/Test.h"

#include <new>
#include <string_view>

namespace {

std::atomic<const char*> gBroken = "";
std::atomic<int> gKept = 0; // files, by the broken unlink()

bool IsBroken(std::string_view what)
{
    return what == gBroken.load();
}

bool IsOfTheLifeCycle(const char* path)
{
    return std::string_view(path).find("/tarvex_lc_test.") != std::string_view::npos;
}

} // namespace

void* operator new[](size_t size, const std::nothrow_t&) noexcept
{
    if (IsBroken("new") && size == 512)
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
    return IsBroken("strcmp") && strncmp(one, "Tarvex tests", 12) == 0 ? 1
                                                                       : __real_strcmp(one, other);
}

double __real_tan(double value);
double __wrap_tan(double value)
{
    return IsBroken("tan") ? 0 : __real_tan(value);
}

double __real_pow(double base, double exponent);
double __wrap_pow(double base, double exponent)
{
    return IsBroken("pow") ? 0 : __real_pow(base, exponent);
}

size_t __real_fwrite(const void* data, size_t size, size_t count, FILE* file);
size_t __wrap_fwrite(const void* data, size_t size, size_t count, FILE* file)
{
    const bool isLost = IsBroken("fwrite") && size == BlockFile::kBlockSize;
    return isLost ? count : __real_fwrite(data, size, count, file);
}

FILE* __real_fopen(const char* path, const char* mode);
FILE* __wrap_fopen(const char* path, const char* mode)
{
    const bool isLost = IsBroken("fopen") && IsOfTheLifeCycle(path);
    return isLost ? __real_fopen("/dev/null", "w") : __real_fopen(path, mode);
}

int __real_unlink(const char* path);
int __wrap_unlink(const char* path)
{
    constexpr int kFiles = 1000; // the next ones are from who cleans up
    const bool isKept = IsBroken("unlink") && IsOfTheLifeCycle(path) && gKept++ < kFiles;
    return isKept ? 0 : __real_unlink(path);
}
}

namespace {

using Reasons = std::map<std::string, std::string>; // by test

// Of a round with all processors.
Reasons Undone(bool Benchmark::*group)
{
    Sitting sitting { RunPlan() };
    sitting.record.plan.counts = { sitting.results.nbrCpus };
    sitting.*group = true;
    testing::internal::CaptureStderr();
    EXPECT_EQ(sitting.Go("benchmark", nullptr, 20, true), B_OK);
    testing::internal::GetCapturedStderr();
    Reasons reasons;
    for (const Series& series : sitting.record.series) {
        EXPECT_EQ(series.spans.empty(), !series.undone.empty()) << series.test->name;
        if (!series.undone.empty())
            reasons[series.test->name] = series.undone;
    }
    EXPECT_FALSE(sitting.record.series.empty());
    return reasons;
}

} // namespace

TEST(Proof, WorkThatIsNotDoneHasNoFigureAndSaysWhy)
{
    const std::string noCopy = "the copy is not the text",
                      notThere = "its files are not there, or still";
    const struct {
        const char* broken;
        bool Benchmark::*group;
        Reasons reasons;
    } rows[] = {
        { "strcpy", &Benchmark::strings,
            { { "Strings Copy", noCopy }, { "Strings Compare", noCopy } } },
        { "strcmp", &Benchmark::strings, { { "Strings Compare", noCopy } } },
        { "new", &Benchmark::memory, { { "Memory", "out of memory" } } },
        { "tan", &Benchmark::savage, { { "Savage", "its sum is wrong" } } },
        { "pow", &Benchmark::fourier, { { "Fourier", "its coefficients are wrong" } } },
        { "fwrite", &Benchmark::fileIO,
            { { "Disk File Output", "its file is too short" },
                { "Disk File Input", "end of file" } } },
        { "fopen", &Benchmark::fileLifeCycle,
            { { "Disk File Creation", notThere },
                { "Disk File Deletion", "No such file or directory" } } },
        { "unlink", &Benchmark::fileLifeCycle, { { "Disk File Deletion", notThere } } },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.broken);
        EXPECT_EQ(Undone(row.group), Reasons());
        gBroken = row.broken;
        EXPECT_EQ(Undone(row.group), row.reasons);
        gBroken = "";
        gKept = 0;
    }
}
