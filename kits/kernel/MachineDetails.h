// Beside the platform's calls: what a record of a run says of the machine it ran on, as far as it
// stays for the run. No name of the host, no user and no serial number is among it.
//
// What the system does not tell, or not to this user, is empty. Texts are single lines of UTF-8.
#pragma once

#include "SupportDefs.h"

#include <optional>
#include <string>
#include <vector>

enum class CoreKind { kPerformance, kEfficiency };

// A processor of the run. The system forgets most of it while the processor is off.
struct ProcessorDetails {
    int number = 0; // the system's
    std::optional<int> core; // repeats from package to package
    std::optional<int> package;
    std::vector<int> siblings; // the processors of its core that are on, itself too; by number
    std::optional<CoreKind> kind; // only where the machine has both
    std::optional<uint64> lowestClock, highestClock; // Hz; what it can
    std::optional<uint64> lowerLimit, upperLimit; // Hz; what it may just now
    std::optional<std::string> clockDriver; // "intel_pstate"
    std::optional<std::string> governor; // "powersave"
    std::optional<std::string> energyPreference; // "balance_performance"
};

struct MachineDetails {
    std::optional<std::string> kernelRelease; // "6.1.0-13-amd64"
    std::optional<std::string> kernelVersion; // "#1 SMP PREEMPT_DYNAMIC Debian 6.1.55-1"
    std::optional<std::string> distribution; // "Debian GNU/Linux 12 (bookworm)"
    std::optional<std::string> processorModel; // "Cortex-A55 + Cortex-A78" where there are kinds
    std::optional<uint64> memory; // bytes
    // "KVM", "unknown kind" of one, "none"; where two are known the outer one may be named.
    std::optional<std::string> virtualMachine;
    std::optional<std::string> container; // "docker"; empty if none is seen
    std::vector<ProcessorDetails> processors; // those that a run can use, see CountProcessors
};

// To be called while all processors are on.
[[nodiscard]] MachineDetails ReadMachineDetails();

// What the processors have in common: CommonText(details, &ProcessorDetails::governor). Empty if it
// is empty for one, or they differ.
[[nodiscard]] std::optional<std::string> CommonText(
    const MachineDetails& details, std::optional<std::string> ProcessorDetails::*field);

struct FileSystemDetails {
    std::string type; // "ext4"
    bool isInMemory = false; // a test of the disk would measure the memory
};

// Where a file or folder lies. Empty if it does not exist or the mounts cannot be read.
[[nodiscard]] std::optional<FileSystemDetails> FileSystemOf(const std::string& path);
