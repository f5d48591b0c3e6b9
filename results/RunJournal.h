// What a run has measured so far, in a file beside its output: a line for what is known before the
// first test, then one for each span, on the disk before the next span begins. The run that is
// interrupted in whatever way can go on from it.
#pragma once

#include "results/RunRecord.h"

#include <cstdio>
#include <memory>
#include <string>
#include <variant>

class RunJournal {
public:
    // The journal of a run with this output.
    [[nodiscard]] static std::string PathBeside(const std::string& output);

    // Begins a journal for the record. Empty, or why not: what lies at path stays as it is.
    [[nodiscard]] std::string Begin(
        const std::string& path, const std::string& output, const RunRecord& record);
    // Goes on with one that was read. Empty, or why not.
    [[nodiscard]] std::string GoOn(const std::string& path);
    // Adds the latest span of a series, and waits for the disk. What fails is told on standard
    // error, once. Does nothing where there is no journal.
    void Add(const Series& series);
    // The run is done and written.
    void Remove();

private:
    struct Close {
        void operator()(FILE* closed) const { fclose(closed); }
    };

    bool Write(const std::string& text);

    std::string path;
    std::unique_ptr<FILE, Close> file;
    bool hasFailed = false;
};

struct ReadJournal {
    std::string output; // of the run
    RunRecord record;
    long bytes = 0; // of the journal, without a last line that was cut
};
// Reads a journal; a last line that was cut is left out. Or one line without its end that says why
// it cannot be used.
[[nodiscard]] std::variant<ReadJournal, std::string> ReadRunJournal(const std::string& path);
