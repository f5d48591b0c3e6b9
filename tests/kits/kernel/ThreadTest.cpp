#include "Thread.h"

#include "LeafLock.h"
#include "tests/support/Child.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"
#include "tests/support/WaitUntil.h"

#include <OS.h>

#include <sys/resource.h>

namespace {
// What a thread of these tests does and shows; it does it until done.
struct Work {
    enum Kind { kCount, kSnooze, kSleep };

    Kind kind = kCount;
    std::atomic<bool> done { false };
    std::atomic<bool> isGuarded { false }; // at first
    std::atomic<long> count { 0 };

    bool GoesOn() const
    {
        const long before = count;
        return WaitUntil([&] { return count > before; });
    }

    static int32 Do(void* data)
    {
        Work& work = *static_cast<Work*>(data);
        if (work.isGuarded) {
            const kernel::SuspendGuard guard;
            {
                const kernel::SuspendGuard nested;
            }
            while (work.isGuarded)
                work.count++;
        }
        while (!work.done) {
            work.count++;
            if (work.kind == kSnooze)
                snooze(100000);
            if (work.kind == kSleep)
                usleep(100000);
        }
        return 7;
    }
};

// Of one that has ended the name "<ended>" alone.
thread_info InfoOf(thread_id thread)
{
    thread_info info;
    memset(&info, 'x', sizeof info);
    if (get_thread_info(thread, &info) != B_OK)
        strcpy(info.name, "<ended>");
    return info;
}

std::string NameOf(thread_id thread)
{
    return InfoOf(thread).name;
}
} // namespace

TEST(Thread, StateTellsWhatItDoes)
{
    const std::pair<Work::Kind, thread_state> rows[] = { { Work::kCount, B_THREAD_RUNNING },
        { Work::kSnooze, B_THREAD_ASLEEP }, { Work::kSleep, B_THREAD_WAITING } };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first);
        Work work;
        work.kind = row.first;
        const thread_id thread = spawn_thread(Work::Do, "works", B_NORMAL_PRIORITY, &work);
        EXPECT_EQ(InfoOf(thread).state, B_THREAD_SUSPENDED);
        ASSERT_EQ(resume_thread(thread), B_OK);
        EXPECT_EQ(resume_thread(thread), B_BAD_THREAD_STATE);
        thread_info info;
        EXPECT_TRUE(WaitUntil([&] {
            info = InfoOf(thread);
            return work.count > 0 && info.state == row.second
                && (info.user_time > 0 || row.first != Work::kCount);
        }));
        EXPECT_EQ(std::tuple(info.thread, info.team, info.priority, std::string(info.name)),
            std::tuple(thread, getpid(), B_NORMAL_PRIORITY, "works"));
        ASSERT_EQ(suspend_thread(thread), B_OK);
        EXPECT_EQ(suspend_thread(thread), B_OK); // already
        EXPECT_EQ(InfoOf(thread).state, B_THREAD_SUSPENDED);
        const long count = work.count;
        info = InfoOf(thread);
        usleep(60000);
        EXPECT_EQ(work.count, count);
        EXPECT_LT(InfoOf(thread).user_time + InfoOf(thread).kernel_time,
            info.user_time + info.kernel_time + 30000);
        work.done = true;
        status_t value = 0;
        EXPECT_EQ(wait_for_thread(thread, &value), B_OK); // resumes it
        EXPECT_EQ(value, 7);
    }
}

TEST(Thread, WhatIsNotAThreadIsRefusedButAnEndedOnesValueIsKeptForTheFirst)
{
    const thread_id thread =
        spawn_thread([](void*) -> int32 { return 42; }, "short", B_LOW_PRIORITY, nullptr);
    resume_thread(thread);
    ASSERT_TRUE(WaitUntil([&] { return NameOf(thread) == "<ended>"; }));
    for (const thread_id id : { thread, static_cast<thread_id>(0), static_cast<thread_id>(-1),
             static_cast<thread_id>(1 << 30) }) {
        thread_info info;
        ExpectAll(B_BAD_THREAD_ID,
            { get_thread_info(id, &info), resume_thread(id), suspend_thread(id), kill_thread(id),
                set_thread_priority(id, 10), rename_thread(id, "x") });
    }
    EXPECT_EQ(find_thread("short"), B_NAME_NOT_FOUND);
    status_t value = 0;
    EXPECT_EQ(wait_for_thread(thread, &value), B_OK);
    EXPECT_EQ(value, 42);
    EXPECT_EQ(wait_for_thread(thread, &value), B_BAD_THREAD_ID);
    EXPECT_EQ(wait_for_thread(find_thread(nullptr), &value), B_NOT_ALLOWED);
    const thread_id self = find_thread(nullptr);
    EXPECT_EQ(spawn_thread(nullptr, "x", B_LOW_PRIORITY, nullptr), B_BAD_VALUE);
    EXPECT_TRUE(get_thread_info(self, nullptr) == B_BAD_VALUE
        && rename_thread(self, nullptr) == B_BAD_VALUE);
    const bigtime_t until = system_time() + 20000;
    EXPECT_TRUE(snooze(0) == B_OK && snooze(-1) == B_OK && snooze(20000) == B_OK);
    EXPECT_GE(system_time(), until);
    using std::chrono::microseconds, std::chrono::steady_clock;
    const auto now = [] { return steady_clock::now().time_since_epoch() / microseconds(1); };
    const bigtime_t before = now(), kits = system_time(), after = now();
    EXPECT_TRUE(before <= kits && kits <= after);
}

TEST(Thread, AMutexIsOnesAloneUntilItIsLetGo)
{
    Mutex mutex;
    for (const bool isHeld : { true, false }) {
        const auto lock = isHeld ? std::make_unique<LeafLock>(mutex) : nullptr;
        std::thread([&] {
            const bool isTaken = mutex.try_lock();
            EXPECT_EQ(isTaken, !isHeld);
            if (isTaken)
                mutex.unlock();
        }).join();
    }
}

TEST(Thread, UnderAGuardIsStoppedWhenThatEndsUnlessItWasResumedBefore)
{
    Work work;
    work.isGuarded = true;
    const thread_id thread = spawn_thread(Work::Do, "guarded", B_NORMAL_PRIORITY, &work);
    resume_thread(thread);
    for (const bool isResumed : { true, false }) {
        EXPECT_TRUE(work.GoesOn());
        std::atomic<bool> isBack { false };
        std::thread suspender([&] {
            EXPECT_EQ(suspend_thread(thread), B_OK);
            isBack = true;
        });
        EXPECT_TRUE(WaitUntil([&] { return InfoOf(thread).state == B_THREAD_SUSPENDED; }));
        EXPECT_TRUE(work.GoesOn() && !isBack);
        if (isResumed)
            EXPECT_EQ(resume_thread(thread), B_OK);
        else
            work.isGuarded = false;
        suspender.join();
        EXPECT_EQ(InfoOf(thread).state, isResumed ? B_THREAD_RUNNING : B_THREAD_SUSPENDED);
    }
    work.done = true;
    EXPECT_EQ(wait_for_thread(thread, nullptr), B_OK);
}

TEST(Thread, PriorityIsANiceValueAsFarAsTheUserMayHaveIt)
{
    const thread_func tell = [](void*) -> int32 { return getpriority(PRIO_PROCESS, 0); };
    const std::vector<Row> rows = RowsOf("kits/kernel/data/priorities.txt", 4);
    const std::pair<size_t, rlim_t> limits[] = { { 1, RLIM_INFINITY }, { 2, 25 }, { 3, 0 } };
    for (const auto& [column, most] : limits) {
        const auto check = [&, column = column, limit = rlimit { most, most }] {
            if (getpriority(PRIO_PROCESS, 0) != 0 || setrlimit(RLIMIT_NICE, &limit) != 0)
                return; // not at this nice value, or not this user
            EXPECT_TRUE(BecomeOrdinaryUser());
            for (const Row& row : rows) {
                const int32 priority = std::stoi(row[0]);
                EXPECT_EQ(std::to_string(kernel::NiceForPriority(priority)), row[1]);
                const thread_id thread = spawn_thread(tell, "nice", 10, nullptr);
                EXPECT_EQ(set_thread_priority(thread, priority), 10);
                EXPECT_EQ(InfoOf(thread).priority, priority);
                status_t nice = 0;
                EXPECT_EQ(wait_for_thread(thread, &nice), B_OK);
                EXPECT_EQ(std::to_string(nice), row[column]) << priority;
            }
        };
        EXPECT_EQ(ErrorsOfChild(check), "") << most;
    }
}

TEST(Thread, ExitThreadAndAKillOfItselfUnwindItAndGiveTheValue)
{
    static int sUnwound = 0;
    const thread_func ends = [](void* isKilled) -> int32 {
        const struct Sentry {
            ~Sentry() { sUnwound++; }
        } sentry;
        if (isKilled)
            kill_thread(find_thread(nullptr));
        exit_thread(-5);
    };
    for (int* isKilled : { static_cast<int*>(nullptr), &sUnwound }) {
        status_t value = 0;
        wait_for_thread(spawn_thread(ends, "ends", B_NORMAL_PRIORITY, isKilled), &value);
        EXPECT_EQ(value, isKilled ? B_INTERRUPTED : -5);
    }
    EXPECT_EQ(sUnwound, 2);
}

TEST(Thread, NamesOfAnyLengthAreTakenAndShownUpTo31Bytes)
{
    Work work;
    const std::string longName = "A name of a thread that has more than 31 bytes";
    const thread_id thread = spawn_thread(Work::Do, longName.c_str(), B_NORMAL_PRIORITY, &work);
    EXPECT_EQ(NameOf(thread), longName.substr(0, 31));
    EXPECT_EQ(find_thread(longName.c_str()), thread);
    EXPECT_EQ(rename_thread(thread, "WhetstoneThread_9"), B_OK);
    EXPECT_EQ(find_thread("WhetstoneThread_9"), thread);
    EXPECT_EQ(find_thread(longName.c_str()), B_NAME_NOT_FOUND);
    EXPECT_EQ(kill_thread(thread), B_OK);
}
