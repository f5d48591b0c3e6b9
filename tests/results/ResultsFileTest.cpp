#include "results/ResultsFile.h"

#include "tests/results/MadeRuns.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

namespace {

// "Sieve 2: 1 s for 400; ..." of every run, or why there are none.
std::string Told(const std::string& text)
{
    const auto read = RunsFromResults(text);
    if (const auto* why = std::get_if<std::string>(&read))
        return *why;
    std::string told;
    for (const RunRecord& run : std::get<std::vector<RunRecord>>(read)) {
        told += "<" + run.machine + ">";
        for (const Series& series : run.series) {
            const Span& span = series.spans.front();
            told += std::string(" ") + series.test->name + " " + std::to_string(series.processors)
                + ":" + std::to_string(static_cast<int>(span.work)) + "/"
                + std::to_string(static_cast<int>(span.seconds));
        }
    }
    return told;
}

TEST(ResultsText, GivesTheTimesOfEachProcessorCountUnlessItIsDamaged)
{
    for (const Row& row : RowsOf("results/data/results-texts", 3))
        EXPECT_EQ(Told(row[0] == "text" ? row[1] : MadeResults(row[0], row[1])), row[2]) << row[1];
}

} // namespace
