#pragma once

#include "tests/support/Log.h"
#include "tests/support/Test.h"
#include "tests/support/WaitUntil.h"

#include <Looper.h>

// Does with each message what the test says.
class TestLooper : public BLooper {
public:
    using Action = std::function<void(TestLooper&, BMessage*)>;

    explicit TestLooper(Action action, int32 capacity = B_LOOPER_PORT_DEFAULT_CAPACITY)
        : BLooper("test", B_NORMAL_PRIORITY, capacity), fAction(std::move(action))
    {
    }
    void MessageReceived(BMessage* message) override { fAction(*this, message); }

private:
    const Action fAction;
};

// What the constructor of an object tells.
template <typename T, typename... Arguments>
status_t StatusOf(Arguments... arguments)
{
    status_t status = 1;
    T(arguments..., &status);
    return status;
}

inline std::string Flat(const BMessage& message)
{
    std::string bytes(static_cast<size_t>(message.FlattenedSize()), '\0');
    EXPECT_EQ(message.Flatten(bytes.data(), message.FlattenedSize()), B_OK);
    return bytes;
}

// Writes each message's code into the log, as a number.
inline TestLooper::Action LogTo(Log& log)
{
    return [&log](TestLooper&, BMessage* message) { log.Add(std::to_string(message->what)); };
}

inline void QuitNow(BLooper* looper)
{
    if (looper->Lock())
        looper->Quit();
}

// Returns when the thread waits for something, so that what the test does next finds it waiting.
inline void AwaitWaiting(thread_id thread)
{
    EXPECT_TRUE(WaitUntil([=] {
        thread_info info {};
        return get_thread_info(thread, &info) != B_OK || info.state == B_THREAD_WAITING;
    }));
}

// Runs body in a thread of the kit's; joined by Wait() or at the end, unless killed before.
class KitThread {
public:
    explicit KitThread(std::function<void()> body)
        : fBody(std::move(body)), fThread(spawn_thread(Enter, "test", B_NORMAL_PRIORITY, &fBody))
    {
        resume_thread(fThread);
    }
    ~KitThread() { Wait(); }
    void Wait() const { wait_for_thread(fThread, nullptr); }
    thread_id Id() const { return fThread; }

private:
    static int32 Enter(void* body)
    {
        (*static_cast<const std::function<void()>*>(body))();
        return B_OK;
    }
    std::function<void()> fBody;
    const thread_id fThread;
};
