#include "tests/support/Log.h"
#include "tests/support/ScreenDriver.h"
#include "tests/support/Test.h"
#include "tests/support/WithLock.h"
#include "toolkit/DialogWindow.h"
#include "toolkit/MessageBoxes.h"
#include "toolkit/StatusLine.h"

#include <Application.h>
#include <Button.h>
#include <Message.h>

namespace {

Log* gLog = nullptr; // of the test that runs

class TestDialog : public DialogWindow {
public:
    explicit TestDialog(const char* title, bool hasStatus = false)
        : DialogWindow(BRect(0, 0, 399, 299), "TestDialog", title)
    {
        ButtonRow* row = new ButtonRow;
        row->AddButton("cancel", "Cancel", 1);
        row->AddButton("compare", "Compare with...", 2);
        row->AddButton("save", "Save", 3);
        StatusLine* status = hasStatus ? row->AddStatus("status") : nullptr;
        SetDefaultRow(row);
        if (status)
            status->Say(
                "Öäüßöäüßöäüßöäüßöäüßöäüßöäüßöäüßöäüßöäüßöäüßöäüßöäüßöäüßöäüßöäüßöäüß", "Why");
        SetPosition(kCentred);
    }
    using DialogWindow::SetMainWindow;
    void MessageReceived(BMessage* message) override { gLog->Add(std::to_string(message->what)); }
    bool QuitRequested() override
    {
        gLog->Add("asked");
        return false;
    }
};

class WindowTest : public testing::Test {
protected:
    void SetUp() override { gLog = &log; }

    static TestDialog* Open(const char* title = "Dialog", bool hasStatus = false)
    {
        TestDialog* dialog = new TestDialog(title, hasStatus);
        dialog->Show();
        EXPECT_TRUE(screen::BecomesActive(title));
        return dialog;
    }

    Log log;
    // The application asks nobody when it goes.
    BApplication app { "application/x-vnd.Quorvane.WindowTest" };
};

} // namespace

TEST_F(WindowTest, ButtonsStandEvenlyAtTheRightAndKeysPressTheLastOrAskToClose)
{
    TestDialog* dialog = Open("Dialog", true);
    for (const char* tree : { "toolkit/Dialog", "toolkit/LargeDialog" }) {
        EXPECT_TRUE(screen::ShowsTree("Dialog", tree));
        dialog->ResizeBy(120, 60);
    }
    const char* const keys[] = { "Return", "Escape", "ctrl+w" };
    for (size_t i = 0; i < 3; i++) {
        screen::Key(keys[i]);
        log.WaitFor(i + 1);
    }
    EXPECT_EQ(log.Now(), (Entries { "3", "asked", "asked" }));
}

TEST_F(WindowTest, AWindowThatIsShownLateHidesNoneThatCameBefore)
{
    TestDialog* mainWindow = Open("Main");
    WithLock(mainWindow, [&] { mainWindow->SetMainWindow(); });
    TestDialog* late = new TestDialog("Late");
    late->SetPosition(kBesideMain);
    TestDialog* other = new TestDialog("Other");
    const auto isAt = [&](float left) {
        other->SetPosition(kBesideMain);
        return other->Frame().LeftTop() == BPoint(left, 60);
    };
    screen::MoveWindow("Main", BPoint(50, 60));
    EXPECT_SOON(isAt(50 + mainWindow->Frame().Width() + 13));
    screen::ResizeWindow("Main", BPoint(500, 333));
    EXPECT_SOON(isAt(50 + 499 + 13));
    other->Show();
    EXPECT_TRUE(screen::BecomesActive("Other"));
    late->Show();
    EXPECT_TRUE(screen::BecomesActive("Late"));
    const BRect frames[] = { mainWindow->Frame(), other->Frame(), late->Frame() };
    for (size_t i = 0; i < 3; i++)
        EXPECT_FALSE(frames[i].Intersects(frames[(i + 1) % 3])) << i;
    late->SetPosition(kBesideMain);
    late->Hide(); // what is not in sight is in nobody's way
    TestDialog* over = new TestDialog("Over");
    over->SetPosition(kBesideMain);
    EXPECT_EQ(over->Frame(), frames[2]);
    over->SetPositionOver(frames[1]); // and stays there
    over->Show();
    EXPECT_TRUE(screen::BecomesActive("Over"));
    EXPECT_EQ(over->Frame(), frames[1]);
}

TEST_F(WindowTest, AMessageBoxWaitsForItsButton)
{
    std::thread caller(LibError, "Half of the file <a> is there");
    EXPECT_TRUE(screen::BecomesActive("Error"));
    EXPECT_TRUE(screen::ShowsTree("Error", "toolkit/Error"));
    // Asked after each key: one that comes while the window manager frames the window is lost.
    EXPECT_SOON((screen::Key("Escape"),
        screen::WaitFor([] { return !screen::Find("_tv_", "Error").exists; }, 2)));
    caller.join();
}
