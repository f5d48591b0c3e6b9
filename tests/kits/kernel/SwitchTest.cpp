#include "tests/support/Child.h"
#include "tests/support/Test.h"

#include <OS.h>

#include <fstream>
#include <sched.h>

namespace {
const char* const kSwitch = "/sys/devices/system/cpu/cpu1/online";

char StateOfProcessor1()
{
    char state = '?';
    std::ifstream(kSwitch) >> state;
    return state;
}

// Leaves processor 1 on, whatever a test did.
struct Switch : testing::Test {
    void SetUp() override
    {
        if (sysconf(_SC_NPROCESSORS_ONLN) < 2)
            GTEST_SKIP() << "one processor only";
    }
    void TearDown() override
    {
        if (StateOfProcessor1() == '0')
            std::ofstream(kSwitch) << "1";
    }
};

// How many processors each thread of the process may run on: the least and the most.
std::pair<int, int> AllowedProcessors()
{
    std::pair<int, int> range { 1 << 20, 0 };
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/task")) {
        cpu_set_t mask;
        if (sched_getaffinity(std::stoi(entry.path().filename()), sizeof(mask), &mask) != 0)
            continue; // it has ended
        range.first = std::min(range.first, CPU_COUNT(&mask));
        range.second = std::max(range.second, CPU_COUNT(&mask));
    }
    return range;
}

int32 SpawnAndEnd(void* done)
{
    const thread_func nothing = [](void*) -> int32 { return 0; };
    while (!*static_cast<std::atomic<bool>*>(done)) {
        wait_for_thread(spawn_thread(nothing, "brief", B_NORMAL_PRIORITY, nullptr), nullptr);
        usleep(200); // the system takes a minute to switch a processor off while threads pour in
    }
    return 0;
}

int32 CpuCount()
{
    system_info info;
    return get_system_info(&info) == B_OK ? info.cpu_count : -1;
}

// Switches processor 1 off and on while threads come and go; the system then has it in
// stateWhenOff. 0, or the line that went wrong.
int SwitchWithThreads(char stateWhenOff)
{
    std::atomic<bool> done { false };
    const thread_id spawner = spawn_thread(SpawnAndEnd, "spawner", B_NORMAL_PRIORITY, &done);
    resume_thread(spawner);
    const std::pair<int, int> before = AllowedProcessors();
    const int32 count = CpuCount();
    for (int round = 0; round < 5; round++) {
        if (_kset_cpu_state_(1, 0) != B_OK)
            return __LINE__;
        for (int look = 0; look < 20; look++) {
            if (AllowedProcessors().second != before.second - 1)
                return __LINE__;
        }
        if (CpuCount() != count || StateOfProcessor1() != stateWhenOff
            || _kset_cpu_state_(1, 1) != B_OK || AllowedProcessors() != before)
            return __LINE__;
    }
    done = true;
    wait_for_thread(spawner, nullptr);
    return 0;
}
} // namespace

TEST_F(Switch, IsTheMachinesOrWhereTheProgramMayNotThatOfItsThreadsAlone)
{
    const bool canSwitchForReal = access(kSwitch, W_OK) == 0 && StateOfProcessor1() == '1';
    EXPECT_EQ(canSwitchForReal ? InChild([] { return SwitchWithThreads('0'); }) : 0, 0);
    EXPECT_EQ(InChild([] {
        if (!BecomeOrdinaryUser())
            return 1;
        testing::internal::CaptureStderr();
        const int wrong = SwitchWithThreads('1');
        const bool isTold = testing::internal::GetCapturedStderr()
            == "Processors are not switched off (Permission denied): the program is bound to the "
               "others\n"; // once
        return wrong != 0 || isTold ? wrong : 2;
    }),
        0);
}

TEST_F(Switch, AThreadBoundToAProcessorIsBoundToItAgainAndAProcessCountsOnlyIts)
{
    const auto bindTo = [](int processor) {
        cpu_set_t mask;
        CPU_ZERO(&mask);
        CPU_SET(processor, &mask);
        return sched_setaffinity(0, sizeof(mask), &mask) == 0;
    };
    const auto run = [&] {
        cpu_set_t mask;
        CpuCount(); // takes note of what the process may use
        if (_kset_cpu_state_(1, 0) != B_OK || _kset_cpu_state_(1, 1) != B_OK)
            return 4; // and what threads had then is forgotten
        if (!bindTo(1) || _kset_cpu_state_(1, 0) != B_OK || _kset_cpu_state_(1, 1) != B_OK)
            return 1;
        sched_getaffinity(0, sizeof(mask), &mask);
        return CPU_COUNT(&mask) == 1 && CPU_ISSET(1, &mask) ? 0 : 2;
    };
    EXPECT_EQ(InChild(run), 0); // for the machine where the program may
    EXPECT_EQ(InChild([&] { return BecomeOrdinaryUser() ? run() : 3; }), 0);
    const auto count = [&] { return bindTo(0) ? CpuCount() : 100; };
    EXPECT_EQ(
        InChild([&] { return count() + (_kset_cpu_state_(1, 0) == B_BAD_VALUE ? 0 : 50); }), 1);
}
