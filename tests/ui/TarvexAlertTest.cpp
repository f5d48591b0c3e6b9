#include "ui/TarvexAlert.h"

#include "tests/support/ScreenDriver.h"

#include <Application.h>
#include <Looper.h>
#include <Message.h>

#include <gtest/gtest.h>

#include <thread>

namespace {

class Target : public BLooper {
public:
    void MessageReceived(BMessage* message) override
    {
        const char* text = nullptr;
        answers += std::to_string(message->what) + " ";
        if (message->FindString("config", &text) == B_OK)
            answers += text;
    }

    std::string answers; // read with the looper locked
};

// What the target got for one press of a button.
std::string AnswerTo(const char* button, const char* typed, int32& which)
{
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
    BMessenger(target).SendMessage('sync', &reply);
    target->Lock();
    const std::string answers = target->answers;
    target->Quit();
    return answers.substr(0, answers.find(std::to_string('sync')));
}

} // namespace

TEST(TarvexAlert, HandsOnTheConfigurationOnlyForMail)
{
    if (!screen::IsThere())
        GTEST_SKIP() << "no display";
    const BApplication app("application/x-vnd.Quorvane.AlertTest");
    int32 which = -1;
    EXPECT_EQ(AnswerTo("_b1_", "BeBox 133, 2 disks", which), "5000 BeBox 133, 2 disks");
    EXPECT_EQ(which, 1);
    EXPECT_EQ(AnswerTo("_b0_", "Mac 7600", which), "");
    EXPECT_EQ(which, 0);
}

TEST(TarvexAlert, HasRoomForTheConfigurationUnderItsText)
{
    if (!screen::IsThere())
        GTEST_SKIP() << "no display";
    const BApplication app("application/x-vnd.Quorvane.AlertTest");
    (new TarvexAlert(nullptr))->Go(nullptr);
    EXPECT_TRUE(screen::WaitFor([] { return screen::IsActive("alert"); }));
    const screen::Widget frame = screen::Find("config_frame");
    EXPECT_EQ(frame.text, "Configuration");
    EXPECT_GT(frame.frame.top, screen::Find("_tv_").frame.bottom);
    EXPECT_LT(frame.frame.bottom, screen::Find("_b0_").frame.top);
    EXPECT_TRUE(frame.frame.Contains(screen::Find("config").frame));
}
