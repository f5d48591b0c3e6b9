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

TEST_F(WindowTest, AnAlertIsAnsweredByMouseAndKeysOrClosedWhereItMayBe)
{
    const std::tuple<const char*, int32, bool> rows[] = { { "_b0_", 0, false },
        { "_b2_", 2, false }, // their views
        { "Return", 2, false }, { "x Escape", 0, false }, { "shift+p", 1, false },
        { "p Escape", -1, true } };
    for (const auto& [input, expected, mayBeClosed] : rows) {
        SCOPED_TRACE(input);
        int32 answer = -2;
        std::thread asker([&, closed = mayBeClosed] {
            BAlert* alert = Ask();
            if (closed) {
                alert->SetFlags(alert->Flags() & ~B_NOT_CLOSABLE);
                alert->SetShortcut(0, 0);
                alert->ButtonAt(1)->SetEnabled(false);
            }
            answer = alert->Go();
        });
        EXPECT_TRUE(screen::BecomesActive("Question"));
        EXPECT_EQ(screen::Find("_b1_", "Question").text, "&Perhaps") << "underlined";
        std::istringstream keys(input);
        for (std::string key; keys >> key;)
            key[0] == '_' ? void(screen::Click(key, "Question")) : screen::Key(key);
        asker.join();
        EXPECT_EQ(answer, expected);
        EXPECT_SOON(!screen::Find("Question").exists);
    }
}

TEST_F(WindowTest, AnAlertHasRoomForItsTextAndButtonsAndSendsItsAnswer)
{
    Entries answers;
    for (const TextRow& row : ReadRows("kits/interface/alerts.txt")) {
        SCOPED_TRACE(row.given);
        Row given = RowOf(row.given);
        const auto number = [&](size_t i) { return std::stoi(given[i]); };
        const std::string sentence = "Some more of the text. ";
        std::string text, shown;
        for (int i = 0; i < number(0); i++)
            text += sentence;
        given.resize(7);
        const auto label = [&](int i) { return given[i].empty() ? nullptr : given[i].c_str(); };
        auto* alert = new BAlert("Question", text.c_str(), label(4), label(5), label(6),
            button_width(number(1)), button_spacing(number(2)), alert_type(number(3)));
        alert->SetShortcut(-1, 'x');
        alert->SetShortcut(3, 'x');
        EXPECT_EQ(alert->ButtonAt(3), nullptr);
        const BPoint corner =
            alert->AlertPosition(alert->Bounds().Width(), alert->Bounds().Height());
        EXPECT_EQ(alert->Go(new BInvoker(new BMessage(7), fWindow)), B_OK);
        EXPECT_TRUE(screen::BecomesActive("Question"));
        screen::WaitFor([&] {
            shown = screen::Tree("Question") + "at " + std::to_string(int(corner.x)) + " "
                + std::to_string(int(corner.y));
            for (size_t i; (i = shown.find(sentence)) != shown.npos;)
                shown.erase(i, sentence.size());
            return shown == row.told;
        });
        EXPECT_EQ(shown, row.told);
        screen::Key(label(5) ? "Return" : "Escape");
        EXPECT_SOON(!screen::Find("Question").exists);
        answers.push_back(label(6) ? "7 which 2" : label(5) ? "7 which 1" : "7 which 0");
    }
    fWindow->Show();
    EXPECT_EQ(fLog->WaitFor(answers.size()), answers);
}

TEST_F(WindowTest, WithoutAThreadForItAnAlertSaysItsTextAndAWindowStaysHidden)
{
    testing::internal::CaptureStderr();
    BAlert* alerts[] = { Ask(), Ask() };
    {
        const NoThreads none;
        fWindow->Show();
        EXPECT_EQ(alerts[0]->Go(), -1);
        EXPECT_EQ(alerts[1]->Go(nullptr), B_ERROR);
    }
    EXPECT_TRUE(fWindow->IsHidden());
    const std::string why = "Cannot start thread <Question>: its window is not shown\n";
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "Cannot start thread <Test>: its window is not shown\n" + why + "Shall it go on?\n" + why
            + "Shall it go on?\n");
    Show();
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
