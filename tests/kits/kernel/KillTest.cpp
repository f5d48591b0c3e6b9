#include "KillGuard.h"
#include "tests/support/Test.h"
#include "tests/support/WaitUntil.h"

#include <OS.h>
#include <PCI.h>

#include <mutex>
#include <random>

namespace {
enum Deed { kMakeKitCalls, kSnooze, kAwait, kHoldLock, kDeeds };

// A thread that does one deed for ever, and what its test sees of it.
struct Victim {
    explicit Victim(Deed whichDeed) : deed(whichDeed) { }

    thread_id Spawn() { return spawn_thread(Run, "victim", B_NORMAL_PRIORITY, this); }
    // Starts it and waits until it may be killed.
    thread_id Start()
    {
        const thread_id thread = Spawn();
        resume_thread(thread);
        EXPECT_TRUE(WaitUntil([&] { return isThere.load(); }));
        return thread;
    }

    static int32 Run(void* victim)
    {
        const struct Sentry {
            Victim& victim;
            ~Sentry() { victim.unwound++; }
        } sentry { *static_cast<Victim*>(victim) };
        for (;;)
            sentry.victim.Do();
    }

    void Do()
    {
        if (deed < kHoldLock)
            isThere = true;
        if (deed == kSnooze)
            snooze(B_INFINITE_TIMEOUT);
        if (deed == kAwait)
            wait_for_thread(other, nullptr);
        if (deed == kHoldLock) {
            const KillGuard guard;
            (void)KillGuard(); // nested
            lock.lock(); // no object on the stack would give it back
            isThere = true;
            snooze(100);
            usleep(100); // nor is there a kill in the C library
            lock.unlock();
        }
        system_time();
    }

    const Deed deed;
    thread_id other = 0;
    std::atomic<bool> isThere { false };
    std::atomic<int> unwound { 0 };
    std::mutex lock;
};
} // namespace

TEST(Kill, EndsAThreadWhereverItIsAndUnwindsItUnderLoad)
{
    std::minstd_rand random(20260101);
    Victim load(kMakeKitCalls);
    const thread_id loads[] = { load.Start(), load.Start() };
    for (int i = 0; i < 160; i++) {
        Victim victim(static_cast<Deed>(i % kDeeds));
        SCOPED_TRACE(victim.deed);
        victim.other = loads[0];
        const bool isAwaited = i < 2 * kDeeds;
        const thread_id thread = isAwaited ? victim.Start() : victim.Spawn();
        if (!isAwaited && random() % 8 != 0)
            resume_thread(thread);
        if (!isAwaited && random() % 3 == 0)
            snooze(static_cast<bigtime_t>(random() % 2000));
        if (i < kDeeds || random() % 4 == 0)
            suspend_thread(thread);
        EXPECT_EQ(kill_thread(thread), B_OK);
        EXPECT_EQ(victim.unwound == 1, victim.isThere.load());
        EXPECT_TRUE(victim.lock.try_lock());
        victim.lock.unlock();
        EXPECT_EQ(kill_thread(thread), B_BAD_THREAD_ID);
        status_t value = 0;
        EXPECT_EQ(wait_for_thread(thread, &value), B_OK);
        EXPECT_EQ(value, B_INTERRUPTED);
    }
    ExpectAll(B_OK, { kill_thread(loads[0]), kill_thread(loads[1]) });
}

TEST(Kill, EveryCallIsAPlaceToEnd)
{
    using Call = void (*)();
    const Call calls[] = { [] { system_time(); }, [] { snooze(0); }, [] { find_thread(nullptr); },
        [] { spawn_thread(nullptr, "", 0, nullptr); }, [] { resume_thread(-1); },
        [] { suspend_thread(-1); }, [] { kill_thread(-1); }, [] { wait_for_thread(-1, nullptr); },
        [] { set_thread_priority(-1, 1); }, [] { get_thread_info(-1, nullptr); },
        [] { rename_thread(-1, nullptr); }, [] { get_system_info(nullptr); },
        [] { get_nth_pci_info(0, nullptr); }, [] { _kset_cpu_state_(0, 2); } };
    static std::atomic<bool> sHasCalled;
    const thread_func callForEver = [](void* what) -> int32 {
        for (;; sHasCalled = true)
            (*static_cast<const Call*>(what))();
    };
    for (const Call& call : calls) {
        sHasCalled = false; // else it is killed before it begins
        const thread_id thread =
            spawn_thread(callForEver, "caller", B_NORMAL_PRIORITY, const_cast<Call*>(&call));
        EXPECT_TRUE(resume_thread(thread) == B_OK && WaitUntil([] { return sHasCalled.load(); }));
        EXPECT_EQ(kill_thread(thread), B_OK);
    }
}

TEST(Kill, ThreadsThatKillOrAwaitEachOtherAllEnd)
{
    using Way = void (*)(thread_id);
    const Way kill = [](thread_id other) { kill_thread(other); };
    const Way await = [](thread_id other) { wait_for_thread(other, nullptr); };
    const Way killInDestructor = [](thread_id other) {
        const struct Killer {
            thread_id other;
            ~Killer() { kill_thread(other); }
        } killer { other };
        system_time();
    };
    const thread_func act = [](void* what) -> int32 {
        (*static_cast<std::function<void()>*>(what))();
        return 0;
    };
    const Way pairs[][2] = { { kill, kill }, { kill, await }, { killInDestructor, kill },
        { killInDestructor, await } };
    for (int round = 0; round < 100; round++) {
        std::atomic<int> present { 0 };
        thread_id threads[2];
        std::function<void()> parties[2];
        for (int i = 0; i < 2; i++) {
            parties[i] = [&, i] {
                for (++present; present < 2;)
                    ;
                pairs[round % 4][i](threads[1 - i]);
            };
            threads[i] = spawn_thread(act, "party", B_NORMAL_PRIORITY, &parties[i]);
        }
        for (const thread_id thread : threads)
            resume_thread(thread);
        for (const thread_id thread : threads)
            ASSERT_EQ(wait_for_thread(thread, nullptr), B_OK);
    }
}
