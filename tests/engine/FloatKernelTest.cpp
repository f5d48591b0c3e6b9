// The floating-point kernels' values; CompiledTest.cpp counts what they do for them.
#include "bench/kernels/BareLoops.h"
#include "engine/Kernels.h"
#include "engine/Whetstone.h"
#include "tests/support/Test.h"

#include <array>

namespace {

TEST(Whetstone, AgreesWithThePublishedTextAfterAnyRounds)
{
    for (const long rounds : { 1, 3 }) {
        Whetstone whetstone;
        whetstone.Run(rounds);
        const bare::WhetstoneValues published = bare::Whetstone(rounds);
        for (int i = 0; i < 4; i++)
            EXPECT_DOUBLE_EQ(whetstone.e1[i], published.e1[i + 1]) << i;
        EXPECT_EQ((std::array { whetstone.j, whetstone.k, whetstone.l }), (std::array { 2, 3, 3 }));
        EXPECT_DOUBLE_EQ(whetstone.TrigonometricFunctions(), published.trigonometricX);
        EXPECT_DOUBLE_EQ(whetstone.ProcedureCalls(), published.z);
        EXPECT_DOUBLE_EQ(whetstone.StandardFunctions(), published.standardX);
    }
    Whetstone whetstone;
    whetstone.IntegerArithmetic();
    EXPECT_EQ((std::array { whetstone.j, whetstone.k, whetstone.l }), (std::array { 1, 2, 3 }));
    whetstone.ConditionalJumps();
    EXPECT_EQ(whetstone.j, 0); // turned over 345 times
    // In closed form: the logarithm of x shrinks by the same factor 93 times.
    EXPECT_NEAR(bare::Whetstone(1).standardX, pow(0.75, pow(0.5 / 0.50025, 93)), 1e-12);
    EXPECT_NEAR(bare::Whetstone(1).z, (0.99995 + 0.499975 * 1.99995) / 2, 1e-12);
}

} // namespace
