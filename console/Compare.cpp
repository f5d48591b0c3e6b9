#include "console/Compare.h"

#include "console/Output.h"
#include "foundation/Utf8.h"
#include "results/ChartPicture.h"
#include "results/ScalingPicture.h"

#include <Picture.h>
#include <WholeFile.h>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace {

struct Refusal {
    std::string message;
};

// Leaves everything at once: what is thrown ends in CompareTask() as its one line.
[[noreturn]] void Leave(const std::string& message)
{
    throw Refusal { message };
}

std::vector<MeasuredMachine> Read(const std::vector<std::string>& paths)
{
    auto read = ReadMachines(paths);
    if (const auto* message = std::get_if<std::string>(&read))
        Leave(*message);
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
            Leave("<" + options.baseline + "> holds " + std::to_string(baseline.size())
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
    // A build check of one machine would pass whatever became of the other.
    if (compared.machines.size() < 2 && options.failBelow)
        Leave(
            "<" + options.files.front() + "> holds one machine, and there is no other to compare");
    // With the baseline among them, as names are told apart from all others.
    NameMachines(compared.machines);
    return compared;
}

// Names the machines that are not in something, which would else be missed among many: "<a> and 2
// more"; empty where there are none.
std::string Missing(const std::vector<MeasuredMachine>& machines, const std::vector<bool>& isIn)
{
    const auto first = std::find(isIn.begin(), isIn.end(), false);
    if (first == isIn.end())
        return "";
    const auto others = std::count(first + 1, isIn.end(), false);
    return "<" + machines[static_cast<size_t>(first - isIn.begin())].name + ">"
        + (others > 0 ? " and " + std::to_string(others) + " more" : "");
}

std::string WithoutRows(const ComparedMachines& compared)
{
    std::vector<bool> hasRow(compared.machines.size());
    // It is compared with nothing, and has none.
    hasRow[compared.baseline] = true;
    for (const ComparedRow& row : compared.rows)
        hasRow[row.machine] = true;
    const std::string missing = Missing(compared.machines, hasRow);
    return missing.empty() ? ""
                           : "nothing in common with the baseline, no test at the same processor "
                             "count: "
            + missing;
}

int StatusOf(const CompareOptions& options, const ComparedMachines& compared)
{
    if (!options.failBelow)
        return kDone;
    switch (CheckBuild(compared.rows, compared.machines.size(), *options.failBelow)) {
        case BuildCheck::kFell: return kFell;
        case BuildCheck::kCannotTell: return kCannotTell;
        case BuildCheck::kPassed: break;
    }
    return kDone;
}

bool IsWanted(const CompareOptions& options, const TestType& test)
{
    const auto& tests = options.tests;
    return tests.empty() || std::find(tests.begin(), tests.end(), &test) != tests.end();
}

// There is nothing to compare: the machine's figures, as a run shows them.
void WriteFigures(const CompareOptions& options, MeasuredMachine machine, FILE* out)
{
    RunRecord& record = machine.record;
    std::erase_if(
        record.series, [&](const Series& series) { return !IsWanted(options, *series.test); });
    std::string text = RunText(record, options.format);
    if (options.format == TextFormat::kTable)
        text = "Machine: " + LibPrintable(machine.name.c_str()) + "\n\n" + FiguresTable(record);
    fwrite(text.data(), 1, text.size(), out);
}

// What the pictures show of the machines, known before anything is written.
class Pictures {
public:
    // Before any file is read: a comparison that cannot be written would be in vain.
    explicit Pictures(const CompareOptions& options) : fOptions(options)
    {
        for (const std::string& path : { options.chart, options.scaling }) {
            if (path.empty())
                continue;
            std::string why = WhyNoPicture(path.c_str());
            if (why.empty())
                why = WholeFile::WhyNot(path.c_str());
            if (!why.empty())
                Leave(CannotWrite(path, why));
        }
    }

    void Plan(const ComparedMachines& compared)
    {
        const auto& machines = compared.machines;
        if (!fOptions.chart.empty()) {
            fCharted = fOptions.test ? fOptions.test : FirstTest(machines[compared.baseline]);
            std::vector<bool> isIn;
            for (const MeasuredMachine& machine : machines)
                isIn.push_back(fCharted && HasFigure(machine, *fCharted));
            if (std::find(isIn.begin(), isIn.end(), true) == isIn.end())
                Leave(fCharted ? "no machine has a figure for <" + std::string(fCharted->name) + ">"
                               : "<--chart> has no test to show");
            AddNote(fOptions.chart, Missing(machines, isIn));
        }
        if (!fOptions.scaling.empty()) {
            fScaling = ScalingOf(machines, [&](const TestType& test) {
                return fOptions.test ? &test == fOptions.test : IsWanted(fOptions, test);
            });
            if (fScaling.empty())
                Leave("<--scaling> needs figures at two processor counts or more");
            std::vector<bool> isIn(machines.size());
            for (const TestScaling& test : fScaling) {
                for (const ScalingCurve& curve : test.curves)
                    isIn[curve.machine] = true;
            }
            AddNote(fOptions.scaling, Missing(machines, isIn));
        }
    }

    // Returns whether all of them are written; else one of the messages says why not.
    bool Write(const ComparedMachines& compared, std::vector<std::string>& messages) const
    {
        bool isWritten = true;
        const auto check = [&](const std::string& path, const std::string& why) {
            if (why.empty())
                return;
            isWritten = false;
            messages.push_back(CannotWrite(path, why));
        };
        if (!fOptions.chart.empty()) {
            check(fOptions.chart,
                WriteMachinesChart(
                    fOptions.chart.c_str(), compared.machines, compared.baseline, *fCharted));
        }
        if (!fOptions.scaling.empty())
            check(fOptions.scaling,
                WriteScalingPicture(fOptions.scaling.c_str(), compared.machines, fScaling));
        messages.insert(messages.end(), fNotes.begin(), fNotes.end());
        return isWritten;
    }

private:
    static std::string CannotWrite(const std::string& path, const std::string& why)
    {
        return "cannot write <" + path + ">: " + why;
    }

    static bool HasFigure(const MeasuredMachine& machine, const TestType& test)
    {
        const RunRecord& run = machine.record;
        return std::any_of(run.series.begin(), run.series.end(), [&](const Series& series) {
            return series.test == &test && series.undone.empty()
                && FiguresOf(series, run.bestProbe);
        });
    }

    const TestType* FirstTest(const MeasuredMachine& machine) const
    {
        for (const TestType& test : kTestTypes) {
            if (IsWanted(fOptions, test) && HasFigure(machine, test))
                return &test;
        }
        return nullptr;
    }

    void AddNote(const std::string& path, const std::string& missing)
    {
        if (!missing.empty())
            fNotes.push_back("without figures for it, so not in <" + path + ">: " + missing);
    }

    const CompareOptions& fOptions;
    const TestType* fCharted = nullptr;
    std::vector<TestScaling> fScaling;
    std::vector<std::string> fNotes;
};

CompareOutcome Compare(const CompareOptions& options, FILE* out)
{
    Pictures pictures(options);
    ComparedMachines compared = ReadAll(options);
    pictures.Plan(compared);
    CompareOutcome outcome;
    // First, as whoever reads the text may have enough of it: "| head" ends the program.
    const bool isDrawn = pictures.Write(compared, outcome.messages);
    if (compared.machines.size() == 1) {
        WriteFigures(options, compared.machines.front(), out);
    } else {
        compared.rows = CompareMachines(compared.machines, compared.baseline,
            [&](const TestType& test) { return IsWanted(options, test); });
        SortRows(compared.rows, options.sort, compared.machines);
        WriteComparison(compared, options.format, out);
        if (std::string missing = WithoutRows(compared); !missing.empty())
            outcome.messages.push_back(std::move(missing));
    }
    outcome.status = isDrawn ? StatusOf(options, compared) : kFailed;
    return outcome;
}

} // namespace

CompareOutcome CompareTask(const std::vector<std::string>& arguments, FILE* out)
{
    const auto parsed = ParseCompareOptions(arguments);
    if (const auto* message = std::get_if<std::string>(&parsed))
        return { kNothingRun, { *message } };
    const auto& options = std::get<CompareOptions>(parsed);
    if (options.help) {
        fprintf(out, "Usage: %s", CompareUsage().c_str());
        return {};
    }
    try {
        return Compare(options, out);
    } catch (const Refusal& refusal) {
        return { kNothingRun, { refusal.message } };
    }
}
