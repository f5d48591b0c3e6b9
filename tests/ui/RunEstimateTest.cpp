#include "ui/RunEstimate.h"

#include "sysinfo/LibSysInfo.h"
#include "tests/support/Test.h"
#include "ui/RunWatch.h"

TEST(RunEstimate, EachPassTakesTheSumOfItsGroups)
{
    const std::tuple<std::vector<size_t>, int32, const char*> rows[] = {
        { {}, 2, "0:00" },
        { { GroupIndex("graphics") }, 1, "1:20" },
        { { GroupIndex("lifecycle"), GroupIndex("io") }, 4, "1:16" },
        { { GroupIndex("graphics"), GroupIndex("lifecycle"), GroupIndex("io") }, 1, "1:39" },
        { { GroupIndex("graphics"), GroupIndex("lifecycle"), GroupIndex("io") }, 8, "13:12" },
    };
    for (const auto& [groups, nbrCpus, text] : rows) {
        RunEstimate estimate;
        estimate.nbrCpus = nbrCpus;
        for (const size_t group : groups)
            estimate.selected[group] = true;
        EXPECT_STREQ(estimate.Text(), text);
    }
}

TEST(RunEstimate, OneScreenSuitsTheGraphicsTests)
{
    LibSysInfo info;
    for (const auto& [width, height, space] : { std::tuple(1024, 768, B_CMAP8),
             { 1023, 768, B_CMAP8 }, { 1024, 767, B_CMAP8 }, { 1024, 768, B_RGB32 } }) {
        info.screenWidth = width;
        info.screenHeight = height;
        info.colorSpace = space;
        EXPECT_EQ(SuitsGraphicsTests(info), width + height == 1792 && space == B_CMAP8);
    }
}

TEST(RunProgress, TakesEachGroupToLastAsLongAsTheLastTime)
{
    RunEstimate plan;
    plan.nbrCpus = 2;
    plan.selected[GroupIndex("graphics")] = plan.selected[GroupIndex("sieve")] = true;
    RunProgress progress;
    for (const bigtime_t time : { 1000000, 2000000 }) // of no run
        progress.GroupBegins(time);
    progress.Begin(plan, 1000000);
    EXPECT_EQ(progress.SecondsLeft(), 12) << "1 and 5, twice";
    EXPECT_EQ(progress.Share(), 0);
    const std::tuple<bigtime_t, double, double> rows[] = {
        // the run's second in which the next group begins, the seconds left then, and the part
        { 0, 12, 0 },
        { 2, 5 + 2 + 5, 1.0 / 7 },
        { 5, 2 + 3, 0.5 },
        { 25, 3, 25.0 / 28 },
    };
    for (const auto& [second, left, share] : rows) {
        progress.GroupBegins((1 + second) * 1000000);
        EXPECT_DOUBLE_EQ(progress.SecondsLeft(), left) << second;
        EXPECT_DOUBLE_EQ(progress.Share(), share) << second;
    }
    progress.Begin(plan, 100000000);
    EXPECT_EQ(progress.SecondsLeft(), 20 + 3 + 20 + 3) << "as measured";
}

TEST(RunRemark, CountsSharedSpansAndTellsOfSleep)
{
    const RunWarning asleep { "asleep", "the machine slept for 12.5 seconds" };
    const RunWarning steal { "steal", "3.0 percent were stolen" };
    const std::tuple<int32, int32, std::vector<RunWarning>, const char*, const char*> rows[] = {
        { 12, 0, { steal }, "None of 12 spans was shared", steal.text.c_str() },
        { 12, 1, { asleep }, "1 of 12 spans was shared; the machine slept for 12.5 seconds", "" },
        { 0, 0, { asleep }, "the machine slept for 12.5 seconds", "" },
    };
    for (const auto& [spans, shared, warnings, line, more] : rows) {
        const RunRemark remark = RemarkOf(spans, shared, warnings);
        EXPECT_EQ(remark.line, line);
        EXPECT_TRUE(remark.more.ends_with(more)) << remark.more;
        EXPECT_EQ(remark.more.starts_with("Shared: "), shared > 0);
    }
}
