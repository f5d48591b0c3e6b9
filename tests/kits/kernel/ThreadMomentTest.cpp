#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <ThreadMoment.h>

namespace {
// What it waited, what others used, its processor and that one's throttles; "-" is not told.
ThreadMoment MomentOf(const Row& row, size_t at)
{
    ThreadMoment moment { {}, std::stod(row[at + 1]), std::stoi(row[at + 2]), {} };
    if (row[at] != "-")
        moment.waited = std::stod(row[at]);
    if (row[at + 3] != "-")
        moment.throttles = std::stoul(row[at + 3]);
    return moment;
}
} // namespace

TEST(ThreadMoment, AChangeIsWhatOtherProgramsAndTheSameProcessorDid)
{
    for (const Row& row : RowsOf("kits/kernel/data/moments.txt", 11)) {
        const ThreadChange change = ChangeBetween(MomentOf(row, 1), MomentOf(row, 5));
        EXPECT_DOUBLE_EQ(change.waited, std::stod(row[9])) << row[0];
        EXPECT_EQ(change.isThrottled ? "slowed" : "not", row[10]) << row[0];
    }
}
