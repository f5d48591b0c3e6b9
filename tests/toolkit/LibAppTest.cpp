#include "toolkit/LibApp.h"

#include "ApplicationState.h"
#include "tests/support/ScreenDriver.h"
#include "tests/support/Test.h"
#include "toolkit/LibWindow.h"

#include <Button.h>
#include <Message.h>

namespace {

constexpr char kHelp[] =
    "<help><topic name=\"first\" title=\"First\"><p>One.</p></topic>\n"
    "<topic name=\"knob\" title=\"The knob\" tip=\"Turn it\"><p>Press <b>Enter</b>"
    " <b>twice</b></p><p>Three.</p></topic></help>";

// A program whose window has a button in focus.
class TestApp : public LibApp {
public:
    TestApp() : LibApp("application/x-vnd.Quorvane.AppTest", "AppTest", "1 January 2000", kHelp) { }

    BWindow* Window() override
    {
        if (window)
            return window;
        window = new LibWindow(
            BRect(400, 300, 600, 400), "Main", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0);
        BButton* button = new BButton(BRect(10, 10, 90, 34), "knob", "Knob", nullptr);
        window->AddChild(button);
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
        LibApp::MessageReceived(message);
    }

    BWindow* window = nullptr;
    int systemWindows = 0;
    int shown = 0;
};

// The windows that the program opens, by its messages and by keys.
void UseWindows(TestApp& app)
{
    ASSERT_TRUE(screen::BecomesActive("Main"));
    app.PostMessage('sabt');
    EXPECT_TRUE(screen::BecomesActive("About AppTest"));
    EXPECT_EQ(screen::Find("rel_date").text, "Released: 1 January 2000");
    EXPECT_TRUE(screen::Find("version").text.starts_with("Version: "));
    for (const char* line : { "app_name", "company", "url" })
        EXPECT_SOON(screen::ContrastIn(screen::Find(line).frame) > 100);
    EXPECT_TRUE(screen::Find("url").isLink);
    app.PostMessage('ssys');
    EXPECT_TRUE(screen::BecomesActive("System"));
    app.PostMessage('sabt');
    EXPECT_TRUE(screen::BecomesActive("About AppTest")) << "the same one, in front";
    screen::Key("Escape");
    EXPECT_SOON(!screen::Find("about_view").exists);
    app.PostMessage('ssys');
    app.PostMessage('sabt');
    EXPECT_TRUE(screen::BecomesActive("About AppTest")) << "a new one";

    app.window->Activate();
    ASSERT_TRUE(screen::BecomesActive("Main"));
    BMessage tip('stip');
    app.PostMessage(&tip); // without a name: nothing
    tip.AddString("name", "knob");
    tip.AddString("text", "Pull it");
    app.PostMessage(&tip);
    screen::MoveTo(screen::Settled("knob").LeftTop() + BPoint(9, 9));
    EXPECT_SOON(screen::Find("qtooltip_label").text == "Pull it");
    screen::MoveTo(BPoint(9, 9));
    screen::Key("shift+F1");
    EXPECT_TRUE(screen::BecomesActive("Help"));
    const auto groundOf = [](const char* name) {
        const BRect frame = screen::Find(name, "Help").frame;
        return screen::PixelAt(frame.RightBottom() - BPoint(5, 5)).green;
    };
    for (const char* name : { "topics", "help_text" }) {
        EXPECT_SOON(std::abs(groundOf(name) - groundOf("bgview")) < 60) << "all dark or all light";
        EXPECT_SOON(screen::ContrastIn(screen::Find(name).frame) > 100);
    }
    EXPECT_EQ(screen::Find("help_text").text, "The knob\n\nPress Enter twice\n\nThree.");
    EXPECT_GT(screen::Find("help_text").frame.Width(), 300);
    screen::Key("Up");
    EXPECT_SOON(screen::Find("help_text").text == "First\n\nOne.");
}

} // namespace

TEST(LibApp, OpensEachOfItsWindowsOnceAndHelpsOnTheControlInFocus)
{
    SetProgramArguments({ "apptest" });
    TestApp app;
    std::thread user([&] {
        UseWindows(app);
        app.PostMessage(B_QUIT_REQUESTED);
    });
    app.Run();
    user.join();
    EXPECT_EQ(app.shown, 1);
    EXPECT_EQ(app.systemWindows, 1);
    EXPECT_TRUE(app.IsQuitting());
}

TEST(LibHelp, TopicsTipsAndFilesInTheResourcesReplaceOlderOnesOfTheirNames)
{
    const TempFolder folder;
    const BApplication app("application/x-vnd.Quorvane.HelpTest");
    const std::string path = folder / "more help.xml";
    WriteFile(path,
        "<help>\n<topic name=\"knob\" title=\"New\"><p>News.</p></topic>\n"
        "<topic name=\"last\" title=\"Last\"><p>End.</p></topic>\n"
        "<tip name=\"knob\">Push it</tip>\n</help>\n");
    EXPECT_TRUE(LibHelp::AddToResources(path.c_str()));
    EXPECT_TRUE(LibHelp::AddToResources(path.c_str())) << "in place of the first";
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
    EXPECT_EQ(help.CountTopics(), 3);
    EXPECT_EQ(help.IndexOf("last"), 2);
    EXPECT_EQ(help.IndexOf("Last"), -1);
    EXPECT_STREQ(help.TopicAt(help.IndexOf("knob"))->title, "New");
    EXPECT_STREQ(help.TipFor("knob"), "Push it");
    EXPECT_EQ(help.TipFor("first"), nullptr);
}
