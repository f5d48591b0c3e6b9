// The bytes are an archive, or a results file that is read strictly.
#include "results/ArchiveFiles.h"
#include "results/ResultsFile.h"
#include "tests/fuzz/Require.h"

#include <cmath>

namespace {

void CheckRuns(const std::string& text)
{
    const auto read = RunsFromResults(text);
    if (std::holds_alternative<std::string>(read))
        return;
    for (const RunRecord& run : std::get<std::vector<RunRecord>>(read)) {
        for (const Series& series : run.series) {
            Require(series.processors >= 1 && series.processors <= 9, "one digit of processors");
            Require(series.spans.size() == 1, "a time for a test and count");
            const Span& span = series.spans.front();
            Require(std::isfinite(span.seconds) && span.seconds > 0, "a time was measured");
            Require(span.work >= 0, "work is done");
        }
    }
}

void CheckFiles(const std::string& bytes)
{
    const auto read = FilesOfArchive(bytes);
    if (!std::holds_alternative<std::vector<ArchivedFile>>(read))
        return;
    size_t unpacked = 0;
    for (const ArchivedFile& file : std::get<std::vector<ArchivedFile>>(read)) {
        unpacked += file.contents.size();
        Require(!file.path.empty() && file.path.front() != '/', "paths are relative");
        Require(("/" + file.path + "/").find("/../") == std::string::npos, "none leads upward");
    }
    Require(unpacked <= kMostUnpacked, "10 MB at most");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    if (IsArchive(bytes))
        CheckFiles(bytes);
    else
        CheckRuns(bytes);
    return 0;
}
