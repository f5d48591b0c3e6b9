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
    details.kernelRelease = "6.1.0-13-amd64";
    EXPECT_EQ(LibMachineText(details), "Linux 6.1.0-13-amd64");
    details.memory = 33'600'000'000;
    details.processorModel = "AMD EPYC 7763";
    details.processors.resize(8);
    EXPECT_EQ(LibMachineText(details), "AMD EPYC 7763\n31.3 GB of memory\nLinux 6.1.0-13-amd64");
    details.memory = uint64 { 2 } << 40;
    details.processors.resize(128);
    EXPECT_EQ(LibMachineText(details),
        "AMD EPYC 7763\n128 processors, of which windows measure with 8\n2048.0 GB of memory\n"
        "Linux 6.1.0-13-amd64");
}
