#include "results/RunFile.h"

#include "tests/foundation/LocaleGuard.h"
#include "tests/results/SampleRun.h"
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
    const struct {
        const char* name;
        const char* what;
        const char* with;
        const char* message;
    } rows[] = {
        { "newer", "\"schema\": 1", "\"schema\": 2",
            "is of a newer Tarvex: its schema is 2, this one reads 1" },
        { "schema of none", "\"schema\": 1", "\"schema\": 0",
            "schema: must be a whole number from 1 to 1000000000" },
        { "another program's", "\"schema\"", "\"scheme\"", "schema: is missing" },
        { "text for a number", "\"seconds\":0.0043,", "\"seconds\":\"0.0043\",",
            "series[0].spans[0].seconds: must be a number from 0 to 1e+18" },
        { "below 0", "\"seconds\":0.0043,", "\"seconds\":-0.0043,",
            "series[0].spans[0].seconds: must be a number from 0 to 1e+18" },
        { "null where a number must be", "\"waited_seconds\":1e-05", "\"waited_seconds\":null",
            "series[0].spans[0].waited_seconds: must be a number from 0 to 1e+18" },
        { "NaN", "\"seconds\":0.0043,", "\"seconds\":NaN,", "is not JSON in line 22" },
        { "infinite", "\"seconds\":0.0043,", "\"seconds\":1e999,",
            "has a number that is too large" },
        { "probe of 0", "\"best_probe_seconds\": 7e-05", "\"best_probe_seconds\": 0",
            "best_probe_seconds: must be a number from 1e-18 to 1e+18" },
        { "half a processor", "\"counts\":[2,", "\"counts\":[2.5,",
            "plan.counts[0]: must be a whole number from 1 to 65536" },
        { "more processors than int32", "\"used\":[0,", "\"used\":[4294967296,",
            "passes[0].used[0]: must be a whole number from 0 to 65535" },
        { "below every int64", "\"package\":-1", "\"package\":-9223372036854775809",
            "system.processors[0].package: must be a whole number from -65536 to 65535" },
        { "above every uint64", "\"microjoules\":4000", "\"microjoules\":18446744073709551616",
            "passes[0].before.energy[0].microjoules: must be a whole number from 0 to "
            "1000000000000000000" },
        { "number for a text", "\"vendor\":\"The vendor\"", "\"vendor\":7",
            "display.vendor: must be a text or null" },
        { "NUL", "\"vendor\":\"The", "\"vendor\":\"The\\u0000",
            "display.vendor: must not hold a NUL" },
        { "no UTF-8", "The vendor", "The \xff", "is not JSON in line 12" },
        { "half a surrogate", "The vendor", "The \\ud800", "is not JSON in line 12" },
        { "unknown kind", "\"kind\":\"efficiency\"", "\"kind\":\"lazy\"",
            "system.processors[1].kind: must be \"performance\", \"efficiency\" or null" },
        { "object for a list", "\"off\":[]", "\"off\":{}", "passes[0].off: must be a list" },
        { "list for an object",
            "\"plan\": "
            "{\"groups\":[\"ackerman\"],\"counts\":[2,1],\"repeats\":8,\"until_percent\":1.5}",
            "\"plan\": []", "plan: must be an object" },
        { "word for a flag", "\"throttled\":false", "\"throttled\":\"no\"",
            "series[0].spans[0].throttled: must be true or false" },
        { "key twice", "\"label\":", "\"label\": null, \"label\":", "has a key twice" },
        { "series twice", "{\"test\":700,\"name\":\"Sieve\"", "{\"test\":400,\"name\":\"Sieve\"",
            "series: has <Ackerman> twice at the same count" },
        { "cut", "\n]\n}\n", "\n", "is not JSON in line 25" },
        { "too deep", "\"label\":", "\"label\": [[[[[[[[[[[[[[[[[[[[", "is nested too deeply" },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Again(Replaced(json, row.what, row.with)), row.message);
    }
    EXPECT_EQ(Again(""), "is not JSON in line 1");
    EXPECT_EQ(Again("[]"), "is not a run of tarvex-run");
    EXPECT_EQ(Again(std::string(30 << 20, '[')), "is nested too deeply");
    EXPECT_EQ(Again(std::string(100 << 20, '[')), "has over 32 megabytes");
}

} // namespace
