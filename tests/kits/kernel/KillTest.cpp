#include "kits/kernel/KillGuard.h"
#include "WaitUntil.h"

#include <OS.h>

#include <atomic>
#include <condition_variable>
#include <gtest/gtest.h>
#include <mutex>
#include <random>
#include <unistd.h>

namespace {
// What the threads of one test share. A body sets isThere when it may be killed.
struct Shared {
    std::atomic<bool> isThere { false };
    std::atomic<int> unwound { 0 };
    std::mutex lock;
    std::condition_variable changed;
    std::atomic<thread_id> other { 0 };
};

struct Sentry {
    Shared& shared;
    ~Sentry() { shared.unwound++; }
};

// A destructor that makes kit calls and takes its time.
struct SlowToGo {
    Shared& shared;
    ~SlowToGo()
    {
        shared.isThere = true;
        for (int i = 0; i < 30; i++)
            snooze(1000);
        shared.unwound++;
    }
};

thread_id Start(thread_func function, Shared& shared)
{
    const thread_id thread = spawn_thread(function, "victim", B_NORMAL_PRIORITY, &shared);
    resume_thread(thread);
    EXPECT_TRUE(WaitUntil([&] { return shared.isThere.load(); }));
    return thread;
}

[[noreturn]] int32 MakeKitCalls(void* data)
{
    const Sentry sentry { *static_cast<Shared*>(data) };
    for (;;) {
        sentry.shared.isThere = true;
        system_time();
    }
}

[[noreturn]] int32 SnoozeLong(void* data)
{
    const Sentry sentry { *static_cast<Shared*>(data) };
    sentry.shared.isThere = true;
    for (;;)
        snooze(B_INFINITE_TIMEOUT);
}

[[noreturn]] int32 SleepInLibrary(void* data)
{
    const Sentry sentry { *static_cast<Shared*>(data) };
    sentry.shared.isThere = true;
    for (;;)
        sleep(1000);
}

[[noreturn]] int32 WaitOnCondition(void* data)
{
    const Sentry sentry { *static_cast<Shared*>(data) };
    std::unique_lock<std::mutex> locked(sentry.shared.lock);
    sentry.shared.isThere = true;
    for (;;)
        sentry.shared.changed.wait(locked);
}

[[noreturn]] int32 WaitForAnother(void* data)
{
    const Sentry sentry { *static_cast<Shared*>(data) };
    sentry.shared.isThere = true;
    wait_for_thread(sentry.shared.other, nullptr);
    for (;;)
        pause();
}

// Takes and gives back a lock that no object on the stack holds.
[[noreturn]] int32 HoldLockUnderGuard(void* data)
{
    const Sentry sentry { *static_cast<Shared*>(data) };
    for (;; system_time()) {
        const KillGuard guard;
        {
            const KillGuard nested;
        }
        sentry.shared.lock.lock();
        sentry.shared.isThere = true;
        snooze(100);
        usleep(25000); // longer than the kit waits before it lets the C library kill
        sentry.shared.lock.unlock();
    }
}

[[noreturn]] int32 KillPointsInDestructors(void* data)
{
    const Sentry sentry { *static_cast<Shared*>(data) };
    for (;;) {
        system_time();
        const SlowToGo slow { sentry.shared };
    }
}
} // namespace

TEST(Kill, EndsAThreadWhereverItIsAndUnwindsIt)
{
    Shared endless;
    endless.other = Start(SnoozeLong, endless);
    const struct {
        const char* name;
        thread_func function;
    } rows[] = {
        { "in a loop of kit calls", MakeKitCalls },
        { "in snooze", SnoozeLong },
        { "in the C library's sleep", SleepInLibrary },
        { "in a wait on a condition", WaitOnCondition },
        { "in wait_for_thread", WaitForAnother },
    };
    for (const auto& row : rows) {
        for (const bool suspended : { false, true }) {
            SCOPED_TRACE(row.name);
            Shared shared;
            shared.other = endless.other.load();
            const thread_id thread = Start(row.function, shared);
            if (suspended) {
                EXPECT_EQ(suspend_thread(thread), B_OK);
            }
            EXPECT_EQ(kill_thread(thread), B_OK);
            EXPECT_EQ(shared.unwound, 1);
            EXPECT_EQ(kill_thread(thread), B_BAD_THREAD_ID);
            status_t value = 0;
            EXPECT_EQ(wait_for_thread(thread, &value), B_OK);
            EXPECT_EQ(value, B_INTERRUPTED);
            EXPECT_TRUE(shared.lock.try_lock());
            shared.lock.unlock();
        }
    }
    EXPECT_EQ(kill_thread(endless.other), B_OK);
}

TEST(Kill, OfAThreadNeverResumedEndsItWithoutRunningIt)
{
    std::atomic<bool> ran { false };
    const thread_func run = [](void* flag) -> int32 {
        return *static_cast<std::atomic<bool>*>(flag) = true;
    };
    const thread_id thread = spawn_thread(run, "never", B_NORMAL_PRIORITY, &ran);
    EXPECT_EQ(kill_thread(thread), B_OK);
    EXPECT_FALSE(ran);
    EXPECT_EQ(resume_thread(thread), B_BAD_THREAD_ID);
}

TEST(Kill, WaitsForTheEndOfAKillGuard)
{
    for (int i = 0; i < 5; i++) {
        Shared shared;
        EXPECT_EQ(kill_thread(Start(HoldLockUnderGuard, shared)), B_OK);
        EXPECT_EQ(shared.unwound, 1);
        ASSERT_TRUE(shared.lock.try_lock()); // not left taken
        shared.lock.unlock();
    }
}

TEST(Kill, DoesNotComeAtAKitCallInADestructor)
{
    Shared shared;
    EXPECT_EQ(kill_thread(Start(KillPointsInDestructors, shared)), B_OK);
    EXPECT_GE(shared.unwound, 2); // the whole destructor and the sentry
}

TEST(Kill, OfItselfEndsAThreadThere)
{
    const thread_func suicide = [](void*) -> int32 {
        kill_thread(find_thread(nullptr));
        return 1;
    };
    status_t value = 0;
    const thread_id thread = spawn_thread(suicide, "suicide", B_NORMAL_PRIORITY, nullptr);
    EXPECT_EQ(wait_for_thread(thread, &value), B_OK);
    EXPECT_EQ(value, B_INTERRUPTED);
}

TEST(Kill, ThreadsThatKillOrAwaitEachOtherAllEnd)
{
    enum class Deed { Kill, KillInDestructor, Await };
    struct Party {
        Deed deed;
        thread_id other = 0;
        std::atomic<int>* present = nullptr;

        static int32 Act(void* data)
        {
            const Party& party = *static_cast<Party*>(data);
            for (++*party.present; *party.present < 2;)
                ;
            struct Killer {
                thread_id victim;
                ~Killer()
                {
                    if (victim != 0)
                        kill_thread(victim);
                }
            } killer { party.deed == Deed::KillInDestructor ? party.other : 0 };
            if (party.deed == Deed::Kill)
                kill_thread(party.other);
            else if (party.deed == Deed::Await)
                wait_for_thread(party.other, nullptr);
            return 0;
        }
    };
    const Deed pairs[][2] = { { Deed::Kill, Deed::Kill }, { Deed::Kill, Deed::Await },
        { Deed::KillInDestructor, Deed::Kill }, { Deed::KillInDestructor, Deed::Await },
        { Deed::KillInDestructor, Deed::KillInDestructor } };
    for (int round = 0; round < 20; round++) {
        for (const auto& pair : pairs) {
            std::atomic<int> present { 0 };
            Party parties[2] = { { pair[0], 0, &present }, { pair[1], 0, &present } };
            thread_id threads[2];
            for (int i = 0; i < 2; i++)
                threads[i] = spawn_thread(Party::Act, "party", B_NORMAL_PRIORITY, &parties[i]);
            parties[0].other = threads[1];
            parties[1].other = threads[0];
            resume_thread(threads[0]);
            resume_thread(threads[1]);
            for (const thread_id thread : threads)
                ASSERT_EQ(wait_for_thread(thread, nullptr), B_OK);
        }
    }
}

TEST(Kill, TwoHundredAtRandomUnderLoadLeaveNothingBehind)
{
    std::minstd_rand random(20260101);
    const thread_func functions[] = { MakeKitCalls, SnoozeLong, SleepInLibrary, WaitOnCondition,
        HoldLockUnderGuard };
    Shared load;
    const thread_id loads[] = { Start(MakeKitCalls, load), Start(MakeKitCalls, load) };
    for (int i = 0; i < 200; i++) {
        Shared shared;
        const thread_id thread =
            spawn_thread(functions[random() % 5], "victim", B_NORMAL_PRIORITY, &shared);
        const bool runs = random() % 8 != 0;
        if (runs)
            resume_thread(thread);
        if (random() % 3 == 0)
            snooze(static_cast<bigtime_t>(random() % 2000));
        if (random() % 4 == 0)
            suspend_thread(thread);
        ASSERT_EQ(kill_thread(thread), B_OK);
        EXPECT_LE(shared.unwound, 1);
        EXPECT_EQ(shared.unwound == 1, shared.isThere.load());
        ASSERT_TRUE(shared.lock.try_lock());
        shared.lock.unlock();
    }
    for (const thread_id thread : loads)
        EXPECT_EQ(kill_thread(thread), B_OK);
}
