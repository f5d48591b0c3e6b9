#include "MachineFacts.h"
#include "MachineTree.h"
#include "SystemTree.h"

#include <MachineState.h>
#include <OS.h>

namespace {
using Numbers = std::vector<int>;
const Numbers kFirstEight = { 0, 1, 2, 3, 4, 5, 6, 7 };

const struct {
    const char* name;
    Numbers numbers; // of the processors used
    size_t described; // of them
    cpu_type type;
    int64 clock;
    int32 pages;
    const char* model;
    std::optional<uint64> memory;
    int core, package; // of the one described
    Numbers siblings;
    std::optional<uint64> highestClock;
    std::optional<std::string> governor;
    std::optional<uint64> coreThrottles; // of all processors
} kCaptures[] = {
    { "2i386-2c-nohugepage", { 0, 1 }, 1, B_CPU_INTEL_X86, 2000000000, 518857,
        "Intel(R) Xeon(R) CPU 5130 @ 2.00GHz", 2125238272, 1, 0, { 1 }, {}, {}, {} },
    { "8em64t-2s4c-asymcaches", kFirstEight, 7, B_CPU_INTEL_X86, 2330000000, 524287,
        "Intel(R) Xeon(R) CPU E5345 @ 2.33GHz", 16863531008, 3, 1, { 7 }, {}, {}, 0 },
    // 2, 5, 13 and 14 are off; 8 shares a core with 0.
    { "16em64t-4s2c2t-offlines", { 0, 1, 3, 4, 6, 7, 10, 8 }, 7, B_CPU_INTEL_X86, 2600000000, 0,
        "Intel(R) Xeon(TM) CPU 2.60GHz", {}, 0, 0, { 0, 8 }, {}, {}, 0 },
    // Two of the six fast cores have a higher clock, 12 and 13 are slow.
    { "20em64t-hybrid-1p6c2t+2ca4co1t", { 0, 4, 8, 2, 6, 10, 12, 13 }, 1, B_CPU_INTEL_X86,
        5200000000, 524287, "13th Gen Intel(R) Core(TM) i7-1370P", 33269243904, 8, 0, { 4, 5 },
        5200000000, "powersave", {} },
    { "48amd64-4pa2n6c-sparse", kFirstEight, 7, B_CPU_AMD_X86, 1700000000, 524287,
        "AMD Engineering Sample", 101583552512, 1, 0, { 7 }, 1700000000, "performance", {} },
    // Two processors share a core.
    { "64amd64-4s2n4ca2co", { 0, 2, 4, 6, 8, 10, 12, 14 }, 7, B_CPU_AMD_X86, 2300161000, 524287,
        "AMD Opteron(TM) Processor 6276", 126970253312, 6, 0, { 14, 15 }, {}, {}, {} },
    { "40intel64-2g2n4c+pcilocality", kFirstEight, 7, B_CPU_INTEL_X86, 2400000000, 524287,
        "Intel(R) Xeon(R) CPU E7- 4870 @ 2.40GHz", 542134673408, 1, 3, { 7 }, {}, {}, 237 },
};

std::optional<uint64> CoreThrottles(const MachineState& state)
{
    std::optional<uint64> sum;
    for (const ProcessorTimes& processor : state.processors) {
        if (processor.coreThrottles)
            sum = sum.value_or(0) + *processor.coreThrottles;
    }
    return sum;
}
} // namespace

TEST(MachineDetails, OfRealMachines)
{
    for (const auto& capture : kCaptures) {
        SCOPED_TRACE(capture.name);
        const MachineTree tree;
        if (!tree.Unpack(capture.name,
                "--exclude='*/cache' --exclude='*/cpuidle' --exclude='*/stats' --exclude='*/pci*' "
                "'*/proc/*' '*/sys/[cd]*'"))
            GTEST_SKIP() << "no captured machine <" << capture.name << ">";
        const RootGuard root(tree.Path());
        EXPECT_EQ(kernel::Processors::Get()->Numbers(), capture.numbers);
        system_info info;
        ASSERT_EQ(get_system_info(&info), B_OK);
        EXPECT_EQ(std::tuple(info.cpu_type, info.cpu_clock_speed, info.max_pages),
            std::tuple(capture.type, capture.clock, capture.pages));
        EXPECT_GT(info.cpu_infos[0].active_time, 0);
        EXPECT_GT(info.boot_time, 1200000000000000);
        const MachineDetails details = ReadMachineDetails();
        EXPECT_EQ(details.processorModel, capture.model);
        EXPECT_EQ(details.memory, capture.memory);
        EXPECT_EQ(details.virtualMachine, "none");
        EXPECT_EQ(CommonText(details, &ProcessorDetails::governor), capture.governor);
        ASSERT_GT(details.processors.size(), capture.described);
        const ProcessorDetails& processor = details.processors[capture.described];
        EXPECT_EQ(std::tuple(processor.core, processor.package, processor.siblings),
            std::tuple(capture.core, capture.package, capture.siblings));
        EXPECT_EQ(processor.highestClock, capture.highestClock);
        EXPECT_EQ(processor.upperLimit, capture.highestClock);
        EXPECT_FALSE(processor.kind);
        EXPECT_EQ(CoreThrottles(ReadMachineState()), capture.coreThrottles);
    }
}

TEST(MachineDetails, WhatIsMissingOrDamagedIsEmpty)
{
    const ThisMachine tree;
    for (const char* contents :
        { "", "\xff\xfe\0\n", "-1 -1", "99999999999999999999999", "\":=\\" }) {
        SCOPED_TRACE(contents);
        for (const char* file :
            { "proc/meminfo", "proc/stat", "proc/loadavg", "proc/version", "proc/self/mountinfo",
                "sys/class/powercap/intel-rapl:0/energy_uj", "sys/class/thermal/thermal_zone0/temp",
                "sys/devices/system/cpu/cpu0/topology/core_id",
                "sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq" })
            tree.Write(file, contents);
        tree.Write("sys/class/powercap/intel-rapl:0/name", "package-0");
        tree.Write("sys/class/thermal/thermal_zone0/type", "x86_pkg_temp");
        const MachineDetails details = ReadMachineDetails();
        EXPECT_FALSE(details.memory || details.distribution || details.processorModel);
        EXPECT_FALSE(details.kernelRelease || details.kernelVersion || details.virtualMachine);
        EXPECT_FALSE(details.processors[0].core || details.processors[0].highestClock);
        EXPECT_FALSE(FileSystemOf("/"));
        const MachineState state = ReadMachineState();
        EXPECT_FALSE(state.load1 || state.temperature || state.onBattery || state.asleep);
        EXPECT_TRUE(state.processors.empty() && state.energy.empty());
    }
}

TEST(MachineDetails, LinesAreFitForARecord)
{
    EXPECT_EQ(kernel::PlainLine("  a\tb \x01\xff\xc3\xa4\r\nnext"), "a b ??\xc3\xa4");
    EXPECT_EQ(kernel::PlainLine(std::string(199, 'a') + "\xc3\xa4"), std::string(199, 'a'));
}

TEST(MachineDetails, DistributionAsTheShellReadsIt)
{
    const std::pair<const char*, const char*> rows[] = {
        { "NAME=x\nPRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\n",
            "Debian GNU/Linux 12 (bookworm)" },
        { "PRETTY_NAME='A \"B\" \\'", "A \"B\" \\" },
        { "PRETTY_NAME=\"The \\\"B\\\" \\$1\"", "The \"B\" $1" },
        { "PRETTY_NAME=Plain\nPRETTY_NAME=Other", "Plain" },
    };
    for (const auto& [text, name] : rows) {
        const ThisMachine tree;
        tree.Write("usr/lib/os-release", text);
        EXPECT_EQ(ReadMachineDetails().distribution, name);
    }
}

TEST(MachineDetails, ModelsOfOtherProcessors)
{
    using kernel::ProcessorModelIn;
    const std::string slow = "CPU implementer\t: 0x41\nCPU part\t: 0xd05\n\n";
    const std::string fast = "CPU implementer\t: 0x41\nCPU part\t: 0xd41\n\n";
    EXPECT_EQ(ProcessorModelIn(slow + slow + fast), "Cortex-A55 + Cortex-A78");
    EXPECT_EQ(ProcessorModelIn("CPU implementer : 0x61\nCPU part : 0xd05\n"),
        "Arm, maker 0x61, part 0xd05");
    EXPECT_EQ(
        ProcessorModelIn("processor 0: version = FF,  identification = 0133E8,  machine = 3906"),
        "machine 3906");
    EXPECT_EQ(
        ProcessorModelIn("cpu\t\t: POWER9, altivec supported\n"), "POWER9, altivec supported");
    EXPECT_EQ(ProcessorModelIn("CPU implementers"), std::nullopt);
}

TEST(MachineDetails, VirtualMachinesAreNamed)
{
    const std::tuple<const char*, const char*, const char*> rows[] = {
        { "fpu hypervisor", "", "unknown kind" },
        { "fpu hypervisor", "QEMU", "QEMU" },
        { "fpu", "QEMU", "QEMU" }, // it can hide the flag
        { "fpu hypervisor", "Microsoft Corporation", "Hyper-V" },
        { "fpu", "Microsoft Corporation", "none" },
        { "fpu hypervisors", "", "none" },
    };
    for (const auto& [flags, vendor, name] : rows) {
        SCOPED_TRACE(vendor);
        const ThisMachine tree;
        tree.Write("proc/cpuinfo", std::string("processor: 0\nflags\t\t: ") + flags + "\n");
        tree.Write("sys/class/dmi/id/sys_vendor", vendor);
        EXPECT_EQ(ReadMachineDetails().virtualMachine, name);
    }
}

TEST(MachineDetails, FastAndSlowCores)
{
    using Kind = std::optional<CoreKind>;
    const auto kinds = [](const MachineTree& tree) {
        const RootGuard root(tree.Path());
        std::vector<Kind> found(2);
        for (const ProcessorDetails& processor : ReadMachineDetails().processors)
            found[static_cast<size_t>(processor.number)] = processor.kind;
        return found;
    };
    const std::string capacity = "/cpu_capacity", cpu = "sys/devices/system/cpu/cpu";
    const MachineTree told;
    told.Write(cpu + "0" + capacity, "446");
    told.Write(cpu + "1" + capacity, "1024");
    EXPECT_EQ(kinds(told), (std::vector<Kind> { CoreKind::kEfficiency, CoreKind::kPerformance }));
    told.Write(cpu + "0" + capacity, "1009");
    EXPECT_EQ(kinds(told), (std::vector<Kind> { {}, {} }));
    told.Write("sys/devices/cpu_core/cpus", "0\n");
    told.Write("sys/devices/cpu_atom/cpus", "1\n");
    EXPECT_EQ(kinds(told), (std::vector<Kind> { CoreKind::kPerformance, CoreKind::kEfficiency }));
}

TEST(MachineDetails, TheInnermostMountHoldsAFile)
{
    const ThisMachine tree;
    const std::string folder = tree / "a b";
    std::filesystem::create_directory(folder);
    std::filesystem::create_directory(folder + "c");
    const std::string escaped = tree.Path() + "/a\\040b";
    tree.Write("proc/self/mountinfo",
        "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n2 1 0:5 / " + escaped
            + " rw shared:1 - tmpfs tmpfs rw\n3 1 0:6 / " + tree.Path()
            + "/a rw - xfs /dev/sdb rw\n4 1 cut\n");
    EXPECT_EQ(FileSystemOf(tree.Path()).value().type, "ext4");
    EXPECT_FALSE(FileSystemOf(tree.Path())->isInMemory);
    EXPECT_EQ(FileSystemOf(folder).value().type, "tmpfs");
    EXPECT_TRUE(FileSystemOf(folder)->isInMemory);
    EXPECT_EQ(FileSystemOf(folder + "c").value().type, "ext4");
    EXPECT_FALSE(FileSystemOf(folder + "/missing"));
}
