#include "results/MachineFiles.h"

#include "foundation/PlainText.h"
#include "foundation/Utf8.h"
#include "results/ArchiveFiles.h"
#include "results/ResultsFile.h"
#include "results/RunFile.h"
#include "results/WholeText.h"
#include "sysinfo/LibSysInfo.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <set>
#include <system_error>
#include <variant>

namespace {

namespace fs = std::filesystem;

// --- The JSON of a run

// The times of one test as in a record: of all processors first, 0 where there is none.
std::string TimesOf(const RunRecord& run, const TestType& test, int32 processors, double work)
{
    std::string times;
    for (int32 count = processors; count > 0; count--) {
        const Series* series = run.Find(test, count);
        const auto figures =
            series && series->undone.empty() ? FiguresOf(*series, run.bestProbe) : std::nullopt;
        double seconds = figures ? figures->summary.estimate : 0;
        // A record has one amount of work for all counts.
        if (figures && series->spans.front().work > 0)
            seconds *= work / series->spans.front().work;
        times += LibFixedText(seconds, 6) + (count > 1 ? "," : "");
    }
    return times;
}

// The run as a results file has it, without devices.
std::string RecordOf(const RunRecord& run)
{
    std::string record = run.machine;
    std::replace_if(
        record.begin(), record.end(), [](char c) { return LibIsSpace(c); }, ' ');
    const size_t at = record.find('(');
    const bool isCounted = at + 1 < record.size() && LibIsDigit(record[at + 1]);
    const int32 processors = at != record.npos && isCounted ? record[at + 1] - '0' : 0;
    record += "\t";
    std::set<int32> done;
    for (const Series& series : run.series) {
        if (series.spans.empty() || !done.insert(series.test->id).second)
            continue;
        const double work = series.spans.front().work;
        record += std::to_string(series.test->id) + ":"
            + std::to_string(static_cast<int64>(std::min(work, static_cast<double>(INT32_MAX))))
            + "/" + TimesOf(run, *series.test, processors, work) + ";";
    }
    return record;
}

// --- Contents

// What a file's bytes hold. Each returns why there was no machine, or "".
std::string AddContents(
    const std::string& bytes, const std::string& file, int archives, ResultList& list);

std::string AddArchive(
    const std::string& bytes, const std::string& file, int archives, ResultList& list)
{
    auto unpacked = FilesOfArchive(bytes);
    if (const auto* why = std::get_if<std::string>(&unpacked))
        return *why;
    const int32 before = list.Size();
    for (const ArchivedFile& each : std::get<std::vector<ArchivedFile>>(unpacked)) {
        // What is none of ours beside the results is no error.
        static_cast<void>(AddContents(each.contents, file + ": " + each.path, archives - 1, list));
    }
    return list.Size() > before ? "" : "holds no results";
}

std::string AddJson(const std::string& text, const std::string& file, ResultList& list)
{
    const auto run = RunFromJson(text);
    if (std::holds_alternative<std::string>(run))
        return std::get<std::string>(run);
    const std::string line = RecordOf(std::get<RunRecord>(run));
    if (line.size() >= kRecordSize)
        return "has more than a machine's record holds";
    auto machine = Results::FromRecord(line.c_str(), LibSysInfo());
    machine->origin = file;
    const RunRecord& record = std::get<RunRecord>(run);
    machine->trueName = TrueName(record.details);
    if (!record.started.empty())
        machine->trueName += "\nMeasured " + LibPrintable(record.started.c_str());
    return list.Insert(std::move(machine)) ? "" : "cannot be read: there is no memory";
}

std::string AddContents(
    const std::string& bytes, const std::string& file, int archives, ResultList& list)
{
    const int32 before = list.Size();
    std::string why = "is no results file";
    if (IsArchive(bytes)) {
        why = archives > 0 ? AddArchive(bytes, file, archives, list)
                           : "is an archive too deep in others";
    } else if (IsResultsText(bytes)) {
        std::string copy = bytes; // which fmemopen() may write to, as far as its type tells
        if (const OpenFile text { fmemopen(copy.data(), copy.size(), "r") })
            ReadResults(text.get(), file.c_str(), list, MachinesAre::kPacked);
        why = list.Size() > before ? "" : "holds no results";
    } else if (bytes.find_first_not_of(" \t\r\n") != bytes.npos
        && bytes[bytes.find_first_not_of(" \t\r\n")] == '{') {
        why = AddJson(bytes, file, list);
    }
    return why;
}

// --- Files

std::string AddFile(const std::string& path, ResultList& list)
{
    std::error_code error;
    const bool isPlain = fs::is_regular_file(path, error);
    if (error)
        return "cannot be read: " + error.message();
    if (!isPlain)
        return "cannot be read: it is no plain file";
    // Even if it has become a pipe, it is not waited for.
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    const OpenFile file(descriptor < 0 ? nullptr : fdopen(descriptor, "r"));
    if (!file)
        return std::string("cannot be read: ") + strerror(errno);
    const std::string bytes = ReadAll(file.get());
    if (ferror(file.get()))
        return std::string("cannot be read: ") + strerror(errno);
    if (bytes.size() <= kMostBytes)
        return AddContents(bytes, path, kArchivesWithin, list);
    if (!IsResultsText(bytes))
        return "has over 32 MB";
    // Of any size, as it is read machine by machine.
    const int32 before = list.Size();
    rewind(file.get());
    ReadResults(file.get(), path.c_str(), list, MachinesAre::kPacked);
    return list.Size() > before ? "" : "holds no results";
}

// All plain files below it, by path.
std::string FilesBelow(const std::string& folder, std::vector<std::string>& files)
{
    std::error_code error;
    const auto skip = fs::directory_options::skip_permission_denied;
    fs::recursive_directory_iterator entry(folder, skip, error);
    for (const fs::recursive_directory_iterator end; !error && entry != end;
         entry.increment(error)) {
        std::error_code gone;
        const bool isHidden = entry->path().filename().native().starts_with('.');
        const auto type = entry->symlink_status(gone).type();
        if (isHidden && type == fs::file_type::directory)
            entry.disable_recursion_pending();
        else if (!isHidden && type == fs::file_type::regular)
            files.push_back(entry->path());
    }
    std::sort(files.begin(), files.end());
    return error ? "cannot be read: " + error.message() : "";
}

} // namespace

std::string TrueName(const MachineDetails& details)
{
    std::string text;
    if (details.processorModel)
        text += "\n" + LibPrintable(details.processorModel->c_str());
    if (details.memory)
        text += "\n" + LibFixedText(static_cast<double>(*details.memory) / (1 << 30), 1)
            + " GB of memory";
    if (details.kernelRelease)
        text += "\nLinux " + LibPrintable(details.kernelRelease->c_str());
    return text;
}

std::string ReadMachineFiles(const std::string& path, ResultList& list)
{
    std::error_code none;
    if (!fs::is_directory(path, none))
        return AddFile(path, list);
    std::vector<std::string> files;
    if (std::string why = FilesBelow(path, files); !why.empty())
        return why;
    const int32 before = list.Size();
    for (const std::string& file : files)
        static_cast<void>(AddFile(file, list));
    return list.Size() > before ? "" : "holds no results";
}
