#include "Alert.h"

#include "Button.h"
#include "TestWindow.h"
#include "TextView.h"

namespace {

BAlert* Ask(const std::string& text = "Shall it go on?")
{
    BAlert* alert = new BAlert("Question", text.c_str(), "Abort", "Perhaps", "Continue",
        B_WIDTH_AS_USUAL, B_OFFSET_SPACING, B_WARNING_ALERT);
    alert->SetShortcut(0, B_ESCAPE);
    alert->SetShortcut(1, 'p');
    return alert;
}

// Turns its view red and asks, from its own thread when it is sent message 1, with its lock held.
class AskingWindow : public TestWindow {
public:
    using TestWindow::TestWindow;
    void MessageReceived(BMessage* message) override
    {
        if (message->what != 1)
            return TestWindow::MessageReceived(message);
        ChildAt(0)->SetViewColor(rgb_color { 200, 0, 0 });
        ChildAt(0)->Invalidate();
        fLog->Add("answer " + std::to_string(Ask()->Go()));
    }
};

} // namespace

TEST_F(WindowTest, AWindowMayAskFromItsOwnThreadWithItsLockHeld)
{
    AskingWindow* asking = new AskingWindow(fLog, BRect(20, 40, 119, 139), "Asking");
    asking->AddChild(new BView(asking->Bounds(), "red", B_FOLLOW_NONE, B_WILL_DRAW));
    asking->Show();
    asking->PostMessage(1);
    EXPECT_TRUE(screen::BecomesActive("Question"));
    const rgb_color red { 200, 0, 0 };
    EXPECT_SOON(screen::PixelAt(BPoint(25, 45)) == red);
    screen::Key("Return");
    EXPECT_TRUE(fLog->WaitFor("answer 2"));
    asking->Lock();
    asking->Quit();
}

TEST_F(WindowTest, AnAlertHasRoomForItsTextHoweverLongItIs)
{
    for (int words : { 1, 1000, 20000 }) {
        SCOPED_TRACE(words);
        std::string text;
        for (int i = 0; i < words; i++)
            text += "word ";
        BAlert* alert = Ask(text);
        BTextView* view = alert->TextView();
        const bool scrolls = view->ScrollBar(B_VERTICAL) != nullptr;
        EXPECT_EQ(scrolls, words == 20000);
        EXPECT_TRUE(scrolls || view->TextHeight() <= view->Bounds().Height() + 1);
        EXPECT_LT(alert->Bounds().Width(), 1024);
        EXPECT_LT(alert->Bounds().Height(), 768);
        const BRect inWindow = view->ConvertToScreen(view->Bounds());
        for (int32 i = 0; i < 3; i++) {
            const BRect button = alert->ButtonAt(i)->Frame();
            EXPECT_TRUE(alert->Bounds().Contains(button));
            EXPECT_GT(button.top, inWindow.bottom - alert->Frame().top);
        }
        alert->Quit(); // never shown, so still locked by this thread
    }
}
