#include "SystemTree.h"
#include "TaskStat.h"
#include "tests/support/Child.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <MachineState.h>
#include <ThreadMoment.h>

using namespace kernel;

namespace {
// What it waited, what others used, its processor and that one's throttles; "-" is not told.
ThreadMoment MomentOf(const Row& row, size_t at)
{
    ThreadMoment moment { {}, std::stod(row[at + 1]), std::stoi(row[at + 2]), {} };
    if (row[at] != "-")
        moment.waited = std::stod(row[at]);
    if (row[at + 3] != "-")
        moment.throttles = std::stoul(row[at + 3]);
    return moment;
}
} // namespace

TEST(MachineText, ATasksRecordIsReadWhateverItsName)
{
    for (const Row& row : RowsOf("kits/kernel/data/tasks.txt", 2)) {
        TaskStat stat;
        const bool isRead = ParseTaskStat(row[0].c_str(), stat);
        std::ostringstream told;
        told << stat.state << ' ' << stat.userTime << ' ' << stat.kernelTime << ' '
             << stat.startTicks;
        EXPECT_EQ(isRead ? told.str() : "damaged", row[1]) << row[0];
    }
}

TEST(MachineText, AFileOfEightMegabytesIsReadAndNoOtherKindOfFile)
{
    const TempFolder folder;
    const SystemTree tree("");
    for (const size_t size : { 0, 16385, 8 << 20, (8 << 20) + 1 }) {
        WriteFile(folder / "file", std::string(size, 'x'));
        EXPECT_EQ(tree.Text(folder / "file").value_or("none").size(), size > 8 << 20 ? 4 : size);
    }
    EXPECT_TRUE(!tree.Text("/proc/self/mem") && !tree.Text("/") && !tree.Names("/proc/self/mem"));
}

TEST(MachineText, SleepIsWhatOneClockIsBehindTheOther)
{
    const auto seconds = [] { return ReadMachineState().asleep.value_or(-1) / 1'000'000; };
    const bigtime_t before = seconds();
    EXPECT_EQ(InChild([&] {
        if (unshare(CLONE_NEWTIME) != 0)
            return 0; // not for this user or system
        WriteFile("/proc/self/timens_offsets", "boottime 1000000000 0\n");
        return InChild([&] { return std::abs(seconds() - before - 1'000'000'000) > 1; });
    }),
        0);
}

TEST(MachineText, AThreadsChangeIsWhatOtherProgramsAndTheSameProcessorDid)
{
    for (const Row& row : RowsOf("kits/kernel/data/moments.txt", 11)) {
        const ThreadChange change = ChangeBetween(MomentOf(row, 1), MomentOf(row, 5));
        EXPECT_DOUBLE_EQ(change.waited, std::stod(row[9])) << row[0];
        EXPECT_EQ(change.isThrottled ? "slowed" : "not", row[10]) << row[0];
    }
}
