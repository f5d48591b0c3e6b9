// kernel_rounds KERNEL ROUNDS: does these rounds of a kernel and prints what shows its value.
#include "engine/Fourier.h"
#include "engine/IntegerKernels.h"
#include "engine/Savage.h"
#include "engine/Whetstone.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

int main(int argc, char** argv)
{
    const std::string kernel = argc > 1 ? argv[1] : "";
    const long rounds = argc > 2 ? atol(argv[2]) : 0;
    char text[] = "Tarvex tests system resources of the BeOS.";
    char copy[] = "Tarvex tests system resources of the BeOS?";
    static char flags[kSieveSize];

    if (kernel == "copy")
        CopyText(copy, text, rounds);
    else if (kernel == "compare")
        copy[0] = CompareText(copy, text, rounds) > 0 ? '>' : '<';
    else if (kernel == "memory")
        snprintf(copy, sizeof copy, "%ld", AllocateAndClear(rounds));
    else if (kernel == "ackerman")
        snprintf(copy, sizeof copy, "%d", EvaluateAckerman(rounds));
    else if (kernel == "savage")
        snprintf(copy, sizeof copy, "%.6f", SavageSteps(rounds));
    Fourier fourier;
    double a[100] = {}, b[100] = {};
    for (long round = 0; kernel == "fourier" && round < rounds; round++) {
        fourier.fpuTransIteration(a, b, 100);
        snprintf(copy, sizeof copy, "%.3f %.3f", a[0], a[99]);
    }
    Whetstone whetstone;
    whetstone.Run(kernel == "whetstone" ? rounds : 0);
    if (kernel == "whetstone")
        snprintf(copy, sizeof copy, "%.1f %.6f", whetstone.e1[0], whetstone.e1[3]);
    for (long round = 0; kernel == "sieve" && round < rounds; round++)
        SievePass(flags);
    printf("%s %ld\n", copy, long(std::count(flags, flags + kSieveSize, 1)));
    return 0;
}
