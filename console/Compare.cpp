#include "console/Compare.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <utility>

namespace {

// Scripts rely on the numbers. 1 is left to main(), for output that could not be written.
enum CompareStatus { kCompared = 0, kRefused = 2, kFell = 4, kCannotTell = 5 };

struct Refusal {
    std::string message;
};

// Leaves everything at once: what is thrown ends in one of the two public functions as their one
// line.
[[noreturn]] void Refuse(const std::string& message)
{
    throw Refusal { message };
}

constexpr Named<SortBy> kSorts[] = { { "test", SortBy::kTest }, { "percent", SortBy::kPercent },
    { "name", SortBy::kName } };

void Check(const std::string& message)
{
    if (!message.empty())
        Refuse(message);
}

double PercentOf(const Option& option)
{
    const auto percent = ParsePercent(option.value);
    if (!percent)
        Refuse("<" + option.name + "> must be percent from 0 to 100, not <" + option.value + ">");
    return *percent;
}

std::vector<const TestType*> TestsOf(std::string_view list)
{
    std::vector<const TestType*> tests;
    Check(ForEachName(list, [&](std::string_view name) {
        const auto called = TestsCalled(name);
        tests.insert(tests.end(), called.begin(), called.end());
        return called.empty() ? "unknown test <" + std::string(name) + ">" : "";
    }));
    return tests;
}

bool IsOption(const std::string& argument)
{
    // A single "-" is the standard input.
    return argument.starts_with("--");
}

class Parser {
public:
    explicit Parser(const std::vector<std::string>& arguments) : fArguments(arguments) { }

    CompareOptions Parse()
    {
        while (fPosition < fArguments.size())
            ParseNext();
        if (fOptions.files.empty() && !fOptions.help)
            Refuse("<--compare> needs results files");
        return fOptions;
    }

private:
    void ParseNext()
    {
        const std::string& argument = fArguments[fPosition++];
        if (argument == "--compare") {
            while (fPosition < fArguments.size() && !IsOption(fArguments[fPosition]))
                fOptions.files.push_back(fArguments[fPosition++]);
            return;
        }
        if (argument == "--help") {
            fOptions.help = true;
            return;
        }
        fPosition--;
        const auto [name, value] = NextOption(fArguments, fPosition);
        if (!IsKnown(name))
            Refuse("unknown argument <" + argument + "> of <--compare>, see --help");
        if (std::find(fGiven.begin(), fGiven.end(), name) != fGiven.end())
            Refuse("<" + name + "> is given twice");
        fGiven.push_back(name);
        if (value.empty())
            Refuse("<" + name + "> needs a value, see --help");
        Set(name, value);
    }

    static bool IsKnown(const std::string& name)
    {
        constexpr const char* kNames[] = { "--baseline", "--fail-below", "--format", "--sort",
            "--tests" };
        return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames);
    }

    void Set(const std::string& name, const std::string& value)
    {
        if (name == "--baseline")
            fOptions.baseline = value;
        else if (name == "--fail-below")
            fOptions.failBelow = PercentOf({ name, value });
        else if (name == "--format")
            Check(TakeNamed({ name, value }, kFormats, fOptions.format));
        else if (name == "--sort")
            Check(TakeNamed({ name, value }, kSorts, fOptions.sort));
        else
            fOptions.tests = TestsOf(value);
    }

    const std::vector<std::string>& fArguments;
    size_t fPosition = 0;
    CompareOptions fOptions;
    std::vector<std::string> fGiven;
};

std::vector<MeasuredMachine> Read(const std::vector<std::string>& paths)
{
    auto read = ReadMachines(paths);
    if (const auto* message = std::get_if<std::string>(&read))
        Refuse(*message);
    return std::move(std::get<std::vector<MeasuredMachine>>(read));
}

bool IsSameFile(const std::string& a, const std::string& b)
{
    // What is no file, as "-", is the same as nothing but itself.
    std::error_code none;
    return a == b || std::filesystem::equivalent(a, b, none);
}

// The machines in their order, the baseline where it is, or before them if it is in none of their
// files.
ComparedMachines ReadAll(const CompareOptions& options)
{
    ComparedMachines compared;
    compared.machines = Read(options.files);
    if (!options.baseline.empty()) {
        std::vector<MeasuredMachine> baseline = Read({ options.baseline });
        if (baseline.size() != 1) {
            Refuse("<" + options.baseline + "> holds " + std::to_string(baseline.size())
                + " machines, and only one can be the baseline");
        }
        auto& machines = compared.machines;
        const auto found = std::find_if(machines.begin(), machines.end(),
            [&](const auto& each) { return IsSameFile(each.path, baseline.front().path); });
        compared.baseline =
            found != machines.end() ? static_cast<size_t>(found - machines.begin()) : 0;
        if (found == machines.end())
            machines.insert(machines.begin(), std::move(baseline.front()));
    }
    if (compared.machines.size() < 2)
        Refuse(
            "<" + options.files.front() + "> holds one machine, and there is no other to compare");
    // With the baseline among them, as names are told apart from all others.
    NameMachines(compared.machines);
    return compared;
}

// Machines without a row, which would else be missed among many.
std::string WithoutRows(const ComparedMachines& compared)
{
    std::vector<bool> hasRow(compared.machines.size());
    // It is compared with nothing, and has none.
    hasRow[compared.baseline] = true;
    for (const ComparedRow& row : compared.rows)
        hasRow[row.machine] = true;
    const auto first = std::find(hasRow.begin(), hasRow.end(), false);
    if (first == hasRow.end())
        return "";
    const auto others = std::count(first + 1, hasRow.end(), false);
    return "<" + compared.machines[static_cast<size_t>(first - hasRow.begin())].name + ">"
        + (others > 0 ? " and " + std::to_string(others) + " more have" : " has")
        + " nothing in common with the baseline: no test at the same processor count";
}

int StatusOf(const CompareOptions& options, const ComparedMachines& compared)
{
    if (!options.failBelow)
        return kCompared;
    switch (CheckBuild(compared.rows, compared.machines.size(), *options.failBelow)) {
        case BuildCheck::kFell: return kFell;
        case BuildCheck::kCannotTell: return kCannotTell;
        case BuildCheck::kPassed: break;
    }
    return kCompared;
}

} // namespace

bool IsCompareTask(const std::vector<std::string>& arguments)
{
    const auto has = [&](const char* option) {
        return std::find(arguments.begin(), arguments.end(), option) != arguments.end();
    };
    // Who asks for the version gets it, whatever else stands there.
    return has("--compare") && !has("--version");
}

std::variant<CompareOptions, std::string> ParseCompareOptions(
    const std::vector<std::string>& arguments)
{
    try {
        return Parser(arguments).Parse();
    } catch (const Refusal& refusal) {
        return refusal.message;
    }
}

CompareOutcome CompareTask(const std::vector<std::string>& arguments, FILE* out)
{
    try {
        const CompareOptions options = Parser(arguments).Parse();
        if (options.help) {
            fprintf(out, "Usage: %s", CompareUsage().c_str());
            return {};
        }
        const auto& tests = options.tests;
        ComparedMachines compared = ReadAll(options);
        compared.rows =
            CompareMachines(compared.machines, compared.baseline, [&](const TestType& test) {
                return tests.empty() || std::find(tests.begin(), tests.end(), &test) != tests.end();
            });
        SortRows(compared.rows, options.sort, compared.machines);
        WriteComparison(compared, options.format, out);
        return { StatusOf(options, compared), WithoutRows(compared) };
    } catch (const Refusal& refusal) {
        return { kRefused, refusal.message };
    }
}

std::string CompareUsage()
{
    return "tarvex-run --compare FILE... [--baseline FILE] [--fail-below P] [--tests T[,T...]]\n"
           "           [--sort test|percent|name] [--format table|csv|tsv|json]\n"
           "\n"
           "Compares the machines of results files, of the JSON of runs, of zip and tar archives\n"
           "of these and of folders of all of them (\"-\": standard input) with the first one, or\n"
           "with that of --baseline, test by test at equal processor counts. 100 percent is as\n"
           "fast as the baseline and more is better, also where the unit is seconds. A difference\n"
           "is called real (faster, slower) where chance would hardly make it: two-sided\n"
           "Mann-Whitney below 5 percent after Holm's correction over all rows; fewer --tests ask\n"
           "for fewer repeats. --tests takes names, numbers and groups.\n"
           "\n"
           "Exit status of a comparison: 0 done, 1 the result could not be written, 2 wrong\n"
           "arguments or a file that cannot be read; with --fail-below P 4 if a test is slower, "
           "for\n"
           "real and by more than P percent, and 5 if none is but of a row nothing can be told.\n";
}
