#include "NamedSocket.h"
#include "tests/support/Child.h"
#include "tests/support/Test.h"

#include <SingleLaunch.h>

#include <sys/resource.h>

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
