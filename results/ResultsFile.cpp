#include "results/ResultsFile.h"

#include "foundation/PlainText.h"
#include "foundation/Utf8.h"
#include "results/Metric.h"
#include "results/Results.h"
#include "sysinfo/LibSysInfo.h"

#include <WholeFile.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace {

constexpr size_t kLongestLine = 29;
// Write makes no record of kRecordSize; whatever is much longer is none.
constexpr size_t kLongestRecord = 2 * kRecordSize;

// What a file's machines may take: two-byte machines would fill the memory of any computer. Not
// packed, complete runs need four times their text on eight processors, six times on four, 13 times
// on one; the floor has room for two thousand of any.
constexpr size_t kMostBytesPerByteRead = 6;
constexpr size_t kFloorBytes = 16 << 20;

// The memory that a machine takes, with what malloc adds to each piece, within a tenth. Its own
// texts stand in front of the record's last tab.
size_t MemoryOf(const Results& machine, const std::string& record)
{
    constexpr size_t kPiece = 16;
    constexpr size_t kShortText = 32;
    constexpr size_t kMachine =
        sizeof(Results) + sizeof(BBitmap) + 256 + sizeof(ListNode<Results>) + 5 * kPiece;
    constexpr size_t kMetric =
        sizeof(Metric) + sizeof(ListNode<Metric>) + 2 * kPiece + 2 * kShortText;
    constexpr size_t kDevice =
        sizeof(RelatedDevices) + sizeof(ListNode<RelatedDevices>) + 2 * kPiece + kShortText;
    const size_t metrics = machine.IsPacked()
        ? kMetric + record.size() + kPiece // the current one, later
        : static_cast<size_t>(machine.Size()) * kMetric;
    return kMachine + metrics + static_cast<size_t>(machine.devices.Size()) * kDevice
        + std::min(record.rfind('\t'), record.size());
}

// Lines of a file up to its end, read in blocks: what is read is this object's.
class LineReader {
public:
    explicit LineReader(FILE* file) : fFile(file) { }

    // Reads most characters, or up to the end of the line, which is taken but not kept. False at
    // the end of the file. What is much longer than a record is counted, but its rest not kept.
    bool Read(size_t most, std::string& line, size_t& length)
    {
        line.clear();
        length = 0;
        bool isEnded = false;
        while (length < most && !isEnded && Fill()) {
            const char* first = fBlock.data() + fAt;
            const size_t room = std::min(fEnd - fAt, most - length);
            const auto* end = static_cast<const char*>(memchr(first, '\n', room));
            const size_t size = end ? static_cast<size_t>(end - first) : room;
            if (length < kLongestRecord)
                line.append(first, size);
            length += size;
            isEnded = end != nullptr;
            fAt += size + (isEnded ? 1 : 0);
        }
        return length > 0 || isEnded;
    }

private:
    bool Fill()
    {
        if (fAt == fEnd) {
            fAt = 0;
            fEnd = fread(fBlock.data(), 1, fBlock.size(), fFile);
        }
        return fEnd > 0;
    }

    FILE* fFile;
    size_t fAt = 0;
    size_t fEnd = 0;
    std::array<char, 1 << 16> fBlock;
};

// The length that a line gives; 0 if it gives none.
size_t LengthIn(const std::string& line)
{
    int32 length = 0;
    const LibString text(line.c_str());
    return text.GetInt32(length) && length > 0 ? static_cast<size_t>(length) : 0;
}

// One file, with what was wrong in it.
class ResultsReader {
public:
    ResultsReader(FILE* file, const char* name, ResultList& list, MachinesAre kept)
        : fLines(file), fName(name), fList(list), fKept(kept)
    {
    }

    void ReadAll()
    {
        std::string line;
        size_t length = 0;
        Read(kLongestLine, line, length); // the version: all are read alike
        while (Read(kLongestLine, line, length)) {
            if (line.ends_with('\r')) // mailed
                line.pop_back();
            if (line.empty())
                continue;
            if (const size_t record = LengthIn(line))
                ReadRecord(record);
            else if (fBadLengths++ == 0)
                fFirstBadLength = line;
        }
    }

    void Report() const
    {
        const std::string shown = LibPrintable(fName.c_str());
        const char* name = shown.c_str();
        if (fBadLengths > 0) {
            fprintf(stderr, "<%s>: %ld lines are no length of a record, the first <%s>\n", name,
                fBadLengths, LibPrintable(fFirstBadLength.c_str()).c_str());
        }
        if (fTooLong > 0) {
            fprintf(stderr, "<%s>: %ld records longer than %zu characters are left out\n", name,
                fTooLong, kLongestRecord);
        }
        if (fTooMany > 0) {
            fprintf(stderr,
                "<%s>: %ld machines are left out: they need more than %zu times the memory that "
                "the file has bytes\n",
                name, fTooMany, kMostBytesPerByteRead);
        }
    }

private:
    bool Read(size_t most, std::string& line, size_t& length)
    {
        const bool isRead = fLines.Read(most, line, length);
        fBytesRead += length + 1;
        return isRead;
    }

    void ReadRecord(size_t most)
    {
        std::string& record = fRecord;
        size_t length = 0;
        if (!Read(most, record, length))
            return;
        if (length > kLongestRecord) {
            fTooLong++;
            return;
        }
        if (fMemory > std::max(kFloorBytes, fBytesRead * kMostBytesPerByteRead)) {
            fTooMany++;
            return;
        }
        auto machine = MachineFrom(record.c_str());
        machine->origin = fName;
        fMemory += MemoryOf(*machine, record);
        fList.Insert(std::move(machine));
    }

    std::unique_ptr<Results> MachineFrom(const char* record) const
    {
        if (fKept == MachinesAre::kPacked)
            return Results::FromRecord(record, fThisMachine);
        auto machine = std::make_unique<Results>(false, fThisMachine);
        machine->Read(record);
        return machine;
    }

    LineReader fLines;
    std::string fRecord; // the last one, with its room for the next
    const std::string fName;
    ResultList& fList;
    const MachinesAre fKept;
    const LibSysInfo fThisMachine;
    size_t fBytesRead = 0;
    size_t fMemory = 0; // of the machines of this file
    long fBadLengths = 0;
    std::string fFirstBadLength;
    long fTooLong = 0;
    long fTooMany = 0;
};

} // namespace

bool WriteResultsFile(const char* path, const Results& results, std::string* why)
{
    char record[kRecordSize];
    results.Write(record);
    WholeFile file(path);
    if (file.Stream())
        fprintf(file.Stream(), "1.0\n%d\n%s\n", static_cast<int>(strlen(record)), record);
    if (file.Commit())
        return true;
    fprintf(stderr, "Error writing <%s>: %s\n", path, file.Error().c_str());
    if (why)
        *why = file.Error();
    return false;
}

void ReadResults(FILE* file, const char* name, ResultList& list, MachinesAre kept)
{
    ResultsReader reader(file, name, list, kept);
    reader.ReadAll();
    reader.Report();
}

bool ReadResultsFile(const char* path, ResultList& list, MachinesAre kept)
{
    FILE* file = fopen(path, "r");
    if (!file)
        return false;
    ReadResults(file, path, list, kept);
    fclose(file);
    return true;
}

bool IsResultsFile(const char* path)
{
    FILE* file = fopen(path, "r");
    if (!file)
        return false;
    std::string line;
    size_t length = 0;
    LineReader lines(file);
    lines.Read(kLongestLine, line, length);
    lines.Read(kLongestLine, line, length);
    fclose(file);
    if (line.ends_with('\r'))
        line.pop_back();
    return LengthIn(line) > 0;
}

namespace {

struct Damage {
    std::string what;
};

void Check(bool isRight, const std::string& what)
{
    if (!isRight)
        throw Damage { what };
}

// Takes the text up to the separator, and the separator; all of it where there is none, and none of
// the text is left then.
std::string_view Take(std::string_view& text, char separator)
{
    const size_t end = text.find(separator);
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    return part;
}

std::string_view TakeLine(std::string_view& text)
{
    std::string_view line = Take(text, '\n');
    if (line.ends_with('\r')) // mailed
        line.remove_suffix(1);
    return line;
}

// Whether all of the text is a number. from_chars knows no locale.
template <class Number>
bool Parse(std::string_view text, Number& number)
{
    const char* const end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && read == end;
}

bool ParseLength(std::string_view line, size_t& length)
{
    return Parse(line, length) && length > 0;
}

// The count of the first of so many times. More than the description says has a machine whose
// description does not tell: then the last time is that of one processor.
int32 FirstCount(std::string_view description, size_t times)
{
    const size_t at = description.find('(');
    const char digit = at + 1 < description.size() ? description[at + 1] : '0';
    const int32 said = LibIsDigit(digit) ? digit - '0' : 0;
    return std::max(said, static_cast<int32>(times));
}

// "id:cycles/time,time", of which id is taken already.
void ReadMetric(std::string_view id, std::string_view rest, RunRecord& run)
{
    int32 index = 0;
    Check(Parse(id, index), "has a metric without a number: <" + std::string(id) + ">");
    const TestType* test = FindTestType(index);
    const std::string name = test ? test->name : std::to_string(index);
    int32 cycles = 0;
    Check(rest.find('/') != rest.npos && Parse(Take(rest, '/'), cycles) && cycles >= 0,
        "has no amount of work for <" + name + ">");
    std::vector<double> times;
    while (!rest.empty()) {
        Check(times.size() < static_cast<size_t>(kMostTimes),
            "has more than eight times for <" + name + ">");
        const std::string_view time = Take(rest, ',');
        Check(Parse(time, times.emplace_back()) && std::isfinite(times.back()),
            "has a time for <" + name + "> that is none: <" + std::string(time) + ">");
    }
    // Not before its times are read: damage is told of tests that are not known, too.
    if (!test)
        return;
    int32 count = FirstCount(run.machine, times.size());
    for (const double seconds : times) {
        // 0 stands for a pass that left the test out. The count goes down all the same.
        if (seconds > 0) {
            Check(!run.Find(*test, count), "has <" + name + "> twice");
            Span& span = run.At(*test, count).spans.emplace_back();
            span.seconds = seconds;
            span.work = cycles;
        }
        count--;
    }
}

RunRecord ReadRecord(std::string_view record)
{
    const size_t end = record.rfind('\t');
    Check(end != record.npos, "has a record without a machine");
    RunRecord run;
    run.machine = record.substr(0, record.find('\t'));
    std::string_view metrics = record.substr(end + 1);
    while (!metrics.empty()) {
        Check(metrics.find(';') != metrics.npos, "has a metric that is cut short");
        std::string_view metric = Take(metrics, ';');
        const std::string_view id = Take(metric, ':');
        ReadMetric(id, metric, run);
    }
    return run;
}

std::vector<RunRecord> ReadRecords(std::string_view text)
{
    std::vector<RunRecord> runs;
    TakeLine(text); // the version: all are read alike
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (line.empty())
            continue;
        size_t length = 0;
        Check(ParseLength(line, length), "has a line that is no length of a record");
        const std::string_view record = TakeLine(text);
        Check(record.size() == length,
            "has a record of " + std::to_string(record.size()) + " characters where "
                + std::to_string(length) + " are said");
        runs.push_back(ReadRecord(record));
    }
    Check(!runs.empty(), "holds no results");
    return runs;
}

} // namespace

bool IsResultsText(const std::string& text)
{
    std::string_view rest = text;
    TakeLine(rest);
    size_t length = 0;
    return ParseLength(TakeLine(rest), length);
}

std::variant<std::vector<RunRecord>, std::string> RunsFromResults(const std::string& text)
{
    try {
        return ReadRecords(text);
    } catch (const Damage& damage) {
        return damage.what;
    }
}
