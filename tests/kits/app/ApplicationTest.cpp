#include "ApplicationState.h"
#include "TestLooper.h"

#include <Application.h>
#include <Roster.h>

namespace {

constexpr char kSignature[] = "application/x-vnd.Test-App";

// Logs what its hooks are called with, and quits after so many of them.
class TestApp : public BApplication {
public:
    TestApp(Log& log, size_t quitAfter) : BApplication(kSignature), fLog(log), fQuitAfter(quitAfter)
    {
    }
    void ReadyToRun() override { Add("ready"); }
    void ArgvReceived(int32 argc, char** argv) override
    {
        std::string entry = "argv " + std::to_string(argc);
        for (int32 i = 0; i < argc; ++i)
            entry += std::string(" ") + argv[i];
        Add(argv[argc] ? "no end" : entry);
    }
    void AboutRequested() override { Add("about"); }
    void Pulse() override { Add("pulse"); }
    void MessageReceived(BMessage* message) override { Add(std::to_string(message->what)); }

private:
    void Add(const std::string& entry)
    {
        fLog.Add(entry);
        if (fLog.Now().size() >= fQuitAfter)
            Quit();
    }

    Log& fLog;
    const size_t fQuitAfter;
};

// What the application has to ask before it quits; on this side of the interface kit.
class Window : public BLooper {
public:
    Window(const char* name, Log& log) : BLooper(name), fLog(log) { SetAskedToQuit(true); }
    ~Window() override
    {
        // In its own thread: a window may well need its application to end.
        const bool canLock = be_app && BMessenger(be_app).LockTargetWithTimeout(10'000'000) == B_OK;
        if (canLock)
            be_app->Unlock();
        fLog.Add(std::string(Name()) + (canLock ? " gone" : " gone without the lock"));
    }
    bool QuitRequested() override
    {
        fLog.Add(std::string(Name()) + (agrees ? " agrees" : " refuses"));
        return agrees;
    }

    std::atomic<bool> agrees = true;

private:
    Log& fLog;
};

class ApplicationTest : public testing::Test {
protected:
    ApplicationTest() { SetProgramArguments({ "prog" }); }
    ~ApplicationTest() override { SetProgramArguments({}); }

    Log fLog;
};

} // namespace

TEST_F(ApplicationTest, GetsItsArgumentsIfThereAreAnyThenIsReady)
{
    const std::pair<Entries, Entries> rows[] = {
        { { "prog" }, { "ready", "about", "1" } },
        { { "prog", "-scmp", "" }, { "argv 3 prog -scmp ", "ready", "about", "1" } },
    };
    for (const auto& [arguments, entries] : rows) {
        SetProgramArguments(arguments);
        Log log;
        TestApp app(log, entries.size());
        EXPECT_EQ(be_app, &app);
        app.PostMessage(B_ABOUT_REQUESTED);
        app.PostMessage(B_READY_TO_RUN); // it is ready only once
        be_app_messenger.SendMessage(1);
        EXPECT_EQ(app.Run(), find_thread(nullptr));
        EXPECT_EQ(log.Now(), entries);
    }
    EXPECT_EQ(be_app, nullptr);
    EXPECT_FALSE(be_app_messenger.IsValid());
    SetProgramArguments({}); // those of the process
    EXPECT_EQ(std::filesystem::path(ProgramArguments().at(0)).filename(), "test_app");
}

TEST_F(ApplicationTest, PulsesAtItsRate)
{
    TestApp app(fLog, 4);
    app.SetPulseRate(100'000);
    const bigtime_t start = system_time();
    app.Run();
    EXPECT_EQ(fLog.Now(), (Entries { "ready", "pulse", "pulse", "pulse" }));
    EXPECT_GE(system_time() - start, 300'000);
}

TEST_F(ApplicationTest, QuitsWhenAllWindowsAgreeOldestFirst)
{
    Window* neverRun = nullptr;
    {
        Log hooks;
        TestApp app(hooks, 99);
        auto* first = new Window("first", fLog);
        auto* second = new Window("second", fLog);
        neverRun = new Window("hidden", fLog); // its maker still holds the lock: not asked
        second->agrees = false;
        first->Run();
        second->Run();
        KitThread user([&] {
            BMessage reply;
            bool quits = true;
            EXPECT_EQ(be_app_messenger.SendMessage(B_QUIT_REQUESTED, &reply), B_OK);
            EXPECT_EQ(reply.FindBool("result", &quits), B_OK);
            EXPECT_FALSE(quits);
            EXPECT_EQ(fLog.Now(), (Entries { "first agrees", "first gone", "second refuses" }));
            second->agrees = true;
            be_app_messenger.SendMessage(B_QUIT_REQUESTED);
        });
        app.Run();
        EXPECT_EQ(fLog.Now().size(), 5u);
        auto* third = new Window("third", fLog);
        third->agrees = false;
        third->Run(); // goes with the application, unasked
    }
    const auto entries = fLog.Now();
    EXPECT_EQ((Entries(entries.begin() + 3, entries.end())),
        (Entries { "second agrees", "second gone", "third gone" }));
    neverRun->Quit();
}

TEST_F(ApplicationTest, SignalsAskItToQuitAndAreAsBeforeAfterwards)
{
    signal(SIGINT, SIG_DFL);
    for (const int number : { SIGTERM, SIGINT, SIGHUP }) {
        Log log;
        TestApp app(log, 99);
        app.SetPulseRate(0);
        KitThread user([&] {
            log.WaitFor(1);
            kill(getpid(), number);
        });
        app.Run();
        EXPECT_EQ(log.Now(), (Entries { "ready" }));
    }
    EXPECT_EQ(signal(SIGINT, SIG_DFL), SIG_DFL);
    signal(SIGHUP, SIG_IGN); // as nohup does
    const TestApp app(fLog, 1);
    EXPECT_EQ(signal(SIGHUP, SIG_DFL), SIG_IGN);
}

TEST(Application, WantsAnApplicationTypeAndToBeTheOnlyOneWhichTheRosterKnows)
{
    const std::string longest = "application/" + std::string(B_MIME_TYPE_LENGTH - 13, 'x');
    const std::pair<std::string, status_t> rows[] = { { "Application/one", B_OK },
        { longest, B_OK }, { longest + "x", B_BAD_VALUE }, { "text/plain", B_BAD_VALUE },
        { "application/two words", B_BAD_VALUE } };
    for (const auto& [signature, expected] : rows) {
        SCOPED_TRACE(signature);
        status_t status = 1;
        BApplication app(signature.c_str(), &status);
        EXPECT_EQ(status, expected);
        EXPECT_EQ(be_app == &app, expected == B_OK);
        EXPECT_TRUE(expected == B_OK || app.Run() == B_NO_INIT);
    }
    app_info info;
    EXPECT_EQ(be_roster->GetAppInfo(kSignature, &info), B_ERROR);
    status_t status = 1;
    const BApplication app(kSignature, &status);
    EXPECT_EQ((BApplication(kSignature, &status), status), B_NOT_ALLOWED);
    EXPECT_EQ(app.GetAppInfo(&info), B_OK);
    EXPECT_EQ(info.thread, find_thread(nullptr));
    EXPECT_EQ(PathOfRef(info.ref), std::filesystem::read_symlink("/proc/self/exe"));
    EXPECT_EQ(be_app, &app);
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        BApplication("text/plain"), testing::ExitedWithCode(1), "^Bad signature <text/plain>\n");
}
