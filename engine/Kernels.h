// The work of the strings, memory, Savage, Ackermann, sieve and Fourier groups, apart from its
// timing: each function does exactly the rounds it is given and hands back what shows that it did.
// Not inlined, so that what is tested is also what a run measures.
#pragma once

#include <cstddef>

// These keep a kernel's work in the program. None of them costs an instruction of its own.
//
// The compiler must have computed value, and written all memory that it may point to, before this.
template <typename T>
inline void Sink(const T& value)
{
    asm volatile("" : : "r"(value) : "memory");
}

// After this the compiler no longer knows what value is, nor what it points to.
template <typename T>
inline void Opaque(T& value)
{
    asm volatile("" : "+r"(value) : : "memory");
}
inline void Opaque(double& value)
{
    asm volatile("" : "+m"(value) : : "memory"); // it would be moved to an integer's register
}

// Length of the text at the word boundary text, found a word at a time. The words up to its end
// mark are readable to their last byte.
size_t WordwiseLength(const char* text);

// The text of the strings group, and room for its copy. So aligned the C library goes one way in
// every program and thread: near the end of a page it would go a longer one.
struct alignas(256) CopiedText {
    char text[64] = "Tarvex tests system resources of the BeOS.";
    char copy[64] = "";
};

// Copies text to copy by strcpy, rounds times.
[[gnu::noinline]] void CopyText(char* copy, const char* text, long rounds);

// Compares the texts by strcmp, rounds times. Returns the last result.
[[gnu::noinline]] int CompareText(const char* copy, const char* text, long rounds);

// Allocates 512 bytes, clears and releases them, rounds times. Returns how often there was memory.
[[gnu::noinline]] long AllocateAndClear(long rounds);

// The Savage benchmark: a chain of functions and their inverses that gives its argument back, apart
// from what is lost by rounding. Starts at 1 and adds 1 by each step. Returns the sum, about
// steps + 1.
[[gnu::noinline]] double SavageSteps(long steps);

// The root by the processor's own instruction; by the C library where that gives no number, or
// where there is no such instruction. Not a number for a negative value.
double InstructionRoot(double value);

// Evaluates Ackermann's A(3, 3), rounds times. Returns the last value; 0 without rounds.
[[gnu::noinline]] int EvaluateAckerman(long rounds);

constexpr int kSieveSize = 8190;

// One pass over flags[kSieveSize]. Sets all, then clears those whose number has an odd multiple
// in reach; the multiples themselves are walked over and left. No sieve of primes, but the load
// that all published figures were measured with.
[[gnu::noinline]] void SievePass(char* flags);

// Fourier coefficients of (x + 1) to the power x on [0, 2], by trapezoid integration.
class Fourier {
public:
    virtual ~Fourier() = default;

    // Computes 100 pairs of coefficients iterations times; nothing for 0 or less. Of the last ones
    // the first and the last a are kept. Without memory for them: a line on standard error.
    void Run(const int& iterations);

    // a[0] to a[count - 1] and b[1] to b[count - 1]; b[0] stays as it is. count is 1 or more.
    void fpuTransIteration(double* a, double* b, const long& count);

    // A trapezoid's sum over steps (1 or more) that stays at x0, as all published figures were
    // measured with: Function(x0) times the width x1 - x0, less one step's width if there are
    // several. Every evaluation is made.
    double TrapezoidIntegrate(const double& x0, const double& x1, const int& steps,
        const double& omega, const int& select);

    // f(x) = (x + 1)^x for select 0, times cos(omega x) for 1 or sin(omega x) for 2; else 0.
    double Function(const double& x, const double& omega, const int& select);

    double firstA = 0; // of the last iteration of Run()
    double lastA = 0;
};
