#include "toolkit/WebLinkStringView.h"

#include "tests/kits/app/TestLooper.h"
#include "tests/support/ScreenDriver.h"
#include "toolkit/LibAboutWindow.h"

#include <Application.h>

#include <sys/wait.h>

namespace {

// Programs along PATH that write their arguments into a file of the program's name.
class Programs {
public:
    Programs()
    {
        for (const std::string name : { "xdg-open", "xdg-email", "my mailer" }) {
            const std::string path = folder / name;
            WriteFile(path,
                "#!/bin/sh\nprintf '<%s>' \"$@\" > \"$0.part\"\n"
                "grep SigBlk /proc/self/status > \"$0.blocked\"\nmv \"$0.part\" \"$0.seen\"\n");
            chmod(path.c_str(), 0755);
        }
        setenv("PATH", (folder.Path() + ":" + before).c_str(), 1);
    }
    ~Programs() { setenv("PATH", before.c_str(), 1); }

    std::string Seen(const std::string& name) const
    {
        EXPECT_TRUE(WaitUntil([&] { return ReadFile(Path(name) + ".seen") != "none"; }));
        const std::string seen = ReadFile(Path(name) + ".seen");
        std::filesystem::remove(Path(name) + ".seen");
        return seen;
    }
    std::string Path(const std::string& name) const { return folder / name; }

private:
    const TempFolder folder;
    const std::string before = getenv("PATH");
};

} // namespace

TEST(Links, LeadToTheDesktopsProgramsWithEveryTextAsItIs)
{
    const Programs programs;
    sigset_t interrupt, before;
    sigemptyset(&interrupt);
    sigaddset(&interrupt, SIGINT);
    pthread_sigmask(SIG_BLOCK, &interrupt, &before);
    WebLinkTo("http://www.tarvex.example/?a=1&b=$(touch x)");
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    EXPECT_EQ(programs.Seen("xdg-open"), "<http://www.tarvex.example/?a=1&b=$(touch x)>");
    EXPECT_EQ(ReadFile(programs.Path("xdg-open") + ".blocked"), "SigBlk:\t0000000000000000\n");
    siginfo_t ended {};
    EXPECT_TRUE(WaitUntil([&] {
        return waitid(P_ALL, 0, &ended, WEXITED | WNOHANG | WNOWAIT) == 0 && ended.si_pid != 0;
    }));
    EmailTo("me@tarvex.example", "a \"b\"", "two\nlines");
    EXPECT_EQ(waitpid(ended.si_pid, nullptr, WNOHANG), -1) << "the next start buries it";
    EXPECT_EQ(programs.Seen("xdg-email"),
        "<--subject><a \"b\"><--body><two\nlines><mailto:me@tarvex.example>");
    EmailTo("me", nullptr, nullptr);
    EXPECT_EQ(programs.Seen("xdg-email"), "<mailto:me>");
    const std::string mailer = programs.Path("my mailer");
    EXPECT_TRUE(EmailToCommand(mailer.c_str(), "me@tarvex.example", "`x` $HOME", "two words"));
    EXPECT_EQ(programs.Seen("my mailer"),
        "<mailto:me@tarvex.example><-subject><`x` $HOME><-body><two words>");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(EmailToCommand(mailer.c_str(), "me", std::string(600, 'x').c_str(), nullptr));
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(EmailToCommand(mailer.c_str(), "me", nullptr, nullptr));
    EXPECT_EQ(programs.Seen("my mailer"), "<mailto:me>");
    setenv("PATH", "/nonexistent", 1);
    testing::internal::CaptureStderr();
    WebLinkTo("a:b");
    EmailTo("me", nullptr, nullptr);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), "Nothing opens <a:b>\nNothing opens <mailto:me>\n");
}

TEST(Links, AreFollowedByClickAndKey)
{
    const Programs programs;
    const BApplication app("application/x-vnd.Quorvane.LinkTest");
    auto* about = new LibAboutWindow(be_app, "It", "");
    about->UpdateWorkspace(2);
    EXPECT_EQ(about->Workspaces(), 2u);
    about->UpdateWorkspace(1);
    about->Show();
    ASSERT_TRUE(screen::BecomesActive("About It"));
    for (const char* key : { "Return", "space", "" }) {
        screen::Key("x");
        key[0] ? screen::Key(key) : void(screen::Click("url"));
        EXPECT_EQ(programs.Seen("xdg-open"), "<http://www.tarvex.example/>");
    }
    QuitNow(about);
}
