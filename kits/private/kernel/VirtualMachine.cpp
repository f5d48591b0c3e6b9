#include "VirtualMachine.h"

#include <algorithm>

namespace kernel {
namespace {
constexpr char kFirmware[] = "/sys/class/dmi/id/";

// What virtual machines write into their firmware, of which real ones have nothing.
const struct {
    const char* words;
    const char* name;
} kFirmwareNames[] = {
    { "VMware", "VMware" },
    { "VirtualBox", "VirtualBox" },
    { "innotek", "VirtualBox" },
    { "Xen", "Xen" },
    { "KVM", "KVM" },
    { "QEMU", "QEMU" },
    { "Bochs", "Bochs" },
    { "Parallels", "Parallels" },
    { "BHYVE", "bhyve" },
    { "Google Compute Engine", "Google Compute Engine" },
    { "OpenStack", "OpenStack" },
    { "Apple Virtualization", "Apple Virtualization" },
};

// Makers that sell real machines with the same words in them.
const struct {
    const char* words;
    const char* name;
} kNamesOfBoth[] = {
    { "Microsoft Corporation", "Hyper-V" },
    { "Amazon EC2", "Amazon EC2" },
    { "Alibaba Cloud", "Alibaba Cloud" },
};

std::string FirmwareText(const SystemTree& tree)
{
    std::string text;
    for (const char* file : { "sys_vendor", "product_name", "board_vendor", "bios_vendor" })
        text += tree.Line(std::string(kFirmware) + file).value_or("") + "\n";
    return text;
}

template <typename Table>
std::optional<std::string> NameIn(const Table& table, const std::string& text)
{
    for (const auto& row : table) {
        if (text.find(row.words) != std::string::npos)
            return row.name;
    }
    return {};
}

// Of the systems that have a file for it; Xen's first domain is a guest too.
std::optional<std::string> NameInFiles(const SystemTree& tree)
{
    std::string text = tree.Line("/sys/hypervisor/type").value_or("") + "\n"
        + tree.Line("/proc/device-tree/hypervisor/compatible").value_or("");
    if (const auto record = tree.Text("/proc/sysinfo")) // z/Architecture
        text += FieldIn(*record, "VM00 Control Program").value_or("");
    static constexpr struct {
        const char* words;
        const char* name;
    } kNames[] = { { "xen", "Xen" }, { "kvm", "KVM" }, { "KVM", "KVM" }, { "z/VM", "z/VM" },
        { "vmware", "VMware" } };
    if (auto name = NameIn(kNames, text))
        return name;
    return Words(text).empty() ? std::nullopt : std::optional<std::string>("unknown kind");
}
} // namespace

std::optional<std::string> VirtualMachineOf(const SystemTree& tree)
{
    const std::string info = tree.Text("/proc/cpuinfo").value_or("");
    const auto flags = FieldIn(info, "flags");
    const std::vector<std::string_view> words = Words(flags.value_or(""));
    const bool hasFlag = std::find(words.begin(), words.end(), "hypervisor") != words.end();
    const std::string firmware = FirmwareText(tree);
    if (auto name = NameInFiles(tree))
        return name;
    if (auto name = NameIn(kFirmwareNames, firmware))
        return name;
    if (hasFlag)
        return NameIn(kNamesOfBoth, firmware).value_or("unknown kind");
    const bool isTold = flags || !Words(firmware).empty() || tree.Has("/proc/sysinfo");
    return isTold ? std::optional<std::string>("none") : std::nullopt;
}

std::optional<std::string> ContainerOf(const SystemTree& tree)
{
    if (auto name = tree.Line("/run/systemd/container"))
        return name;
    if (tree.Has("/run/.containerenv"))
        return "podman";
    if (tree.Has("/.dockerenv"))
        return "docker";
    return {};
}
} // namespace kernel
