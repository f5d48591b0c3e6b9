#include "toolkit/LibApp.h"

#include "ApplicationState.h"
#include "foundation/LibAppInfo.h"
#include "foundation/LibAppResource.h"
#include "foundation/LibDate.h"
#include "tests/support/Child.h"
#include "tests/support/Steps.h"
#include "tests/support/Test.h"
#include "tests/support/WithLock.h"
#include "toolkit/LibWindow.h"

#include <Button.h>
#include <Directory.h>
#include <FindDirectory.h>
#include <Message.h>
#include <Path.h>

#include <sys/resource.h>

namespace {

constexpr char kHelp[] =
    "<help><topic name=\"knob\" title=\"The knob\" tip=\"Turn it\"><p>Press <b>Enter</b>"
    " <b>twice</b></p><p>Three.</p></topic>\n"
    "<topic name=\"Main\" title=\"Window\"><p>One.</p></topic></help>";

constexpr char kLast[] = "<topic name=\"LibHelpWindow\" title=\"Last\"><p>End.</p></topic>\n";

// Does not go when it is first asked.
class ReluctantWindow : public LibWindow {
public:
    using LibWindow::LibWindow;
    bool QuitRequested() override
    {
        EXPECT_TRUE(dynamic_cast<LibApp*>(be_app)->IsQuitting());
        return asked++ > 0;
    }
    std::atomic<int> asked = 0;
};

// A program whose window has a button in focus.
class TestApp : public LibApp {
public:
    TestApp() : LibApp("application/x-vnd.Quorvane.AppTest", "AppTest", "1 January 2000", kHelp) { }

    BWindow* Window() override
    {
        if (window)
            return window;
        window = new ReluctantWindow(
            BRect(400, 300, 600, 400), "Main", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0);
        window->AddChild(new MainMenuBar(BRect(0, 0, 200, 20), "AppTest"));
        BButton* button = new BButton(BRect(10, 10, 90, 34), "knob", "Knob", nullptr);
        BView* inside = new BView(BRect(0, 20, 200, 100), "inside", B_FOLLOW_ALL_SIDES, 0);
        window->AddChild(inside);
        inside->AddChild(button);
        button->MakeFocus();
        return window;
    }
    BWindow* MakeSystemWindow() override
    {
        systemWindows++;
        return new LibWindow(
            BRect(100, 400, 200, 450), "System", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0);
    }
    void MessageReceived(BMessage* message) override
    {
        shown += message->what == 'appr';
        helped += message->what == 'help';
        LibApp::MessageReceived(message);
    }

    void AddHelp(LibHelp& topics) override
    {
        for (int i = 10; i < 40; i++)
            topics.AddTopic(std::to_string(i).c_str(), std::to_string(i).c_str(), "", "");
    }

    ReluctantWindow* window = nullptr;
    int systemWindows = 0, shown = 0, helped = 0;
};

// The windows that the program opens, by its messages and by keys.
void UseWindows(TestApp& app)
{
    const auto post = [&](const Row& row) { // by the four letters of its code
        BMessage message(std::accumulate(row[1].begin(), row[1].end(), 0u,
            [](uint32 what, char letter) { return what << 8 | static_cast<uint32>(letter); }));
        if (row.size() > 2) {
            message.AddString("name", "knob");
            message.AddString("text", row[2].c_str());
            message.AddBool("show", true);
        }
        app.PostMessage(&message);
    };
    const auto hasTip = [&](const Row& row) {
        EXPECT_SOON(row[1] == WithLock(app.window, [&] {
            return std::string(app.window->FindView("knob")->ToolTip());
        }));
    };
    Follow("toolkit/Windows.steps",
        { { "post", post }, { "tip", hasTip },
            { "front", [&](const Row&) { app.window->Activate(); } } },
        { { "YEAR", std::to_string(LibDate(true, true).GetYear()) } });
    EXPECT_TRUE(screen::Click("help_text"));
    screen::Key("ctrl+a");
    screen::Key("ctrl+c");
    const auto bold = [] {
        std::string found;
        const std::string copied = screen::Copied("text/html");
        const std::regex part("font-size:(\\d+px); font-weight:700;\">([^<]*)");
        for (std::sregex_iterator at(copied.begin(), copied.end(), part), end; at != end; ++at)
            found += (*at)[1].str() + " " + (*at)[2].str() + ". ";
        return found;
    };
    EXPECT_SOON(bold() == "18px The knob. 12px Enter. 12px twice. ") << bold();

    WithLock(app.window, [&] { app.window->Hide(); });
    WithLock(&app, [&] {
        app.ReadyToRun();
        EXPECT_TRUE(app.window->IsHidden());
        app.ShowMainWindow();
    });
    EXPECT_TRUE(screen::BecomesActive("Main"));
    app.PostMessage(B_QUIT_REQUESTED);
    EXPECT_SOON(app.window->asked == 1 && !app.IsQuitting());
}

} // namespace

TEST(LibApp, OpensEachOfItsWindowsOnceAndHelpsOnTheControlInFocus)
{
    SetProgramArguments({ "apptest" });
    TestApp app;
    LibSetAppVersion(1, 2, 6, "", nullptr, 5, 0);
    const TempFolder folder;
    WriteFile(folder / "more help.xml", kLast);
    EXPECT_TRUE(LibHelp::AddToResources((folder / "more help.xml").c_str()));
    std::thread user([&] {
        UseWindows(app);
        app.PostMessage(B_QUIT_REQUESTED);
    });
    app.Run();
    user.join();
    EXPECT_EQ(app.shown, 1);
    EXPECT_EQ(app.helped, 3) << "by Shift-F1 twice, and by a message";
    EXPECT_EQ(app.systemWindows, 1);
    EXPECT_TRUE(app.IsQuitting());
}

TEST(LibHelp, TopicsTipsAndFilesInTheResourcesReplaceOlderOnesOfTheirNames)
{
    const TempFolder folder;
    const BApplication app("application/x-vnd.Quorvane.HelpTest");
    const std::string path = folder / "more help.xml";
    WriteFile(path,
        std::string("<topic name=\"knob\" title=\"New\"><p>News.</p></topic>\n") + kLast
            + "<tip name=\"knob\">Push it</tip>\n");
    EXPECT_TRUE(LibHelp::AddToResources(path.c_str()));
    EXPECT_TRUE(LibHelp::AddToResources(path.c_str())) << "in place of the first";
    WriteFile(folder / "other.xml", "<topic name=\"other\" title=\"Other\"></topic>");
    EXPECT_TRUE(LibHelp::AddToResources((folder / "other.xml").c_str())) << "behind it";
    EXPECT_FALSE(LibAppResource(B_READ_ONLY).HasResource(B_RAW_TYPE, 5002));
    WriteFile(folder / "none.xml", "<p>no help</p>");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(LibHelp::AddToResources((folder / "none.xml").c_str()));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "<" + (folder / "none.xml") + "> is no help file\n");

    LibHelp help;
    EXPECT_TRUE(help.ReadText(kHelp));
    EXPECT_STREQ(help.TipFor("knob"), "Turn it");
    const std::vector<std::pair<int32, int32>> bold { { 6, 11 }, { 12, 17 } };
    EXPECT_EQ(help.TopicAt(help.IndexOf("knob"))->bold, bold);
    help.ReadResources();
    EXPECT_EQ(help.CountTopics(), 4);
    EXPECT_EQ(help.IndexOf("LibHelpWindow"), 2);
    EXPECT_EQ(help.IndexOf("libhelpwindow"), -1);
    EXPECT_STREQ(help.TopicAt(help.IndexOf("knob"))->title, "New");
    EXPECT_STREQ(help.TipFor("knob"), "Push it");
    EXPECT_EQ(help.TipFor("Main"), nullptr);
    BPath temporary;
    ASSERT_EQ(find_directory(B_COMMON_TEMP_DIRECTORY, &temporary), B_OK);
    EXPECT_EQ(BDirectory(temporary.Path()).CountEntries(), 0);
    EXPECT_EQ(InChild([&] {
        const rlimit none { 0, 0 };
        setrlimit(RLIMIT_NOFILE, &none);
        return help.ReadText(kHelp) ? 1 : 0;
    }),
        0);
}
