#include "results/RunFile.h"

#include "tests/foundation/LocaleGuard.h"
#include "tests/results/SampleRun.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

namespace {

const std::string kData = TARVEX_TESTS "/results/data/";

// What is written of the record that was read, or why there is none.
std::string Again(const std::string& json)
{
    const auto read = RunFromJson(json);
    const auto* record = std::get_if<RunRecord>(&read);
    return record ? RunAsJson(*record) : std::get<std::string>(read);
}

std::string Replaced(std::string text, const std::string& what, const std::string& with)
{
    const size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return at == std::string::npos ? text : text.replace(at, what.size(), with);
}

// As it was when the schema was new: whoever has to change the file has to change the schema's
// number too, unless a key was added.
TEST(RunFile, IsAsOtherProgramsReadIt)
{
    const std::string file = TARVEX_TESTS "/fuzz/corpus/run/full";
    EXPECT_EQ(RunAsJson(SampleRun()), ReadFile(file));
}

TEST(RunFile, SaysOfWhatIsNotKnownThatItIsNullAndHowOthersWereKeptOut)
{
    RunRecord run;
    run.label = "cut \xc3"; // of two bytes
    run.details.processors.resize(4);
    run.passes = { { 4, { 0, 1, 2, 3 }, {}, {}, {} }, { 2, { 0, 1 }, { 2, 3 }, {}, {} },
        { 2, { 0, 1 }, { 3 }, {}, {} }, { 2, { 0, 1 }, {}, {}, {} }, { 2, {}, {}, {}, {} } };
    run.series = { { &TestNamed("Memory"), 1,
        { { 0.5, 1, {}, {}, 0, false, 7 }, { 0.5, 1, {}, {}, 0, false, {} } }, "" } };
    const std::string json = RunAsJson(run);
    EXPECT_EQ(json, ReadFile(kData + "run-few.json"));
    EXPECT_EQ(Again(json), json);
}

TEST(RunFile, TablesHaveARowForEachTestAndCount)
{
    RunRecord run = SampleRun();
    run.series.front().undone = "text, \"copied\", is\tanother";
    EXPECT_EQ(RunAsTable(run, ','), ReadFile(kData + "run.csv"));
    EXPECT_EQ(RunAsTable(run, '\t'), ReadFile(kData + "run.tsv"));
}

TEST(RunFile, WhatCannotBeIsOneLineWithItsField)
{
    const std::string json = RunAsJson(SampleRun());
    for (const auto& [change, message] : ReadRows("results/data/run-refused")) {
        const size_t arrow = change.find(" => ");
        const std::string changed =
            Replaced(json, change.substr(0, arrow), change.substr(arrow + 4));
        const bool isRead = std::holds_alternative<RunRecord>(RunFromJson(changed));
        EXPECT_EQ(isRead ? "is read" : Again(changed), message) << change;
    }
    EXPECT_EQ(Again(Replaced(json, "The vendor", "The \xff")), "is not JSON in line 12");
    EXPECT_EQ(Again(Replaced(json, "\n]\n}\n", "\n")), "is not JSON in line 25");
    EXPECT_EQ(Again(""), "is not JSON in line 1");
    EXPECT_EQ(Again("[]"), "is not a run of tarvex-run");
    EXPECT_EQ(Again(std::string(30 << 20, '[')), "is nested too deeply");
    EXPECT_EQ(Again(std::string(100 << 20, '[')), "has over 32 megabytes");
}

} // namespace
