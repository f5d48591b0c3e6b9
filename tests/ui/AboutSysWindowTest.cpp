#include "ui/AboutSysWindow.h"

#include "tests/kits/kernel/PciTree.h"
#include "tests/support/ScreenDriver.h"

#include <Application.h>

#include <gtest/gtest.h>

TEST(AboutSysWindow, TellsInTipsWhatTheMachineIsAndWhatItsDevicesWereCalled)
{
    std::filesystem::create_directory(DataHome() / "tarvex");
    const MachineTree tree;
    std::string processors, typed = "1af4  Mine\n";
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
    }
    WriteFile(DataHome() / "tarvex/pci.ids", typed);
    const RootGuard root(tree.Path());
    const BApplication app("application/x-vnd.Quorvane.SystemTest");
    auto* window = new AboutSysWindow(be_app);
    window->Show();
    ASSERT_TRUE(screen::BecomesActive("About BeOS System"));
    const auto tipOf = [](const char* view, const std::string& beginning) {
        screen::MoveTo(screen::Settled(view).LeftTop() + BPoint(3, 5));
        EXPECT_SOON(screen::Find("qtooltip_label").text.starts_with(beginning));
        return screen::Find("qtooltip_label").text;
    };
    const std::string machine = "Big <one>\n16 processors, of which windows measure with 8\n"
                                "2048.0 GB of memory\nLinux 6.1";
    const std::string tip = tipOf("platform", machine + "\nNetwork 10:00.0: Mine, Card 10\n");
    EXPECT_TRUE(tip.ends_with("\nNetwork 29:00.0: Mine, Card 29\nand 2 more")) << tip;
    screen::ClickAt(screen::Settled("tab_view").LeftTop() + BPoint(185, 15)); // the last tab
    screen::MoveTo(screen::Settled("nbr_cpu").LeftTop() + BPoint(3, 5));
    EXPECT_SOON(screen::Find("qtooltip_label").text == machine);
    ASSERT_TRUE(window->Lock());
    window->Quit();
}
