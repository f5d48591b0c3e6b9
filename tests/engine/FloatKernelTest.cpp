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
    std::string told;
    for (const auto module : { &Whetstone::SetConstants, &Whetstone::ArrayElements,
             &Whetstone::ArrayAsParameter, &Whetstone::IntegerArithmetic,
             &Whetstone::ConditionalJumps, &Whetstone::ArrayReferences }) {
        (whetstone.*module)();
        char values[200];
        const double* e1 = whetstone.e1;
        snprintf(values, sizeof values, "%.9f %.9f %.9f %.9f %d %d %d\n", e1[0], e1[1], e1[2],
            e1[3], whetstone.j, whetstone.k, whetstone.l);
        told += values;
    }
    EXPECT_EQ(told, ReadFile(TARVEX_TESTS "/engine/data/whetstone"));
    // In closed form: the logarithm of x shrinks by the same factor 93 times.
    EXPECT_NEAR(bare::Whetstone(1).standardX, pow(0.75, pow(0.5 / 0.50025, 93)), 1e-12);
    EXPECT_NEAR(bare::Whetstone(1).z, (0.99995 + 0.499975 * 1.99995) / 2, 1e-12);
}

TEST(Fourier, IntegratesAsThePublishedFiguresWereMeasured)
{
    Fourier fourier;
    const double values[] = { 2, 2 * cos(3), 2 * sin(3), 0 };
    for (int select = 0; select < 4; select++)
        EXPECT_DOUBLE_EQ(fourier.Function(1, 3, select), values[select]);
    EXPECT_DOUBLE_EQ(fourier.TrapezoidIntegrate(1, 4, 3, 0, 0), 2 * (3 - 1));
    EXPECT_DOUBLE_EQ(fourier.TrapezoidIntegrate(1, 4, 1, 0, 0), 2 * 3);
    double a[4] = { 9, 9, 9, 9 }, b[4] = { 9, 9, 9, 9 };
    fourier.fpuTransIteration(a, b, 3);
    const double wanted[] = { 0.995, 1.99, 1.99, 9, 9, 0, 0, 9 };
    for (int i = 0; i < 8; i++)
        EXPECT_NEAR(i < 4 ? a[i] : b[i - 4], wanted[i], 1e-9) << i;
    fourier.Run(0);
    EXPECT_EQ(fourier.lastA, 0);
}

} // namespace
