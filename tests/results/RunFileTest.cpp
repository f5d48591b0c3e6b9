#include "results/RunFile.h"

#include "tests/foundation/LocaleGuard.h"
#include "tests/results/SampleRun.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

namespace {

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

TEST(RunFile, SaysHowOtherProcessorsWereKeptOut)
{
    RunRecord run;
    run.details.processors.resize(4);
    run.passes = { { 4, { 0, 1, 2, 3 }, {}, {}, {} }, { 2, { 0, 1 }, { 2, 3 }, {}, {} },
        { 2, { 0, 1 }, { 3 }, {}, {} }, { 2, { 0, 1 }, {}, {}, {} }, { 2, {}, {}, {}, {} } };
    const std::string json = RunAsJson(run);
    size_t at = 0;
    for (const char* const kept : { "4,\"kept_out\":\"none to keep out\"",
             "2,\"kept_out\":\"switched off\"", "2,\"kept_out\":\"some switched off\"",
             "2,\"kept_out\":\"bound to the used\"", "2,\"kept_out\":null" }) {
        at = json.find("{\"processors\":" + std::string(kept), at + 1);
        ASSERT_NE(at, std::string::npos) << kept << " is not in, or not here: " << json;
    }
}

TEST(RunFile, WhatIsNotKnownIsNull)
{
    EXPECT_EQ(RunAsJson({}),
        "{\n\"schema\": 1,\n\"label\": null,\n\"started\": null,\n\"machine\": null,\n"
        "\"build\": {\"version\":null,\"compiler\":null,\"flags\":null},\n"
        "\"plan\": "
        "{\"groups\":[],\"counts\":[],\"repeats\":1,\"until_percent\":null},\n\"warnings\": [],\n"
        "\"system\": {\"kernel_release\":null,\"kernel_version\":null,\"distribution\":null,"
        "\"processor_model\":null,\"memory_bytes\":null,\"virtual_machine\":null,"
        "\"container\":null,\"processors\":[]},\n"
        "\"display\": null,\n\"display_size\": null,\n\"temporary_folder\": null,\n"
        "\"best_probe_seconds\": null,\n\"best_clock_seconds\": null,\n\"passes\": "
        "[],\n\"series\": []\n}\n");
    RunRecord run;
    run.label = "cut \xc3"; // of two bytes
    EXPECT_NE(RunAsJson(run).find("\"label\": \"cut \xef\xbf\xbd\""), std::string::npos);
    run.passes = { { 1, {}, {}, {}, {} } };
    run.series = { { &TestNamed("Memory"), 1,
        { { 0.5, 1, {}, {}, 0, false, 7 }, { 0.5, 1, {}, {}, 0, false, {} } }, "" } };
    const std::string json = RunAsJson(run);
    EXPECT_EQ(Again(json), json);
    EXPECT_NE(json.find("{\"processors\":1,\"kept_out\":null,\"stolen\":null,\"throttles\":null,"
                        "\"joules\":null,"),
        std::string::npos)
        << json;
    EXPECT_NE(json.find("\"joules\":null,\"work_per_joule\":null,"), std::string::npos) << json;
}

TEST(RunFile, IsValidByItsSchema)
{
    const TempFolder folder;
    RunRecord few = SampleRun();
    few.series.front().spans.resize(1);
    few.passes.front() = { 1, {}, {}, {}, {} };
    WriteFile(folder / "full.json", RunAsJson(SampleRun()));
    WriteFile(folder / "few.json", RunAsJson(few));
    WriteFile(folder / "empty.json", RunAsJson({}));
    WriteFile(folder / "other.json",
        Replaced(RunAsJson(SampleRun()), "\"better\":\"more\"", "\"better\":\"most\""));
    WriteFile(folder / "more.json",
        Replaced(RunAsJson(SampleRun()), "\"in_memory\":", "\"on_disk\":true,\"in_memory\":"));
    const std::string tests = TARVEX_TESTS;
    const auto validate = [&](const std::string& names) {
        const std::string command = "cd " + folder.Path() + " && " + tests
            + "/results/validate-run " + tests + "/../docs/run.schema.json " + names
            + " >said 2>&1";
        const int status = system(command.c_str());
        return std::to_string(WEXITSTATUS(status)) + ": " + ReadFile(folder / "said");
    };
    EXPECT_EQ(validate("full.json few.json empty.json"), "0: ");
    EXPECT_EQ(validate("other.json more.json"),
        "1: other.json: $.series[0].better: 'most' is not one of ['more', 'less']\n"
        "more.json: $.temporary_folder: Additional properties are not allowed ('on_disk' was "
        "unexpected)\n");
}

TEST(RunFile, TablesHaveARowForEachTestAndCount)
{
    RunRecord run = SampleRun();
    run.series.front().undone = "text, \"copied\", is\tanother";
    const std::string columns = "label,test,name,units,better,processors,rate,n,estimate_seconds,"
                                "interval_low_seconds,interval_high_seconds,interval_coverage,"
                                "minimum_seconds,median_seconds,maximum_seconds,variation,"
                                "shared_spans,joules,work_per_joule,mark_shared,mark_two_speeds,"
                                "mark_unsteady,mark_few,mark_wide,fast_median_seconds,fast_share,"
                                "slow_median_seconds,slow_share,undone\n";
    const std::string figures = "1395327.2042293919,3,0.004300066666666666,0.0043,"
                                "0.008400033333333333,0.75,0.0043,0.004300066666666666,"
                                "0.008400033333333333,0.41772744347012564,1,3.3000000000000003,"
                                "5454.545454545454,true,true,true,true,false,0.004300033333333333,"
                                "0.6666666666666666,0.008400033333333333,0.3333333333333333,";
    const std::string label = "\"Küche, \"\"alt\"\"\nlinks\"";
    EXPECT_EQ(RunAsTable(run, ','),
        columns + label + ",400,Ackerman,IPS,more,2" + std::string(12, ',')
            + "28.799999999999997,1666.6666666666667" + std::string(10, ',')
            + "\"text, \"\"copied\"\", is\tanother\"\n" + label + ",400,Ackerman,IPS,more,1,"
            + figures + "\n" + label + ",700,Sieve,IPS,more,1" + std::string(23, ',')
            + "a flag is wrong\n");
    const std::string tabs = RunAsTable(run, '\t');
    EXPECT_NE(tabs.find("\nKüche, \"alt\" links\t400\t"), std::string::npos) << tabs;
    EXPECT_NE(tabs.find("\ttext, \"copied\", is another\n"), std::string::npos) << tabs;
}

TEST(RunFile, WhatCannotBeIsOneLineWithItsField)
{
    const std::string json = RunAsJson(SampleRun());
    for (const auto& [change, message] : ReadRows("results/data/run-refused")) {
        const size_t arrow = change.find(" => ");
        EXPECT_EQ(
            Again(Replaced(json, change.substr(0, arrow), change.substr(arrow + 4))), message);
    }
    EXPECT_EQ(Again(Replaced(json, "The vendor", "The \xff")), "is not JSON in line 12");
    EXPECT_EQ(Again(Replaced(json, "\n]\n}\n", "\n")), "is not JSON in line 25");
    EXPECT_EQ(Again(""), "is not JSON in line 1");
    EXPECT_EQ(Again("[]"), "is not a run of tarvex-run");
    EXPECT_EQ(Again(std::string(30 << 20, '[')), "is nested too deeply");
    EXPECT_EQ(Again(std::string(100 << 20, '[')), "has over 32 megabytes");
}

} // namespace
