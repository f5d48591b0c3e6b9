#include "tests/support/Child.h"
#include "tests/support/Test.h"

#include <MachineRun.h>

#include <regex>
#include <sys/socket.h>
#include <sys/un.h>

namespace {
std::string OwnName()
{
    return "tarvex-test-" + std::to_string(getpid());
}

// What somebody may put there who only wants to be in the way; returns the sockets.
std::vector<int> Squat(bool listens, int connections)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    strcpy(address.sun_path + 1, OwnName().c_str());
    const auto size = static_cast<socklen_t>(sizeof(sa_family_t) + 1 + OwnName().size());
    auto* place = reinterpret_cast<sockaddr*>(&address);
    std::vector<int> sockets { socket(AF_UNIX, SOCK_STREAM, 0) };
    EXPECT_EQ(bind(sockets[0], place, size), 0);
    if (listens)
        listen(sockets[0], 0);
    for (int i = 0; i < connections; i++) {
        sockets.push_back(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0));
        static_cast<void>(connect(sockets.back(), place, size)); // those beyond the queue fail
    }
    return sockets;
}
} // namespace

TEST(MachineRun, BelongsToOneProcessUntilThatEndsInAnyWay)
{
    const std::string name = OwnName();
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = StartChild([&] {
        BMachineRun first(name.c_str());
        const char status = first.Begin() == B_OK && first.Begin() == B_OK ? 'y' : 'n';
        return write(ends[1], &status, 1) == 1 && sleep(600) == 0 ? 0 : 1;
    });
    char status = 0;
    EXPECT_EQ(read(ends[0], &status, 1), 1);
    EXPECT_EQ(status, 'y');
    BMachineRun second(name.c_str());
    EXPECT_EQ(second.Begin(), B_BUSY);
    const std::regex holder("[^ ]+( \\d+)? \\(process " + std::to_string(child)
        + "\\) since \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d");
    EXPECT_TRUE(std::regex_match(second.Holder(), holder)) << second.Holder();
    kill(child, SIGKILL);
    EXPECT_EQ(EndOf(child), -SIGKILL);
    EXPECT_EQ(second.Begin(), B_OK);
    EXPECT_EQ(BMachineRun(name.c_str()).Begin(), B_BUSY);
    second.End();
    EXPECT_EQ(BMachineRun(name.c_str()).Begin(), B_OK);
    close(ends[0]), close(ends[1]);
}

TEST(MachineRun, WaitsForNobodyWhoMerelyHoldsIt)
{
    const std::tuple<const char*, bool, int> rows[] = {
        { "one that nobody can connect to", false, 0 },
        { "one whose queue is full", true, 3 },
    };
    for (const auto& [name, listens, connections] : rows) {
        SCOPED_TRACE(name);
        const std::vector<int> sockets = Squat(listens, connections);
        BMachineRun run(OwnName().c_str());
        EXPECT_EQ(run.Begin(), B_BUSY);
        EXPECT_EQ(run.Holder(), "another program");
        for (const int file : sockets)
            close(file);
        EXPECT_EQ(run.Begin(), B_OK);
    }
}
