#include "results/MeasuredMachines.h"

#include "results/ArchiveFiles.h"
#include "results/ResultsFile.h"
#include "results/RunFile.h"
#include "results/WholeText.h"

#include <Entry.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <map>
#include <memory>
#include <new>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace {

namespace fs = std::filesystem;

using Machines = std::vector<MeasuredMachine>;

constexpr char kStandardInput[] = "standard input";

struct Refusal {
    std::string line;
};

// A file, wherever it was read from.
struct Source {
    std::string path;
    std::string file; // its last part
    std::time_t modified = 0;
    bool mustHold = true; // is an error if it holds no machine
    bool isNamed = true; // by the user: may be a link or a pipe
    bool isInput = false; // the standard input
};

[[noreturn]] void Refuse(const std::string& path, const std::string& what)
{
    throw Refusal { "<" + path + "> " + what };
}

[[noreturn]] void RefuseUnread(const std::string& path, const std::string& why)
{
    throw Refusal { "cannot read <" + path + ">: " + why };
}

std::string DateOf(std::time_t seconds)
{
    std::tm parts {};
    std::array<char, 32> text {};
    if (seconds == 0 || !localtime_r(&seconds, &parts)
        || strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &parts) == 0)
        return "";
    return text.data();
}

std::string LastPart(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

// By its name one of the files that are read.
bool IsCalledSo(const std::string& path)
{
    constexpr const char* kEndings[] = { ".results", ".json", ".zip", ".tar", ".tgz", ".gz" };
    return std::any_of(std::begin(kEndings), std::end(kEndings),
        [&](const char* ending) { return path.ends_with(ending); });
}

// Any JSON object that is nothing else's for sure.
bool MayBeRun(const std::string& text)
{
    const size_t begin = text.find_first_not_of(" \t\r\n");
    return begin != text.npos && text[begin] == '{' && text.find("\"schema\"") != text.npos;
}

void Add(RunRecord&& record, const Source& source, Machines& machines)
{
    MeasuredMachine& machine = machines.emplace_back();
    machine.record = std::move(record);
    machine.path = source.path;
    machine.file = source.file;
    machine.date =
        machine.record.started.empty() ? DateOf(source.modified) : machine.record.started;
}

void AddContents(const std::string& bytes, const Source& source, int archives, Machines& machines);

void AddArchive(const std::string& bytes, const Source& source, int archives, Machines& machines)
{
    auto unpacked = FilesOfArchive(bytes);
    if (const auto* why = std::get_if<std::string>(&unpacked))
        Refuse(source.path, *why);
    const size_t before = machines.size();
    for (const ArchivedFile& file : std::get<std::vector<ArchivedFile>>(unpacked)) {
        const Source within { source.path + ": " + file.path, LastPart(file.path), file.modified,
            IsCalledSo(file.path), false };
        AddContents(file.contents, within, archives - 1, machines);
    }
    if (machines.size() == before && source.mustHold)
        Refuse(source.path, "holds no results");
}

void AddResults(const std::string& text, const Source& source, Machines& machines)
{
    auto runs = RunsFromResults(text);
    if (const auto* why = std::get_if<std::string>(&runs))
        Refuse(source.path, *why);
    for (RunRecord& run : std::get<std::vector<RunRecord>>(runs))
        Add(std::move(run), source, machines);
}

void AddJson(const std::string& text, const Source& source, Machines& machines)
{
    auto run = RunFromJson(text);
    if (const auto* why = std::get_if<std::string>(&run))
        Refuse(source.path, *why);
    Add(std::move(std::get<RunRecord>(run)), source, machines);
}

void AddContents(const std::string& bytes, const Source& source, int archives, Machines& machines)
{
    if (bytes.size() > kMostBytes)
        Refuse(source.path, "has over 32 MB");
    if (IsArchive(bytes)) {
        if (archives > 0)
            AddArchive(bytes, source, archives, machines);
        else if (source.mustHold)
            Refuse(source.path, "is an archive too deep in others");
    } else if (IsResultsText(bytes)) {
        AddResults(bytes, source, machines);
    } else if (MayBeRun(bytes)) {
        AddJson(bytes, source, machines);
    } else if (source.mustHold) {
        Refuse(source.path, "is neither a results file nor JSON of a run, nor an archive of them");
    }
}

std::time_t ModifiedAt(const std::string& path)
{
    std::time_t seconds = 0;
    return BEntry(path.c_str(), true).GetModificationTime(&seconds) == B_OK ? seconds : 0;
}

int Open(const Source& source)
{
    if (source.isInput)
        return dup(STDIN_FILENO);
    // What was a file when its folder was listed may be a link or a pipe by now.
    const int careful = source.isNamed ? 0 : O_NOFOLLOW | O_NONBLOCK;
    return open(source.path.c_str(), O_RDONLY | O_CLOEXEC | careful);
}

void AddFile(const Source& source, Machines& machines)
{
    const int descriptor = Open(source);
    const OpenFile file(descriptor < 0 ? nullptr : fdopen(descriptor, "r"));
    if (!file)
        RefuseUnread(source.path, strerror(errno));
    Source dated = source;
    dated.modified = source.isInput ? 0 : ModifiedAt(source.path);
    const std::string bytes = ReadAll(file.get());
    if (ferror(file.get()) != 0)
        RefuseUnread(source.path, strerror(errno));
    AddContents(bytes, dated, kArchivesWithin, machines);
}

// All files below it, by path.
std::vector<std::string> FilesBelow(const std::string& folder)
{
    std::vector<std::string> files;
    fs::recursive_directory_iterator entry(folder);
    for (const fs::recursive_directory_iterator end; entry != end; ++entry) {
        const bool isHidden = entry->path().filename().native().starts_with('.');
        const auto type = entry->symlink_status().type();
        if (isHidden && type == fs::file_type::directory)
            entry.disable_recursion_pending();
        else if (!isHidden && type == fs::file_type::regular)
            files.push_back(entry->path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

void AppendFolder(const std::string& folder, std::vector<Source>& sources)
{
    try {
        for (const std::string& path : FilesBelow(folder))
            sources.push_back({ path, LastPart(path), 0, IsCalledSo(path), false });
    } catch (const fs::filesystem_error& error) {
        const std::string& where = error.path1().native();
        RefuseUnread(where.empty() ? folder : where, error.code().message());
    }
}

// Takes what is at path as one of the sources, of a folder all of its files.
void AppendSources(const std::string& path, std::vector<Source>& sources)
{
    std::error_code none;
    if (path == "-")
        sources.push_back({ kStandardInput, kStandardInput, 0, true, true, true });
    else if (fs::is_directory(path, none))
        AppendFolder(path, sources);
    else
        sources.push_back({ path, LastPart(path) });
}

// Reads sources side by side, as thousands of runs are hundreds of megabytes of text.
class SideBySide {
public:
    explicit SideBySide(const std::vector<Source>& sources)
        : fSources(sources), fRead(sources.size()), fFirstBad(sources.size())
    {
        std::vector<std::jthread> helpers;
        try {
            for (size_t i = 1; i < HelpersFor(sources.size()); i++)
                helpers.emplace_back([this] { Work(); });
        } catch (const std::system_error&) { // then there are fewer
        }
        Work();
    }

    // Of each source. Throws what is wrong with the first bad one.
    std::vector<Machines> Take()
    {
        if (fFirstBad < fSources.size())
            throw Refusal { fRead[fFirstBad].why };
        std::vector<Machines> read;
        for (Outcome& outcome : fRead)
            read.push_back(std::move(outcome.machines));
        return read;
    }

private:
    struct Outcome { // written by the one thread that took the source
        Machines machines;
        std::string why; // it is bad
    };

    static size_t HelpersFor(size_t sources)
    {
        constexpr size_t kSourcesEach = 8; // fewer are read before a thread is made
        return std::min<size_t>(std::thread::hardware_concurrency(), sources / kSourcesEach);
    }

    // In order, so that all before a bad one are looked at: which one is told is no matter of luck.
    void Work()
    {
        for (size_t i = fNext++; i < fSources.size() && i < fFirstBad; i = fNext++) {
            try {
                AddFile(fSources[i], fRead[i].machines);
            } catch (const Refusal& refusal) {
                SetBad(i, refusal.line);
            } catch (const std::bad_alloc&) {
                SetBad(i, "cannot read <" + fSources[i].path + ">: there is no memory");
            }
        }
    }

    void SetBad(size_t i, const std::string& why)
    {
        fRead[i].why = why;
        size_t first = fFirstBad;
        while (i < first && !fFirstBad.compare_exchange_weak(first, i)) { }
    }

    const std::vector<Source>& fSources;
    std::vector<Outcome> fRead;
    std::atomic<size_t> fNext = 0;
    std::atomic<size_t> fFirstBad;
};

// The machines of all paths, in their order.
Machines ReadAllOf(const std::vector<std::string>& paths)
{
    std::vector<Source> sources;
    std::vector<size_t> ends; // of each path's sources
    for (const std::string& path : paths) {
        AppendSources(path, sources);
        ends.push_back(sources.size());
    }
    std::vector<Machines> read = SideBySide(sources).Take();
    Machines machines;
    size_t next = 0;
    for (size_t i = 0; i < paths.size(); i++) {
        const size_t before = machines.size();
        for (; next < ends[i]; next++)
            std::move(read[next].begin(), read[next].end(), std::back_inserter(machines));
        if (machines.size() == before)
            Refuse(paths[i], "holds no results");
    }
    return machines;
}

// What may tell machines of equal description apart, the shortest first.
constexpr std::string MeasuredMachine::*kKeys[] = { &MeasuredMachine::file, &MeasuredMachine::date,
    &MeasuredMachine::path };

using Equals = std::vector<MeasuredMachine*>;

// Names those whose text no other has, and returns the others.
template <class TextOf>
Equals NameByText(const Equals& machines, const TextOf& textOf)
{
    std::map<std::string, int> counts;
    for (const MeasuredMachine* machine : machines)
        counts[textOf(*machine)]++;
    Equals unnamed;
    for (MeasuredMachine* machine : machines) {
        const std::string& text = textOf(*machine);
        if (!text.empty() && counts[text] == 1)
            machine->name = text;
        else
            unnamed.push_back(machine);
    }
    return unnamed;
}

const std::string& LabelOf(const MeasuredMachine& machine)
{
    return machine.record.label;
}

void NameEquals(Equals machines)
{
    if (machines.size() == 1) {
        MeasuredMachine& only = *machines.front();
        only.name = only.record.machine.empty() ? only.file : only.record.machine;
        return;
    }
    machines = NameByText(machines, LabelOf);
    for (const auto key : kKeys) {
        machines = NameByText(machines,
            [key](const MeasuredMachine& machine) -> const std::string& { return machine.*key; });
    }
    for (MeasuredMachine* machine : machines)
        machine->name = machine->path;
}

} // namespace

std::variant<std::vector<MeasuredMachine>, std::string> ReadMachines(
    const std::vector<std::string>& paths)
{
    try {
        return ReadAllOf(paths);
    } catch (const Refusal& refusal) {
        return refusal.line;
    }
}

void NameMachines(std::vector<MeasuredMachine>& machines)
{
    std::map<std::string, Equals> byDescription;
    for (MeasuredMachine& machine : machines)
        byDescription[machine.record.machine].push_back(&machine);
    Equals alone; // of their description
    for (const auto& [description, equals] : byDescription) {
        NameEquals(equals);
        if (equals.size() == 1)
            alone.push_back(equals.front());
    }
    NameByText(alone, LabelOf);
    std::map<std::string, int> counts;
    for (const MeasuredMachine& machine : machines)
        counts[machine.name]++;
    for (size_t i = 0; i < machines.size(); i++) {
        if (counts[machines[i].name] > 1)
            machines[i].name += " #" + std::to_string(i + 1);
    }
}
