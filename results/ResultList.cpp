#include "results/ResultList.h"

#include <algorithm>

#include "foundation/Utf8.h"

float ResultList::MaxRate()
{
    double best = 0;
    for (const Results* machine = First(); machine != nullptr; machine = Next()) {
        int slot = 0;
        if (const Metric* metric = machine->Current())
            best = std::max(best, metric->MaxRate(slot));
    }
    return static_cast<float>(best);
}

Results* ResultList::Contains(BPoint where)
{
    for (Results* machine = First(); machine != nullptr; machine = Next()) {
        if (machine->Contains(where))
            return machine;
    }
    return nullptr;
}

int ResultList::MaxNbrCpus()
{
    int32 most = 0;
    for (const Results* machine = First(); machine != nullptr; machine = Next())
        most = std::max(most, machine->nbrCpus);
    return most;
}

void ResultList::MakeCurrent(const Metric& probe)
{
    for (Results* machine = First(); machine != nullptr; machine = Next()) {
        const char* name = probe.description;
        if (machine->Get(&probe) == nullptr)
            fprintf(stderr, "Unable to make given metric <%s> current\n", name);
    }
}

void ResultList::FirstCurrent()
{
    for (Results* machine = First(); machine != nullptr; machine = Next()) {
        if (machine->First() == nullptr) {
            fprintf(stderr, "Unable to make first current <%s>\n",
                LibPrintable(machine->description).c_str());
        }
    }
}

void ResultList::Save(FILE* file, const int& columns)
{
    for (Results* machine = First(); machine != nullptr; machine = Next())
        machine->Save(file, columns);
}

void ResultList::PrintToStream()
{
    for (const Results* machine = First(); machine != nullptr; machine = Next())
        machine->PrintToStream();
}
