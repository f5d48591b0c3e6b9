#include "ui/AnimateCursor.h"

#include "kits/app/CursorState.h"

#include <Application.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <cstring>
#include <limits>
#include <mutex>
#include <vector>

namespace {

std::mutex gMutex;
std::condition_variable gChanged;
std::vector<int> gShown; // the first image byte of each picture

void Record()
{
    const int mark = CurrentCursor().image[4];
    const std::lock_guard lock(gMutex);
    gShown.push_back(mark);
    gChanged.notify_all();
}

std::vector<unsigned char> Frame(unsigned char mark)
{
    std::vector<unsigned char> frame(kCursorBytes, 0);
    frame[0] = 16;
    frame[1] = 1;
    frame[4] = mark;
    return frame;
}

class AnimateCursorTest : public testing::Test {
protected:
    AnimateCursorTest()
    {
        SetCursorHook(Record);
        gShown.clear(); // of the picture before any animation, which is recorded at once
    }
    ~AnimateCursorTest() override { SetCursorHook(nullptr); }

    // The first pictures shown, once there are as many.
    static std::vector<int> Shown(size_t count)
    {
        std::unique_lock lock(gMutex);
        gChanged.wait_for(lock, std::chrono::seconds(30), [=] { return gShown.size() >= count; });
        return { gShown.begin(), gShown.begin() + long(std::min(count, gShown.size())) };
    }

    BApplication app { "application/x-vnd.Quorvane.CursorTest" };
};

} // namespace

TEST_F(AnimateCursorTest, ShowsTheFilledFramesInTurnAndTheHandAtTheEnd)
{
    AnimateCursor cursor("LoadCursor", 3);
    cursor.SetCursor(0, Frame(1).data());
    cursor.SetCursor(2, Frame(3).data());
    cursor.SetCursor(3, Frame(4).data()); // there is no such frame
    cursor.SetCursor(-1, Frame(5).data());
    cursor.Run(0.001f);
    EXPECT_GE(find_thread("LoadCursor"), 0);
    EXPECT_EQ(Shown(4), (std::vector { 1, 3, 1, 3 }));
    cursor.Quit();
    EXPECT_LT(find_thread("LoadCursor"), 0);
    EXPECT_EQ(memcmp(CurrentCursor().image, B_HAND_CURSOR, kCursorBytes), 0);
}

TEST_F(AnimateCursorTest, KeepsItsPeriodWhereTheNewOneIsNone)
{
    AnimateCursor cursor("LoadCursor", 1);
    cursor.SetCursor(0, Frame(1).data());
    for (const float period : { 0.001f, -1.0f, std::numeric_limits<float>::quiet_NaN() }) {
        cursor.Run(period);
        EXPECT_EQ(Shown(20).size(), 20u);
        cursor.Quit();
        gShown.clear();
    }
}

TEST_F(AnimateCursorTest, OnlyANamedOneStartsAThreadAndNoPeriodHoldsItUp)
{
    for (const char* name : { "", "LoadCursor" }) {
        AnimateCursor cursor(name, 1);
        cursor.SetCursor(0, Frame(1).data());
        cursor.Run(std::numeric_limits<float>::infinity());
        EXPECT_EQ(find_thread("LoadCursor") >= 0, name[0] != '\0');
        cursor.Quit();
        EXPECT_LT(find_thread("LoadCursor"), 0);
    }
}
