#include "ui/TarvexAlert.h"

#include "tests/support/Log.h"
#include "tests/support/ScreenDriver.h"

#include <Application.h>
#include <Looper.h>
#include <Message.h>

#include <gtest/gtest.h>

#include <thread>

namespace {

// What the target got for one press of a button.
Entries AnswerTo(const char* button, const char* typed, int32& which)
{
    struct Target : BLooper {
        Log log;
        void MessageReceived(BMessage* message) override
        {
            const char* text = nullptr;
            message->FindString("config", &text);
            log.Add(std::to_string(message->what) + " " + (text ? text : ""));
        }
    };
    Target* target = new Target;
    target->Run();
    std::thread caller([&] { which = (new TarvexAlert(target))->Go(); });
    EXPECT_TRUE(screen::WaitFor([] { return screen::IsActive("alert"); }));
    screen::Type(typed);
    EXPECT_TRUE(screen::WaitFor([=] { return screen::Find("config").text == typed; }));
    screen::Click(button);
    caller.join();
    // Posted before the alert answered, so it stands before this one in the port.
    BMessage reply;
    BMessenger(target).SendMessage(1, &reply);
    const Entries answers = target->log.Now();
    target->Lock();
    target->Quit();
    return answers;
}

} // namespace

TEST(TarvexAlert, HandsOnTheConfigurationOnlyForMail)
{
    if (!screen::IsThere())
        GTEST_SKIP() << "no display";
    const BApplication app("application/x-vnd.Quorvane.AlertTest");
    int32 which = -1;
    EXPECT_EQ(AnswerTo("_b1_", "BeBox 133", which), (Entries { "5000 BeBox 133", "1 " }));
    EXPECT_EQ(which, 1);
    EXPECT_EQ(AnswerTo("_b0_", "Mac 7600", which), Entries { "1 " });
    EXPECT_EQ(which, 0);

    (new TarvexAlert(nullptr))->Go(nullptr);
    EXPECT_TRUE(screen::WaitFor([] { return screen::IsActive("alert"); }));
    const screen::Widget frame = screen::Find("config_frame");
    EXPECT_EQ(frame.text, "Configuration");
    EXPECT_GT(frame.frame.top, screen::Find("_tv_").frame.bottom);
    EXPECT_LT(frame.frame.bottom, screen::Find("_b0_").frame.top);
    EXPECT_TRUE(frame.frame.Contains(screen::Find("config").frame));
}
