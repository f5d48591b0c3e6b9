#include "results/RunJournal.h"

#include "results/RunFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace {

// A journal of another form gets another number, and versions that do not know it refuse it.
constexpr char kFirstLine[] = "tarvex-run journal 1";
constexpr size_t kMostJournalBytes = 64 * 1024 * 1024;

// Line ends in JSON are between its values only.
std::string OneLine(std::string json)
{
    std::erase(json, '\n');
    return json;
}

// Empty where the file cannot be read, is too large or not a file.
std::string Contents(FILE* file)
{
    std::string text;
    char part[65536];
    while (const size_t read = fread(part, 1, sizeof part, file)) {
        text.append(part, read);
        if (text.size() > kMostJournalBytes)
            return "";
    }
    return ferror(file) != 0 ? "" : text;
}

// Takes the first line off the text. False where there is no whole one.
bool TakeLine(std::string_view& text, std::string& line)
{
    const size_t end = text.find('\n');
    if (end == text.npos)
        return false;
    line = text.substr(0, end);
    text.remove_prefix(end + 1);
    return true;
}

} // namespace

std::string RunJournal::PathBeside(const std::string& output)
{
    return output + ".journal";
}

std::string RunJournal::Begin(
    const std::string& newPath, const std::string& output, const RunRecord& record)
{
    // The name is a line of the journal.
    if (output.find('\n') != output.npos)
        return "the output's name has a line end";
    path = newPath;
    file.reset(fopen(path.c_str(), "wxe")); // what others left there is not written to
    if (!file)
        return errno == EEXIST ? "it is of a run that was not finished; --resume or remove it"
                               : strerror(errno);
    if (Write(std::string(kFirstLine) + '\n' + output + '\n' + OneLine(RunAsJson(record)) + '\n'))
        return "";
    const std::string why = strerror(errno);
    Remove();
    return why;
}

std::string RunJournal::GoOn(const std::string& newPath)
{
    const auto journal = ReadRunJournal(newPath);
    if (const auto* why = std::get_if<std::string>(&journal))
        return *why;
    path = newPath;
    file.reset(fopen(path.c_str(), "ae"));
    // A line that was cut would spoil the next one.
    if (!file || ftruncate(fileno(file.get()), std::get<ReadJournal>(journal).bytes) != 0)
        return strerror(errno);
    return "";
}

bool RunJournal::Write(const std::string& text)
{
    // On the disk, not only in the memory of the system: the machine itself may stop.
    return fwrite(text.data(), 1, text.size(), file.get()) == text.size() && fflush(file.get()) == 0
        && fdatasync(fileno(file.get())) == 0;
}

void RunJournal::Add(const Series& series)
{
    if (!file || Write(SpanAsJson(series) + '\n') || hasFailed)
        return;
    // Said once, and the run goes on: its measurements are worth more than the journal.
    fprintf(stderr, "Error writing <%s>: %s\n", path.c_str(), strerror(errno));
    hasFailed = true;
}

void RunJournal::Remove()
{
    if (file)
        unlink(path.c_str());
    file.reset();
}

std::variant<ReadJournal, std::string> ReadRunJournal(const std::string& path)
{
    FILE* file = fopen(path.c_str(), "re");
    if (!file)
        return std::string(strerror(errno));
    const std::string contents = Contents(file);
    fclose(file);
    std::string_view text = contents;
    std::string line;
    ReadJournal journal;
    if (!TakeLine(text, line) || line != kFirstLine || !TakeLine(text, journal.output)
        || !TakeLine(text, line))
        return "it is no journal of tarvex-run";
    auto record = RunFromJson(line);
    if (const auto* why = std::get_if<std::string>(&record))
        return "the run in it " + *why;
    journal.record = std::move(std::get<RunRecord>(record));
    // Three lines are read already.
    for (int number = 4; TakeLine(text, line); number++) {
        if (!AddSpan(line, journal.record))
            return "line " + std::to_string(number) + " of it is damaged";
    }
    // The rest is a line that was cut, which GoOn() takes off.
    journal.bytes = static_cast<long>(contents.size() - text.size());
    return journal;
}
