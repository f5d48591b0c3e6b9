#include "ApplicationState.h"
#include "NamedSocket.h"
#include "TestLooper.h"
#include "tests/support/Child.h"
#include "tests/support/NoThreads.h"

#include <Application.h>
#include <SingleLaunch.h>

namespace {

const std::string kName = "tarvex-test-" + std::to_string(getpid());

// Logs the messages that it gets of later starts, and quits after so many.
class FirstApp : public BApplication {
public:
    explicit FirstApp(Log& log) : BApplication("application/x-vnd.Test-App"), fLog(log) { }
    void DispatchMessage(BMessage* message, BHandler* handler) override
    {
        if (message->what != B_ARGV_RECEIVED)
            return BApplication::DispatchMessage(message, handler);
        int32 count = 0;
        const char* text = "";
        message->FindInt32("argc", &count);
        message->FindString("cwd", &text);
        std::string entry = text + (" " + std::to_string(count));
        for (int32 i = 0; message->FindString("argv", i, &text) == B_OK; i++)
            entry += std::string(" ") + text;
        fLog.Add(entry);
    }

private:
    Log& fLog;
};

} // namespace

TEST(SingleLaunch, TheFirstHasTheArgumentsOfLaterStartsOnItsDisplay)
{
    SetProgramArguments({ "prog" });
    setenv("DISPLAY", "a.b:7.1", 1);
    BSingleLaunch first(kName.c_str());
    EXPECT_EQ(first.Claim(true), B_OK);
    const std::tuple<const char*, std::string, status_t> rows[] = { { "a.b:7", kName, B_BUSY },
        { "a.b:7.0", kName, B_BUSY }, { "a.b:8", kName, B_OK }, { "a:7", kName, B_OK },
        { "", kName, B_OK }, { "a.b:7", kName + "-other", B_OK } };
    for (const auto& [display, name, status] : rows) {
        setenv("DISPLAY", display, 1);
        BSingleLaunch later(name.c_str());
        EXPECT_EQ(later.Claim(false), status) << display;
        EXPECT_EQ(later.Other(), 0);
    }
    setenv("DISPLAY", "a.b:7.1", 1);
    Log log;
    FirstApp app(log);
    first.Serve();
    first.Serve(); // it does already
    const std::string folder = std::filesystem::current_path(), large(1'000'000, 'x');
    KitThread user([&] {
        for (const Entries& arguments : { Entries { "prog", "", "-a" }, { "prog", large } }) {
            SetProgramArguments(arguments);
            BSingleLaunch later(kName.c_str());
            EXPECT_EQ(later.Claim(true), B_ALREADY_RUNNING);
            EXPECT_EQ(later.Other(), getpid());
        }
        app.PostMessage(B_QUIT_REQUESTED);
    });
    app.Run();
    EXPECT_EQ(log.Now(), (Entries { folder + " 3 prog  -a", folder + " 2 prog " + large }));
    SetProgramArguments({});
}

TEST(SingleLaunch, OneThatCannotServeMakesRoom)
{
    BSingleLaunch first(kName.c_str()), second(kName.c_str());
    EXPECT_EQ(first.Claim(true), B_OK);
    testing::internal::CaptureStderr();
    {
        const NoThreads none;
        first.Serve();
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Cannot start thread <later starts>\n");
    EXPECT_EQ(second.Claim(true), B_OK);
}

TEST(SingleLaunch, AnotherUsersProgramInItsPlaceIsToldNothing)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can be two users";
    setenv("DISPLAY", "host:7.1", 1);
    int ready[2], done[2];
    ASSERT_EQ(pipe(ready) + pipe(done), 0);
    const pid_t stranger = StartChild([&] {
        const int listener = BecomeOrdinaryUser() ? kernel::ListenAs(kName + "-0-host:7") : -1;
        char byte = listener >= 0 ? 'r' : 'n';
        if (write(ready[1], &byte, 1) != 1 || read(done[0], &byte, 1) != 1)
            return 2;
        const int connection = accept(listener, nullptr, nullptr);
        return connection >= 0 && recv(connection, &byte, 1, 0) == 0 ? 0 : 1;
    });
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    EXPECT_EQ(byte, 'r');
    BSingleLaunch launch(kName.c_str());
    EXPECT_EQ(launch.Claim(false), B_BUSY);
    EXPECT_EQ(launch.Claim(true), B_ERROR);
    ASSERT_EQ(write(done[1], &byte, 1), 1);
    EXPECT_EQ(EndOf(stranger), 0);
    EXPECT_EQ(launch.Claim(true), B_OK) << "its end frees the place";
}
