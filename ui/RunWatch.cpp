#include "ui/RunWatch.h"

#include "engine/ThisBuild.h"
#include "results/ProbeMemory.h"

#include <OS.h>

namespace {

constexpr char kShared[] =
    "Shared: another program had the processor meanwhile, or part of its core, or heat slowed it "
    "down.";

size_t NbrCpus()
{
    system_info info {};
    get_system_info(&info);
    return static_cast<size_t>(info.cpu_count);
}

} // namespace

RunRemark RemarkOf(int32 nbrSpans, int32 nbrShared, const std::vector<RunWarning>& warnings)
{
    RunRemark remark;
    if (nbrSpans > 0) {
        const std::string count = nbrShared == 0 ? "None" : std::to_string(nbrShared);
        remark.line = count + " of " + std::to_string(nbrSpans) + " spans "
            + (nbrShared > 1 ? "were" : "was") + " shared";
    }
    remark.more = nbrShared > 0 ? kShared : "";
    for (const RunWarning& warning : warnings) {
        if (warning.id == "asleep")
            remark.line += (remark.line.empty() ? "" : "; ") + warning.text;
        else
            remark.more += (remark.more.empty() ? "" : "\n") + warning.text;
    }
    return remark;
}

void RunWatch::Begin()
{
    details = ReadMachineDetails();
    probeKey = ProbeKey(details, ThisBuild());
    spans.Reset(KeptProbe(probeKey));
    before = ReadMachineState();
}

RunRemark RunWatch::End()
{
    KeepProbe(probeKey, spans.Sustained());
    return RemarkOf(spans.Count(), spans.CountShared(),
        WarningsOfRun(details, before, ReadMachineState(), NbrCpus()));
}
