#include "Alert.h"

#include "TestWindow.h"

namespace {

BAlert* Ask()
{
    BAlert* alert = new BAlert("Question", "Shall it go on?", "Abort", "Perhaps", "Continue",
        B_WIDTH_AS_USUAL, B_OFFSET_SPACING, B_WARNING_ALERT);
    alert->SetShortcut(0, B_ESCAPE);
    alert->SetShortcut(1, 'p');
    return alert;
}

} // namespace

TEST_F(WindowTest, AnAlertIsAnsweredByMouseAndKeys)
{
    const std::pair<const char*, int32> rows[] = { { "_b0_", 0 }, { "_b2_", 2 }, // their views
        { "Return", 2 }, { "Escape", 0 }, { "shift+p", 1 } };
    for (const auto& [input, expected] : rows) {
        SCOPED_TRACE(input);
        int32 answer = -2;
        std::thread asker([&] { answer = Ask()->Go(); });
        EXPECT_TRUE(screen::BecomesActive("Question"));
        EXPECT_EQ(screen::Find("_b1_", "Question").text, "&Perhaps") << "underlined";
        if (input[0] == '_')
            EXPECT_TRUE(screen::Click(input, "Question"));
        else
            screen::Key(input);
        asker.join();
        EXPECT_EQ(answer, expected);
        EXPECT_SOON(!screen::Find("Question").exists);
    }
}

TEST_F(WindowTest, AWindowMayAskFromItsOwnThreadWithItsLockHeldUnderTheAlert)
{
    fWindow->ResizeTo(599, 399);
    fWindow->AddChild(new BView(fWindow->Bounds(), "red", B_FOLLOW_NONE, B_WILL_DRAW));
    fWindow->fAsked = [this] {
        fWindow->ChildAt(0)->SetViewColor(rgb_color { 200, 0, 0 });
        fWindow->ChildAt(0)->Invalidate();
        fLog->Add("answer " + std::to_string(Ask()->Go()));
    };
    Show();
    fWindow->PostMessage(kAsk);
    EXPECT_TRUE(screen::BecomesActive("Question"));
    EXPECT_SOON(screen::PixelAt(BPoint(205, 155)) == (rgb_color { 200, 0, 0 }));
    const BRect alert = screen::Find("back", "Question").frame;
    EXPECT_NEAR((alert.left + alert.right) / 2, 499.5, 1);
    EXPECT_NEAR((alert.top + alert.bottom) / 2, 349.5, 1);
    screen::Key("Return");
    EXPECT_TRUE(fLog->WaitFor("answer 2"));
}
