// The benchmark without windows, for servers and scripts. It starts without the libraries that
// draw, many and large: where they are needed tarvex-run-windows takes its place, the same program
// with them.
#include "console/Output.h"
#include "console/Program.h"
#include "engine/Benchmark.h"
#include "results/ChartPicture.h"
#include "results/ScalingPicture.h"

#include <OwnLibrary.h>
#include <Picture.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

// The process stays what it is, with its standard files; returns only if that cannot be.
int GoOnWithWindows(char** argv)
{
    const std::string program = find_own_file("tarvex-run-windows");
    execv(program.c_str(), argv);
    Tell("cannot start <" + program + ">: " + strerror(errno));
    return kFailed;
}

constexpr char kNoWindows[] = "this program draws nothing";

} // namespace

int main(int argc, char** argv)
{
    return RunProgram(argc, argv, [argv] { return GoOnWithWindows(argv); });
}

// In place of those that draw, which the linker then leaves out with all behind them. Who would
// call them is tarvex-run-windows, but where a display comes up just when a run begins.

void Benchmark::RunGraphics()
{
    fprintf(stderr, "The tests of <Graphics> are left out\n");
    graphics = false;
}

std::string WhyNoPicture(const char*)
{
    return kNoWindows;
}

std::string WriteMachinesChart(
    const char*, const std::vector<MeasuredMachine>&, size_t, const TestType&)
{
    return kNoWindows;
}

std::string WriteScalingPicture(
    const char*, const std::vector<MeasuredMachine>&, const std::vector<TestScaling>&)
{
    return kNoWindows;
}
