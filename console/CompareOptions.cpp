#include "console/Compare.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>
#include <string_view>

namespace {

constexpr Named<SortBy> kSorts[] = { { "test", SortBy::kTest }, { "percent", SortBy::kPercent },
    { "name", SortBy::kName } };

std::string TakeFailBelow(const Option& option, CompareOptions& options)
{
    options.failBelow = ParsePercent(option.value);
    return options.failBelow
        ? ""
        : "<" + option.name + "> must be percent from 0 to 100, not <" + option.value + ">";
}

std::string TakeTests(const Option& option, CompareOptions& options)
{
    return ForEachName(option.value, [&](std::string_view name) {
        const auto tests = TestsCalled(name);
        options.tests.insert(options.tests.end(), tests.begin(), tests.end());
        return tests.empty() ? "unknown test <" + std::string(name) + ">" : "";
    });
}

std::string TakeTest(const Option& option, CompareOptions& options)
{
    const auto tests = TestsCalled(option.value);
    if (tests.empty())
        return "unknown test <" + option.value + ">";
    options.test = tests.front();
    return tests.size() == 1 ? ""
                             : "<" + option.name + "> takes one test, and <" + option.value
            + "> has " + std::to_string(tests.size());
}

struct CompareOption {
    std::string_view name;
    std::string (*take)(const Option& option, CompareOptions& options);
};

template <std::string CompareOptions::*field>
std::string TakeText(const Option& option, CompareOptions& options)
{
    options.*field = option.value;
    return "";
}

constexpr CompareOption kCompareOptions[] = {
    { "--baseline", TakeText<&CompareOptions::baseline> },
    { "--fail-below", TakeFailBelow },
    { "--format", [](auto& option, auto& to) { return TakeNamed(option, kFormats, to.format); } },
    { "--sort", [](auto& option, auto& to) { return TakeNamed(option, kSorts, to.sort); } },
    { "--tests", TakeTests },
    { "--chart", TakeText<&CompareOptions::chart> },
    { "--scaling", TakeText<&CompareOptions::scaling> },
    { "--test", TakeTest },
};

// What a comparison needs, and what does not go together.
std::string CheckTogether(const CompareOptions& options)
{
    const auto place = [](const std::string& path) {
        std::error_code error;
        return std::filesystem::absolute(path, error).lexically_normal();
    };
    if (options.files.empty())
        return "<--compare> needs results files";
    if (options.test && options.chart.empty() && options.scaling.empty())
        return "<--test> is for <--chart> and <--scaling>: rows are chosen by <--tests>";
    if (!options.chart.empty() && !options.scaling.empty()
        && place(options.chart) == place(options.scaling))
        return "<--chart> and <--scaling> name the same file";
    return "";
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
    CompareOptions options;
    std::set<std::string> given;
    size_t position = 0;
    while (position < arguments.size()) {
        const std::string& argument = arguments[position];
        if (argument == "--help") {
            // Whatever follows: who asks for help need not have the rest right.
            options.help = true;
            return options;
        }
        if (argument == "--compare") {
            while (++position < arguments.size() && !arguments[position].starts_with("--"))
                options.files.push_back(arguments[position]);
            continue;
        }
        const Option option = NextOption(arguments, position);
        const auto* kind = std::find_if(std::begin(kCompareOptions), std::end(kCompareOptions),
            [&](const CompareOption& each) { return each.name == option.name; });
        if (kind == std::end(kCompareOptions))
            return "unknown argument <" + argument + "> of <--compare>, see --help";
        if (!given.insert(option.name).second)
            return "<" + option.name + "> is given twice";
        if (option.value.empty())
            return "<" + option.name + "> needs a value, see --help";
        if (std::string message = kind->take(option, options); !message.empty())
            return message;
    }
    if (std::string message = CheckTogether(options); !message.empty())
        return message;
    return options;
}

bool DrawsPictures(const std::vector<std::string>& arguments)
{
    const auto parsed = ParseCompareOptions(arguments);
    const auto* options = std::get_if<CompareOptions>(&parsed);
    return options && !options->help && (!options->chart.empty() || !options->scaling.empty());
}

std::string CompareUsage()
{
    return "tarvex-run --compare FILE... [--baseline FILE] [--fail-below P] [--tests T[,T...]]\n"
           "           [--sort test|percent|name] [--format table|csv|tsv|json]\n"
           "           [--chart PICTURE] [--scaling PICTURE] [--test T]\n"
           "\n"
           "Compares the machines of results files, of the JSON of runs, of zip and tar archives\n"
           "of these and of folders of all of them (\"-\": standard input) with the first one, or\n"
           "with that of --baseline, test by test at equal processor counts. 100 percent is as\n"
           "fast as the baseline and more is better, also where the unit is seconds. A difference\n"
           "is called real (faster, slower) where neither chance nor another sitting would\n"
           "make it: two-sided Mann-Whitney below 5 percent after Holm's correction over all\n"
           "rows, for a difference above that which --explain tells of the test; fewer --tests\n"
           "ask for fewer repeats. --tests takes names, numbers and groups. Of one machine alone\n"
           "its figures are shown.\n"
           "\n"
           "--chart PICTURE   the chart of a test, a bar for each processor count\n"
           "--scaling PICTURE speed-up and efficiency by processor count, with the ideal line\n"
           "--test T          the test of the pictures. Otherwise --chart shows the first that "
           "the\n"
           "                  baseline has, --scaling all that are compared\n"
           "Pictures end in .svg, .png or .pdf, and need no display.\n"
           "\n"
           "Exit status of a comparison: 0 done, 1 the result or a picture could not be written,\n"
           "2 wrong arguments, a file that cannot be read or a picture that cannot be written or\n"
           "shows nothing; with --fail-below P 4 if a test is slower, for real and by more than P\n"
           "percent, and 5 if none is but of a row nothing can be told.\n";
}
