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

TEST(ResultsText, GivesTheTimesOfEachProcessorCount)
{
    const std::string two = MadeResults("PC (2-x)", "700:400/3.0,4.0;601:0/0.000000,5.0;9:1/1.0;");
    EXPECT_EQ(Told(two), "<PC (2-x)> Sieve 2:400/3 Sieve 1:400/4 Ten Sequential Whetstones 1:0/5")
        << "neither what was left out nor an unknown test";
    EXPECT_EQ(Told(two + two.substr(4)), Told(two) + Told(two)) << "machine by machine";
    EXPECT_EQ(
        Told(MadeResults("PC", "700:1/1,2,3,4,5,6,7,8;")).substr(0, 22), "<PC> Sieve 8:1/1 Sieve");
    EXPECT_EQ(Told(MadeResults("PC (3-x)", "700:1/7.0;")), "<PC (3-x)> Sieve 3:1/7");
    EXPECT_EQ(Told("1.0\r\n19\r\nPC (1-x)\t700:1/1.0;\r\n"), "<PC (1-x)> Sieve 1:1/1");
}

TEST(ResultsText, IsRefusedWhereverItIsDamaged)
{
    for (const Row& row : RowsOf("results/data/damaged", 3))
        EXPECT_EQ(Told(row[0] == "text" ? row[1] : MadeResults(row[0], row[1])), row[2]) << row[1];
}

} // namespace
