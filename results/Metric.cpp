#include "results/Metric.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

LibString FormatRate(const double& rate)
{
    LibString text;
    text.Formatted("%.1f", rate);
    return text;
}

Metric& Metric::operator=(const Metric& o)
{
    if (this == &o)
        return *this;
    index = o.index;
    nbrTimes = o.nbrTimes;
    std::copy(std::begin(o.times), std::end(o.times), times);
    cycles = o.cycles;
    description = o.description;
    units = o.units;
    return *this;
}

int Metric::Slots() const
{
    // The field is open to all: what stands in it must not lead beyond the times.
    return std::clamp(nbrTimes, 0, kMostTimes);
}

void Metric::Time(const float& seconds)
{
    if (nbrTimes < 0 || nbrTimes >= kMostTimes) {
        const char* name = description;
        fprintf(stderr, "No room for another time of <%s>\n", name);
        return;
    }
    times[nbrTimes++] = seconds;
}

double Metric::Rate(const int& slot) const
{
    const double seconds = slot >= 0 && slot < kMostTimes ? times[slot] : 0;
    return seconds == 0 || cycles == 0 ? seconds : cycles / seconds;
}

double Metric::BestRate() const
{
    int slot = 0;
    return MaxRate(slot);
}

double Metric::MaxRate(int& slot) const
{
    double best = 0;
    for (int i = 0; i < Slots(); i++) {
        if (Rate(i) > best) {
            best = Rate(i);
            slot = i;
        }
    }
    return best;
}

int Metric::NextSmallestRate(float& limit)
{
    int found = -1;
    float best = 0;
    for (int i = 0; i < Slots(); i++) {
        // Narrowed to the limit's type: else a rate could stay below the limit made from itself.
        const auto rate = static_cast<float>(Rate(i));
        if (!drawn[i] && rate < limit && rate > best) {
            best = rate;
            found = i;
        }
    }
    if (found >= 0) {
        drawn[found] = true;
        limit = best;
    }
    return found;
}

void Metric::SetDrawn(const bool& value)
{
    std::fill(std::begin(drawn), std::end(drawn), value);
}

void Metric::SetDrawn(const int& slot, const bool& value)
{
    if (slot >= 0 && slot < kMostTimes)
        drawn[slot] = value;
}

void Metric::PrintToStream() const
{
    // A LibString itself cannot go through the dots of fprintf().
    const char* name = description;
    const char* unit = units;
    fprintf(stderr, "Metric:: <%s> (%d), cycles %d, units <%s>, times", name, index, cycles, unit);
    for (int i = 0; i < Slots(); i++)
        fprintf(stderr, " %f", static_cast<double>(times[i]));
    fprintf(stderr, "\n");
}
