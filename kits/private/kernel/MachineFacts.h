// What the system tells about itself, besides its processors.
#pragma once

#include "SupportDefs.h"

#include <string>
#include <string_view>

namespace kernel {
struct KernelVersion {
    std::string name; // "Linux 6.1.0-13-amd64"
    std::string buildDate; // "Jan 31 2024", "" if the text has none
    std::string buildTime; // "23:59:59", likewise
};

struct MachineFacts {
    KernelVersion version;
    int64 totalBytes = 0; // memory
    int64 usedBytes = 0; // that could not be had without paging out
    bigtime_t bootTime = 0; // microseconds since 1970
};

// Reads root/proc (root "": the running system). What is missing there stays as above.
[[nodiscard]] MachineFacts ReadMachineFacts(const std::string& root);

// Takes the text of /proc/version apart.
[[nodiscard]] KernelVersion ParseKernelVersion(std::string_view text);
} // namespace kernel
