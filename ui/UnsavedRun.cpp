#include "ui/UnsavedRun.h"

#include "foundation/LibDateTime.h"
#include "results/Results.h"
#include "results/ResultsFile.h"
#include "results/TestCatalogue.h"

#include <OS.h>
#include <UserData.h>

#include <cstdio>
#include <cstring>

namespace {

// Its first line is when the run ended, the rest a results file.
constexpr char kFile[] = "unsaved";
constexpr size_t kMostBytes = 3 * kRecordSize;

bool IsTime(const std::string& line)
{
    return line.size() == strlen("2026-11-21 14:03")
        && line.find_first_not_of("0123456789-: ") == line.npos;
}

} // namespace

std::unique_ptr<Results> UnsavedRun::Read()
{
    kept = ReadUserData(kFile, kMostBytes).value_or("");
    ended = kept.substr(0, kept.find('\n'));
    if (!IsTime(ended) || kept.size() <= ended.size() + 1) {
        kept.clear();
        return nullptr;
    }
    std::string text = kept.substr(ended.size() + 1);
    ResultList list;
    if (FILE* file = fmemopen(text.data(), text.size(), "r")) {
        ReadResults(file, "the unsaved run", list);
        fclose(file);
    }
    Results* first = list.First();
    if (!first || first->Size() == 0 || first->nbrCpus < 1 || first->nbrCpus > B_MAX_CPU_COUNT)
        return nullptr;
    auto run = std::make_unique<Results>(false);
    *run = *first;
    // Records do without them.
    for (Metric* metric = run->First(); metric; metric = run->Next())
        metric->Units(MetricUnits(metric->index));
    return run;
}

void UnsavedRun::Keep(const Results& run)
{
    ended = LibLocalTimeText("%Y-%m-%d %H:%M");
    char record[kRecordSize];
    run.Write(record);
    kept = ended + "\n1.0\n" + std::to_string(strlen(record)) + "\n" + record + "\n";
    if (!WriteUserData(kFile, kept))
        fprintf(stderr, "The results could not be kept for the next start\n");
}

void UnsavedRun::Forget()
{
    if (!kept.empty() && ReadUserData(kFile, kMostBytes) == kept)
        static_cast<void>(WriteUserData(kFile, "")); // it is offered again at the worst
}
