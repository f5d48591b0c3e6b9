// The work of the test groups as anybody would write it down, without the program's own classes:
// what a group is held against. Each does the given number of rounds.
#pragma once

#include <cstdio>

namespace bare {

void CopyText(long rounds);
void CompareText(long rounds);
void AllocateAndClear(long rounds);
void EvaluateAckerman(long rounds);
void SievePasses(long rounds);
// Returns the last step's value.
double Savage(long rounds);
// A round computes a hundred pairs of coefficients. Returns a[0].
double Fourier(long rounds);

// What the modules of the last round left.
struct WhetstoneValues {
    double trigonometricX = 0;
    double z = 0;
    double standardX = 0;
    double e1[5] = {}; // [0] is not used
};
WhetstoneValues Whetstone(long rounds);

// The files PREFIX.0 and so on.
void CreateFiles(const char* prefix, long rounds);
void RemoveFiles(const char* prefix, long rounds);
// Blocks of 4096 bytes.
void WriteBlocks(FILE* file, long rounds);
void ReadBlocks(FILE* file, long rounds);

} // namespace bare
