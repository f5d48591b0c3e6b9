#include "results/ResultList.h"

#include "foundation/Utf8.h"

#include <algorithm>

float ResultList::MaxRate() const
{
    double best = 0;
    for (const Results& machine : *this) {
        if (const Metric* metric = machine.Current())
            best = std::max(best, metric->BestRate());
    }
    return static_cast<float>(best);
}

Results* ResultList::Contains(BPoint where)
{
    for (Results& machine : *this) {
        if (machine.Contains(where))
            return &machine;
    }
    return nullptr;
}

int ResultList::MaxNbrCpus() const
{
    int32 most = 0;
    for (const Results& machine : *this)
        most = std::max(most, machine.nbrCpus);
    return most;
}

void ResultList::MakeCurrent(const Metric& probe)
{
    for (Results& machine : *this) {
        const char* name = probe.description;
        if (!machine.Get(&probe))
            fprintf(stderr, "Unable to make given metric <%s> current\n", name);
    }
}

void ResultList::FirstCurrent()
{
    for (Results& machine : *this) {
        if (!machine.First()) {
            // The description may come from somebody's file, and control characters in it would
            // reach the terminal.
            fprintf(stderr, "Unable to make first current <%s>\n",
                LibPrintable(machine.description).c_str());
        }
    }
}

void ResultList::Save(FILE* file, const int& columns) const
{
    for (const Results& machine : *this)
        machine.Save(file, columns);
}

void ResultList::PrintToStream() const
{
    for (const Results& machine : *this)
        machine.PrintToStream();
}
