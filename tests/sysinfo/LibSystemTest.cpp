#include "sysinfo/LibSysInfo.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

std::string gCommand;

} // namespace

// In place of the C library's for this whole program: no test may shut a machine down.
extern "C" int system(const char* command)
{
    gCommand = command;
    return 0;
}

TEST(LibSystem, ShutdownRunsTheSystemsToolInTheBackground)
{
    const std::string apart = "/usr/sbin/shutdown";
    const std::string tool = std::filesystem::exists(apart) ? apart : "/usr/bin/shutdown";
    LibShutdown(false);
    EXPECT_EQ(gCommand, tool + " &");
    LibShutdown(true);
    EXPECT_EQ(gCommand, tool + " -r &");
}
