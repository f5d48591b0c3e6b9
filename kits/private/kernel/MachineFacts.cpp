#include "MachineFacts.h"

#include "TextFile.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <regex>

namespace kernel {
namespace {
// The number after a name at the start of a line, 0 if there is none.
int64 LineNumber(const std::string& text, const std::string& name)
{
    size_t position = text.starts_with(name) ? 0 : text.find("\n" + name);
    if (position == std::string::npos)
        return 0;
    position = text.find(name, position) + name.size();
    constexpr long long kMost = 1LL << 50; // nobody has more of anything counted here
    return std::clamp(NumberAt(text.substr(position, 40), 0), 0LL, kMost);
}

std::string DateText(const std::string& month, const std::string& day, const std::string& year)
{
    char text[16];
    snprintf(text, sizeof(text), "%.3s %2d %.4s", month.c_str(), atoi(day.c_str()), year.c_str());
    return text;
}
} // namespace

KernelVersion ParseKernelVersion(std::string_view text)
{
    static const char* const kMonths[] = { "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug",
        "Sep", "Oct", "Nov", "Dec" };
    static const std::regex kName(R"(^(\S+) version (\S+))");
    static const std::regex kDateAndTime(
        R"(([A-Z][a-z]{2}) +(\d\d?) (\d\d:\d\d:\d\d) (?:\S+ )?(\d{4})\b)");
    static const std::regex kDateOnly(R"(\((\d{4})-(\d\d)-(\d\d)\))");
    const std::string bounded(text.substr(0, 1024));
    KernelVersion version { "Linux", "", "" };
    std::smatch match;
    if (std::regex_search(bounded, match, kName))
        version.name = match.str(1) + " " + match.str(2);
    if (std::regex_search(bounded, match, kDateAndTime)) {
        version.buildDate = DateText(match.str(1), match.str(2), match.str(4));
        version.buildTime = match.str(3);
    } else if (std::regex_search(bounded, match, kDateOnly)) {
        const int month = atoi(match.str(2).c_str());
        if (month >= 1 && month <= 12)
            version.buildDate = DateText(kMonths[month - 1], match.str(3), match.str(1));
    }
    return version;
}

MachineFacts ReadMachineFacts(const std::string& root)
{
    MachineFacts facts;
    facts.version = ParseKernelVersion(ReadText(root + "/proc/version"));
    const std::string memory = ReadText(root + "/proc/meminfo");
    int64 available = LineNumber(memory, "MemAvailable:");
    if (available == 0) // an old kernel
        available = LineNumber(memory, "MemFree:") + LineNumber(memory, "Buffers:")
            + LineNumber(memory, "Cached:");
    const int64 total = LineNumber(memory, "MemTotal:");
    facts.totalBytes = total * 1024;
    facts.usedBytes = std::max<int64>(0, total - available) * 1024;
    facts.bootTime = LineNumber(ReadText(root + "/proc/stat"), "btime ") * 1000000;
    return facts;
}
} // namespace kernel
