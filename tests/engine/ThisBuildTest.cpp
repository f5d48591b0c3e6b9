#include "engine/ThisBuild.h"

#include "tests/support/Test.h"

#include <sstream>

namespace {

// The command by which this build compiles the kernels, "" where there is none.
std::string KernelCommand()
{
    std::istringstream commands(ReadFile(std::string(TARVEX_BUILD) + "/compile_commands.json"));
    for (std::string line; std::getline(commands, line);) {
        if (line.find("\"command\"") != std::string::npos
            && line.find("tarvex_engine.dir/Kernels.cpp.o") != std::string::npos)
            return line;
    }
    return "";
}

TEST(ThisBuild, FlagsAreThoseOfTheKernelsInTheirOrder)
{
    const std::string command = KernelCommand();
    std::istringstream flags(ThisBuild().flags);
    size_t at = 0;
    for (std::string flag; flags >> flag; at += flag.size()) {
        at = command.find(" " + flag + " ", at);
        ASSERT_NE(at, std::string::npos) << flag << " is not in, or not here: " << command;
    }
    EXPECT_GT(at, 0u);
    EXPECT_NE(ThisBuild().flags.find(" -ffp-contract=off "), std::string::npos);
}

} // namespace
