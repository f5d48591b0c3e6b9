// The benchmark without windows, for servers and scripts.
#include "console/Output.h"
#include "console/RatesAsText.h"
#include "console/Run.h"
#include "console/TestList.h"

#include <MachineRun.h>

#include <cstdio>

namespace {

int Compare(const std::vector<std::string>& files)
{
    Comparison comparison;
    for (const std::string& file : files) {
        const int32 before = comparison.machines.Size();
        if (!comparison.Load({ file.c_str() }))
            return Refuse("cannot read <" + file + ">");
        if (comparison.machines.Size() == before)
            return Refuse("<" + file + "> holds no results");
    }
    PrintComparison(comparison, stdout);
    return kDone;
}

int Explain(const std::string& test)
{
    const auto text = ExplainTest(test);
    if (!text)
        return Refuse("unknown test <" + test + ">, see --list");
    printf("%s", text->c_str());
    return kDone;
}

int Do(int argc, char** argv)
{
    auto parsed = ParseRunOptions({ argv + 1, argv + argc });
    if (const auto* message = std::get_if<std::string>(&parsed))
        return Refuse(*message);
    const auto& options = std::get<RunOptions>(parsed);
    if (const std::string restored = restore_processors(); !restored.empty())
        Tell(restored);
    switch (options.task) {
        case RunOptions::Task::kHelp: printf("%s", RunUsage().c_str()); return kDone;
        case RunOptions::Task::kVersion: printf("tarvex-run %s\n", TARVEX_VERSION); return kDone;
        case RunOptions::Task::kList: printf("%s", TestList().c_str()); return kDone;
        case RunOptions::Task::kExplain: return Explain(options.test);
        case RunOptions::Task::kCompare: return Compare(options.comparison);
        case RunOptions::Task::kRun:
        case RunOptions::Task::kResume: break;
    }
    return RunTask(options);
}

} // namespace

int main(int argc, char** argv)
{
    OpenStandardFiles();
    const int status = Do(argc, argv);
    const std::string why = FinishOutput();
    if (why.empty() || status > kSignalBase)
        return status;
    Tell(why);
    return status == kNothingRun ? kNothingRun : kFailed;
}
