// The bytes are the arguments of a command line, one a line.
#include "console/Compare.h"
#include "console/Run.h"
#include "tests/fuzz/Require.h"

namespace {

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

template <class Options>
const Options* Checked(const std::variant<Options, std::string>& parsed)
{
    const auto* message = std::get_if<std::string>(&parsed);
    Require(!message || !message->empty(), "what is refused has a reason");
    return std::get_if<Options>(&parsed);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::vector<std::string> arguments =
        Lines(std::string(reinterpret_cast<const char*>(data), size));
    if (IsCompareTask(arguments)) {
        const auto parsed = ParseCompareOptions(arguments);
        if (const CompareOptions* options = Checked(parsed))
            Require(options->help || !options->files.empty(), "there is something to compare");
        return 0;
    }
    const auto parsed = ParseRunOptions(arguments);
    const RunOptions* options = Checked(parsed);
    if (!options || options->task == RunOptions::Task::kHelp
        || options->task == RunOptions::Task::kVersion)
        return 0;
    Require(TestTexts(options->tests).size() > 0 || options->task != RunOptions::Task::kExplain,
        "something is explained");
    Require(options->task != RunOptions::Task::kRun || !options->groups.empty(), "a group is run");
    return 0;
}
