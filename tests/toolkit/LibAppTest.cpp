#include "toolkit/LibApp.h"

#include "ApplicationState.h"
#include "foundation/LibAppInfo.h"
#include "foundation/LibDate.h"
#include "tests/support/ScreenDriver.h"
#include "tests/support/Test.h"
#include "tests/support/WithLock.h"
#include "toolkit/LibWindow.h"

#include <Button.h>
#include <Message.h>

#include <regex>

namespace {

constexpr char kHelp[] =
    "<help><topic name=\"knob\" title=\"The knob\" tip=\"Turn it\"><p>Press <b>Enter</b>"
    " <b>twice</b></p><p>Three.</p></topic>\n"
    "<topic name=\"Main\" title=\"Window\"><p>One.</p></topic></help>";

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
    EXPECT_TRUE(screen::ShowsTree("Main", "toolkit/Main"));
    screen::ClickMenu({ "AppTest", "About AppTest..." });
    EXPECT_TRUE(screen::BecomesActive("About AppTest"));
    EXPECT_TRUE(screen::ShowsTree("About AppTest", "toolkit/About",
        { { "YEAR", std::to_string(LibDate(true, true).GetYear()) } }));
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
    const auto tipIs = [&](const std::string& text) {
        return screen::WaitFor([&] {
            return WithLock(
                app.window, [&] { return app.window->FindView("knob")->ToolTip() == text; });
        });
    };
    BMessage tip('stip');
    app.PostMessage(&tip); // without a name: nothing
    tip.AddString("name", "knob");
    tip.AddString("text", "Pull it");
    app.PostMessage(&tip);
    EXPECT_TRUE(tipIs("Pull it"));
    app.PostMessage('tipf'); // over
    EXPECT_TRUE(tipIs(""));
    BMessage show('tipf');
    show.AddBool("show", true);
    app.PostMessage(&show);
    EXPECT_TRUE(tipIs("Pull it"));
    app.PostMessage(&show);
    screen::Key("F1"); // without Shift
    screen::Key("shift+F1");
    EXPECT_TRUE(screen::BecomesActive("Help"));
    EXPECT_TRUE(screen::ShowsTree("Help", "toolkit/Help"));
    EXPECT_TRUE(tipIs("Pull it")) << "shown, not turned over";
    screen::Key("Down");
    EXPECT_SOON(screen::Find("help_text").text == "Window\n\nOne.");
    screen::Key("Escape");
    EXPECT_SOON(!screen::Find("help_text").exists);
    app.PostMessage('help'); // on nothing
    EXPECT_TRUE(screen::BecomesActive("Help"));
    EXPECT_SOON(screen::Find("help_text").text.starts_with("The knob\n"));
    EXPECT_TRUE(screen::Click("help_text"));
    screen::Key("ctrl+a");
    screen::Key("ctrl+c");
    std::string bold;
    const std::string copied = screen::Copied("text/html");
    const std::regex part("font-size:(\\d+px); font-weight:700;\">([^<]*)");
    for (std::sregex_iterator at(copied.begin(), copied.end(), part), end; at != end; ++at)
        bold += (*at)[1].str() + " " + (*at)[2].str() + ". ";
    EXPECT_EQ(bold, "18px The knob. 12px Enter. 12px twice. ");
}

} // namespace

TEST(LibApp, OpensEachOfItsWindowsOnceAndHelpsOnTheControlInFocus)
{
    SetProgramArguments({ "apptest" });
    TestApp app;
    LibSetAppVersion(1, 2, 6, "", nullptr, 5, 0);
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
    EXPECT_EQ(help.TipFor("Main"), nullptr);
}
