#include "ui/AboutSysWindow.h"

#include "sysinfo/LibSysInfo.h"
#include "tests/kits/app/TestLooper.h"
#include "tests/kits/kernel/PciTree.h"
#include "tests/support/ScreenDriver.h"

#include <Application.h>

#include <gtest/gtest.h>

TEST(AboutSysWindow, TellsInTipsWhatTheMachineIsAndWhatItsDevicesWereCalled)
{
    std::filesystem::create_directory(DataHome() / "tarvex");
    const MachineTree tree;
    std::string processors, devices, typed = "1af4  Mine\n";
    for (int i = 0; i < 16; i++)
        processors += "processor : " + std::to_string(i) + "\nmodel name : Big <one>\n\n";
    tree.Write("proc/cpuinfo", processors);
    tree.Write("sys/devices/system/cpu/present", "0-15");
    tree.Write("proc/meminfo", "MemTotal: 2147483648 kB\n");
    tree.Write("proc/sys/kernel/osrelease", "6.1");
    for (int i = 10; i < 32; i++) {
        const std::string number = std::to_string(i);
        AddPciFunction(tree, "0000:" + number + ":00.0",
            PciConfig(0x1af4, std::stoi(number, nullptr, 16), 0x020000));
        typed += "\t00" + number + "  Card " + number + "\n";
        devices += i < 30 ? "Network " + number + ":00.0: Mine, Card " + number + "\n" : "";
    }
    WriteFile(DataHome() / "tarvex/pci.ids", typed);
    const RootGuard root(tree.Path());
    const BApplication app("application/x-vnd.Quorvane.SystemTest");
    Log log;
    auto* owner = new TestLooper(LogTo(log));
    owner->Run();
    const auto open = [&] {
        (new AboutSysWindow(owner))->Show();
        ASSERT_TRUE(screen::BecomesActive("About BeOS System"));
    };
    open();
    const std::string machine = "Big <one>\n16 processors, of which windows measure with 8\n"
                                "2048.0 GB of memory\nLinux 6.1";
    LibString version;
    LibGetOSVersion(version);
    std::map<std::string, std::string> with { { "MACHINE", machine },
        { "DEVICES", devices + "and 2 more" }, { "VERSION", version.operator const char*() } };
    for (const char* page : { "ui/SystemMachine", "ui/SystemScreen", "ui/SystemCpu" }) {
        EXPECT_TRUE(screen::ShowsTree("About BeOS System", page, with));
        screen::Key("Right");
    }
    screen::Key("Escape");
    EXPECT_TRUE(log.WaitFor(std::to_string('SYSQ')));
    EXPECT_SOON(!screen::Find("tab_view").exists);
    // As many as a tip has room for.
    for (const char* number : { "30", "31" })
        std::filesystem::remove_all((tree / "sys/bus/pci/devices/0000:") + number + ":00.0");
    open();
    with["DEVICES"] = devices.substr(0, devices.size() - 1);
    EXPECT_TRUE(screen::ShowsTree("About BeOS System", "ui/SystemMachine", with));
    screen::Key("Escape");
    EXPECT_SOON(!screen::Find("tab_view").exists);
    QuitNow(owner);
}
