// The integer kernels' values; CompiledTest.cpp counts what they do for them.
#include "engine/Benchmark.h"
#include "engine/Kernels.h"
#include "tests/support/Test.h"

namespace {

TEST(WordwiseLength, FindsTheEndInEveryPlaceOfAWordAndIsNotMisledByOtherBytes)
{
    for (const char filler : { '\x01', 'x', '\x7f', '\x80', '\xff' }) {
        for (size_t length = 0; length <= 17; length++) {
            alignas(8) char text[24];
            memset(text, filler, sizeof text); // behind the end mark too
            text[length] = '\0';
            EXPECT_EQ(WordwiseLength(text), length) << static_cast<int>(filler);
        }
    }
}

TEST(Ackerman, HasItsPublishedValues)
{
    const int rows[][3] = { { 0, 0, 1 }, { 0, 41, 42 }, { 1, 0, 2 }, { 1, 5, 7 }, { 2, 0, 3 },
        { 2, 3, 9 }, { 3, 0, 5 }, { 3, 3, 61 }, { 3, 6, 509 } };
    for (const auto& [m, n, value] : rows)
        EXPECT_EQ(Benchmark::Ackerman(m, n), value) << m << ", " << n;
    EXPECT_EQ(EvaluateAckerman(1) + EvaluateAckerman(0) + CompareText("a", "b", 0), 61);
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
