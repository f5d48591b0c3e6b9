#include "results/ResultsFile.h"

#include "foundation/Utf8.h"
#include "results/ResultList.h"
#include "sysinfo/LibSysInfo.h"

#include <WholeFile.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

namespace {

constexpr size_t kLongestLine = 29;
// Write makes no record of kRecordSize; whatever is much longer is none.
constexpr size_t kLongestRecord = 2 * kRecordSize;

// What a file's machines may take: two-byte machines would fill the memory of any computer. Whole
// runs need four times their text on eight processors, six times on four, 13 times on one; the
// floor has room for two thousand of any. Who keeps the machines needs memory for that besides.
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
    return kMachine + static_cast<size_t>(machine.Size()) * kMetric
        + static_cast<size_t>(machine.devices.Size()) * kDevice
        + std::min(record.rfind('\t'), record.size());
}

// Reads most characters, or up to the end of the line, which is taken but not kept. False at the
// end of the file. What is longer than a record is counted but not kept.
bool ReadLine(FILE* file, size_t most, std::string& line, size_t& length)
{
    line.clear();
    length = 0;
    int c = EOF;
    while (length < most && (c = getc_unlocked(file)) != EOF && c != '\n') {
        if (++length <= kLongestRecord)
            line.push_back(static_cast<char>(c));
    }
    return length > 0 || c != EOF;
}

// The length that a line gives; 0 if it gives none.
size_t LengthIn(const std::string& line)
{
    int32 length = 0;
    const LibString text(line.c_str());
    return text.GetInt32(length) && length > 0 ? static_cast<size_t>(length) : 0;
}

// One file, with what was wrong in it.
class Reader {
public:
    Reader(FILE* file, const char* name, ResultList& list) : fFile(file), fName(name), fList(list)
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
        const bool isRead = ReadLine(fFile, most, line, length);
        fBytesRead += length + 1;
        return isRead;
    }

    void ReadRecord(size_t most)
    {
        std::string record;
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
        auto machine = std::make_unique<Results>(false, fThisMachine);
        machine->Read(record.c_str());
        machine->origin = fName;
        fMemory += MemoryOf(*machine, record);
        fList.Insert(std::move(machine));
    }

    FILE* fFile;
    const std::string fName;
    ResultList& fList;
    const LibSysInfo fThisMachine;
    size_t fBytesRead = 0;
    size_t fMemory = 0; // of the machines of this file
    long fBadLengths = 0;
    std::string fFirstBadLength;
    long fTooLong = 0;
    long fTooMany = 0;
};

} // namespace

bool WriteResultsFile(const char* path, const Results& results)
{
    char record[kRecordSize];
    results.Write(record);
    WholeFile file(path);
    if (file.Stream())
        fprintf(file.Stream(), "1.0\n%d\n%s\n", static_cast<int>(strlen(record)), record);
    if (file.Commit())
        return true;
    fprintf(stderr, "Error writing <%s>: %s\n", path, file.Error().c_str());
    return false;
}

void ReadResults(FILE* file, const char* name, ResultList& list)
{
    Reader reader(file, name, list);
    reader.ReadAll();
    reader.Report();
}

bool ReadResultsFile(const char* path, ResultList& list)
{
    FILE* file = fopen(path, "r");
    if (!file)
        return false;
    ReadResults(file, path, list);
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
    ReadLine(file, kLongestLine, line, length);
    ReadLine(file, kLongestLine, line, length);
    fclose(file);
    if (line.ends_with('\r'))
        line.pop_back();
    return LengthIn(line) > 0;
}
