// Runs within the test, on a machine of one processor that is not there: none is switched.
#include "console/Run.h"

#include "console/ResultText.h"
#include "console/RunLooper.h"
#include "engine/ThisBuild.h"
#include "results/RunFile.h"
#include "results/RunJournal.h"
#include "tests/kits/kernel/MachineTree.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <MachineRun.h>
#include <Message.h>
#include <pty.h>

namespace {
status_t gBegin = B_OK; // what another run leaves to this one
std::string gNoThread; // that cannot be made
std::function<void()> gBegins; // called before the benchmark's thread is made
} // namespace

extern "C" {
status_t __wrap__ZN11BMachineRun5BeginEv(BMachineRun*)
{
    return gBegin;
}
using Entry = int32(void*);
thread_id __real__Z12spawn_threadPFiPvEPKciS_(Entry* entry, const char*, int32, void*);
thread_id __wrap__Z12spawn_threadPFiPvEPKciS_(
    Entry* entry, const char* name, int32 priority, void* data)
{
    if (gBegins && strcmp(name, "benchmark") == 0)
        gBegins();
    return gNoThread == name ? B_NO_MORE_THREADS
                             : __real__Z12spawn_threadPFiPvEPKciS_(entry, name, priority, data);
}
}

namespace {

const std::string kLoad = "load 9.50: other programs share the processors";
const std::string kBattery = "on battery: the machine may save power by running slower";
const std::string kInMemory =
    "the temporary directory lies in memory (tmpfs): the disk tests do not measure a disk";
const std::string kNote = "tarvex-run: note: " + kLoad + "\ntarvex-run: note: " + kInMemory + "\n";

class RunTest : public testing::Test {
protected:
    RunTest() : fRoot((Fill(), fTree.Path()))
    {
        DataHome();
        unsetenv("DISPLAY");
        setenv("WAYLAND_DISPLAY", "", 1);
    }
    void Fill() const
    {
        fTree.Write("proc/cpuinfo", "processor : 0\nmodel name : Model\n");
        fTree.Write("proc/sys/kernel/osrelease", "6.1\n");
        fTree.Write("proc/sys/kernel/version", "#1\n");
        fTree.Write("proc/loadavg", "9.50 0.25 0.50 1/99 1234\n");
        fTree.Write("proc/self/mountinfo", "1 0 8:1 / / rw - tmpfs none rw\n");
    }

    // "STATUS|" and what it said, without progress. The test's folder is "./".
    std::string Told(const std::string& arguments)
    {
        std::istringstream words(
            std::regex_replace(arguments, std::regex("\\./"), fFolder.Path() + "/"));
        const std::vector<std::string> list(std::istream_iterator<std::string>(words), {});
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int status = RunTask(std::get<RunOptions>(ParseRunOptions(list)));
        fShown = testing::internal::GetCapturedStdout();
        const std::string told = testing::internal::GetCapturedStderr();
        fProgress.clear();
        std::string rest;
        std::istringstream lines(told);
        for (std::string line; std::getline(lines, line);)
            (line.starts_with("Testing ") ? fProgress : rest) += line + "\n";
        return std::to_string(status) + "|"
            + std::regex_replace(rest, std::regex(fFolder.Path() + "/"), "./");
    }
    RunRecord Read(const std::string& name) const
    {
        return std::get<RunRecord>(RunFromJson(ReadFile(fFolder / name)));
    }

    const MachineTree fTree;
    const RootGuard fRoot;
    const TempFolder fFolder;
    std::string fShown;
    std::string fProgress;
};

TEST_F(RunTest, IsShownAndWrittenWithAllThatIsKnown)
{
    gBegins = [this] {
        fTree.Write("sys/class/power_supply/BAT0/type", "Battery\n");
        fTree.Write("sys/class/power_supply/BAT0/status", "Discharging\n");
    };
    EXPECT_EQ(Told("--groups memory,ackerman --repeat 4 --label x --format csv --output ./a.json"),
        "0|" + kNote + "tarvex-run: note: " + kBattery + "\n");
    gBegins = nullptr;
    const std::string test = "Testing (Memory|Ackerman) \\(cpu 1/1\\), \\d+:\\d\\d left\n";
    EXPECT_TRUE(std::regex_match(fProgress, std::regex("(" + test + "){8}"))) << fProgress;
    const RunRecord record = Read("a.json");
    EXPECT_EQ(fShown, RunText(record, TextFormat::kCsv));
    EXPECT_TRUE(std::regex_match(
        record.started, std::regex("\\d{4}(-\\d\\d){2}T\\d\\d(:\\d\\d){2}[-+]\\d\\d:\\d\\d")));
    EXPECT_EQ(record.series.size() * 10 + record.series.back().spans.size(), 24u);
    const MachineState state = ReadMachineState();
    const RunRecord known { { { "memory", "ackerman" }, { 1 }, 4, {} }, "x", record.started,
        "AT Clone (1-Unknown@0/0MHz) 0MB RAM", ThisBuild(), ReadMachineDetails(),
        { { "load", kLoad }, { "temporary-in-memory", kInMemory }, { "battery", kBattery } }, {},
        "", { { "tmpfs", true } }, { { 1, { 0 }, {}, state, state } }, record.series,
        record.bestProbe };
    EXPECT_EQ(RunAsJson(record), RunAsJson(known));
    fTree.Write("sys/class/power_supply/BAT0/status", "Full\n");
    // Its probes help the next one.
    EXPECT_EQ(Told("--groups memory --output ./b"), "0|" + kNote);
    EXPECT_TRUE(std::regex_match(
        fShown, std::regex("Test    Units        1 CPU\nMemory  MB/sec +\\d+\\.\\d\n")))
        << fShown;
    EXPECT_TRUE(std::regex_match(ReadFile(fFolder / "b"),
        std::regex(
            "1\\.0\n81\nAT Clone \\(1-Unknown@0/0MHz\\) 0MB RAM\t-1:No color, 0x0 resolution\t"
            "200:195/0\\.\\d{6};\n")))
        << ReadFile(fFolder / "b");
    EXPECT_EQ(Told("--groups memory --output - --format json --until 0.001"),
        "0|" + kNote + "tarvex-run: note: not as narrow as asked for: Memory (1 CPU)\n");
    const auto last = std::get<RunRecord>(RunFromJson(fShown));
    EXPECT_TRUE(last.series.front().spans.size() == 50 && !std::filesystem::exists("-"));
    EXPECT_LE(last.bestProbe.core, record.bestProbe.core);
    EXPECT_EQ(fFolder.Names(), std::set<std::string>({ "a.json", "b" }));
}

TEST_F(RunTest, GoesOnWhereItWasEndedUnlessTheMachineIsAnother)
{
    RunRecord begun;
    begun.plan = { { "ackerman", "memory" }, {}, 2, {} };
    begun.label = "x";
    begun.started = "2026-11-21T14:03:05+01:00";
    begun.machine = "AT Clone (1-Unknown@0/0MHz) 0MB RAM";
    begun.build = ThisBuild();
    begun.details = ReadMachineDetails();
    const std::string output = fFolder / "out.json";
    RunJournal journal;
    ASSERT_EQ(journal.Begin(fFolder / "journal", output, begun), "");
    const std::string whole = ReadFile(fFolder / "journal");
    for (const Row& row : RowsOf("console/data/not-resumed", 3)) {
        WriteFile(fFolder / "journal", std::regex_replace(whole, std::regex(row[0]), row[1]));
        std::string told = Told("--resume ./journal");
        for (const std::string& own : { begun.build.version, begun.build.compiler })
            if (const size_t at = told.find(own); at != told.npos)
                told.replace(at, own.size(), "OURS");
        EXPECT_EQ(told, "2|tarvex-run: cannot resume <./journal>: " + row[2] + "\n") << row[0];
    }
    WriteFile(fFolder / "journal", whole);
    Series series { &TestNamed("Memory"), 1, {}, "" };
    series.spans.resize(1);
    series.spans[0].seconds = 0.125;
    journal.Add(series);
    EXPECT_EQ(Told("--resume ./journal --output ./b.json").substr(0, 2), "0|");
    EXPECT_EQ(fFolder.Names(), std::set<std::string>({ "b.json" }));
    const RunRecord record = Read("b.json");
    EXPECT_EQ(record.started + record.label, begun.started + begun.label);
    std::string told;
    for (const Series& each : record.series)
        told += each.test->name + std::to_string(each.spans.size()) + " ";
    EXPECT_EQ(told, "Memory2 Ackerman2 ");
    EXPECT_EQ(record.series[0].spans[0].seconds, 0.125);
}

TEST_F(RunTest, DoesNotBeginWhereItWouldBeInVain)
{
    WriteFile(fFolder / "a.journal", "old text");
    std::filesystem::create_symlink("/dev/full", fFolder / "full.json");
    for (const Row& row : RowsOf("console/data/in-vain", 3)) {
        gBegin = row[0] == "busy" ? status_t { B_BUSY }
                                  : status_t { row[0] == "unknown" ? B_ERROR : B_OK };
        gNoThread = row[0];
        EXPECT_EQ(Told(row[1]), row[2]) << row[1];
    }
    setenv("WAYLAND_DISPLAY", "wayland-0", 1);
    EXPECT_NE(Told("--groups graphics --output ./a").find(" (a Wayland session needs Xwayland): "),
        std::string::npos);
    EXPECT_EQ(ReadFile(fFolder / "a.journal"), "old text");
    EXPECT_EQ(fFolder.Names(), std::set<std::string>({ "a.journal", "b", "full.json" }));
}

TEST(RunLooper, RewritesItsLineOnATerminal)
{
    int terminal = -1, end = -1;
    ASSERT_EQ(openpty(&terminal, &end, nullptr, nullptr, nullptr), 0);
    const int before = dup(STDERR_FILENO);
    dup2(end, STDERR_FILENO);
    RunOutcome outcome;
    auto* looper = new RunLooper(outcome);
    const BMessenger target(looper);
    const thread_id thread = looper->Run();
    for (const int32 left : { 3605, 60, 9, 0, -1 }) {
        BMessage status('BmkS');
        status.AddString("status", "Testing");
        status.AddInt32("left", left);
        target.SendMessage(&status);
    }
    BMessage ended('LThC');
    ended.AddString("name", RunLooper::kSignalThread);
    ended.AddInt32("status", SIGHUP);
    target.SendMessage(&ended);
    status_t value = 0;
    wait_for_thread(thread, &value);
    dup2(before, STDERR_FILENO);
    close(before);
    close(end);
    std::string text; // what was written comes in pieces, and then an error
    for (char letter; read(terminal, &letter, 1) == 1;)
        text += letter;
    close(terminal);
    EXPECT_EQ(text,
        "\x1b[KTesting, 60:05 left\r\x1b[KTesting, 1:00 left\r\x1b[KTesting, 0:09 left\r"
        "\x1b[KTesting, 0:00 left\r\x1b[KTesting\r\x1b[K");
    EXPECT_EQ(outcome.signal, SIGHUP);
    EXPECT_FALSE(outcome.finished);
}

} // namespace
