#include "results/Results.h"

#include "sysinfo/LibSysInfo.h"
#include "sysinfo/TypedPciNames.h"
#include "tests/kits/kernel/PciTree.h"
#include "tests/support/Printed.h"
#include "tests/support/Test.h"

namespace {

bool Shows(const Results& machine, const std::array<uint8, 256>& picture)
{
    return memcmp(machine.icon->Bits(), picture.data(), picture.size()) == 0;
}

} // namespace

TEST(Results, SayWhatTheyHoldAndShowWhetherTheyAreExpanded)
{
    ResultList list;
    for (int i = 0; i < 2; i++) {
        auto made = std::make_unique<Results>(false);
        made->Read("PC\x1b (2-x)\t-1:a screen\t200:195/1.0,2.0;700:400/4.0,8.0;");
        list.Insert(std::move(made));
    }
    Results& machine = *list.First();
    LibTimer timer;
    EXPECT_EQ(Printed(list) + Printed(*machine.devices.First()) + Printed(*machine.First())
            + Printed(timer),
        "<PC\\x1b (2-x)>, nbrcpu 2, cpu 3\n<PC\\x1b (2-x)>, nbrcpu 2, cpu 3\n"
        "RelatedDevices:: <a screen>, type -1\n"
        "Metric:: <Memory> (200), cycles 195, units <>, times 1.000000 2.000000\n"
        "LibTimer:: start 0, stop 0\n");
    std::string times;
    for (const int slot : { -1, 0, 1, 2, 7, 8 })
        times += std::to_string(static_cast<int>(machine.Time(slot))) + " ";
    EXPECT_EQ(times, "0 5 10 0 0 0 ");

    for (Results& each : list)
        each.frame.Set(2, 20, 17, 35);
    list.Get(1L)->frame.OffsetBy(0, 17);
    EXPECT_TRUE(Shows(machine, Processor) && !list.Contains(BPoint(18, 20)));
    EXPECT_TRUE(list.Contains(BPoint(17, 35)) == &machine && Shows(machine, ProcessorOpen));
    EXPECT_EQ(list.Contains(BPoint(2, 37)), list.Get(1L));
    Results copy(true);
    copy = machine;
    EXPECT_TRUE(Shows(copy, ProcessorOpen) && copy.expanded && copy.pass == -1);
    EXPECT_TRUE(copy.Contains(BPoint(2, 20)) && Shows(copy, Processor));
    machine.Reset();
    EXPECT_TRUE(Shows(machine, Processor));
    EXPECT_TRUE(Shows(*Results::FromRecord("PC (1-x)\t700:1/1.000000;", LibSysInfo()), Processor));

    Metric sieve;
    sieve.Description("Sieve");
    testing::internal::CaptureStderr();
    list.FirstCurrent();
    list.MakeCurrent(sieve);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "Unable to make first current <" + std::string(machine.description)
            + ">\nUnable to make given metric <Sieve> current\n");
    EXPECT_EQ(list.MaxRate(), 100);
    EXPECT_EQ(list.MaxNbrCpus(), std::max(machine.nbrCpus, 2));
}

TEST(Results, FillTheseDevicesNamesTheScreenAndTheFirstDeviceOfEachClass)
{
    const std::string folder = DataHome() / "tarvex";
    const ThisMachine tree;
    AddPciFunction(tree, "0000:00:01.0", PciConfig(0x10de, 0x0020, 0x030000));
    AddPciFunction(tree, "0000:00:02.0", PciConfig(0x102b, 0x0521, 0x030000));
    AddPciFunction(tree, "0000:00:03.0", PciConfig(0x1af4, 0x1000, 0x020000));
    AddPciFunction(tree, "0000:00:07.0", PciConfig(0x8086, 0x7110, 0x060100));
    const LibSysInfo machine;
    Results results(true);
    results.FillTheseDevices();
    char record[kRecordSize];
    EXPECT_TRUE(results.Write(record));
    LibString screen;
    screen.Formatted("\t-1:%s, %dx%d resolution\t", machine.ScreenDepthStr(), machine.screenWidth,
        machine.screenHeight);
    EXPECT_STREQ(strchr(record, '\t'),
        (std::string(screen.operator const char*())
            + "6:Intel Corporation, PIIX4 ISA Bridge\t3:Nvidia Corporation, Riva TNT\t"
              "2:Unknown, Unknown\t")
            .c_str());

    std::filesystem::create_directory(folder);
    WriteFile(folder + "/pci.ids", "1af4  Mine\n\t1000  Card\n");
    EXPECT_TRUE(TypedPciNames::SetForResults(true));
    Results named(true);
    named.FillTheseDevices();
    std::string last;
    for (const RelatedDevices& device : named.devices)
        last = device.description;
    EXPECT_EQ(last, "Mine, Card");
    EXPECT_TRUE(TypedPciNames::SetForResults(false));
}
