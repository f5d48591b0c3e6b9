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

TEST_F(WindowTest, AnAlertHasRoomForItsTextOrScrollsIt)
{
    for (const size_t words : { 1, 500, 20000 }) {
        SCOPED_TRACE(words);
        std::string text(5 * words, 'w');
        for (size_t i = 4; i < text.size(); i += 5)
            text[i] = ' ';
        BAlert* alert = Ask(text);
        BTextView* view = alert->TextView();
        EXPECT_EQ(view->ScrollBar(B_VERTICAL) != nullptr, words == 20000);
        EXPECT_TRUE(words == 20000 || view->TextHeight() <= view->Bounds().Height() + 1);
        EXPECT_TRUE(BRect(0, 0, 1023, 767).Contains(alert->Bounds()));
        EXPECT_TRUE(
            alert->Bounds().Contains(alert->ButtonAt(0)->Frame() | alert->ButtonAt(2)->Frame()));
        EXPECT_GT(alert->ButtonAt(0)->Frame().top,
            view->ConvertToScreen(view->Bounds()).bottom - alert->Frame().top);
        alert->Quit(); // never shown, so still locked by this thread
    }
}
