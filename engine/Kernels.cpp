#include "engine/Kernels.h"

#include "engine/Benchmark.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <vector>

namespace {

constexpr long kTextRounds = 3000000;
// Characters per length of the text in the result: millions, as the unit is.
constexpr long kMillionTextRounds = kTextRounds / 1000000;

using Word = uint64_t;
constexpr Word kOnes = 0x0101010101010101;
constexpr Word kHighBits = 0x8080808080808080;

} // namespace

size_t WordwiseLength(const char* text)
{
    size_t length = 0;
    for (;; length += sizeof(Word)) {
        Word word;
        memcpy(&word, text + length, sizeof word);
        if ((word - kOnes) & ~word & kHighBits) // some byte is 0
            break;
    }
    while (text[length] != '\0')
        length++;
    return length;
}

void CopyText(char* copy, const char* text, long rounds)
{
    for (long round = 0; round < rounds; round++) {
        strcpy(copy, text);
        Sink(copy);
    }
}

int CompareText(const char* copy, const char* text, long rounds)
{
    int result = 0;
    for (long round = 0; round < rounds; round++) {
        result = strcmp(copy, text);
        Sink(result);
    }
    return result;
}

void Benchmark::RunStrings()
{
    CopiedText copied;
    static_assert(alignof(CopiedText) % sizeof(Word) == 0);
    const char* source = copied.text;
    Opaque(source);
    const long length = static_cast<long>(WordwiseLength(source));

    const auto measure = [&](const TestType& test, const auto& kernel, const auto& isDone) {
        Measure(test, kTextRounds, kernel, [&](Metric& metric) {
            metric.NbrCycles(kMillionTextRounds * length);
            return Unless(isDone(), "the copy is not the text");
        });
    };
    int difference = -1;
    measure(
        TestNamed("Strings Copy"), [&] { CopyText(copied.copy, source, kTextRounds); },
        [&] { return memcmp(copied.copy, copied.text, sizeof copied.text) == 0; });
    measure(
        TestNamed("Strings Compare"),
        [&] { difference = CompareText(copied.copy, source, kTextRounds); },
        [&] { return difference == 0; });
}

namespace {

constexpr long kMemoryRounds = 400000;
constexpr size_t kBlockSize = 512;
constexpr long kMemoryBytes = kMemoryRounds * static_cast<long>(kBlockSize);
static_assert(TestNamed("Memory").work == kMemoryBytes / 1048576);

} // namespace

long AllocateAndClear(long rounds)
{
    long allocated = 0;
    for (long round = 0; round < rounds; round++) {
        char* block = new (std::nothrow) char[kBlockSize];
        if (!block)
            continue;
        memset(block, 0, kBlockSize);
        Sink(block);
        delete[] block;
        allocated++;
    }
    return allocated;
}

void Benchmark::RunMemory()
{
    long allocated = 0;
    Measure(
        TestNamed("Memory"), kMemoryRounds, [&] { allocated = AllocateAndClear(kMemoryRounds); },
        [&](Metric&) { return Unless(allocated == kMemoryRounds, "out of memory"); });
}

namespace {

constexpr long kSavageSteps = 300000;
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
        TestNamed("Savage"), kSavageSteps, [&] { value = SavageSteps(kSavageSteps); },
        [&](Metric&) {
            return Unless(std::abs(value - (kSavageSteps + 1)) < kMostLost, "its sum is wrong");
        });
}

namespace {

constexpr long kAckermanRounds = 6000;

// A build to try comparisons with does some percent more than it counts.
#ifndef TARVEX_UNCOUNTED_PERCENT
#define TARVEX_UNCOUNTED_PERCENT 0
#endif
constexpr long kAckermanDone = kAckermanRounds * (100 + TARVEX_UNCOUNTED_PERCENT) / 100;
constexpr int kAckermanValue = 61; // of A(3, 3)

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
        TestNamed("Ackerman"), kAckermanRounds, [&] { value = EvaluateAckerman(kAckermanDone); },
        [&](Metric&) { return Unless(value == kAckermanValue, "A(3, 3) is not 61"); });
}

namespace {

constexpr bigtime_t kLongestMicros = 4999999;

// A pass's flags are never released: each run measures fresh memory. They are kept in reach, so
// that a leak checker reports the leaks that nobody meant.
char* NewFlags()
{
    static std::vector<char*>& sKept = *new std::vector<char*>;
    sKept.push_back(new char[kSieveSize]);
    return sKept.back();
}

// Cleared are the first flags, those that have a multiple in reach.
bool IsSieved(const char* flags)
{
    const auto hasMultiple = [](int i) { return 3 * i + 3 <= kSieveSize; };
    for (int i = 0; i < kSieveSize; i++) {
        if (flags[i] != (hasMultiple(i) ? 0 : 1))
            return false;
    }
    return true;
}

} // namespace

void SievePass(char* flags)
{
    for (int i = 0; i < kSieveSize; i++)
        flags[i] = 1;
    for (int i = 0; i < kSieveSize; i++) {
        if (flags[i] == 0)
            continue;
        const int step = i + i + 3;
        int multiple = i + step;
        if (multiple > kSieveSize)
            continue;
        for (; multiple <= kSieveSize; multiple += step)
            Opaque(multiple); // a walk that stores nothing would be left out
        flags[i] = 0;
    }
    Sink(flags);
}

void Benchmark::RunSieve()
{
    char* flags = NewFlags();
    long passes = 0;
    const auto passFor5Seconds = [&] {
        const bigtime_t start = system_time();
        do {
            SievePass(flags);
            passes++;
        } while (system_time() - start <= kLongestMicros);
    };
    Measure(TestNamed("Sieve"), 0, passFor5Seconds, [&](Metric& metric) {
        metric.NbrCycles(passes);
        return Unless(IsSieved(flags), "its flags are wrong");
    });
}

namespace {

constexpr long kCoefficients = 100;
constexpr int kSteps = 200;
constexpr double kPi = 3.141592653589793;

// By value: what others may call by reference passes memory about.
inline double Integrand(double x, double omega, int select)
{
    switch (select) {
        case 0: return pow(x + 1.0, x);
        case 1: return pow(x + 1.0, x) * cos(omega * x);
        case 2: return pow(x + 1.0, x) * sin(omega * x);
        default: return 0.0;
    }
}

inline double Integrate(double x0, double x1, int steps, double omega, int select)
{
    const double dx = (x1 - x0) / steps;
    // All are at x0, which the compiler must not know.
    const auto nextValue = [&] {
        Opaque(x0);
        return Integrand(x0, omega, select);
    };
    double sum = nextValue() * 0.5;
    for (int step = 2; step < steps; step++)
        sum += nextValue();
    return (nextValue() * 0.5 + sum) * dx;
}

} // namespace

double Fourier::Function(const double& x, const double& omega, const int& select)
{
    return Integrand(x, omega, select);
}

double Fourier::TrapezoidIntegrate(
    const double& x0, const double& x1, const int& steps, const double& omega, const int& select)
{
    return Integrate(x0, x1, steps, omega, select);
}

[[gnu::noinline]] void Fourier::fpuTransIteration(double* a, double* b, const long& count)
{
    a[0] = Integrate(0.0, 2.0, kSteps, 0.0, 0) * 0.5;
    const double omega = kPi;
    for (long i = 1; i < count; i++) {
        a[i] = Integrate(0.0, 2.0, kSteps, omega * static_cast<double>(i), 1);
        b[i] = Integrate(0.0, 2.0, kSteps, omega * static_cast<double>(i), 2);
    }
    Sink(a);
    Sink(b);
}

void Fourier::Run(const int& iterations)
{
    const std::unique_ptr<double[]> a(new (std::nothrow) double[kCoefficients]);
    const std::unique_ptr<double[]> b(new (std::nothrow) double[kCoefficients]);
    if (!a || !b) {
        fprintf(stderr, "Out of memory in Fourier::Run\n");
        return;
    }
    for (int i = 0; i < iterations; i++)
        fpuTransIteration(a.get(), b.get(), kCoefficients);
    if (iterations > 0) {
        firstA = a[0];
        lastA = a[kCoefficients - 1];
    }
}

void Benchmark::RunFourier()
{
    Fourier kernel;
    Measure(
        TestNamed("Fourier"), 100, [&] { kernel.Run(100); },
        [&](Metric&) {
            // Two less a step's width, all values being that at 0, and half of it.
            constexpr double kLast = 1.99;
            const auto isNear = [](double a, double b) { return std::abs(a - b) < 1e-9; };
            return Unless(isNear(kernel.firstA, kLast / 2) && isNear(kernel.lastA, kLast),
                "its coefficients are wrong");
        });
}
