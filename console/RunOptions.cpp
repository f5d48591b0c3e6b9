#include "console/Run.h"

#include <MachineRun.h>

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

namespace {

// Appends the flags that name stands for. Returns false for a name that stands for none.
bool AppendGroup(std::string_view name, RunOptions& options)
{
    const size_t before = options.groups.size();
    for (size_t i = 0; i < kNbrTestGroups; i++) {
        const TestGroup& group = kTestGroups[i];
        if (name == group.key || (name == "all" && group.box != GroupBox::kNone)) {
            options.groups.push_back(kGroupRuns[i].selected);
            options.plan.groups.push_back(group.key);
        }
    }
    return options.groups.size() > before;
}

std::string Unknown(const char* what, std::string_view name)
{
    return std::string("unknown ") + what + " <" + std::string(name) + ">";
}

std::string TakeGroupList(const std::string& value, RunOptions& options)
{
    return ForEachName(value, [&](std::string_view name) {
        return AppendGroup(name, options) ? "" : Unknown("test group", name);
    });
}

std::string TakeOutput(const std::string& value, RunOptions& options)
{
    options.output = value;
    return "";
}

std::string TakeCounts(const std::string& value, RunOptions& options)
{
    constexpr size_t kMostCounts = 8;
    const int32 all = CountProcessors();
    return ForEachName(value, [&](std::string_view name) -> std::string {
        int32 count = 0;
        auto& counts = options.plan.counts;
        if (!ParseNumber(name, count) || count < 1 || count > all)
            return "<--cpus> takes numbers from 1 to " + std::to_string(all) + ", not <"
                + std::string(name) + ">";
        if (std::count(counts.begin(), counts.end(), count) > 0)
            return "<--cpus> names " + std::to_string(count) + " twice";
        if (counts.size() == kMostCounts)
            return "<--cpus> takes eight numbers at most";
        counts.push_back(count);
        return "";
    });
}

std::string TakeRepeats(const std::string& value, RunOptions& options)
{
    if (ParseNumber(value, options.plan.repeats) && options.plan.repeats >= 1
        && options.plan.repeats <= kMostRepeats)
        return "";
    return "<--repeat> takes a number from 1 to " + std::to_string(kMostRepeats) + ", not <" + value
        + ">";
}

std::string TakeUntil(const std::string& value, RunOptions& options)
{
    options.plan.untilPercent = ParsePercent(value);
    return options.plan.untilPercent.value_or(0) > 0
        ? ""
        : "<--until> takes a percentage above 0, to 100, not <" + value + ">";
}

std::string TakeLabel(const std::string& value, RunOptions& options)
{
    constexpr size_t kMostBytes = 200;
    const auto isControl = [](unsigned char byte) { return byte < ' ' || byte == 127; };
    if (value.size() > kMostBytes || std::any_of(value.begin(), value.end(), isControl))
        return "<--label> takes one line of at most 200 bytes";
    options.label = value;
    return "";
}

std::string TakeFormat(const std::string& value, RunOptions& options)
{
    return TakeNamed({ "--format", value }, kFormats, options.format);
}

std::string TakeJournal(const std::string& value, RunOptions& options)
{
    options.task = RunOptions::Task::kResume;
    options.journal = value;
    return "";
}

std::string TakeTest(const std::string& value, RunOptions& options)
{
    options.task = RunOptions::Task::kExplain;
    options.tests = TestsCalled(value);
    return options.tests.empty() ? Unknown("test", value) + ", see --list" : "";
}

struct RunOption {
    std::string_view name;
    const char* needs; // what stands behind it
    std::string (*take)(const std::string& value, RunOptions& options);
};

constexpr RunOption kRunOptions[] = {
    { "--groups", "a list of test groups", TakeGroupList },
    { "--output", "a file name", TakeOutput },
    { "--cpus", "a list of processor counts", TakeCounts },
    { "--repeat", "a number", TakeRepeats },
    { "--until", "a percentage", TakeUntil },
    { "--label", "a name", TakeLabel },
    { "--format", "table, csv, tsv or json", TakeFormat },
    { "--resume", "the journal of a run", TakeJournal },
    { "--explain", "a test", TakeTest },
};

// Those that stand alone. False for all others.
bool TakeSwitch(const std::string& argument, RunOptions& options)
{
    if (argument == "--anyway")
        options.anyway = true;
    else if (argument == "--list")
        options.task = RunOptions::Task::kList;
    else if (argument == "--help")
        options.task = RunOptions::Task::kHelp;
    else
        return false;
    return true;
}

// What a run needs, and what does not go together.
std::string Check(const RunOptions& options, const std::set<std::string>& given)
{
    const auto isGiven = [&](const char* name) { return given.contains(name); };
    if (options.task == RunOptions::Task::kResume) {
        for (const char* name : { "--groups", "--cpus", "--repeat", "--until", "--label" }) {
            if (isGiven(name))
                return "<--resume> goes on as the run was begun: without <" + std::string(name)
                    + ">";
        }
        return "";
    }
    if (options.task != RunOptions::Task::kRun)
        return "";
    if (options.groups.empty())
        return "<--groups> is missing: which tests to run, see --help";
    if (options.output.empty())
        return "<--output> is missing: the results file to write, see --help";
    if (isGiven("--repeat") && isGiven("--until"))
        return "<--repeat> and <--until> do not go together";
    if (isGiven("--cpus") && options.output != "-" && !FormatOfFile(options.output))
        return "with <--cpus> a results file cannot hold the run: <--output> takes a name that "
               "ends "
               "in .json, .csv or .tsv";
    return "";
}

} // namespace

std::variant<RunOptions, std::string> ParseRunOptions(const std::vector<std::string>& arguments)
{
    RunOptions options;
    // Whatever else stands there, a comparison too.
    if (std::count(arguments.begin(), arguments.end(), "--version") > 0) {
        options.task = RunOptions::Task::kVersion;
        return options;
    }
    std::set<std::string> given;
    size_t position = 0;
    while (position < arguments.size()) {
        const std::string& argument = arguments[position];
        if (TakeSwitch(argument, options)) {
            // Whatever follows: who asks for help need not have the rest right.
            if (options.task == RunOptions::Task::kHelp)
                return options;
            position++;
            continue;
        }
        const Option option = NextOption(arguments, position);
        const auto* kind = std::find_if(std::begin(kRunOptions), std::end(kRunOptions),
            [&](const RunOption& each) { return each.name == option.name; });
        if (kind == std::end(kRunOptions))
            return "unknown argument <" + argument + ">, see --help";
        if (option.value.empty())
            return "<" + option.name + "> needs " + kind->needs;
        if (!given.insert(option.name).second)
            return "<" + option.name + "> is given twice";
        if (std::string message = kind->take(option.value, options); !message.empty())
            return message;
    }
    if (std::string message = Check(options, given); !message.empty())
        return message;
    return options;
}

bool TakeGroups(RunOptions& options)
{
    const auto keys = std::exchange(options.plan.groups, {});
    // A journal names the groups that "all" stood for, never that word itself.
    return std::all_of(keys.begin(), keys.end(),
        [&](const std::string& key) { return key != "all" && AppendGroup(key, options); });
}

std::optional<TextFormat> FormatOfFile(const std::string& path)
{
    for (const auto& [name, format] : kFormats) {
        if (format != TextFormat::kTable && path.ends_with(std::string(".") + name))
            return format;
    }
    return std::nullopt;
}

std::string RunUsage()
{
    std::string names;
    std::string notInAll;
    for (const TestGroup& group : kTestGroups) {
        names += (names.empty() ? "" : ", ") + std::string(group.key);
        if (group.box == GroupBox::kNone)
            notInAll += (notInAll.empty() ? "" : ", ") + std::string(group.key);
    }
    return "Usage: tarvex-run --groups G[,G...]|all --output FILE [--label NAME] [--cpus "
           "N[,N...]]\n"
           "                  [--repeat N | --until P%] [--format table|csv|tsv|json] [--anyway]\n"
           "       tarvex-run --resume JOURNAL\n"
           "       tarvex-run --list | --explain TEST\n"
           "       tarvex-run --compare FILE..., see below\n"
           "\n"
           "Runs the test groups once for every processor count, from all processors down to one,\n"
           "prints their rates and writes them to FILE, which the comparison window can load.\n"
           "\n"
           "Groups: "
        + names + "\nall stands for all of them but " + notInAll
        + ".\n"
          "\n"
          "--output FILE    a results file; a name that ends in .json, .csv or .tsv has all times\n"
          "                 and what is known of the machine; - is standard output alone\n"
          "--label NAME     names the machine or the run\n"
          "--cpus N,...     up to eight processor counts, in this order; not for a results file\n"
          "--repeat N       measures everything N times, 1 to 100, in turn\n"
          "--until P%       measures each test until its 95 percent interval is narrower, 6 to 50\n"
          "                 times\n"
          "--format F       of standard output: table, csv, tsv or json\n"
          "--resume JOURNAL measures what is missing of a run that was ended: FILE.journal\n"
          "--anyway         starts although another run of anybody's is under way, which spoils\n"
          "                 the rates of both\n"
          "--list           says what each test measures and what it does not\n"
          "--explain TEST   the same of one, by name, number or group\n"
          "\n"
          "Exit status of a run: 0 done, 1 something could not be written or a thread not be\n"
          "started, 2 wrong arguments or a file that cannot be written or read (nothing was run),\n"
          "3 done but for tests that could not be done (no display, no room on the disk ...),\n"
          "4 another run is under way (nothing was run), 128 + N ended by signal N, such as 130 "
          "by\n"
          "SIGINT or 143 by SIGTERM.\n";
}
