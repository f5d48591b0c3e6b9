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

TEST(Fourier, TakesEveryStepAtItsStart)
{
    const std::tuple<double, double, int, double, int, double> rows[] = {
        { 1, 3, 1, 0, 0, 4 }, // f(1) = 2 over the whole width
        { 1, 3, 200, 0, 0, 2 * 199 * 0.01 },
        { 1, 3, 1, M_PI / 3, 1, 2 }, // cos = 1/2
        { 1, 3, 1, M_PI / 6, 2, 2 }, // sin = 1/2
        { 1, 3, 1, 0, 3, 0 },
    };
    Fourier fourier;
    for (const auto& [x0, x1, steps, omega, select, value] : rows)
        EXPECT_NEAR(fourier.TrapezoidIntegrate(x0, x1, steps, omega, select), value, 1e-12)
            << steps << " steps from " << x0 << ", " << select;

    double a[100] = {}, b[100] = { 7 };
    fourier.fpuTransIteration(a, b, 99);
    EXPECT_NEAR(a[0], 0.995, 1e-12);
    EXPECT_NEAR(a[1], 1.99, 1e-12);
    EXPECT_NEAR(a[98], 1.99, 1e-12);
    EXPECT_EQ((std::array { a[99], b[0], b[98] }), (std::array { 0.0, 7.0, 0.0 }));
}

} // namespace
