// The bytes are files of /proc and /sys, in the order of a list, with a line "--" between them.
#include "MachineDetails.h"
#include "MachineState.h"
#include "PCI.h"
#include "Processors.h"
#include "tests/fuzz/MemoryFolder.h"

#include <set>

namespace {

constexpr const char* kFiles[] = { "proc/cpuinfo", "sys/devices/system/cpu/present",
    "sys/devices/system/cpu/online", "sys/devices/system/cpu/cpu1/topology/thread_siblings_list",
    "sys/devices/system/cpu/cpu1/topology/core_id",
    "sys/devices/system/cpu/cpu1/cpufreq/cpuinfo_max_freq",
    "sys/devices/system/cpu/cpu1/cpu_capacity", "sys/devices/cpu_atom/cpus", "proc/meminfo",
    "proc/stat", "proc/loadavg", "proc/version", "proc/self/mountinfo", "etc/os-release",
    "sys/bus/pci/devices/0000:00:01.0/config", "sys/bus/pci/devices/0000:00:01.0/resource",
    "sys/bus/pci/devices/0000:00:01.0/class", "sys/class/powercap/intel-rapl:0/name",
    "sys/class/powercap/intel-rapl:0/energy_uj", "sys/class/thermal/thermal_zone0/type",
    "sys/class/thermal/thermal_zone0/temp", "sys/class/power_supply/BAT0/capacity",
    "sys/class/dmi/id/sys_vendor", "sys/hypervisor/type" };

void WriteFiles(const MemoryFolder& root, std::string_view bytes)
{
    constexpr std::string_view kBetween = "\n--\n";
    for (const char* file : kFiles) {
        const size_t end = bytes.find(kBetween);
        root.Write(file, bytes.substr(0, end));
        bytes.remove_prefix(end == bytes.npos ? bytes.size() : end + kBetween.size());
    }
}

void CheckLine(const std::optional<std::string>& text)
{
    Require(!text || (!text->empty() && text->size() <= 200), "a text is short");
    Require(!text || text->find('\n') == text->npos, "a text is one line");
}

void CheckProcessors(const MachineDetails& details)
{
    std::set<int> numbers;
    for (const ProcessorDetails& processor : details.processors) {
        Require(numbers.insert(processor.number).second, "each processor counts once");
        CheckLine(processor.governor);
    }
    Require(!numbers.empty(), "something runs this");
    system_info info {};
    Require(get_system_info(&info) == B_OK && info.cpu_count >= 1 && info.cpu_count <= 8,
        "one to eight processors");
    Require(info.max_pages >= 0 && info.used_pages >= 0, "pages are counted");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const MemoryFolder sRoot;
    WriteFiles(sRoot, std::string_view(reinterpret_cast<const char*>(data), size));
    kernel::Processors::SetRoot(sRoot.Path());
    const MachineDetails details = ReadMachineDetails();
    CheckProcessors(details);
    for (const auto& text : { details.kernelRelease, details.kernelVersion, details.distribution,
             details.processorModel, details.virtualMachine, details.container })
        CheckLine(text);
    const MachineState state = ReadMachineState();
    static_cast<void>(ChangeBetween(state, ReadMachineState()));
    static_cast<void>(FileSystemOf("/"));
    pci_info info;
    for (long i = 0; get_nth_pci_info(i, &info) == B_OK; i++)
        Require(i == 0, "there is one device");
    return 0;
}
