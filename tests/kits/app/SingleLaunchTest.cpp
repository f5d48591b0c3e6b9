#include "ApplicationState.h"
#include "NamedSocket.h"
#include "TestApp.h"
#include "tests/support/Child.h"

#include <SingleLaunch.h>

static const std::string kName = "tarvex-test-" + std::to_string(getpid());

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
    TestApp app(log, 3);
    first.Serve();
    first.Serve(); // it does already
    const std::string large(1'000'000, 'x');
    KitThread user([&] {
        for (const Entries& arguments : { Entries { "prog", "", "-a" }, { "prog", large } }) {
            SetProgramArguments(arguments);
            BSingleLaunch later(kName.c_str());
            EXPECT_EQ(later.Claim(true), B_ALREADY_RUNNING);
            EXPECT_EQ(later.Other(), getpid());
        }
    });
    app.Run();
    EXPECT_EQ(log.Now(), (Entries { "ready", "argv 3 prog  -a", "argv 2 prog " + large }));
    user.Wait();
    SetProgramArguments({});
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
