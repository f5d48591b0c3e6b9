// What machines tell of themselves, by the texts of their files.
#include "MachineTree.h"
#include "tests/support/Rows.h"

#include <OS.h>
#include <PCI.h>
#include <RunWarnings.h>
#include <ThreadMoment.h>

namespace {
using ::Text;

template <class Value>
std::string Text(const Value& value)
{
    return Text(std::make_optional(value));
}

std::string Text(const std::vector<int>& numbers)
{
    std::string text;
    for (const int number : numbers)
        text += (text.empty() ? "" : ",") + std::to_string(number);
    return text;
}

// With blanks between them.
template <class... Values>
std::string Line(const Values&... values)
{
    std::string line;
    for (const std::string& text : { Text(values)... })
        line += (line.empty() ? "" : " ") + (text.empty() ? "-" : text);
    return line;
}

using Facts = std::map<std::string, std::string>;

void AddProcessors(Facts& facts, const MachineDetails& details, const MachineState& state)
{
    for (const ProcessorDetails& one : details.processors) {
        const std::string name = "processor " + std::to_string(one.number) + " ";
        facts[name + "core"] = Line(one.package, one.core, one.siblings);
        facts[name + "clock"] =
            Line(one.lowestClock, one.highestClock, one.lowerLimit, one.upperLimit);
        facts[name + "governor"] = Line(one.clockDriver, one.governor, one.energyPreference);
        if (one.kind)
            facts[name + "kind"] = *one.kind == CoreKind::kPerformance ? "fast" : "slow";
    }
    for (const ProcessorTimes& one : state.processors)
        facts["processor " + std::to_string(one.number) + " times"] =
            Line(one.total, one.busy, one.stolen, one.coreThrottles, one.packageThrottles);
}

template <class... Numbers>
std::string Hex(const Numbers&... numbers)
{
    std::ostringstream text;
    ((text << ' ' << std::hex << +numbers), ...);
    return text.str().substr(1);
}

void AddFunctions(Facts& facts)
{
    pci_info info;
    for (const long behindAll : { -1L, 0x100000000L })
        EXPECT_EQ(get_nth_pci_info(behindAll, &info), B_ERROR);
    EXPECT_EQ(get_nth_pci_info(0, nullptr), B_BAD_VALUE);
    memset(&info, 'x', sizeof info);
    for (long i = 0; get_nth_pci_info(i, &info) == B_OK; i++) {
        const std::string name = "function " + std::to_string(i) + " ";
        facts[name + "is"] = Hex(info.bus, info.device, info.function, info.vendor_id,
            info.device_id, info.class_base, info.class_sub, info.class_api, info.revision,
            info.line_size, info.latency, info.header_type, info.bist);
        // The header by its type, as it lies in memory: words of 32 bits.
        uint32 words[sizeof info.u / sizeof(uint32)];
        memcpy(words, &info.u, sizeof words);
        std::string& header = facts[name + "header"];
        for (const uint32 word : words)
            header += (header.empty() ? "" : " ") + Hex(word);
    }
}

Facts ReadFacts()
{
    const MachineDetails details = ReadMachineDetails();
    const MachineState state = ReadMachineState();
    const ThreadMoment moment = ReadThreadMoment(3);
    const auto folder = FileSystemOf("/usr/bin");
    system_info info;
    memset(&info, 'x', sizeof info);
    EXPECT_EQ(get_system_info(&info), B_OK);
    const auto& times = info.cpu_infos;
    Facts facts = {
        { "active", Line(times[0].active_time, times[1].active_time, times[7].active_time) },
        { "asleep", Line(state.asleep, state.sleeps) },
        { "battery", Line(state.onBattery, state.batteryPercent, state.mainsOnline) },
        { "boot", Text(info.boot_time) },
        { "clock", Line(info.cpu_clock_speed, info.bus_clock_speed) },
        { "container", Text(details.container) },
        { "distribution", Text(details.distribution) },
        { "folder", folder ? Line(folder->type, folder->isInMemory) : "none" },
        { "governor", Text(CommonText(details, &ProcessorDetails::governor)) },
        { "kernel", Line(info.kernel_name, info.kernel_build_date, info.kernel_build_time) },
        { "load", Line(state.load1, state.load5, state.load15) },
        { "memory", Text(details.memory) },
        { "model", Text(details.processorModel) },
        { "pages", Line(info.used_pages, info.max_pages) },
        { "processors",
            Line(info.cpu_count, CountProcessors(), details.processors.size(),
                kernel::Processors::Get()->Numbers()) },
        { "release", Text(details.kernelRelease) },
        { "temperature", Text(state.temperature) },
        { "throttles of 3", Text(moment.throttles) },
        { "type", Line(Hex(info.cpu_type), info.cpu_revision, info.platform_type) },
        { "version", Text(details.kernelVersion) },
        { "virtual", Text(details.virtualMachine) },
        { "waited", Text(moment.waited) },
    };
    for (const EnergyCounter& counter : state.energy)
        facts["energy " + counter.name] = Line(counter.microjoules, "of", counter.range);
    AddProcessors(facts, details, state);
    AddFunctions(facts);
    return facts;
}

void AddChange(Facts& facts, const MachineState& before, size_t used)
{
    const MachineDetails details = ReadMachineDetails();
    const MachineState after = ReadMachineState();
    const MachineChange change = ChangeBetween(before, after);
    facts["change"] = Line(change.stolen, change.throttles, change.joules, change.sleeps);
    for (const ProcessorChange& one : change.processors)
        facts["change of " + std::to_string(one.number)] =
            Line(one.busy, one.stolen, one.coreThrottles, one.packageThrottles);
    for (const SiblingUse& one : UnusedSiblings(details, used, change))
        facts["sibling " + std::to_string(one.number)] = Line("of", one.of, one.busy);
    std::string &all = facts["warnings"], &ofRun = facts["warnings of run"];
    for (const RunWarning& warning : WarningsBeforeRun(details, before, after, { used, {}, {} })) {
        facts["warning " + warning.id] = warning.text;
        all += (all.empty() ? "" : " ") + warning.id;
    }
    for (const RunWarning& warning : WarningsOfRun(details, before, after, used))
        ofRun += (ofRun.empty() ? "" : " ") + warning.id;
}

// Of each processor its number, its siblings and its switch, if it has one, then maybe its clock in
// MHz and its capacity: "0[0-1] 1[0-1]on@2000*500".
void WriteProcessors(const MachineTree& tree, const std::string& processors)
{
    static const std::regex kForm(R"((\d+)\[(\S*)\](on|off)?(?:@(\d+))?(?:\*(\d+))?)");
    for (std::sregex_iterator at(processors.begin(), processors.end(), kForm), end; at != end;
         ++at) {
        const std::smatch& match = *at;
        const std::string folder = "sys/devices/system/cpu/cpu" + match.str(1) + "/";
        tree.Write(folder + "topology/thread_siblings_list", match.str(2) + "\n");
        if (match[3].matched)
            tree.Write(folder + "online", match.str(3) == "on" ? "1\n" : "0\n");
        if (match[4].matched)
            tree.Write(folder + "cpufreq/cpuinfo_max_freq", match.str(4) + "000\n");
        if (match[5].matched)
            tree.Write(folder + "cpu_capacity", match.str(5) + "\n");
    }
}

// Makes what a row says: files with their texts, or what stands for some of them. False where there
// is no such captured machine.
bool Make(
    const MachineTree& tree, const Row& row, std::optional<MachineState>& before, size_t& used)
{
    for (size_t i = 0; i < row.size(); i += 2) {
        if (row[i] == "then") {
            before = ReadMachineState(), i++;
            pci_info asked;
            static_cast<void>(get_nth_pci_info(0, &asked));
        }
        const std::string& text = row.at(i + 1);
        if (row[i] == "used")
            used = std::stoul(text);
        else if (row[i] == "processors")
            WriteProcessors(tree, text);
        else if (row[i] != "captured")
            tree.Write(row[i], text);
        else if (!tree.Unpack(text,
                     "--exclude='*/cache' --exclude='*/cpuidle' --exclude='*/stats' "
                     "--exclude='*/pci*' '*/proc/*' '*/sys/[cd]*'"))
            return false;
    }
    kernel::Processors::SetRoot(tree.Path()); // which looks anew
    return true;
}

void ExpectTold(const char* table)
{
    const Facts bare = [] {
        const ThisMachine none;
        return ReadFacts();
    }();
    for (const TextRow& row : ReadRows(table)) {
        SCOPED_TRACE(row.given);
        const ThisMachine tree;
        std::optional<MachineState> before;
        size_t used = B_MAX_CPU_COUNT;
        if (!Make(tree, RowOf(row.given), before, used))
            continue; // as in a copy of the sources alone
        Facts facts = ReadFacts();
        if (before)
            AddChange(facts, *before, used);
        std::string told;
        for (const auto& [name, value] : facts) {
            const auto other = bare.find(name);
            const bool isNew = other == bare.end() ? value.find_first_not_of("- ") != value.npos
                                                   : value != other->second;
            const bool isAsked = ("\n" + row.told).find("\n" + name + ": ") != value.npos;
            // Of a captured one, which tells hundreds, only what is asked for.
            if (isAsked || (isNew && !row.given.starts_with("captured")))
                told += "\n" + name + ": " + value;
        }
        EXPECT_EQ(told, row.told.empty() ? "" : "\n" + row.told);
    }
}
} // namespace

TEST(Machine, IsToldByItsFiles)
{
    ExpectTold("kits/kernel/data/machines.txt");
}

TEST(Machine, ChangesAndTheirWarningsAreToldByItsFiles)
{
    ExpectTold("kits/kernel/data/changes.txt");
}
