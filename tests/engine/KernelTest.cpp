// The kernels' values, and their calls of the C library: the linker leads those through here.
#include "engine/Benchmark.h"
#include "engine/Fourier.h"
#include "engine/IntegerKernels.h"

#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr size_t kBlockSize = 512;

// Of the kernel that runs now.
long copies, compares, clears;
void* block = nullptr; // the latest, until its release
size_t denied = 0; // there is no memory for blocks of this size

} // namespace

extern "C" {
char* __real_strcpy(char* to, const char* from);
int __real_strcmp(const char* a, const char* b);
void* __real__ZnamRKSt9nothrow_t(size_t size, const std::nothrow_t& tag);
void __real__ZdaPv(void* memory);

char* __wrap_strcpy(char* to, const char* from)
{
    copies++;
    return __real_strcpy(to, from);
}

int __wrap_strcmp(const char* a, const char* b)
{
    compares++;
    return __real_strcmp(a, b);
}

// Hands out used memory, so that the release sees whether it was cleared.
void* __wrap__ZnamRKSt9nothrow_t(size_t size, const std::nothrow_t& tag)
{
    if (size == denied)
        return nullptr;
    void* memory = __real__ZnamRKSt9nothrow_t(size, tag);
    return size == kBlockSize ? block = memset(memory, '#', size) : memory;
}

void __wrap__ZdaPv(void* memory)
{
    static const char zeros[kBlockSize] = {};
    if (memory && memory == std::exchange(block, nullptr))
        clears += memcmp(memory, zeros, kBlockSize) == 0;
    __real__ZdaPv(memory);
}
}

namespace {

TEST(WordwiseLength, FindsTheEndInEveryPlaceOfAWordAndIsNotMisledByOtherBytes)
{
    for (const char filler : { '\x01', 'x', '\x7f', '\x80', '\xff' }) {
        for (size_t length = 0; length <= 17; length++) {
            alignas(8) char text[24];
            memset(text, filler, sizeof text); // behind the end mark too
            text[length] = '\0';
            EXPECT_EQ(WordwiseLength(text), length) << int(filler);
        }
    }
}

TEST(Kernels, CallTheLibraryInEveryRound)
{
    char copy[16] = "###############";
    copies = compares = clears = 0;
    CopyText(copy, "two words", 3);
    EXPECT_EQ(std::string(copy, sizeof copy), std::string("two words\0#####\0", 16));
    EXPECT_EQ(CompareText(copy, "two words", 4), 0);
    EXPECT_LT(CompareText("two", copy, 1), 0);
    EXPECT_EQ(AllocateAndClear(6), 6);
    EXPECT_EQ(copies, 3);
    EXPECT_EQ(compares, 5);
    EXPECT_EQ(clears, 6);
}

TEST(Kernels, PassOverWhatThereIsNoMemoryFor)
{
    denied = kBlockSize;
    EXPECT_EQ(AllocateAndClear(2), 0);
    denied = 100 * sizeof(double);
    testing::internal::CaptureStderr();
    Fourier().Run(1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Out of memory in Fourier::Run\n");
    denied = 0;
}

TEST(Ackerman, HasItsPublishedValues)
{
    const int rows[][3] = { { 0, 0, 1 }, { 0, 41, 42 }, { 1, 0, 2 }, { 1, 5, 7 }, { 2, 0, 3 },
        { 2, 3, 9 }, { 3, 0, 5 }, { 3, 3, 61 }, { 3, 6, 509 } };
    for (const auto& [m, n, value] : rows)
        EXPECT_EQ(Benchmark::Ackerman(m, n), value) << m << ", " << n;
    EXPECT_EQ(EvaluateAckerman(2), 61);
}

TEST(SievePass, ClearsTheNumbersWithAMultipleInReachWhateverWasThereBefore)
{
    for (const char before : { '\0', '\1' }) {
        std::vector<char> flags(kSieveSize + 1, before);
        flags[kSieveSize] = '#';
        SievePass(flags.data());
        for (int i = 0; i < kSieveSize; i++)
            ASSERT_EQ(flags[i], 3 * i + 3 <= 8190 ? 0 : 1) << i;
        EXPECT_EQ(flags[kSieveSize], '#');
    }
}

} // namespace
