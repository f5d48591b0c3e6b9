#include "toolkit/OwnedWindow.h"

#include "tests/kits/app/TestLooper.h"
#include "tests/support/ScreenDriver.h"
#include "tests/support/Test.h"
#include "tests/support/WithLock.h"

#include <Application.h>
#include <View.h>

namespace {

// Logs what it is asked and told; its user can close it whether or not its owner is there to know.
class Opened : public BWindow {
public:
    Opened(BLooper* looper, Log& told, bool goes)
        : BWindow(
            BRect(300, 200, 500, 300), "Opened", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0),
          target(looper), log(told), goesByItself(goes)
    {
        AddChild(new BView(Bounds(), "contents", B_FOLLOW_ALL_SIDES, 0));
    }
    void MessageReceived(BMessage* message) override
    {
        if (message->what == 'told')
            log.Add("told");
        BWindow::MessageReceived(message);
    }
    bool QuitRequested() override
    {
        target->PostMessage('clos', nullptr, this);
        log.Add("asked");
        return goesByItself;
    }

private:
    BLooper* target;
    Log& log;
    const bool goesByItself;
};

// A window that goes when it is closed, and one that waits for its owner to end it.
class OwnedWindowTest : public testing::TestWithParam<bool> {
protected:
    void SetUp() override
    {
        owner->Run();
        Open();
    }
    void TearDown() override { QuitNow(owner); }
    void Open()
    {
        owner->PostMessage('open');
        ASSERT_TRUE(screen::BecomesActive("Opened"));
    }
    long Count(const char* entry)
    {
        const Entries all = log.Now();
        return std::count(all.begin(), all.end(), entry);
    }

    Log log;
    const BApplication app { "application/x-vnd.Quorvane.OwnerTest" };
    OwnedWindow<Opened> window;
    TestLooper* owner = new TestLooper([this](TestLooper& self, BMessage* message) {
        if (message->what == 'open')
            window.Show([&] {
                log.Add("made");
                return new Opened(&self, log, GetParam());
            });
        else
            window.Closed(*message);
        log.Add("handled");
    });
};

} // namespace

TEST_P(OwnedWindowTest, IsMadeOnceAndComesToTheFrontAlsoWhenMinimized)
{
    EXPECT_EQ(system("xdotool search --sync --onlyvisible --name '^Opened$' windowminimize"), 0);
    ASSERT_SOON(screen::Find("contents").minimized);
    Open();
    EXPECT_SOON(!screen::Find("contents").minimized);
    EXPECT_EQ(Count("made"), 1);
    EXPECT_TRUE(WithLock(owner, [&] { return window.Tell(BMessage('told')); }));
    EXPECT_TRUE(log.WaitFor("told"));
}

TEST_P(OwnedWindowTest, ThatWasClosedTakesNoOtherWithItAndCannotBeReached)
{
    // The owner is busy: meanwhile its user opens the window, and closes it, twice if need be.
    WithLock(owner, [&] {
        const auto close = [&] { return window.Tell(BMessage(B_QUIT_REQUESTED)); };
        if (GetParam())
            owner->PostMessage('open');
        EXPECT_TRUE(close());
        EXPECT_SOON(Count("asked") == 1);
        if (!GetParam()) {
            owner->PostMessage('open');
            EXPECT_TRUE(close());
            EXPECT_SOON(Count("asked") == 2);
        }
    });
    EXPECT_SOON(Count("handled") == (GetParam() ? 3 : 4));
    EXPECT_EQ(Count("made"), 2);
    Open();
    EXPECT_EQ(Count("made"), 2);

    screen::Key("alt+F4");
    EXPECT_SOON(!WithLock(owner, [&] { return window.IsThere(); }));
    WithLock(owner, [&] {
        EXPECT_FALSE(window.Front());
        EXPECT_FALSE(window.Tell(BMessage('told')));
        EXPECT_FALSE(window.With([](Opened&) { ADD_FAILURE(); }));
        window.Hide();
        window.End();
    });
    Open();
    EXPECT_EQ(Count("made"), 3);
}

INSTANTIATE_TEST_SUITE_P(, OwnedWindowTest, testing::Bool(),
    [](const auto& row) { return row.param ? "GoingByItself" : "Waiting"; });
