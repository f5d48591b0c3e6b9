#include "ApplicationState.h"
#include "AppRegistry.h"
#include "NamedSocket.h"
#include "TestLooper.h"
#include "tests/support/Child.h"

#include <Application.h>
#include <Autolock.h>
#include <Roster.h>
#include <SingleLaunch.h>

#include <sys/resource.h>

namespace {

constexpr char kSignature[] = "application/x-vnd.Test-App";

// Logs what its hooks are called with, and quits after so many of them.
class TestApp : public BApplication {
public:
    TestApp(Log& log, size_t quitAfter) : BApplication(kSignature), fLog(log), fQuitAfter(quitAfter)
    {
    }
    using BLooper::PulsePeriod;
    void MessageHandled() override { EXPECT_EQ(CountLocks(), 1); }
    void ReadyToRun() override
    {
        EXPECT_TRUE(CurrentMessage()->ReturnAddress() == be_app_messenger);
        Add("ready");
    }
    void ArgvReceived(int32 argc, char** argv) override
    {
        int32 count = 0;
        const char* folder = "";
        CurrentMessage()->FindInt32("argc", &count);
        CurrentMessage()->FindString("cwd", &folder);
        std::string entry = "argv " + std::to_string(count);
        for (int32 i = 0; i < argc; ++i)
            entry += std::string(" ") + argv[i];
        Add(argv[argc] || std::filesystem::current_path() != folder ? "wrong" : entry);
    }
    void RefsReceived(BMessage*) override { Add("refs"); }
    void AboutRequested() override { Add("about"); }
    void AppActivated(bool active) override { Add(active ? "active" : "inactive"); }
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
    const std::pair<Entries, Entries> rows[] = { { { "prog" },
                                                     { "ready", "about", "refs", "active", "1" } },
        { { "prog", "-scmp", "" },
            { "argv 3 prog -scmp ", "ready", "about", "refs", "active", "1" } } };
    for (const auto& [arguments, entries] : rows) {
        SetProgramArguments(arguments);
        Log log;
        TestApp app(log, entries.size());
        EXPECT_EQ(be_app, &app);
        BMessage activated(B_APP_ACTIVATED);
        app.PostMessage(&activated); // tells nothing
        activated.AddBool("active", true);
        BMessage again(B_READY_TO_RUN); // it is so only once
        again.AddString("argv", "not asked for");
        app.PostMessage(&again);
        for (const uint32 what : { B_ABOUT_REQUESTED, B_ARGV_RECEIVED, B_REFS_RECEIVED })
            app.PostMessage(what);
        app.PostMessage(&activated);
        be_app_messenger.SendMessage(1);
        EXPECT_EQ(app.Run(), find_thread(nullptr));
        EXPECT_EQ(log.Now(), entries);
    }
    EXPECT_EQ(be_app, nullptr);
    EXPECT_FALSE(be_app_messenger.IsValid() || AppRegistry::Instance().Application().IsValid());
    SetProgramArguments({}); // those of the process
    EXPECT_EQ(std::filesystem::path(ProgramArguments().at(0)).filename(), "test_app");
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
    for (const int number : { SIGTERM, SIGINT, SIGHUP }) {
        signal(number, SIG_DFL); // whatever this was started with
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

TEST_F(ApplicationTest, PulsesAsItIsToldFromThenOnAndEndsUnderItsLock)
{
    auto* app = new TestApp(fLog, 4);
    app->SetPulseRate(10'000'000'000);
    KitThread user([&] {
        fLog.WaitFor(1);
        AwaitWaiting(app->Thread());
        app->SetPulseRate(199'999); // in steps
    });
    const bigtime_t start = system_time();
    const thread_id self = app->Run();
    EXPECT_TRUE(system_time() - start >= 300'000 && app->PulsePeriod() == 100'000);
    KitThread holder([&] {
        const BAutolock lock(app);
        fLog.Add("locked");
        AwaitWaiting(self);
        fLog.Add("unlocked");
    });
    fLog.WaitFor("locked");
    delete app;
    fLog.Add("gone");
    EXPECT_EQ(
        fLog.Now(), (Entries { "ready", "pulse", "pulse", "pulse", "locked", "unlocked", "gone" }));
}

TEST_F(ApplicationTest, WantsAnApplicationTypeAndToBeTheOnlyOne)
{
    const std::string longest = "application/" + std::string(B_MIME_TYPE_LENGTH - 13, 'x');
    std::vector<std::pair<std::string, status_t>> rows = { { "Application/!~", B_OK },
        { longest, B_OK }, { longest + "x", B_BAD_VALUE }, { "text/plain", B_BAD_VALUE },
        { "application/", B_BAD_VALUE } };
    for (const char sign : std::string("()<>@,;:\\\"/[]?= \x7f\xc3"))
        rows.emplace_back("application/a" + std::string(1, sign), B_BAD_VALUE);
    for (const auto& [signature, expected] : rows) {
        SCOPED_TRACE(signature);
        status_t status = 1;
        BApplication app(signature.c_str(), &status);
        EXPECT_EQ(status, expected);
        EXPECT_EQ(be_app == &app, expected == B_OK);
        EXPECT_TRUE(expected == B_OK || app.Run() == B_NO_INIT);
    }
    EXPECT_EQ(StatusOf<BApplication>(nullptr), B_BAD_VALUE);
    const TestApp app(fLog, 1);
    EXPECT_EQ(StatusOf<BApplication>(kSignature), B_NOT_ALLOWED);
    EXPECT_EQ(be_app, &app);
    app_info info, other;
    const char *same = "APPLICATION/X-vnd.test-app", *unknown = "application/x-b", *none = nullptr;
    ExpectAll(B_OK,
        { be_roster->GetAppInfo(same, &info), be_roster->GetRunningAppInfo(getpid(), &other),
            StatusOf<BMessenger>(same, -1), StatusOf<BMessenger>(same, getpid()) });
    EXPECT_TRUE(info.team == getpid() && info.signature == std::string(other.signature)
        && info.thread == find_thread(nullptr) && BMessenger(same).IsValid()
        && AppRegistry::Instance().LooperOfPort(info.port).looper == &app);
    ExpectAll(
        B_ERROR, { be_roster->GetAppInfo(unknown, &info), be_roster->GetRunningAppInfo(1, &info) });
    ExpectAll(B_BAD_VALUE,
        { be_roster->GetAppInfo(none, &info), be_roster->GetAppInfo(same, nullptr),
            be_roster->GetRunningAppInfo(getpid(), nullptr), StatusOf<BMessenger>(none, -1),
            StatusOf<BMessenger>(unknown, -1) });
    EXPECT_EQ(StatusOf<BMessenger>(same, 1), B_MISMATCHED_VALUES);
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(BApplication(nullptr), testing::ExitedWithCode(1), "^Bad signature <>\n");
    EXPECT_EXIT(BApplication("application/x-b"), testing::ExitedWithCode(1),
        "^A second application object <application/x-b>\n");
}

TEST_F(ApplicationTest, GetsTheArgumentsOfLaterStartsOnItsDisplay)
{
    const std::string program = "tarvex-test-" + std::to_string(getpid());
    setenv("DISPLAY", "a.b:7.1", 1);
    BSingleLaunch first(program.c_str());
    EXPECT_EQ(first.Claim(true), B_OK);
    const std::tuple<const char*, std::string, status_t> rows[] = { { "a.b:7", program, B_BUSY },
        { "a.b:8", program, B_OK }, { "a:7", program, B_OK }, { "", program, B_OK },
        { "a.b:7", program + "-other", B_OK }, { "a.b:7.0", program, B_BUSY } };
    for (const auto& [display, name, status] : rows) {
        setenv("DISPLAY", display, 1);
        BSingleLaunch later(name.c_str());
        EXPECT_EQ(later.Claim(false), status) << display;
        EXPECT_EQ(later.Other(), 0);
    }
    TestApp app(fLog, 3);
    first.Serve();
    const std::string large(1'000'000, 'x');
    KitThread user([&] {
        for (const Entries& arguments : { Entries { "prog", "", "-a" }, { "prog", large } }) {
            SetProgramArguments(arguments);
            BSingleLaunch later(program.c_str());
            EXPECT_EQ(later.Claim(true), B_ALREADY_RUNNING);
            EXPECT_EQ(later.Other(), getpid());
        }
    });
    app.Run();
    EXPECT_EQ(fLog.Now(), (Entries { "ready", "argv 3 prog  -a", "argv 2 prog " + large }));
}

TEST(SingleLaunch, AnotherUsersProgramInItsPlaceIsToldNothing)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can be two users";
    const std::string name = "tarvex-test-" + std::to_string(getpid());
    setenv("DISPLAY", "a.b:7.1", 1);
    int ready[2], done[2];
    ASSERT_EQ(pipe(ready) + pipe(done), 0);
    const pid_t stranger = StartChild([&] {
        const int listener = BecomeOrdinaryUser() ? kernel::ListenAs(name + "-0-a.b:7") : -1;
        char byte = listener >= 0 ? 'r' : 'n';
        if (write(ready[1], &byte, 1) != 1 || read(done[0], &byte, 1) != 1)
            return 2;
        const int connection = accept(listener, nullptr, nullptr);
        return connection >= 0 && recv(connection, &byte, 1, 0) == 0 ? 0 : 1;
    });
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    EXPECT_EQ(byte, 'r');
    BSingleLaunch launch(name.c_str());
    EXPECT_EQ(launch.Claim(false), B_BUSY);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(launch.Claim(true), B_ERROR); }),
        "Another user's program stands where later starts are told of\n");
    ASSERT_EQ(write(done[1], &byte, 1), 1);
    EXPECT_EQ(EndOf(stranger), 0);
    EXPECT_EQ(launch.Claim(true), B_OK) << "its end frees the place";
}

TEST(SingleLaunch, ThatCannotServeIsInNobodysWay)
{
    const std::string name = "tarvex-test-" + std::to_string(getpid());
    EXPECT_EQ(ErrorsOfChild([&] {
        BSingleLaunch launch(name.c_str());
        EXPECT_EQ(launch.Claim(false), B_OK);
        rlimit files {};
        getrlimit(RLIMIT_NOFILE, &files);
        const rlimit none { 0, files.rlim_max };
        setrlimit(RLIMIT_NOFILE, &none);
        launch.Serve();
        launch.Serve(); // nothing then
        setrlimit(RLIMIT_NOFILE, &files);
        EXPECT_EQ(BSingleLaunch(name.c_str()).Claim(false), B_OK);
    }),
        "Cannot start thread <later starts>\n");
}
