#include "engine/Fourier.h"

#include "engine/Benchmark.h"
#include "engine/Sink.h"

#include <cmath>
#include <cstdio>
#include <memory>
#include <new>

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
