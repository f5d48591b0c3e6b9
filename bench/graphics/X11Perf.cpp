#include "X11Perf.h"

#include <cstdio>
#include <string>

// Its lines read "  80000 reps @   0.0123 msec ( 81300.0/sec): 500-pixel line segment".
double X11PerfRate(const char* test)
{
    const std::string command = "x11perf -repeat 1 -time 1 -" + std::string(test) + " 2>/dev/null";
    double rate = 0;
    FILE* output = popen(command.c_str(), "r");
    char line[256];
    while (output && fgets(line, sizeof line, output)) {
        const char* bracket = std::char_traits<char>::find(line, sizeof line, '(');
        if (bracket)
            sscanf(bracket, "(%lf/sec)", &rate);
    }
    if (output)
        pclose(output);
    if (rate <= 0)
        fprintf(stderr, "No figures of <x11perf -%s>\n", test);
    return rate;
}
