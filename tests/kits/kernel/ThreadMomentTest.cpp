#include "tests/support/Test.h"

#include <ThreadMoment.h>

namespace {

ThreadMoment Moment(std::optional<double> waited, double others = 0, int processor = 0,
    std::optional<uint64> throttles = {})
{
    return { waited, others, processor, throttles };
}

} // namespace

TEST(ThreadMoment, AChangeIsWhatOtherProgramsAndTheSameProcessorDid)
{
    const struct {
        ThreadMoment before, after;
        double waited;
        bool isThrottled = false;
    } rows[] = { { Moment(1.0, 5.0), Moment(1.75, 5.25),
                     0.5 }, // the rest for threads of the process
        { Moment(1.0, 5.0), Moment(1.75, 8.0), 0 }, // these on others' processors
        { Moment(1.0, 5.0), Moment(1.5, 4.9), 0.5 }, // clocks apart
        { Moment({}, 5.0), Moment(1.5, 5.0), 0 }, { Moment(1.5, 5.0), Moment({}, 5.0), 0 },
        { Moment({}, 0, 1, 4), Moment({}, 0, 1, 5), 0, true },
        { Moment({}, 0, 1, 4), Moment({}, 0, 1, 4), 0 },
        { Moment({}, 0, 1, 4), Moment({}, 0, 2, 5), 0 },
        { Moment({}, 0, 1, {}), Moment({}, 0, 1, 5), 0 } };
    for (const auto& row : rows) {
        const ThreadChange change = ChangeBetween(row.before, row.after);
        EXPECT_DOUBLE_EQ(change.waited, row.waited);
        EXPECT_EQ(change.isThrottled, row.isThrottled);
    }
}
