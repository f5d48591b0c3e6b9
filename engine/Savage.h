// The Savage benchmark: a chain of functions and their inverses that gives its argument back, apart
// from what is lost by rounding.
#pragma once

// Starts at 1 and adds 1 by each step. Returns the sum, about steps + 1.
[[gnu::noinline]] double SavageSteps(long steps);

// The root by the processor's own instruction; by the C library where that gives no number, or
// where there is no such instruction. Not a number for a negative value.
double InstructionRoot(double value);
