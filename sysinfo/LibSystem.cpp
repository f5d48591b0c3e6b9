#include "sysinfo/LibSystem.h"

#include "foundation/LibPath.h"
#include "foundation/PlainText.h"
#include "foundation/ToolCommand.h"

#include <AppFileInfo.h>
#include <File.h>
#include <FindDirectory.h>
#include <MachineDetails.h>
#include <Path.h>

std::string LibMachineText(const MachineDetails& details)
{
    std::string text = details.processorModel.value_or("");
    const auto add = [&text](
                         const std::string& line) { text += (text.empty() ? "" : "\n") + line; };
    if (details.memory) {
        const double gigabytes = static_cast<double>(*details.memory) / (1 << 30);
        add(LibFixedText(gigabytes, 1) + " GB of memory");
    }
    if (details.kernelRelease)
        add("Linux " + *details.kernelRelease);
    return text;
}

void LibGetOSVersion(LibString& version)
{
    // The version that people know is that of the file manager, which comes with each release.
    BFile tracker("/system/Tracker", B_READ_ONLY);
    version_info info;
    if (BAppFileInfo(&tracker).GetVersionInfo(&info, B_APP_VERSION_KIND) == B_OK)
        version = info.short_info;
}

void LibShutdown(bool restart)
{
    BPath tool;
    BPath apart; // where some systems keep the administrator's tools
    if (find_directory(B_BEOS_BIN_DIRECTORY, &tool) != B_OK || tool.Append("shutdown") != B_OK)
        return;
    if (!LibExists(tool.Path()) && find_directory(B_BEOS_SERVERS_DIRECTORY, &apart) == B_OK
        && apart.Append("shutdown") == B_OK && LibExists(apart.Path()))
        tool = apart;
    ToolCommand command(tool.Path());
    if (restart)
        command.Option("-r");
    // In the background: the tool waits for the programs that it ends, and this one is among them.
    [[maybe_unused]] const int started = command.Option("&").Run();
}
