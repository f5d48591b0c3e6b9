// The work of the integer, memory and Savage groups, apart from its timing: each function does
// exactly the rounds it is given and hands back what shows that it did. Not inlined, so that what
// is tested is also what a run measures.
#pragma once

#include <cstddef>

// Length of the text at the word boundary text, found a word at a time. The words up to its end
// mark are readable to their last byte.
size_t WordwiseLength(const char* text);

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
