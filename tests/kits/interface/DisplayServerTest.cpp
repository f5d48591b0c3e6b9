#include "kits/interface/server/DisplayServer.h"

#include "TestWindow.h"

#include <QBitmap>
#include <QCursor>
#include <QGuiApplication>

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <thread>
#include <unistd.h>

namespace {

// An X server of the test's own, on a free number.
class OwnDisplay {
public:
    OwnDisplay()
    {
        int ends[2];
        if (pipe(ends) != 0)
            return;
        fServer = fork();
        if (fServer == 0) {
            const std::string number = std::to_string(ends[1]);
            freopen("/dev/null", "w", stderr);
            execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(), nullptr);
            _exit(127);
        }
        close(ends[1]);
        char text[16] = {};
        if (read(ends[0], text, sizeof text - 1) > 0)
            fName = ":" + std::to_string(atoi(text));
        close(ends[0]);
    }
    ~OwnDisplay() { End(); }
    void End()
    {
        if (fServer > 0)
            kill(fServer, SIGKILL);
        fServer = -1;
    }
    const std::string& Name() const { return fName; } // empty where Xvfb is missing

private:
    pid_t fServer = -1;
    std::string fName;
};

// Runs f in the looper's thread when it is sent message 1.
class CallingWindow : public BWindow {
public:
    explicit CallingWindow(void (*f)())
        : BWindow(BRect(20, 40, 99, 99), "Calling", B_TITLED_WINDOW, 0), fCall(f)
    {
    }
    void MessageReceived(BMessage* message) override
    {
        if (message->what == 1)
            fCall();
    }

private:
    void (*const fCall)();
};

void EndInThread()
{
    exit(41);
}

// Shows a window and ends the program in one of several ways.
void EndBy(const std::string& way)
{
    if (!screen::IsThere())
        exit(41);
    BApplication application("application/x-vnd.Tarvex-test");
    BWindow* window = new CallingWindow(EndInThread);
    window->Show();
    if (way == "window's thread")
        window->PostMessage(1);
    else if (way == "another thread")
        std::thread(EndInThread).join();
    else if (way == "main thread with the lock" && window->Lock())
        EndInThread();
    for (;;)
        snooze(1000000);
}

} // namespace

TEST(DisplayServer, IsMissingWithoutADisplayAndAWindowEndsTheProgram)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const struct {
        const char* display;
        const char* line;
    } rows[] = {
        { nullptr, "No display: DISPLAY is not set" },
        { ":4711", "Cannot open display <:4711>" },
    };
    for (const auto& row : rows) {
        EXPECT_EXIT(
            {
                if (row.display)
                    setenv("DISPLAY", row.display, 1);
                else
                    unsetenv("DISPLAY");
                if (ui_color(B_PANEL_BACKGROUND_COLOR) == rgb_color { 216, 216, 216 })
                    new BWindow(BRect(0, 0, 9, 9), "None", B_TITLED_WINDOW, 0);
            },
            testing::ExitedWithCode(1), std::string("^[^\n]*") + row.line + "\n$");
    }
}

TEST(DisplayServer, LetsTheProgramEndFromAnyThread)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    for (const char* way : { "window's thread", "another thread", "main thread with the lock" }) {
        SCOPED_TRACE(way);
        EXPECT_EXIT(EndBy(way), testing::ExitedWithCode(41), "");
    }
}

TEST(DisplayServer, EndsTheProgramWhenTheDisplayGoes)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            OwnDisplay display;
            if (display.Name().empty()) {
                fprintf(stderr, "Xvfb is missing: X11 connection not tried\n");
                exit(1);
            }
            setenv("DISPLAY", display.Name().c_str(), 1);
            BWindow* window = new BWindow(BRect(9, 9, 99, 99), "Going", B_TITLED_WINDOW, 0);
            window->Show();
            display.End();
            for (;;)
                window->SetTitle("Still there");
        },
        testing::ExitedWithCode(1), "X11 connection");
}

TEST_F(WindowTest, CallsRunInOrderOnOneThreadAndBringBackValues)
{
    std::vector<int> order;
    for (int i = 0; i < 100; i++)
        display::Post([&order, i] { order.push_back(i); });
    const std::string text = display::Call([&order] {
        return display::Call([&order] { // from the server itself: at once
            order.push_back(100);
            return std::string("value");
        });
    });
    EXPECT_EQ(text, "value");
    ASSERT_EQ(order.size(), 101u);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    EXPECT_FALSE(display::OnServerThread());
}

TEST_F(WindowTest, NumbersKeepTheirPointWhateverTheDesktopsLanguage)
{
    EXPECT_STREQ(setlocale(LC_NUMERIC, nullptr), "C");
}

TEST_F(WindowTest, TheApplicationsCursorIsShownUntilTheNormalOneIsBack)
{
    uint8 image[68] = { 16, 1, 3, 5 }; // hot spot: row 3, column 5
    image[4] = 0xc0; // the two leftmost pixels of the first row
    image[36] = 0x80; // of which only the first is drawn
    be_app->SetCursor(image);
    const auto cursor = display::Call([] { return *QGuiApplication::overrideCursor(); });
    EXPECT_EQ(cursor.hotSpot(), QPoint(5, 3));
    const QImage shown = cursor.bitmap().toImage();
    EXPECT_EQ(shown.pixelColor(0, 0), QColor(Qt::black));
    EXPECT_EQ(shown.pixelColor(1, 0), QColor(Qt::white));
    EXPECT_EQ(cursor.mask().toImage().pixelColor(0, 0), QColor(Qt::black));
    be_app->SetCursor(B_HAND_CURSOR);
    EXPECT_EQ(display::Call([] { return QGuiApplication::overrideCursor(); }), nullptr);
}
