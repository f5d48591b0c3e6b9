// What is left of runs that are killed, on a machine that is a folder.
#include "RunNotes.h"

#include "MachineTree.h"
#include "tests/support/Child.h"
#include "tests/support/Rows.h"
#include "tests/support/WaitUntil.h"

#include <OS.h>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>

namespace {
// Four processors, and who has switched them off.
class RunNotes : public testing::Test {
protected:
    RunNotes()
    {
        fTree.Write("proc/sys/kernel/random/boot_id", "this-boot\n");
        for (int number = 0; number < 4; number++)
            SetState(number, "1");
    }

    static std::string Switch(int number)
    {
        return "sys/devices/system/cpu/cpu" + std::to_string(number) + "/online";
    }
    void SetState(int number, const std::string& state) const
    {
        fTree.Write(Switch(number), state);
    }
    std::string States() const
    {
        std::string all;
        for (int number = 0; number < 4; number++)
            all += fTree.Read(Switch(number)).substr(0, 1);
        return all;
    }
    // Makes the switch one that takes nothing more, not even from root, once it is sealed.
    int MakeSealable(int number) const
    {
        const int file = memfd_create("switch", MFD_ALLOW_SEALING);
        EXPECT_EQ(write(file, "1", 1), 1);
        std::filesystem::remove(fTree / Switch(number));
        std::filesystem::create_symlink(
            "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(file),
            fTree / Switch(number));
        return file;
    }
    std::string Folder() const { return fTree / "run/tarvex"; }

    // A run in a process group of its own that has switched off the last two; it ends in order when
    // fEnd is closed. What it forks, if it does, lives until all are on.
    pid_t StartRun(bool forks = false)
    {
        EXPECT_EQ(pipe(fEnd), 0);
        const pid_t run = StartChild([this, forks] {
            setpgid(0, 0);
            signal(SIGINT, SIG_DFL); // a shell that runs us in the background has it ignored
            close(fEnd[1]);
            kernel::Processors::SetRoot(fTree.Path());
            const bool isOff = _kset_cpu_state_(3, 0) == B_OK && _kset_cpu_state_(2, 0) == B_OK;
            if (forks && fork() == 0) {
                setpgid(0, 0);
                _exit(WaitUntil([this] { return States() == "1111"; }) ? 0 : 1);
            }
            char end;
            const bool isAlone = forks || waitpid(-1, nullptr, WNOHANG) == -1;
            if (isOff && isAlone && read(fEnd[0], &end, 1) == 0)
                exit(0);
            return 1;
        });
        close(fEnd[0]);
        EXPECT_TRUE(WaitUntil([this] { return States() == "1100"; }));
        return run;
    }
    pid_t Keeper() const
    {
        const auto notes = kernel::ReadNotes(fTree.Path());
        return notes.size() == 1 ? notes[0].keeper.pid : -1;
    }
    std::vector<int> SwitchedOnNow() const
    {
        const kernel::LeftOff left = kernel::SwitchOnLeftOff(fTree.Path());
        EXPECT_EQ(left.stillOff, std::vector<int>());
        return left.nowOn;
    }

    const MachineTree fTree;
    int fEnd[2];
};
} // namespace

TEST_F(RunNotes, AllAreOnAtTheEndOrAfterTheNextStartWhateverWasKilledOrStopped)
{
    const std::map<std::string, int> signals = { { "-", 0 }, { "killed", SIGKILL },
        { "stopped", SIGSTOP }, { "interrupted", SIGINT } };
    for (const Row& row : RowsOf("kits/kernel/data/kills.txt", 3)) {
        SCOPED_TRACE(row[0] + " " + row[1]);
        const int toKeeper = signals.at(row[0]), toProgram = signals.at(row[1]);
        const std::vector<int> none, left = row[2] == "-" ? none : std::vector<int> { 3, 2 };
        const pid_t run = StartRun(true);
        const pid_t keeper = Keeper();
        ASSERT_GT(keeper, 0);
        if (toKeeper)
            kill(keeper, toKeeper);
        // It lives: what it has taken is its own, and belongs to the machine.
        EXPECT_EQ(SwitchedOnNow(), none);
        EXPECT_EQ(kernel::Processors(fTree.Path()).Numbers(), (std::vector<int> { 0, 1, 2, 3 }));
        if (toProgram)
            kill(toProgram == SIGKILL ? run : -run, toProgram);
        close(fEnd[1]);
        EXPECT_EQ(EndOf(run), -toProgram);
        EXPECT_TRUE(toProgram || States() == "1111");
        if (toKeeper == 0) { // which has put all in order by itself
            EXPECT_TRUE(WaitUntil([=] { return !kernel::ProcessTag::Of(keeper).Lives(); }));
            EXPECT_EQ(States(), "1111");
            EXPECT_TRUE(std::filesystem::is_empty(Folder()));
        }
        EXPECT_EQ(SwitchedOnNow(), left);
        EXPECT_EQ(States(), "1111");
        EXPECT_TRUE(std::filesystem::is_empty(Folder()));
        EXPECT_TRUE(WaitUntil([=] { return !kernel::ProcessTag::Of(keeper).Lives(); }));
    }
}

TEST_F(RunNotes, AKeeperThatIsKilledOrStoppedIsReplaced)
{
    kernel::Processors run(fTree.Path());
    EXPECT_EQ(run.Switch(3, false), B_OK);
    for (const auto& [number, how, cpu] :
        { std::tuple(SIGKILL, "killed", 2), { SIGSTOP, "stopped", 1 } }) {
        const pid_t keeper = Keeper();
        const std::string process = "/proc/" + std::to_string(keeper);
        EXPECT_EQ(TempFolder::NamesIn(process + "/fd").size(), 6u);
        EXPECT_EQ(ReadFile(process + "/comm"), "tarvex-lease\n");
        kill(keeper, number);
        EXPECT_EQ(ErrorsOf([&, cpu = cpu] { EXPECT_EQ(run.Switch(cpu, false), B_OK); }),
            "The keeper of switched processors, process <" + std::to_string(keeper) + ">, was "
                + how + ": replaced\n");
    }
    EXPECT_EQ(run.Switch(3, true), B_OK);
    EXPECT_EQ(States(), "1001");
    EXPECT_EQ(kernel::ReadNotes(fTree.Path()).at(0).off, (std::vector<int> { 2, 1 }));
}

TEST_F(RunNotes, OfTwoRunsNeitherSwitchesOnWhatTheOtherHasOff)
{
    const pid_t first = StartRun();
    {
        kernel::Processors second(fTree.Path());
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(second.Switch(3, false), B_ERROR); }),
            "Error switching processor <3> off: Operation already in progress\n");
        EXPECT_EQ(second.Switch(1, false), B_OK);
        EXPECT_EQ(States(), "1000");
    }
    WriteFile(Folder() + "/run-1", "boot this-boot\nprogram 999999999 1\nkeeper 0 0\noff 3\n");
    EXPECT_EQ(SwitchedOnNow(), std::vector<int>()); // of a dead run, and the first one's now
    EXPECT_EQ(States(), "1100");
    kernel::Processors third(fTree.Path());
    EXPECT_EQ(third.Switch(1, false), B_OK);
    close(fEnd[1]);
    EXPECT_EQ(EndOf(first), 0);
    EXPECT_EQ(States(), "1011");
}

TEST_F(RunNotes, AreBelievedOnlyFromRootAndThisUserSinceTheSystemStarted)
{
    std::filesystem::create_directories(Folder());
    const auto text = [](const std::string& boot, const kernel::ProcessTag& program) {
        return "boot " + boot + "\nprogram " + std::to_string(program.pid) + ' '
            + std::to_string(program.start) + "\nkeeper 0 0\noff 2 99999 -1 3\n";
    };
    kernel::ProcessTag reused = kernel::ProcessTag::Of(getpid());
    reused.start--;
    const std::string note = Folder() + "/run-1";
    setenv("NOTE", note.c_str(), 1);
    for (const Row& row : RowsOf("kits/kernel/data/notes.txt", 5)) {
        SCOPED_TRACE(row[0] + " " + row[2]);
        SetState(2, "0");
        SetState(3, "0");
        const std::string whole =
            text(row[0], row[1] == "lives" ? kernel::ProcessTag::Of(getpid()) : reused);
        WriteFile(note, row[0] == "-" ? "" : row[0] == "cut" ? whole.substr(0, 30) : whole);
        EXPECT_EQ(system(row[2].c_str()), 0);
        const bool isBelieved = row[3] == "believed";
        EXPECT_EQ(SwitchedOnNow(), isBelieved ? (std::vector<int> { 2, 3 }) : std::vector<int>());
        EXPECT_EQ(States(), isBelieved ? "1111" : "1100");
        EXPECT_EQ(
            std::filesystem::exists(std::filesystem::symlink_status(note)), row[4] == "stays");
        EXPECT_EQ(system("chmod 755 ${NOTE%/*}; rm -f $NOTE"), 0);
    }
}

TEST_F(RunNotes, WhatCannotBeSwitchedOnIsToldAndWhatADeadProgramWasWritingGoes)
{
    const RootGuard root(fTree.Path());
    std::filesystem::create_directories(Folder());
    EXPECT_EQ(restore_processors(), "");
    const std::string own = "new-" + std::to_string(getpid());
    for (const std::string& name : { own, std::string("new-999999999"), std::string("other") })
        WriteFile(Folder() + "/" + name, "x");
    const int sealed = MakeSealable(3);
    const pid_t run = StartRun();
    const pid_t keeper = Keeper();
    EXPECT_EQ(fcntl(sealed, F_ADD_SEALS, F_SEAL_WRITE), 0);
    kill(run, SIGKILL);
    EXPECT_EQ(EndOf(run), -SIGKILL);
    EXPECT_TRUE(WaitUntil([=] { return !kernel::ProcessTag::Of(keeper).Lives(); }));
    EXPECT_EQ(States(), "1110");
    SetState(1, "0");
    SetState(2, "0");
    kernel::Processors::SetRoot(fTree.Path()); // which counts them no more
    const size_t files = TempFolder::NamesIn("/proc/self/fd").size();
    // Of two that were killed with their keepers, one of them before the other.
    const std::string note = "boot this-boot\nprogram 999999999 1\nkeeper 0 0\noff ";
    WriteFile(Folder() + "/run-1", note + "2 0 1\n");
    EXPECT_EQ(restore_processors(),
        "Processors 1, 2 had been left off by a run that was killed: now on again. "
        "Processor 3 left off by a run that was killed cannot be switched on: "
        "Operation not permitted");
    EXPECT_EQ(States(), "1110");
    EXPECT_EQ(kernel::Processors::Get()->Numbers(), (std::vector<int> { 0, 1, 2, 3 }));
    EXPECT_EQ(TempFolder::NamesIn("/proc/self/fd").size(), files);
    EXPECT_EQ(restore_processors(),
        "Processor 3 left off by a run that was killed cannot be switched on: "
        "Operation not permitted");
    EXPECT_EQ(TempFolder::NamesIn(Folder()),
        (std::set<std::string> { own, "other", "run-" + std::to_string(run) }));
    close(fEnd[1]);
}

TEST_F(RunNotes, ASwitchThatRefusesLeavesItsProcessorAsItIsAndTheNoteSaysSo)
{
    const int sealed = MakeSealable(3);
    fTree.Write("run/tarvex/new-" + std::to_string(getpid()), "of an earlier process");
    {
        kernel::Processors run(fTree.Path());
        EXPECT_EQ(run.Switch(3, false), B_OK);
        EXPECT_EQ(fcntl(sealed, F_ADD_SEALS, F_SEAL_WRITE), 0);
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(run.Switch(3, true), B_ERROR); }),
            "Error switching processor <3> on: Operation not permitted\n");
        EXPECT_EQ(run.Switch(1, false), B_OK);
        EXPECT_EQ(run.Use().off, (std::vector<int> { 1, 3 }));
        EXPECT_EQ(run.Use().used, (std::vector<int> { 0, 2 }));
    }
    EXPECT_EQ(States(), "1110");
    EXPECT_EQ(kernel::ReadNotes(fTree.Path()).at(0).off, std::vector<int> { 3 });
    const int other = MakeSealable(2);
    EXPECT_EQ(fcntl(other, F_ADD_SEALS, F_SEAL_WRITE), 0);
    testing::internal::CaptureStderr();
    kernel::Processors run(fTree.Path());
    EXPECT_EQ(run.Switch(2, false), B_ERROR);
    EXPECT_EQ(run.Use().off, std::vector<int>());
    std::filesystem::remove(fTree / Switch(1));
    EXPECT_EQ(kernel::Processors(fTree.Path()).Switch(1, false), B_ERROR);
    SetState(1, "1");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "Error switching processor <2> off: Operation not permitted\n"
        "Error switching processor <1> off: No such file or directory\n");
    EXPECT_TRUE(std::filesystem::is_empty(Folder()));
    // The keeper has five files, the switches of 0 to 2 among them, from 32 on while it takes them.
    for (const rlim_t files : { 36, 37 }) {
        const auto canSwitch = [&, limit = rlimit { files, files }] {
            return setrlimit(RLIMIT_NOFILE, &limit) == 0
                && kernel::Processors(fTree.Path()).Switch(1, false) == B_OK;
        };
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(InChild(canSwitch), files == 37); }),
            files == 37 ? ""
                        : "Error switching processor <1> off: Resource temporarily unavailable\n");
    }
}

TEST_F(RunNotes, NothingIsSwitchedOffThatCannotBeNoted)
{
    std::filesystem::create_directory(fTree / "run");
    for (const bool isLink : { false, true }) {
        isLink ? std::filesystem::create_directory_symlink(fTree.Path(), Folder())
               : WriteFile(Folder(), "in the way");
        EXPECT_EQ(ErrorsOf([&] {
            EXPECT_EQ(kernel::Processors(fTree.Path()).Switch(3, false), B_ERROR);
        }),
            "Error switching processor <3> off: Permission denied\n");
        EXPECT_EQ(States(), "1111");
        std::filesystem::remove(Folder());
    }
}

TEST_F(RunNotes, SwitchingReachesTheRightOneAndTheCountStays)
{
    std::filesystem::remove_all(fTree / "sys/devices/system/cpu/cpu1");
    const RootGuard root(fTree.Path());
    const std::map<std::string, status_t> statuses = { { "fine", B_OK },
        { "bad value", B_BAD_VALUE }, { "not allowed", B_NOT_ALLOWED } };
    for (const Row& row : RowsOf("kits/kernel/data/switches.txt", 4)) {
        EXPECT_EQ(_kset_cpu_state_(std::stoi(row[0]), std::stoi(row[1])), statuses.at(row[2]));
        EXPECT_EQ(States(), row[3]) << row[0] << row[1];
        system_info info;
        EXPECT_TRUE(get_system_info(&info) == B_OK && info.cpu_count == 3);
    }
    EXPECT_EQ(get_system_info(nullptr), B_BAD_VALUE);
}
