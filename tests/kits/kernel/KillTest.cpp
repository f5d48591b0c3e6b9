#include "kits/kernel/KillGuard.h"
#include "tests/support/WaitUntil.h"

#include <OS.h>

#include <atomic>
#include <condition_variable>
#include <gtest/gtest.h>
#include <mutex>
#include <random>
#include <unistd.h>

namespace {
enum Deed {
    MakeKitCalls,
    Snooze,
    SleepInLibrary,
    WaitOnCondition,
    HoldLock,
    AwaitAnother,
    Destroy
};

// A thread that does one deed for ever, and what its test sees of it.
struct Victim {
    explicit Victim(Deed whichDeed) : deed(whichDeed) { }

    // Starts it and waits until it may be killed.
    thread_id Start()
    {
        const thread_id thread = spawn_thread(Run, "victim", B_NORMAL_PRIORITY, this);
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

    void Do();

    void DoHoldingLock()
    {
        const KillGuard guard;
        {
            const KillGuard nested;
        }
        lock.lock(); // no object on the stack would give it back
        isThere = true;
        snooze(100);
        usleep(25000); // longer than the kit waits before it lets the C library kill
        lock.unlock();
    }

    const Deed deed;
    thread_id other = 0;
    std::atomic<bool> isThere { false };
    std::atomic<int> unwound { 0 };
    std::mutex lock;
    std::condition_variable changed;
};

// Its destructor makes kit calls, for longer than the kit waits.
struct SlowToGo {
    Victim& victim;
    ~SlowToGo()
    {
        victim.isThere = true;
        for (int i = 0; i < 30; i++)
            snooze(1000);
        victim.unwound++;
    }
};

void Victim::Do()
{
    if (deed == Destroy) {
        const SlowToGo slow { *this };
    } else if (deed == HoldLock) {
        DoHoldingLock();
    } else {
        isThere = true;
    }
    switch (deed) {
        case Snooze: snooze(B_INFINITE_TIMEOUT); break;
        case SleepInLibrary: sleep(1000); break;
        case AwaitAnother: wait_for_thread(other, nullptr); break;
        case WaitOnCondition: {
            std::unique_lock<std::mutex> locked(lock);
            changed.wait(locked);
            break;
        }
        default: system_time();
    }
}

void ExpectFree(std::mutex& lock)
{
    ASSERT_TRUE(lock.try_lock());
    lock.unlock();
}
} // namespace

TEST(Kill, EndsAThreadWhereverItIsAndUnwindsIt)
{
    Victim endless(Snooze);
    const thread_id other = endless.Start();
    for (const Deed deed :
        { MakeKitCalls, Snooze, SleepInLibrary, WaitOnCondition, AwaitAnother, HoldLock }) {
        for (const bool suspended : { false, true }) {
            SCOPED_TRACE(deed);
            Victim victim(deed);
            victim.other = other;
            const thread_id thread = victim.Start();
            if (suspended) {
                EXPECT_EQ(suspend_thread(thread), B_OK);
            }
            EXPECT_EQ(kill_thread(thread), B_OK);
            EXPECT_EQ(victim.unwound, 1);
            ExpectFree(victim.lock);
            EXPECT_EQ(kill_thread(thread), B_BAD_THREAD_ID);
            status_t value = 0;
            EXPECT_EQ(wait_for_thread(thread, &value), B_OK);
            EXPECT_EQ(value, B_INTERRUPTED);
        }
    }
    EXPECT_EQ(kill_thread(other), B_OK);
}

TEST(Kill, DoesNotComeAtAKitCallInADestructor)
{
    Victim victim(Destroy);
    EXPECT_EQ(kill_thread(victim.Start()), B_OK);
    EXPECT_GE(victim.unwound, 2); // the whole destructor and the sentry
}

TEST(Kill, OfItselfEndsAThreadThere)
{
    const thread_func suicide = [](void*) -> int32 { return kill_thread(find_thread(nullptr)); };
    status_t value = 0;
    wait_for_thread(spawn_thread(suicide, "suicide", B_NORMAL_PRIORITY, nullptr), &value);
    EXPECT_EQ(value, B_INTERRUPTED);
}

TEST(Kill, ThreadsThatKillOrAwaitEachOtherAllEnd)
{
    enum Way { Kill, KillInDestructor, Await };
    struct Party {
        Way way;
        std::atomic<int>& present;
        thread_id other = 0;
        ~Party()
        {
            if (way == KillInDestructor && other != 0)
                kill_thread(other);
        }
        static int32 Act(void* data)
        {
            const Party party = *static_cast<Party*>(data);
            for (++party.present; party.present < 2;)
                ;
            if (party.way == Kill)
                kill_thread(party.other);
            else if (party.way == Await)
                wait_for_thread(party.other, nullptr);
            return 0;
        }
    };
    const Way pairs[][2] = { { Kill, Kill }, { Kill, Await }, { KillInDestructor, Kill },
        { KillInDestructor, Await }, { KillInDestructor, KillInDestructor } };
    for (int round = 0; round < 100; round++) {
        std::atomic<int> present { 0 };
        Party parties[] = { { pairs[round % 5][0], present }, { pairs[round % 5][1], present } };
        thread_id threads[2];
        for (int i = 0; i < 2; i++)
            threads[i] = spawn_thread(Party::Act, "party", B_NORMAL_PRIORITY, &parties[i]);
        for (int i = 0; i < 2; i++)
            parties[i].other = threads[1 - i];
        for (const thread_id thread : threads)
            resume_thread(thread);
        for (const thread_id thread : threads)
            ASSERT_EQ(wait_for_thread(thread, nullptr), B_OK);
    }
}

TEST(Kill, TwoHundredAtRandomUnderLoadLeaveNothingBehind)
{
    std::minstd_rand random(20260101);
    Victim load(MakeKitCalls);
    const thread_id loads[] = { load.Start(), load.Start() };
    for (int i = 0; i < 200; i++) {
        Victim victim(static_cast<Deed>(random() % 5));
        const thread_id thread = spawn_thread(Victim::Run, "victim", B_NORMAL_PRIORITY, &victim);
        if (random() % 8 != 0)
            resume_thread(thread);
        if (random() % 3 == 0)
            snooze(static_cast<bigtime_t>(random() % 2000));
        if (random() % 4 == 0)
            suspend_thread(thread);
        EXPECT_EQ(kill_thread(thread), B_OK);
        EXPECT_EQ(victim.unwound == 1, victim.isThere.load());
        ExpectFree(victim.lock);
    }
    for (const thread_id thread : loads)
        EXPECT_EQ(kill_thread(thread), B_OK);
}
