// Which processors the threads of a run may use, on a machine with more of them than a run counts.
#include "engine/Benchmark.h"
#include "Processors.h"
#include "tests/support/Child.h"
#include "tests/support/Test.h"

#include <OS.h>
#include <Screen.h>

#include <sched.h>

namespace {
using Numbers = std::vector<int>;

// By thread. From the system's text: the call for it leaves out what is switched off.
std::map<std::string, Numbers> AllowedByThread()
{
    std::map<std::string, Numbers> all;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/task")) {
        const std::string status = ReadFile(entry.path() / "status");
        const std::string name = "Cpus_allowed_list:\t";
        const size_t start = status.find(name);
        if (start == status.npos) // it has ended
            continue;
        const std::string list = status.substr(start + name.size());
        all[entry.path().filename()] = kernel::ParseCpuList(list.substr(0, list.find('\n')));
    }
    return all;
}

// Of each pass: those that differ among all threads, one of them just started.
std::vector<std::set<Numbers>> gSeen;

int32 LookAtAll(void*)
{
    std::set<Numbers> seen;
    for (const auto& [thread, numbers] : AllowedByThread())
        seen.insert(numbers);
    gSeen.push_back(seen);
    return 0;
}

bool Bind(const Numbers& numbers)
{
    cpu_set_t mask;
    CPU_ZERO(&mask);
    for (const int number : numbers)
        CPU_SET(static_cast<size_t>(number), &mask);
    return sched_setaffinity(0, sizeof(mask), &mask) == 0;
}

// A whole run that counts only so many of the processors that the process may use, among threads of
// every kind. 0, or the line that went wrong.
int RunCounting(size_t count)
{
    kernel::Processors::SetRoot("", count);
    static_cast<void>(BScreen(B_MAIN_SCREEN_ID).IsValid()); // whose server has threads too
    const auto before = AllowedByThread();

    Benchmark benchmark;
    benchmark.savage = true;
    if (benchmark.Go("benchmark", nullptr, B_NORMAL_PRIORITY, true) != B_OK)
        return __LINE__;
    if (gSeen.size() != count)
        return __LINE__;
    Numbers pass = kernel::Processors::Get()->Numbers();
    for (const std::set<Numbers>& seen : gSeen) {
        Numbers sorted = pass;
        std::sort(sorted.begin(), sorted.end());
        if (seen != std::set { sorted })
            return __LINE__;
        pass.pop_back();
    }
    auto after = AllowedByThread();
    std::erase_if(after, [&](const auto& thread) { return !before.contains(thread.first); });
    return after == before ? 0 : __LINE__; // the run's own may be about to end
}
} // namespace

// Every test of a group begins with this.
extern "C" Metric* __real__ZN7Results7NewTestEPKcRKl(Results*, const char*, const long&);
extern "C" Metric* __wrap__ZN7Results7NewTestEPKcRKl(Results*, const char*, const long&);
extern "C" Metric* __wrap__ZN7Results7NewTestEPKcRKl(
    Results* results, const char* name, const long& cycles)
{
    const thread_id late = spawn_thread(LookAtAll, "late", B_NORMAL_PRIORITY, nullptr);
    wait_for_thread(late, nullptr);
    return __real__ZN7Results7NewTestEPKcRKl(results, name, cycles);
}

TEST(Confinement, AllThreadsHaveExactlyThePassesProcessorsAndTheirOwnAfterwards)
{
    const Numbers all = AllowedByThread().begin()->second;
    if (all.size() < 3)
        GTEST_SKIP() << "needs three processors";
    const Numbers upper(all.begin() + 1, all.end());
    EXPECT_EQ(InChild([] { return RunCounting(2); }), 0); // switches where the user may
    EXPECT_EQ(InChild([] { return RunCounting(1); }), 0);
    EXPECT_EQ(InChild([] { return BecomeOrdinaryUser() ? RunCounting(2) : 1; }), 0);
    EXPECT_EQ(InChild([&] { return Bind(upper) && BecomeOrdinaryUser() ? RunCounting(2) : 1; }), 0);
}
