#include "Alert.h"

#include "Button.h"
#include "tests/support/NoThreads.h"
#include "TestWindow.h"

namespace {

std::string Corner(BPoint corner)
{
    return std::to_string(static_cast<int>(corner.x)) + " "
        + std::to_string(static_cast<int>(corner.y)) + " ";
}

} // namespace

TEST_F(WindowTest, AnAlertHasRoomForItsPartsOverTheWindowThatAsksAndIsAnsweredOrClosed)
{
    constexpr rgb_color kRed { 200, 0, 0 };
    const std::string sentence = "Some more of the text. ";
    fWindow->AddChild(new BView(fWindow->Bounds(), "red", B_FOLLOW_ALL_SIDES, B_WILL_DRAW));
    fWindow->Show();
    fWindow->Hide();
    size_t asked = 0;
    for (const TextRow& row : ReadRows("kits/interface/alerts.txt")) {
        SCOPED_TRACE(row.given);
        Row given = RowOf(row.given);
        given.resize(9);
        const auto number = [&](size_t i) { return std::stoi(given[i]); };
        const auto label = [&](int i) { return given[i].empty() ? nullptr : given[i].c_str(); };
        std::string text, shown;
        for (int i = 0; i < number(2); i++)
            text += sentence;
        fWindow->fAsked = [&] { // with the window's lock held, and drawn meanwhile
            fWindow->ChildAt(0)->SetViewColor(kRed);
            fWindow->ChildAt(0)->Invalidate();
            auto* alert = new BAlert("Question", text.c_str(), label(6), label(7), label(8),
                static_cast<button_width>(number(3)), static_cast<button_spacing>(number(4)),
                static_cast<alert_type>(number(5)));
            for (const int32 button : { -1, 1, 3 }) // of which only one can be there
                alert->SetShortcut(button, 'T');
            if (given[0] == "t Escape") {
                alert->SetFlags(alert->Flags() & ~B_NOT_CLOSABLE);
                alert->ButtonAt(1)->SetEnabled(false);
            }
            const BRect size = alert->Bounds();
            std::string told = Corner(alert->AlertPosition(size.Width(), size.Height()));
            for (const int32 button : { -1, 0, 3 })
                told += alert->ButtonAt(button) ? "there " : "none ";
            told += std::to_string(alert->Go());
            fLog->Add(told + (screen::Find("Question").exists ? " too early" : ""));
        };
        BPoint place, size;
        std::istringstream window(given[1]);
        if (window >> place.x >> place.y >> size.x >> size.y) {
            Locked([&] {
                fWindow->MoveTo(place);
                fWindow->ResizeTo(size.x, size.y);
            });
            if (fWindow->IsHidden())
                Show();
        }
        fWindow->PostMessage(kAsk);
        EXPECT_TRUE(screen::BecomesActive("Question"));
        screen::WaitFor([&] {
            shown = screen::Tree("Question", true);
            for (size_t i; (i = shown.find(sentence)) != shown.npos;)
                shown.erase(i, sentence.size());
            shown += Corner(screen::Find("back", "Question").frame.LeftTop());
            return row.told.starts_with(shown);
        });
        EXPECT_SOON(size.x < 500 || screen::PixelAt(place + BPoint(5, 5)) == kRed);
        std::istringstream keys(given[0]);
        for (std::string key; keys >> key;)
            key[0] == '_' ? void(screen::Click(key, "Question")) : screen::Key(key);
        EXPECT_EQ(shown + fLog->WaitFor(++asked).back(), row.told);
        EXPECT_SOON(!screen::Find("Question").exists);
    }
}

TEST_F(WindowTest, WithoutAThreadAnAlertSaysItsTextAndWithOneItSendsItsAnswer)
{
    const auto alert = [] {
        return new BAlert("Question", "Shall it go on?", "Abort", "Continue");
    };
    testing::internal::CaptureStderr();
    BAlert* alerts[] = { alert(), alert() };
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
    BInvoker* const invokers[] = { new BInvoker(new BMessage(7), fWindow), new BInvoker, nullptr };
    for (BInvoker* invoker : invokers) {
        BAlert* asking = alert();
        EXPECT_EQ(asking->Go(invoker), B_OK);
        WithLock(asking, [&] {
            asking->ButtonAt(1)->Invoke();
            asking->ButtonAt(0)->Invoke(); // too late
        });
        EXPECT_SOON(!screen::Find("Question").exists);
    }
    Show();
    fWindow->PostMessage(8);
    EXPECT_EQ(fLog->WaitFor(2), Entries({ "7 which 1", "8" }));
}
