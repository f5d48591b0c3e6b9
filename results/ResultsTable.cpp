// The table: machines as lines, metrics as groups of columns, one for each processor count.
#include "results/Results.h"

#include <string>

namespace {

void PutTabs(FILE* file, int count)
{
    for (; count > 0; count--)
        fputc('\t', file);
}

void PutCell(FILE* file, const char* text)
{
    fprintf(file, "%s\t", text);
}

} // namespace

void Metric::Save(FILE* file, const int& columns) const
{
    // The columns go from the most processors down to one, so a machine with fewer has its first
    // ones empty.
    PutTabs(file, columns - Slots());
    for (int slot = 0; slot < Slots(); slot++)
        PutCell(file, FormatRate(Rate(slot)));
}

void Results::SaveHeader(FILE* file, const int& columns) const
{
    PutTabs(file, 1);
    for (const Metric& metric : *this) {
        PutCell(file, metric.description);
        PutTabs(file, columns - 1);
    }
    fputc('\n', file);
}

void Results::SaveUnits(FILE* file, const int& columns) const
{
    PutTabs(file, 1);
    for (const Metric& metric : *this) {
        const char* units = metric.units;
        fprintf(file, "(%s)\t", units);
        PutTabs(file, columns - 1);
    }
    fputc('\n', file);
    PutTabs(file, 1);
    for (int32 metric = 0; metric < Size(); metric++) {
        for (int cpus = columns; cpus > 0; cpus--)
            fprintf(file, "%d cpu\t", cpus);
    }
    fputc('\n', file);
}

void Results::Save(FILE* file, const int& columns) const
{
    PutCell(file, description);
    for (const Metric& metric : *this)
        metric.Save(file, columns);
    fputc('\n', file);
}
