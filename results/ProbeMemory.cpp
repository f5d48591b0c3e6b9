#include "results/ProbeMemory.h"

#include "foundation/PlainText.h"

#include <UserData.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <sstream>

namespace {

constexpr char kFile[] = "sustained-probes";
constexpr char kCore[] = " | core";
constexpr char kClock[] = " | clock";
constexpr size_t kMostRememberedBytes = 64 << 10;
constexpr double kNone = std::numeric_limits<double>::infinity();

// Other values are no probe's, which takes some 0.1 ms.
constexpr double kShortest = 1e-6;
constexpr double kLongest = 1;

bool IsSane(double seconds)
{
    return seconds >= kShortest && seconds <= kLongest; // not a number: false
}

struct Kept {
    double seconds = 0;
    int day = 0; // when it was confirmed
    std::string key;
};

// "7.1e-05 20778 Model...". Empty if the line is none, or of a day that is too long ago or, the
// clock having been wrong, to come.
std::optional<Kept> KeptOf(const std::string& line, int today)
{
    Kept kept;
    const char* const end = line.data() + line.size();
    const auto [first, error] = std::from_chars(line.data(), end, kept.seconds);
    if (error != std::errc() || first == end || *first != ' ')
        return std::nullopt;
    const auto [second, dayError] = std::from_chars(first + 1, end, kept.day);
    if (dayError != std::errc() || second == end || *second != ' ')
        return std::nullopt;
    kept.key.assign(second + 1, end);
    const bool isOfNow = kept.day <= today + 1 && kept.day >= today - kProbeDays;
    return isOfNow && IsSane(kept.seconds) && !kept.key.empty() ? std::optional(kept)
                                                                : std::nullopt;
}

// The best of each key, in the order of the text.
std::vector<Kept> KeptIn(const std::string& text, int today)
{
    std::vector<Kept> all;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const auto kept = KeptOf(line, today);
        if (!kept)
            continue;
        const auto same = std::find_if(
            all.begin(), all.end(), [&](const Kept& each) { return each.key == kept->key; });
        if (same == all.end())
            all.push_back(*kept);
        else if (kept->seconds < same->seconds)
            *same = *kept;
    }
    return all;
}

int Today()
{
    using namespace std::chrono;
    return static_cast<int>(floor<days>(system_clock::now()).time_since_epoch().count());
}

} // namespace

namespace probes {

double Find(const std::string& text, const std::string& key, int today)
{
    for (const Kept& each : KeptIn(text, today)) {
        if (each.key == key)
            return each.seconds;
    }
    return kNone;
}

std::string Merge(const std::string& text, const std::string& key, double seconds, int today)
{
    std::vector<Kept> all = KeptIn(text, today);
    const auto old =
        std::find_if(all.begin(), all.end(), [&](const Kept& each) { return each.key == key; });
    if (IsSane(seconds) && old == all.end())
        all.push_back({ seconds, today, key });
    else if (IsSane(seconds) && seconds <= old->seconds * kConfirms)
        *old = { std::min(seconds, old->seconds), today, key };

    std::string merged;
    for (const Kept& each : all)
        merged +=
            LibShortestText(each.seconds) + ' ' + std::to_string(each.day) + ' ' + each.key + '\n';
    return merged;
}

} // namespace probes

std::string ProbeKey(const MachineDetails& details, const BuildDetails& build)
{
    if (!details.processorModel)
        return "";
    uint64 clock = 0;
    for (const ProcessorDetails& processor : details.processors)
        clock = std::max(clock, processor.upperLimit.value_or(0));
    std::string key = *details.processorModel + " | " + std::to_string(clock) + " Hz | "
        + build.version + " | " + build.compiler;
    std::replace_if(
        key.begin(), key.end(), [](char c) { return c == '\n' || c == '\0'; }, ' ');
    return key;
}

Probe KeptProbe(const std::string& key)
{
    const auto text = ReadUserData(kFile, kMostRememberedBytes);
    if (!text)
        return kUnknownBest;
    return { probes::Find(*text, key + kCore, Today()),
        probes::Find(*text, key + kClock, Today()) };
}

void KeepProbe(const std::string& key, const Probe& probe)
{
    if (key.empty())
        return;
    const std::string before = ReadUserData(kFile, kMostRememberedBytes).value_or("");
    const std::string core = probes::Merge(before, key + kCore, probe.core, Today());
    const std::string after = probes::Merge(core, key + kClock, probe.clock, Today());
    if (after != before && after.size() <= kMostRememberedBytes)
        static_cast<void>(WriteUserData(kFile, after));
}
