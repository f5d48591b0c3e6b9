// tarvex-run as its users run it.
#include "tests/support/OnlineProcessors.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <sys/sysmacros.h>
#include <sys/wait.h>

namespace fs = std::filesystem;

namespace {

bool Fits(const std::string& text, const std::string& expression)
{
    return std::regex_match(text, std::regex(expression));
}

// Whatever happens to a run, the processors are as they were afterwards.
class TarvexRun : public testing::Test {
protected:
    ~TarvexRun() override { EXPECT_EQ(OnlineProcessors(), fOnline); }

    // Runs the program by a shell, with another command in front, and returns its exit status.
    int Run(const std::string& arguments, const std::string& wrapper = "")
    {
        const std::string command = "cd " + fFolder.Path() + " && exec " + wrapper
            + " " TARVEX_BUILD "/tarvex-run " + arguments + " >out 2>err";
        const int status = system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string Output() const { return ReadFile(fFolder / "out"); }
    // Without progress, notes on what others do on the machine, and what an ordinary user is told
    // on every machine with several processors.
    std::string Errors() const
    {
        const std::regex passed("Testing .*\n|tarvex-run: note: .*\n");
        const std::regex bound("Processors are not switched off .*\n");
        const std::string errors = std::regex_replace(ReadFile(fFolder / "err"), passed, "");
        return std::regex_replace(errors, bound, geteuid() == 0 ? "$&" : "");
    }
    // Without the time left.
    std::string Progress() const
    {
        const std::regex others("(Testing .*), \\d+:\\d\\d left(\n)|.*\n");
        return std::regex_replace(ReadFile(fFolder / "err"), others, "$1$2");
    }
    std::string File() const { return ReadFile(fFolder / "file"); }

    const TempFolder fFolder;
    const std::string fOnline = OnlineProcessors();
};

TEST_F(TarvexRun, RefusesWithOneLineAndStatusTwoAndRunsNothing)
{
    WriteFile(fFolder / "old", "old text");
    for (const Row& row : RowsOf("console/data/refused", 2)) {
        EXPECT_EQ(Run(row[0]), 2);
        EXPECT_EQ(Errors(), "tarvex-run: " + row[1] + "\n");
        EXPECT_EQ(Output(), "");
    }
    EXPECT_EQ(ReadFile(fFolder / "old"), "old text");
    EXPECT_EQ(Run("--compare old --version"), 0);
    EXPECT_TRUE(Fits(Output(), "tarvex-run \\d+\\.\\d+\\.\\d+\n")) << Output();
    EXPECT_EQ(Run("--groups io --help"), 0);
    EXPECT_EQ(Output().find("Usage: tarvex-run --groups G[,G...]|all --output FILE"), 0u);
    EXPECT_EQ(Run("--list"), 0);
    EXPECT_EQ(Output().find("Strings Copy (100): MegaChars/sec"), 0u);
    EXPECT_EQ(Run("--explain memory"), 0);
    EXPECT_EQ(Output().find("Memory (200): MB/sec"), 0u);
    // Where whoever started it ignores that its reader has left.
    Run("--list",
        "sh -c 'trap \"\" PIPE; { until test -e gone; do sleep 0.05; done; \"$@\"; echo $? "
        ">status; }"
        " | { exec <&-; : >gone; }' sh");
    EXPECT_EQ(ReadFile(fFolder / "status"), "141\n");
}

TEST_F(TarvexRun, SaysWithStatusOneWhatCouldNotBePrintedOrStarted)
{
    WriteFile(fFolder / "old", "1.0\n19\nPC (1-x)\t700:1/1.0;\n");
    for (const Row& row : RowsOf("console/data/unprinted", 3)) {
        SCOPED_TRACE(row[0] + row[1]);
        EXPECT_EQ(Run(row[0], "taskset -c 0 sh -c 'exec \"$@\" " + row[1] + "' sh"), 1);
        EXPECT_EQ(Errors(), "tarvex-run: cannot write <standard output>: " + row[2] + "\n");
        EXPECT_EQ(fs::remove(fFolder / "file"), row[0].starts_with("--groups")) << "written anyway";
    }
    EXPECT_EQ(
        Run("--compare 'none\x1b[2J'", "sh -c 'exec \"$1\" \"$2\" \"$(printf %b \"$3\")\"' sh"), 2);
    EXPECT_EQ(Errors(), "tarvex-run: cannot read <none\\x1b[2J>: No such file or directory\n");
}

TEST_F(TarvexRun, ShowsAndWritesEveryRateOfEveryProcessorCountWhateverTheLocale)
{
    EXPECT_EQ(Run("--groups=memory,ackerman --output file", "env LC_ALL=de_DE.UTF-8"), 0);
    EXPECT_EQ(Errors(), "");
    std::smatch parts;
    const std::string file = File();
    const std::regex form("1\\.0\n(\\d+)\n([^\t]*\\((\\d)-[^\t]*\t(?:-?\\d+:[^\t]*\t)*"
                          "200:195/([0-9.,]+);400:6000/([0-9.,]+);)\n");
    ASSERT_TRUE(std::regex_match(file, parts, form)) << file;
    EXPECT_EQ(parts[1], std::to_string(parts[2].length()));
    const std::string count = parts[3];
    const std::regex times("(?:\\d+\\.\\d{6},?){" + count + "}");
    EXPECT_TRUE(std::regex_match(parts.str(4), times) && std::regex_match(parts.str(5), times));
    std::string shown, rates;
    for (int cpu = std::stoi(count); cpu > 0; cpu--) {
        const std::string pass = " (cpu " + std::to_string(cpu) + "/" + count + ")\n";
        shown += "Testing Memory" + pass + "Testing Ackerman" + pass;
        rates += " +\\d+\\.\\d";
    }
    EXPECT_EQ(Progress(), shown);
    EXPECT_TRUE(
        Fits(Output(), "Test .*\nMemory +MB/sec" + rates + "\nAckerman +IPS" + rates + "\n"))
        << Output();
}

TEST_F(TarvexRun, IsEndedBySignalsWithItsProcessorsOnAndNoFileWritten)
{
    for (const Row& row : RowsOf("console/data/signals", 3)) {
        SCOPED_TRACE(row[0]);
        // In the last pass: where there are several processors, all others are off.
        const std::string wrapper = row[2]
            + " sh -c '(until grep -q \"cpu 1/\" err; do sleep 0.05; kill -0 $$ || exit; done;"
              " for s in "
            + row[0] + "; do kill -$s $$; done) & exec \"$@\"' sh";
        EXPECT_EQ(Run("--groups whetstone,lifecycle --output file", wrapper), std::stoi(row[1]));
        EXPECT_FALSE(fs::exists(fFolder / "file"));
        // What was finished is shown, and kept.
        const bool isAny = Output().starts_with("Test ");
        EXPECT_EQ(fs::remove(fFolder / "file.journal"), isAny);
        EXPECT_EQ(Errors(),
            isAny ? "tarvex-run: the run goes on with: tarvex-run --resume file.journal\n" : "");
    }
    // The reader of its output has left.
    Run("--groups sieve --output file",
        "sh -c '{ until test -e gone; do sleep 0.05; done; \"$@\"; echo $? >status; }"
        " | { exec <&-; : >gone; }' sh taskset -c 0");
    EXPECT_EQ(ReadFile(fFolder / "status"), "141\n");
    EXPECT_FALSE(fs::exists(fFolder / "file"));
}

TEST_F(TarvexRun, DrawsAsTheSameProcessAlsoWhenItGoesOnAfterAKill)
{
    const std::string display = TARVEX_SCRIPTS "/with-display ";
    // Once a span is in the journal. The name is what people look for in lists of processes.
    Run("--groups graphics --cpus 1 --output file.json",
        display
            + "sh -c '(until test $(wc -l <file.json.journal) -gt 3; do kill -0 $$ || exit; done;"
              " cat /proc/$$/comm >name; kill -KILL $$) 2>none & exec \"$@\"' sh");
    EXPECT_EQ(ReadFile(fFolder / "name"), "tarvex-run\n") << ReadFile(fFolder / "err");
    EXPECT_EQ(Run("--resume file.json.journal --format csv", display), 0);
    const std::string table = Output();
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 1 + 13) << table;
    const std::string file = ReadFile(fFolder / "file.json");
    for (const char* part : { "\"display_size\": \"1024x768x24\"", "\"display\": {\"vendor\":\"",
             "{\"id\":\"software-display\"" })
        EXPECT_NE(file.find(part), std::string::npos) << part;
}

TEST_F(TarvexRun, EndsWhenItsDisplayDiesUnderTheGraphicsTests)
{
    // Ends the X server once a test's title is to be seen.
    const std::string wrapper =
        TARVEX_SCRIPTS "/with-display sh -c '(until xdotool search --name lushed; do :; done;"
                       " pkill -KILL -P $PPID Xvfb) >/dev/null 2>&1 & exec \"$@\"' sh";
    EXPECT_EQ(Run("--groups graphics --output file", wrapper), 1);
    EXPECT_NE(Errors().find("The X11 connection broke"), std::string::npos) << Errors();
    EXPECT_EQ(Output().find("\nTest "), std::string::npos) << Output();
    EXPECT_FALSE(fs::exists(fFolder / "file"));
}

} // namespace
