#include "console/Compare.h"

#include "results/RunFile.h"
#include "tests/results/MadeRuns.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <sys/wait.h>

namespace {

constexpr const TestType& gKAckerman = TestNamed("Ackerman");

// The program as its users run it, in a folder with these files:
//
//     before.json, after.json    four processors and one; with four it fell by 59 percent
//     old.results, new.results   of single times
class CompareProgram : public testing::Test {
protected:
    CompareProgram()
    {
        RunRecord run = MadeRun("PC (4-x)");
        AddTimes(run, gKAckerman, 4, 1, 6000);
        AddTimes(run, gKAckerman, 1, 0.5, 6000);
        for (Span& span : run.series.front().spans)
            span.probeBefore.clock = span.probeAfter.clock = 1e-4;
        WriteFile(fFolder / "before.json", RunAsJson(run));
        for (Span& span : run.series.front().spans)
            span.seconds /= 0.41;
        WriteFile(fFolder / "after.json", RunAsJson(run));
        AddTimes(run, TestNamed("Sieve"), 1, 5, 700);
        WriteFile(fFolder / "more.json", RunAsJson(run));
        WriteFile(fFolder / "old.results", MadeResults("PC (1-x)", "700:100/1.0;601:0/1.5;"));
        WriteFile(fFolder / "new.results", MadeResults("PC (1-x)", "700:100/2.0;601:0/3.0;"));
    }

    // Its exit status.
    int Run(const std::string& arguments, const char* program = TARVEX_BUILD "/tarvex-run")
    {
        const std::string command = "cd " + fFolder.Path() + " && LC_ALL=de_DE.UTF-8 " + program
            + " " + arguments + " >out 2>err";
        const int status = system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string Output() const { return ReadFile(fFolder / "out"); }
    std::string Errors() const { return ReadFile(fFolder / "err"); }

    const TempFolder fFolder;
};

TEST_F(CompareProgram, ShowsEachRowWithItsVerdict)
{
    EXPECT_EQ(Run("--compare before.json after.json"), 0);
    std::string shown = Output();
    EXPECT_EQ(Run("--compare old.results - --sort percent <new.results"), 0);
    shown += Output();
    EXPECT_EQ(Run("--compare more.json --tests sieve"), 0);
    shown += Output();
    EXPECT_EQ(Run("--compare more.json --tests sieve --format csv"), 0);
    EXPECT_EQ(shown + Output(), ReadFile(TARVEX_TESTS "/console/data/shown.table"));
    EXPECT_EQ(Run("--compare x --help"), 0);
    EXPECT_TRUE(Output().starts_with("Usage: tarvex-run --compare FILE... [--baseline FILE]"));
    EXPECT_EQ(Errors(), "");
}

TEST_F(CompareProgram, TellsABuildCheckByItsStatus)
{
    for (const auto& [arguments, status] : ReadRows("console/data/compare-status"))
        EXPECT_EQ(std::to_string(Run(arguments)), status) << arguments << Errors();
    EXPECT_EQ(Errors(),
        "tarvex-run: nothing in common with the baseline, no test at the same processor count: "
        "<after.json> and 1 more\n");
}

TEST_F(CompareProgram, RefusesWithOneLineAndStatusTwo)
{
    for (const auto& [arguments, error] : ReadRows("console/data/compare-refused")) {
        EXPECT_EQ(Run(arguments), 2);
        EXPECT_EQ(Errors(), "tarvex-run: " + error + "\n");
        EXPECT_EQ(Output(), "");
    }
    EXPECT_FALSE(std::filesystem::exists(fFolder / "a.svg"));
}

TEST_F(CompareProgram, WritesPicturesWithoutADisplay)
{
    unsetenv("DISPLAY");
    EXPECT_EQ(Run("--compare before.json more.json - --baseline before.json "
                  "--chart a.svg --scaling b.pdf --fail-below 5 <old.results"),
        4);
    EXPECT_EQ(Errors(),
        "tarvex-run: without figures for it, so not in <a.svg>: <PC (1-x)>\n"
        "tarvex-run: without figures for it, so not in <b.pdf>: <PC (1-x)>\n");
    const std::string chart = ReadFile(fFolder / "a.svg");
    for (const char* text : { ">Ackerman<", ">before.json<", ">more.json<" })
        EXPECT_NE(chart.find(text), std::string::npos) << text;
    EXPECT_TRUE(ReadFile(fFolder / "b.pdf").starts_with("%PDF-"));
    EXPECT_EQ(Run("--compare more.json --chart a.svg --test 700"), 0);
    EXPECT_NE(ReadFile(fFolder / "a.svg").find(">Sieve<"), std::string::npos);

    std::filesystem::create_symlink("/dev/full", fFolder / "full.svg");
    EXPECT_EQ(Run("--compare more.json --scaling full.svg"), 1);
    EXPECT_TRUE(Errors().starts_with("tarvex-run: cannot write <full.svg>: ")) << Errors();
    EXPECT_TRUE(Output().starts_with("Machine: ")) << Output();

    // A copy has beside it no program that draws.
    std::filesystem::copy_file(TARVEX_BUILD "/tarvex-run", fFolder / "alone");
    EXPECT_EQ(Run("--compare more.json --chart b.svg --help", "./alone"), 0);
    EXPECT_EQ(Run("--groups graphics --output x", "./alone"), 3);
    EXPECT_EQ(Run("--compare more.json --chart b.svg", "./alone"), 1);
    EXPECT_TRUE(std::regex_match(Errors(),
        std::regex(
            "tarvex-run: cannot start <.*/tarvex-run-windows>: No such file or directory\n")))
        << Errors();
}

TEST_F(CompareProgram, GivesEqualNumbersInAllFormats)
{
    const std::pair<const char*, double> rows[] = { { "Küche, \"alt\"\tlinks", 1.0215e-4 },
        { "as fast", 1.0195e-4 }, { "faster", 0.978e-4 } }; // clocks
    for (const auto& [label, clock] : rows) {
        RunRecord run = MadeRun("PC (4-x)");
        run.label = label;
        AddTimes(run, gKAckerman, 4, 0.7 / 3, 6000);
        for (Span& span : run.series.front().spans)
            span.probeBefore.clock = span.probeAfter.clock = clock;
        WriteFile(fFolder / label, RunAsJson(run));
    }
    for (const std::string format : { "json", "csv", "tsv", "table" }) {
        EXPECT_EQ(
            Run("--compare before.json K* as* fast* more.json --sort percent --format " + format),
            0);
        EXPECT_EQ(Output(), ReadFile(TARVEX_TESTS "/console/data/compared." + format));
    }
}

} // namespace
