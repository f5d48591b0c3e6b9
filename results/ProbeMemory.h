// The best SustainedProbe() of each processor model that this user's runs have seen, in the file
// "sustained-probes" of the user's data, see UserData.h: a machine that is slow throughout a run
// cannot know it otherwise.
//
// A value that is too good, of a lucky moment or another clock, makes all later spans look shared.
// So each is forgotten kProbeDays after it was last confirmed: by a probe at most kConfirms times
// as long. A new version or compiler starts anew, as its probe is other code.
#pragma once

#include "results/RunRecord.h"

inline constexpr int kProbeDays = 90;
inline constexpr double kConfirms = 1.02;

// Model and highest clock of the processors, version and compiler. "" where the model is not known:
// then nothing is kept.
[[nodiscard]] std::string ProbeKey(const MachineDetails& details, const BuildDetails& build);

// Infinite where there is none. What cannot be read or understood counts as none.
[[nodiscard]] Probe KeptProbe(const std::string& key);
// Keeps each loop's seconds if they are the best or confirm it. That they could not be kept is no
// error of a run. Of two programs that keep one at the same time one may be lost until its next
// run.
void KeepProbe(const std::string& key, const Probe& probe);

// The same for one loop on the file's text, with days since 1970. The key ends in the loop's name.
namespace probes {
[[nodiscard]] double Find(const std::string& text, const std::string& key, int today);
[[nodiscard]] std::string Merge(
    const std::string& text, const std::string& key, double seconds, int today);
} // namespace probes
