#include "engine/Savage.h"

#include "engine/Benchmark.h"
#include "engine/Sink.h"

#include <cmath>
#include <limits>

namespace {

constexpr long kSteps = 300000;
// Each step adds 1, but for what its functions lose.
constexpr double kMostLost = 0.01;

#if defined(__x86_64__)
inline double ProcessorRoot(double value)
{
    asm("sqrtsd %0, %0" : "+x"(value));
    return value;
}
#elif defined(__aarch64__)
inline double ProcessorRoot(double value)
{
    asm("fsqrt %d0, %d0" : "+w"(value));
    return value;
}
#else
inline double ProcessorRoot(double)
{
    return std::numeric_limits<double>::quiet_NaN();
}
#endif

} // namespace

double InstructionRoot(double value)
{
    const double root = ProcessorRoot(value);
    return root == root ? root : sqrt(value);
}

double SavageSteps(long steps)
{
    double a = 1.0;
    for (long step = 0; step < steps; step++)
        a = tan(atan(exp(log(InstructionRoot(a * a))))) + 1.0;
    Sink(a);
    return a;
}

void Benchmark::RunSavage()
{
    double value = 0;
    Measure(
        TestNamed("Savage"), kSteps, [&] { value = SavageSteps(kSteps); },
        [&](Metric&) {
            return Unless(std::abs(value - (kSteps + 1)) < kMostLost, "its sum is wrong");
        });
}
