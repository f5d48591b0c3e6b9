#include "tests/support/Child.h"
#include "tests/support/Test.h"

#include <MachineRun.h>

TEST(MachineRun, BelongsToOneProcessUntilThatEndsInAnyWay)
{
    const std::string name = "tarvex-test-" + std::to_string(getpid());
    const size_t files = TempFolder::NamesIn("/proc/self/fd").size();
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
    EXPECT_EQ(TempFolder::NamesIn("/proc/self/fd").size(), files);
}
