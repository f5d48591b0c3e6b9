#include "toolkit/LibApp.h"

#include "kits/app/ProgramArguments.h"
#include "tests/support/ScreenDriver.h"

#include <Message.h>
#include <Window.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

// Asks for everything a program can be asked for, then quits.
class TestApp : public LibApp {
public:
    TestApp() : LibApp("application/x-vnd.Quorvane.AppTest", "AppTest", "1 January 2000") { }

    BWindow* Window() override
    {
        windowsAsked++;
        if (!window)
            window = new BWindow(BRect(100, 100, 200, 200), "Main", B_TITLED_WINDOW, 0);
        return window;
    }

    void MessageReceived(BMessage* message) override
    {
        if (message->what == 'appr') {
            shown++;
            wasHidden = window->IsHidden();
            wasQuitting = IsQuitting();
            ReadyToRun();
            for (const uint32 what : { 'sabt', 'ssys', 'help', 'stip', 'tipf', '_QRQ' })
                PostMessage(what);
        }
        LibApp::MessageReceived(message);
    }

    BWindow* window = nullptr;
    int windowsAsked = 0;
    int shown = 0;
    bool wasHidden = true;
    bool wasQuitting = true;
};

// Without what the desktop's libraries have to say.
std::string OwnLines(const std::string& errors)
{
    std::istringstream lines(errors);
    std::string own;
    for (std::string line; std::getline(lines, line);)
        own += line[0] == '<' ? line + "\n" : "";
    return own;
}

} // namespace

TEST(LibApp, ShowsItsWindowOnceAndSaysWhatItLacks)
{
    if (!screen::IsThere())
        GTEST_SKIP() << "no display";
    SetProgramArguments({ "apptest" });
    testing::internal::CaptureStderr();
    TestApp app;
    app.Run();
    EXPECT_EQ(OwnLines(testing::internal::GetCapturedStderr()),
        "<About AppTest...> comes with a later version\n"
        "<System...> comes with a later version\n"
        "<Help...> comes with a later version\n"
        "<Tool tips> comes with a later version\n"
        "<Tool tips> comes with a later version\n");
    EXPECT_EQ(app.windowsAsked, 1);
    EXPECT_EQ(app.shown, 1);
    EXPECT_FALSE(app.wasHidden);
    EXPECT_FALSE(app.wasQuitting);
    EXPECT_TRUE(app.IsQuitting());
}
