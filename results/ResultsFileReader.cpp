#include <memory>
#include <string>

#include "results/ResultList.h"
#include "results/ResultsFile.h"
#include "sysinfo/LibSysInfo.h"

namespace {

constexpr size_t kLongestLine = 29;
// Write makes no record of kRecordSize; whatever is much longer is none.
constexpr size_t kLongestRecord = 2 * kRecordSize;

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
    Reader(FILE* file, ResultList& list) : fFile(file), fList(list) { }

    void ReadAll()
    {
        std::string line;
        size_t length = 0;
        ReadLine(fFile, kLongestLine, line, length); // the version: all are read alike
        while (ReadLine(fFile, kLongestLine, line, length)) {
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

    void Report(const char* name) const
    {
        if (fBadLengths > 0) {
            fprintf(stderr, "<%s>: %d lines are no length of a record, the first <%s>\n", name,
                fBadLengths, fFirstBadLength.c_str());
        }
        if (fTooLong > 0) {
            fprintf(stderr, "<%s>: %d records longer than %zu characters are left out\n", name,
                fTooLong, kLongestRecord);
        }
    }

private:
    void ReadRecord(size_t most)
    {
        std::string record;
        size_t length = 0;
        if (!ReadLine(fFile, most, record, length))
            return;
        if (length > kLongestRecord) {
            fTooLong++;
            return;
        }
        auto machine = std::make_unique<Results>(false, fThisMachine);
        machine->Read(record.c_str());
        if (fList.Insert(machine.get()))
            machine.release();
    }

    FILE* fFile;
    ResultList& fList;
    const LibSysInfo fThisMachine;
    int fBadLengths = 0;
    std::string fFirstBadLength;
    int fTooLong = 0;
};

} // namespace

void ReadResults(FILE* file, const char* name, ResultList& list)
{
    Reader reader(file, list);
    reader.ReadAll();
    reader.Report(name);
}

bool ReadResultsFile(const char* path, ResultList& list)
{
    FILE* file = fopen(path, "r");
    if (file == nullptr)
        return false;
    ReadResults(file, path, list);
    fclose(file);
    return true;
}

bool IsResultsFile(const char* path)
{
    FILE* file = fopen(path, "r");
    if (file == nullptr)
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
