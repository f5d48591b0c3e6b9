#include "engine/Benchmark.h"
#include "engine/IntegerKernels.h"
#include "engine/Sink.h"

namespace {

constexpr long kRounds = 6000;

constexpr int kValue = 61; // of A(3, 3)

// By value: the recursion of a function that others may call by reference passes memory about. Not
// inlined: a compiler that puts the function into itself saves a third of the calls that are the
// test.
[[gnu::noinline]] int Recurse(int m, int n)
{
    while (m != 0) {
        if (n == 0)
            n = 1;
        else
            n = Recurse(m, n - 1);
        m--;
    }
    return n + 1;
}

} // namespace

int Benchmark::Ackerman(const int& m, const int& n)
{
    return Recurse(m, n);
}

int EvaluateAckerman(long rounds)
{
    int result = 0;
    for (long round = 0; round < rounds; round++) {
        // The compiler must not know the level: it would unroll the levels into additions.
        int level = 3;
        int value = 3;
        Opaque(level);
        // The first level is written out, as the function does it.
        while (level != 0) {
            if (value == 0)
                value = 1;
            else
                value = Benchmark::Ackerman(level, value - 1);
            level--;
        }
        result = value + 1;
        Sink(result);
    }
    return result;
}

void Benchmark::RunAckerman()
{
    int value = 0;
    Measure(
        TestNamed("Ackerman"), kRounds, [&] { value = EvaluateAckerman(kRounds); },
        [&](Metric&) { return Unless(value == kValue, "A(3, 3) is not 61"); });
}
