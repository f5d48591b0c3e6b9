#include "sysinfo/LibSysInfo.h"
#include "tests/support/Test.h"

#include <MachineDetails.h>

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

TEST(LibSystem, TheVersionIsThatOfTheReleaseFile)
{
    LibString version;
    LibGetOSVersion(version);
    EXPECT_NE(ReadFile("/etc/os-release").find(version), std::string::npos);
    EXPECT_FALSE(version.IsBlank());
}

TEST(LibSystem, NamesTheMachineAsFarAsItIsKnown)
{
    MachineDetails details;
    EXPECT_EQ(LibMachineText(details), "");
    details.kernelRelease = "6.1";
    EXPECT_EQ(LibMachineText(details), "Linux 6.1");
    details.memory = 33'600'000'000;
    details.processorModel = "AMD";
    for (const size_t count : { 8, 9 }) {
        details.processors.resize(count);
        EXPECT_EQ(LibMachineText(details),
            std::string(
                count > 8 ? "AMD\n9 processors, of which windows measure with 8\n" : "AMD\n")
                + "31.3 GB of memory\nLinux 6.1");
    }
}
