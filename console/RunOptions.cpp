#include "console/RunOptions.h"

#include <algorithm>
#include <string_view>

namespace {

// Appends the flags that name stands for. Returns false for a name that stands for none.
bool AppendGroup(std::string_view name, std::vector<bool Benchmark::*>& groups)
{
    const size_t before = groups.size();
    for (size_t i = 0; i < kNbrTestGroups; i++) {
        const TestGroup& group = kTestGroups[i];
        if (name == group.key || (name == "all" && group.box != GroupBox::kNone))
            groups.push_back(kGroupRuns[i].selected);
    }
    return groups.size() > before;
}

// Returns the message for the first name that is no group's, or an empty text.
std::string ParseGroups(std::string_view list, std::vector<bool Benchmark::*>& groups)
{
    for (;;) {
        const size_t comma = list.find(',');
        const std::string_view name = list.substr(0, comma);
        if (!AppendGroup(name, groups))
            return "unknown test group <" + std::string(name) + ">";
        if (comma == list.npos)
            return "";
        list.remove_prefix(comma + 1);
    }
}

struct Option {
    std::string name;
    std::string value; // empty where there is none
};

// Takes "--name=value" or "--name" and the argument behind it, unless that is an option itself.
Option NextOption(const std::vector<std::string>& arguments, size_t& position)
{
    const std::string& argument = arguments[position++];
    const size_t equals = argument.find('=');
    if (equals != argument.npos)
        return { argument.substr(0, equals), argument.substr(equals + 1) };
    if (position == arguments.size() || arguments[position].starts_with("--"))
        return { argument, "" };
    return { argument, arguments[position++] };
}

std::string ParseValue(const Option& option, RunOptions& options)
{
    const bool isOutput = option.name == "--output";
    if (option.value.empty())
        return "<" + option.name + "> needs "
            + (isOutput ? "a file name" : "a list of test groups");
    if (isOutput ? !options.output.empty() : !options.groups.empty())
        return "<" + option.name + "> is given twice";
    if (!isOutput)
        return ParseGroups(option.value, options.groups);
    options.output = option.value;
    return "";
}

std::string CheckComplete(const RunOptions& options)
{
    if (options.groups.empty())
        return "<--groups> is missing: which tests to run, see --help";
    if (options.output.empty())
        return "<--output> is missing: the results file to write, see --help";
    return "";
}

} // namespace

std::variant<RunOptions, std::string> ParseRunOptions(const std::vector<std::string>& arguments)
{
    RunOptions options;
    size_t position = 0;
    while (position < arguments.size()) {
        const std::string& argument = arguments[position];
        if (argument == "--help" || argument == "--version") {
            options.task =
                argument == "--help" ? RunOptions::Task::kHelp : RunOptions::Task::kVersion;
            return options;
        }
        if (argument == "--anyway") {
            options.anyway = true;
            position++;
            continue;
        }
        const Option option = NextOption(arguments, position);
        if (option.name != "--groups" && option.name != "--output")
            return "unknown argument <" + argument + ">, see --help";
        if (std::string message = ParseValue(option, options); !message.empty())
            return message;
    }
    if (std::string message = CheckComplete(options); !message.empty())
        return message;
    return options;
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
    return "Usage: tarvex-run --groups G[,G...]|all --output FILE [--anyway]\n"
           "       tarvex-run --compare FILE..., see below\n"
           "\n"
           "Runs the test groups once for every processor count, from all processors down to one,\n"
           "prints their rates and writes them to FILE, which the comparison window can load.\n"
           "\n"
           "Groups: "
        + names + "\nall stands for all of them but " + notInAll
        + ".\n"
          "\n"
          "Two runs at once spoil each other's rates: while another run of anybody's is under "
          "way,\n"
          "none is started without --anyway.\n"
          "\n"
          "Exit status of a run: 0 done, 1 something could not be written or a thread not be "
          "started,\n"
          "2 wrong arguments or a file that cannot be written or read (nothing was run), 3 done "
          "but\n"
          "for tests that could not be done (no display, no room on the disk ...), 4 another run "
          "is\n"
          "under way (nothing was run), 128 + N ended by signal N, such as 130 by SIGINT or 143 "
          "by\n"
          "SIGTERM.\n";
}
