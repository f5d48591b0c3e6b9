#include "MessageDelivery.h"
#include "TestLooper.h"

#include <Invoker.h>
#include <Messenger.h>

namespace {

constexpr bigtime_t kShort = 20'000;
constexpr BHandler* kNobody = nullptr; // a bare NULL might be a reply, too

} // namespace

TEST(Messenger, TellsThatItsHandlerOrItsLooperHasGone)
{
    Log log;
    auto* looper = new TestLooper(LogTo(log));
    auto* handler = new BHandler;
    looper->AddHandler(handler);
    const BMessenger messenger(handler);
    looper->PostMessage(1, handler);
    KitThread asking([&] {
        BMessage reply;
        EXPECT_EQ(messenger.SendMessage(2, &reply), B_BAD_HANDLER);
    });
    AwaitWaiting(asking.Id());
    delete handler; // with it go the messages for it
    EXPECT_TRUE(messenger.IsValid());
    EXPECT_EQ(messenger.SendMessage(1), B_BAD_HANDLER);
    EXPECT_FALSE(messenger.LockTarget());
    EXPECT_EQ(looper->CountLocks(), 1) << "a lock that failed is given back";
    looper->PostMessage(3);
    looper->Run();
    EXPECT_EQ(log.WaitFor(1), (Entries { "3" }));
    asking.Wait();
    QuitNow(looper);
    EXPECT_EQ(messenger.SendMessage(1), B_BAD_PORT_ID);
    EXPECT_EQ(messenger.LockTargetWithTimeout(0), B_BAD_PORT_ID);
    EXPECT_EQ(StatusOf<BMessenger>(kNobody, looper), B_BAD_VALUE);
}

TEST(Messenger, WaitsForRoomAsLongAsItIsTold)
{
    Log log;
    auto* looper = new TestLooper(LogTo(log), 3);
    const BMessenger messenger(looper);
    for (const uint32 what : { 0, 1, 2 }) // until it is run nothing is taken out of its port
        EXPECT_EQ(looper->PostMessage(what), B_OK);
    BMessage message(3);
    MessageAccess::Delivery(message).replyTo = messenger;
    BMessage reply;
    ExpectAll(B_WOULD_BLOCK,
        { looper->PostMessage(&message), messenger.SendMessage(&message, kNobody, 0),
            message.SendReply(&reply, nullptr, 0) });
    const bigtime_t start = system_time();
    ExpectAll(B_TIMED_OUT,
        { messenger.SendMessage(&message, kNobody, kShort),
            messenger.SendMessage(&message, &reply, kShort, B_INFINITE_TIMEOUT),
            message.SendReply(&reply, nullptr, kShort) });
    EXPECT_GE(system_time() - start, 3 * kShort);
    EXPECT_EQ(PostAlways(messenger, message), B_OK) << "the kits' own go past the bound";
    KitThread sender([&] { EXPECT_EQ(messenger.SendMessage(4), B_OK); });
    AwaitWaiting(sender.Id());
    looper->Run();
    EXPECT_EQ(log.WaitFor(5), (Entries { "0", "1", "2", "3", "4" }));
    QuitNow(looper);
}

TEST(Messenger, WaitsForTheReplyAndTellsWhyThereIsNone)
{
    enum : uint32 { kAnswer, kForget, kUnknown, kDetach, kQuit };
    BMessage* detached = nullptr;
    auto* looper = new TestLooper([&](TestLooper& self, BMessage* message) {
        EXPECT_TRUE(message->IsSourceWaiting());
        BMessage reply('answ');
        switch (message->what) {
            case kAnswer:
                EXPECT_FALSE(BMessage(*message).IsSourceWaiting()) << "a copy owes nothing";
                EXPECT_EQ(message->SendReply(&reply), B_OK);
                EXPECT_FALSE(message->IsSourceWaiting());
                EXPECT_EQ(message->SendReply(&reply), B_DUPLICATE_REPLY);
                break;
            case kUnknown: self.BLooper::MessageReceived(message); break;
            case kDetach: detached = self.DetachCurrentMessage(); break;
            case kQuit: self.Quit();
        }
    });
    const BMessenger messenger(looper);
    looper->Run();
    const std::tuple<uint32, status_t, uint32> rows[] = { { kAnswer, B_OK, 'answ' },
        { kForget, B_OK, B_NO_REPLY }, { kUnknown, B_OK, B_MESSAGE_NOT_UNDERSTOOD },
        { kDetach, B_TIMED_OUT, 'none' }, { kQuit, B_BAD_PORT_ID, 'none' } };
    for (const auto& [what, status, answer] : rows) {
        SCOPED_TRACE(what);
        BMessage message(what);
        BMessage reply('none');
        const bigtime_t timeout = what == kDetach ? kShort : B_INFINITE_TIMEOUT;
        EXPECT_EQ(messenger.SendMessage(&message, &reply, B_INFINITE_TIMEOUT, timeout), status);
        EXPECT_EQ(reply.what, answer);
        EXPECT_EQ(reply.IsReply(), status == B_OK);
        EXPECT_FALSE(BMessage(reply).IsReply());
    }
    EXPECT_EQ(detached->SendReply(1u), B_BAD_PORT_ID) << "the sender has given up";
    delete detached;
    EXPECT_EQ(BMessage().SendReply(1u), B_BAD_REPLY) << "was never sent";
}

TEST(Messenger, TellsWhatItCannotSendOrFind)
{
    auto* looper = new BLooper;
    auto* other = new BLooper;
    BHandler alone, inside;
    looper->AddHandler(&inside);
    BMessage message(1);
    const BMessenger none, whole(looper), part(&inside, looper);
    BInvoker invoker;
    BMessage* noMessage = nullptr;
    ExpectAll(B_BAD_VALUE,
        { StatusOf<BMessenger>(kNobody, nullptr), whole.SendMessage(nullptr, kNobody),
            whole.SendMessage(&message, noMessage), whole.SendMessage(nullptr, &message),
            message.SendReply(noMessage), invoker.Invoke() });
    ExpectAll(B_BAD_PORT_ID, { none.SendMessage(1), none.LockTargetWithTimeout(0) });
    ExpectAll(B_OK, { StatusOf<BMessenger>(&inside, looper), invoker.SetTarget(&inside) });
    EXPECT_FALSE(BMessenger(&alone).IsValid());
    ExpectAll(B_BAD_HANDLER,
        { StatusOf<BMessenger>(&alone, nullptr), whole.SendMessage(1, &alone),
            invoker.SetTarget(&alone) });
    EXPECT_EQ(StatusOf<BMessenger>(&inside, other), B_MISMATCHED_VALUES);
    EXPECT_TRUE(invoker.Messenger() == part) << "the target that it had";
    EXPECT_EQ(invoker.SetMessage(new BMessage(2)), B_OK);
    EXPECT_EQ(invoker.SetMessage(invoker.Message()), B_OK); // which it keeps
    EXPECT_EQ(invoker.Message()->what, 2u);
    EXPECT_TRUE(invoker.Invoke() == B_OK && invoker.SetTarget(kNobody) == B_OK);
    EXPECT_TRUE(invoker.Messenger() == none);
    const std::tuple<BMessenger, BHandler*, BLooper*> targets[] = { { none, nullptr, nullptr },
        { whole, looper, looper }, { BMessenger(kNobody, looper), nullptr, looper },
        { part, &inside, looper } };
    for (const auto& [messenger, handler, owner] : targets) {
        BLooper* found = other;
        EXPECT_EQ(messenger.Target(&found), handler);
        EXPECT_EQ(found, owner);
        EXPECT_EQ(messenger.IsTargetLocal(), owner != nullptr);
        EXPECT_EQ(messenger.Team(), owner ? getpid() : -1);
    }
    looper->Quit();
    other->Quit();
}

TEST(Messenger, OfPostedStatesOnlyTheLatestWaitsButNonePassesAnotherMessage)
{
    constexpr uint32 kMoved = 1, kResized = 2, kPressed = 3;
    Log log;
    auto* looper = new TestLooper([&](TestLooper&, BMessage* message) {
        int32 number = -1;
        message->FindInt32("n", &number);
        log.Add(std::to_string(message->what) + ":" + std::to_string(number));
    });
    BHandler handler;
    looper->AddHandler(&handler);
    int32 number = 0;
    const auto post = [&](uint32 what, const BMessenger& target) {
        BMessage message(what);
        message.AddInt32("n", number++);
        EXPECT_EQ((what == kPressed ? PostAlways : PostLatest)(target, message), B_OK);
    };
    for (const uint32 what :
        { kMoved, kResized, kMoved, kMoved, kPressed, kMoved, kResized, kMoved })
        post(what, BMessenger(looper));
    post(kMoved, BMessenger(&handler)); // another target
    looper->Run();
    EXPECT_EQ(log.WaitFor(6), (Entries { "2:1", "1:3", "3:4", "2:6", "1:7", "1:8" }));
    QuitNow(looper);
}
