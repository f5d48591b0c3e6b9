#include "engine/Savage.h"

#include "engine/Benchmark.h"
#include "engine/Sink.h"

#include <cmath>
#include <limits>

namespace {

constexpr long kSteps = 300000;

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
    Measure(TestNamed("Savage"), kSteps, [] { SavageSteps(kSteps); });
}
