#include <atomic>
#include <csignal>
#include <filesystem>
#include <unistd.h>

#include <gtest/gtest.h>

#include "kits/app/ProgramArguments.h"
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
    using BLooper::PulsePeriod;
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
        const bool canLock = be_app && be_app->LockWithTimeout(10'000'000) == B_OK;
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

class ArgumentsGuard {
public:
    explicit ArgumentsGuard(const Entries& arguments) { SetProgramArguments(arguments); }
    ~ArgumentsGuard() { SetProgramArguments({}); }
};

} // namespace

TEST(Application, GetsItsArgumentsIfThereAreAnyThenIsReady)
{
    const struct {
        Entries arguments;
        Entries entries;
    } rows[] = {
        { { "prog" }, { "ready", "about", "1" } },
        { { "prog", "-scmp", "" }, { "argv 3 prog -scmp ", "ready", "about", "1" } },
    };
    for (const auto& row : rows) {
        const ArgumentsGuard guard(row.arguments);
        Log log;
        TestApp app(log, row.entries.size());
        EXPECT_EQ(be_app, &app);
        app.PostMessage(B_ABOUT_REQUESTED);
        app.PostMessage(B_READY_TO_RUN); // it is ready only once
        be_app_messenger.SendMessage(1);
        EXPECT_EQ(app.Run(), find_thread(nullptr));
        EXPECT_EQ(log.Now(), row.entries);
    }
    EXPECT_EQ(be_app, nullptr);
    EXPECT_FALSE(be_app_messenger.IsValid());
    EXPECT_EQ(std::filesystem::path(ProgramArguments().at(0)).filename(), "test_app");
}

TEST(Application, PulsesAtItsRate)
{
    const ArgumentsGuard guard({ "prog" });
    Log log;
    TestApp app(log, 4);
    app.SetPulseRate(199'999);
    EXPECT_EQ(app.PulsePeriod(), 100'000);
    const bigtime_t start = system_time();
    app.Run();
    EXPECT_EQ(log.Now(), (Entries { "ready", "pulse", "pulse", "pulse" }));
    EXPECT_GE(system_time() - start, 300'000);
}

TEST(Application, QuitsWhenAllWindowsAgreeOldestFirst)
{
    const ArgumentsGuard guard({ "prog" });
    Log log;
    Window* neverRun = nullptr;
    {
        Log hooks;
        TestApp app(hooks, 99);
        auto* first = new Window("first", log);
        auto* second = new Window("second", log);
        neverRun = new Window("hidden", log); // its maker still holds the lock: not asked
        second->agrees = false;
        first->Run();
        second->Run();
        KitThread user([&] {
            BMessage reply;
            bool quits = true;
            EXPECT_EQ(be_app_messenger.SendMessage(B_QUIT_REQUESTED, &reply), B_OK);
            EXPECT_EQ(reply.FindBool("result", &quits), B_OK);
            EXPECT_FALSE(quits);
            EXPECT_EQ(log.Now(), (Entries { "first agrees", "first gone", "second refuses" }));
            second->agrees = true;
            be_app_messenger.SendMessage(B_QUIT_REQUESTED);
        });
        app.Run();
        EXPECT_EQ(log.Now().size(), 5u);
        auto* third = new Window("third", log);
        third->agrees = false;
        third->Run(); // goes with the application, unasked
    }
    const auto entries = log.Now();
    EXPECT_EQ((Entries(entries.begin() + 3, entries.end())),
        (Entries { "second agrees", "second gone", "third gone" }));
    neverRun->Quit();
}

TEST(Application, SignalsAskItToQuitAndAreAsBeforeAfterwards)
{
    const ArgumentsGuard guard({ "prog" });
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
    Log log;
    const TestApp app(log, 1);
    EXPECT_EQ(signal(SIGHUP, SIG_DFL), SIG_IGN);
}

TEST(Application, WantsAnApplicationTypeAndToBeTheOnlyOne)
{
    const std::string longest = "application/" + std::string(B_MIME_TYPE_LENGTH - 13, 'x');
    const std::pair<std::string, status_t> rows[] = { { "Application/one", B_OK },
        { longest, B_OK }, { longest + "x", B_BAD_VALUE }, { "application/", B_BAD_VALUE },
        { "text/plain", B_BAD_VALUE }, { "application/two words", B_BAD_VALUE },
        { "application/one/two", B_BAD_VALUE } };
    for (const auto& [signature, expected] : rows) {
        SCOPED_TRACE(signature);
        status_t status = 1;
        BApplication app(signature.c_str(), &status);
        EXPECT_EQ(status, expected);
        EXPECT_EQ(be_app == &app, expected == B_OK);
        if (expected != B_OK) {
            EXPECT_EQ(app.Run(), B_NO_INIT);
        }
    }
    status_t status = 1;
    const BApplication app(kSignature, &status);
    EXPECT_EQ(BApplication(kSignature, &status).InitCheck(), B_NOT_ALLOWED);
    EXPECT_EQ(be_app, &app);
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        BApplication("text/plain"), testing::ExitedWithCode(1), "^Bad signature <text/plain>\n");
}

TEST(Application, TheRosterKnowsItWhileItLives)
{
    app_info info;
    EXPECT_EQ(be_roster->GetAppInfo(kSignature, &info), B_ERROR);
    const BApplication app(kSignature);
    EXPECT_EQ(be_roster->GetAppInfo("application/other", &info), B_ERROR);
    EXPECT_EQ(app.GetAppInfo(&info), B_OK);
    EXPECT_STREQ(info.signature, kSignature);
    EXPECT_EQ(info.thread, find_thread(nullptr));
    EXPECT_EQ(PathOfRef(info.ref), std::filesystem::read_symlink("/proc/self/exe"));
}
