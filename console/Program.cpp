#include "console/Program.h"

#include "console/Compare.h"
#include "console/Output.h"
#include "console/Run.h"
#include "engine/ThisBuild.h"

#include <MachineRun.h>

#include <csignal>
#include <cstdio>

namespace {

int Compare(const std::vector<std::string>& arguments)
{
    const CompareOutcome outcome = CompareTask(arguments, stdout);
    for (const std::string& message : outcome.messages)
        Tell(message);
    return outcome.status;
}

int Do(const std::vector<std::string>& arguments, const GoOn& withWindows)
{
    if (IsCompareTask(arguments))
        return withWindows && DrawsPictures(arguments) ? withWindows() : Compare(arguments);
    auto parsed = ParseRunOptions(arguments);
    if (const auto* message = std::get_if<std::string>(&parsed))
        return Refuse(*message);
    const auto& options = std::get<RunOptions>(parsed);
    if (withWindows && DrawsGraphics(options))
        return withWindows();
    // Also before --help and --list, so that the user learns of it soonest.
    if (const std::string restored = restore_processors(); !restored.empty())
        Tell(restored);
    switch (options.task) {
        case RunOptions::Task::kHelp:
            printf("%s\n       %s", RunUsage().c_str(), CompareUsage().c_str());
            return kDone;
        case RunOptions::Task::kVersion:
            printf("tarvex-run %s\n", ThisBuild().version.c_str());
            return kDone;
        case RunOptions::Task::kList: printf("%s", TestTexts().c_str()); return kDone;
        case RunOptions::Task::kExplain:
            printf("%s", TestTexts(options.tests).c_str());
            return kDone;
        case RunOptions::Task::kRun:
        case RunOptions::Task::kResume: break;
    }
    return RunTask(options);
}

} // namespace

int RunProgram(int argc, char** argv, const GoOn& withWindows)
{
    OpenStandardFiles();
    const int status = Do({ argv + 1, argv + argc }, withWindows);
    const std::string why = FinishOutput();
    // The signal that has ended a run says more than what became of its output.
    if (why.empty() || status > kSignalBase)
        return status;
    // As a shell sees others end whose reader has gone.
    if (IsOutputBroken())
        return kSignalBase + SIGPIPE;
    Tell(why);
    return status == kNothingRun ? kNothingRun : kFailed;
}
