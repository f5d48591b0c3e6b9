#include "MessageDelivery.h"
#include "TestLooper.h"

#include <Autolock.h>

#include <list>
#include <optional>

TEST(Looper, QuitFromItsOwnThreadDeletesItAndNeverReturns)
{
    struct Quitter : BLooper {
        explicit Quitter(Log& quitterLog) : log(quitterLog) { }
        ~Quitter() override { log.Add("deleted"); }
        void MessageReceived(BMessage* message) override
        {
            log.Add(message == CurrentMessage() && LooperForThread(Thread()) == this ? "1" : "0");
            if (message->what == 2)
                Quit();
        }
        void MessageHandled() override { log.Add(IsLocked() ? "handled" : "unlocked"); }
        Log& log;
    };
    Log log;
    auto* looper = new Quitter(log);
    const BMessenger messenger(looper);
    const thread_id thread = looper->Run();
    for (const uint32 what : { 1, 2, 3 })
        messenger.SendMessage(what);
    status_t value = B_OK;
    wait_for_thread(thread, &value);
    EXPECT_EQ(log.Now(), (Entries { "1", "handled", "1", "deleted" }));
    EXPECT_FALSE(messenger.IsValid());
    EXPECT_EQ(BLooper::LooperForThread(thread), nullptr);
}

TEST(Looper, QuitFromOutsideHandlesWhatWaitsAndAsksNobody)
{
    struct Refuser : TestLooper {
        using TestLooper::TestLooper;
        bool QuitRequested() override { return false; }
    };
    Log log;
    auto* looper = new Refuser(LogTo(log), 3);
    const BMessenger messenger(looper);
    for (uint32 i = 0; i < 3; ++i)
        messenger.SendMessage(i); // the port is full
    looper->Run();
    EXPECT_EQ(ErrorsOf([&] { looper->Quit(); }), "Looper <test> quit without being locked\n");
    EXPECT_EQ(log.Now(), (Entries { "0", "1", "2" }));
    EXPECT_FALSE(messenger.IsValid());
}

TEST(Looper, DiesWhileOthersPostSendAskAndLockAndHandlersEnd)
{
    for (int round = 0; round < 50; ++round) {
        BHandler handler;
        auto* looper = new TestLooper([](TestLooper&, BMessage*) {}, 4);
        looper->AddHandler(&handler);
        const BMessenger messenger(looper);
        BMessage reply;
        const std::function<bool()> actions[] = {
            [&] { return messenger.SendMessage(3, &reply) == B_OK; },
            [=] { return messenger.SendMessage(1) == B_OK; },
            [=] { return PostLatest(messenger, BMessage(2)) == B_OK; },
            [=] { return BAutolock(looper).IsLocked(); }
        };
        std::list<KitThread> threads;
        for (const auto& action : actions)
            threads.emplace_back([action] {
                while (action()) { }
            }); // until it is gone
        if (round % 3 == 0) {
            AwaitWaiting(threads.back().Id());
            looper->Quit();
            continue;
        }
        looper->Run();
        if (round % 3 == 1)
            QuitNow(looper);
        else
            PostAlways(messenger, BMessage(B_QUIT_REQUESTED));
    }
}

TEST(Looper, HandlersHandOnToTheNextAndForgetOneThatLeft)
{
    struct Named : BHandler {
        Named(const char* name, Log& handlerLog) : BHandler(name), log(handlerLog) { }
        void MessageReceived(BMessage* message) override
        {
            log.Add(Name());
            BHandler::MessageReceived(message);
        }
        Log& log;
    };
    Log log;
    auto* looper = new TestLooper(LogTo(log));
    auto* other = new BLooper;
    Named a("a", log);
    auto* b = new Named("b", log);
    BHandler alone;
    EXPECT_EQ(alone.Name(), nullptr);
    looper->AddHandler(&a);
    looper->AddHandler(b);
    looper->AddHandler(nullptr);
    other->AddHandler(&a); // it is in a looper already
    EXPECT_EQ(a.Looper(), looper);
    a.SetNextHandler(b);
    a.SetNextHandler(other); // not in the same looper
    BMessage message(3);
    ExpectAll(B_OK, { looper->PostMessage(1, &a), looper->PostMessage(2, nullptr) });
    ExpectAll(B_MISMATCHED_VALUES,
        { other->PostMessage(&message, &a), looper->PostMessage(&message, &alone) });
    EXPECT_EQ(looper->PostMessage(&message, &a, &alone), B_BAD_HANDLER);
    ExpectAll(B_BAD_VALUE,
        { looper->PostMessage(nullptr, &a), looper->PostMessage(static_cast<BMessage*>(nullptr)) });
    ExpectAll(false,
        { looper->RemoveHandler(nullptr), looper->RemoveHandler(looper),
            other->RemoveHandler(&a) });
    EXPECT_EQ(BLooper::LooperForThread(B_ERROR), nullptr) << "though two do not run yet";
    looper->Run();
    EXPECT_EQ(log.WaitFor(4), (Entries { "a", "b", "1", "2" }));
    delete b; // locks by itself
    std::optional<KitThread> late;
    {
        const BAutolock lock(looper);
        EXPECT_EQ(a.NextHandler(), looper);
        late.emplace([target = BMessenger(&a)] { EXPECT_FALSE(target.LockTarget()); });
        AwaitWaiting(late->Id());
        EXPECT_TRUE(looper->RemoveHandler(&a));
        EXPECT_TRUE(!a.Looper() && !a.NextHandler());
    }
    late->Wait();
    EXPECT_TRUE(looper->Lock()) << "the lock that came too late was given back";
    looper->AddHandler(&a);
    looper->Quit();
    EXPECT_TRUE(!a.Looper() && !a.NextHandler());
    other->Quit();
}
