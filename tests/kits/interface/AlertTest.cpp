#include "Alert.h"

#include "Button.h"
#include "tests/support/NoThreads.h"
#include "tests/support/Rows.h"
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

TEST_F(WindowTest, AnAlertHasRoomForItsPartsAndIsAnsweredByMouseAndKeysOrClosed)
{
    for (const TextRow& row : ReadRows("kits/interface/alerts.txt")) {
        SCOPED_TRACE(row.given);
        Row given = RowOf(row.given);
        given.resize(8);
        const auto number = [&](size_t i) { return std::stoi(given[i]); };
        const auto label = [&](int i) { return given[i].empty() ? nullptr : given[i].c_str(); };
        const std::string sentence = "Some more of the text. ";
        std::string text, shown, answer;
        for (int i = 0; i < number(1); i++)
            text += sentence;
        std::thread asker([&] {
            auto* alert = new BAlert("Question", text.c_str(), label(5), label(6), label(7),
                static_cast<button_width>(number(2)), static_cast<button_spacing>(number(3)),
                static_cast<alert_type>(number(4)));
            for (const int32 button : { -1, 1, 3 }) // of which only one can be there
                alert->SetShortcut(button, 'x');
            if (given[0] == "x Escape") {
                alert->SetFlags(alert->Flags() & ~B_NOT_CLOSABLE);
                alert->ButtonAt(1)->SetEnabled(false);
            }
            const BRect size = alert->Bounds();
            const BPoint corner = alert->AlertPosition(size.Width(), size.Height());
            answer = std::to_string(static_cast<int>(corner.x)) + " "
                + std::to_string(static_cast<int>(corner.y)) + " ";
            answer += std::to_string(alert->Go());
        });
        EXPECT_TRUE(screen::BecomesActive("Question"));
        screen::WaitFor([&] {
            shown = screen::Tree("Question");
            for (size_t i; (i = shown.find(sentence)) != shown.npos;)
                shown.erase(i, sentence.size());
            return row.told.starts_with(shown);
        });
        std::istringstream keys(given[0]);
        for (std::string key; keys >> key;)
            key[0] == '_' ? void(screen::Click(key, "Question")) : screen::Key(key);
        asker.join();
        EXPECT_EQ(shown + answer, row.told);
        EXPECT_SOON(!screen::Find("Question").exists);
    }
}

TEST_F(WindowTest, WithoutAThreadAnAlertSaysItsTextAndWithOneItSendsItsAnswer)
{
    testing::internal::CaptureStderr();
    BAlert* alerts[] = { Ask(), Ask() };
    {
        const NoThreads none;
        fWindow->Show();
        EXPECT_EQ(alerts[0]->Go(), -1);
        EXPECT_EQ(alerts[1]->Go(nullptr), B_ERROR);
    }
    const std::string why = "Cannot start thread <Question>: its window is not shown\n";
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "Cannot start thread <Test>: its window is not shown\n" + why + "Shall it go on?\n" + why
            + "Shall it go on?\n");
    EXPECT_EQ(Ask()->Go(new BInvoker(new BMessage(7), fWindow)), B_OK);
    EXPECT_TRUE(screen::BecomesActive("Question"));
    EXPECT_EQ(screen::Find("_b1_", "Question").text, "&Perhaps") << "underlined";
    screen::Key("shift+p");
    Show();
    EXPECT_TRUE(fLog->WaitFor("7 which 1"));
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
