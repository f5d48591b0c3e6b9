#include "TestWindow.h"

namespace {

// Says what happens to it.
class LoggedView : public BView {
public:
    LoggedView(const char* name, EventLog& log)
        : BView(BRect(0, 0, 9, 9), name, B_FOLLOW_NONE, B_WILL_DRAW), fLog(log)
    {
    }
    ~LoggedView() override { fLog.Add(std::string("delete ") + Name()); }
    void AttachedToWindow() override { fLog.Add(std::string("attached ") + Name()); }
    void AllAttached() override { fLog.Add(std::string("all attached ") + Name()); }
    void DetachedFromWindow() override { fLog.Add(std::string("detached ") + Name()); }
    void AllDetached() override { fLog.Add(std::string("all detached ") + Name()); }

private:
    EventLog& fLog;
};

} // namespace

TEST(ViewTree, ChildrenAreFoundInTheirOrder)
{
    BView top(BRect(0, 0, 99, 99), "top", B_FOLLOW_NONE, 0);
    BView* a = new BView(BRect(0, 0, 9, 9), "a", B_FOLLOW_NONE, 0);
    BView* b = new BView(BRect(0, 0, 9, 9), "b", B_FOLLOW_NONE, 0);
    BView* deep = new BView(BRect(0, 0, 9, 9), "deep", B_FOLLOW_NONE, 0);
    top.AddChild(b);
    top.AddChild(a, b);
    b->AddChild(deep);
    EXPECT_EQ(top.ChildAt(0), a);
    EXPECT_EQ(a->NextSibling(), b);
    EXPECT_EQ(a->PreviousSibling(), nullptr);
    EXPECT_EQ(top.FindView("deep"), deep);
    EXPECT_EQ(a->FindView("deep"), nullptr);
    EXPECT_EQ(top.FindView("top"), &top);

    a->AddChild(deep); // it has a parent: refused
    EXPECT_EQ(deep->Parent(), b);
    EXPECT_FALSE(top.RemoveChild(deep));
    EXPECT_TRUE(deep->RemoveSelf());
    EXPECT_EQ(b->CountChildren(), 0);
    delete deep;
    delete a; // takes itself out
    EXPECT_EQ(top.CountChildren(), 1);
}

TEST(ViewTree, CoordinatesGoThroughParentsAndScrolledOrigins)
{
    BView top(BRect(0, 0, 99, 99), "top", B_FOLLOW_NONE, 0);
    BView* child = new BView(BRect(10, 20, 59, 69), "child", B_FOLLOW_NONE, 0);
    top.AddChild(child);
    child->ScrollTo(0, 30);
    EXPECT_EQ(child->Bounds(), BRect(0, 30, 49, 79));
    EXPECT_EQ(child->ConvertToParent(BPoint(5, 35)), BPoint(15, 25));
    EXPECT_EQ(child->ConvertFromParent(BPoint(15, 25)), BPoint(5, 35));
}

TEST_F(WindowTest, HooksRunFromTheTopDownAndCompleteFromTheBottomUp)
{
    LoggedView* outer = new LoggedView("outer", *fLog);
    outer->AddChild(new LoggedView("inner", *fLog));
    fWindow->AddChild(outer);
    outer->AddChild(new LoggedView("late", *fLog));
    EXPECT_EQ(outer->Window(), fWindow);
    EXPECT_EQ(outer->Parent(), nullptr);
    EXPECT_EQ(fWindow->FindView("late"), outer->ChildAt(1));
    EXPECT_TRUE(fWindow->RemoveChild(outer));
    EXPECT_EQ(outer->ChildAt(0)->Window(), nullptr);
    EXPECT_EQ(outer->Looper(), nullptr);
    const std::vector<std::string> expected = { "attached outer", "attached inner",
        "all attached inner", "all attached outer", "attached late", "all attached late",
        "detached outer", "detached inner", "all detached inner", "detached late",
        "all detached late", "all detached outer" };
    EXPECT_EQ(fLog->Events(), expected);
    delete outer;
}

TEST_F(WindowTest, AClosingWindowDetachesAndDeletesItsViews)
{
    LoggedView* outer = new LoggedView("outer", *fLog);
    outer->AddChild(new LoggedView("inner", *fLog));
    fWindow->AddChild(outer);
    Show();
    fWindow->Lock();
    fWindow->Quit();
    fWindow = nullptr;
    const std::vector<std::string> events = fLog->Events();
    ASSERT_GE(events.size(), 6u);
    const std::vector<std::string> expected = { "detached outer", "detached inner",
        "all detached inner", "all detached outer", "delete outer", "delete inner" };
    EXPECT_EQ(std::vector<std::string>(events.end() - 6, events.end()), expected);
}

TEST_F(WindowTest, ViewsFollowTheWindowAndTheirWidgetsToo)
{
    BView* outer = new BView(BRect(10, 10, 109, 109), "outer", B_FOLLOW_ALL_SIDES, 0);
    BView* inner = new BView(BRect(20, 20, 39, 39), "inner", B_FOLLOW_RIGHT | B_FOLLOW_TOP, 0);
    outer->AddChild(inner);
    fWindow->AddChild(outer);
    Show();
    fWindow->ResizeBy(50, 30);
    EXPECT_EQ(Locked([&] { return outer->Frame(); }), BRect(10, 10, 159, 139));
    EXPECT_EQ(Locked([&] { return inner->Frame(); }), BRect(70, 20, 89, 39));
    EXPECT_EQ(Locked([&] { return inner->ConvertToScreen(inner->Bounds()); }),
        screen::Find("inner").frame);
    Locked([&] {
        outer->ScrollTo(5, 8);
        return true;
    });
    EXPECT_EQ(Locked([&] { return inner->ConvertToScreen(inner->Bounds()); }),
        screen::Find("inner").frame);
    Locked([&] {
        outer->Hide();
        return true;
    });
    EXPECT_TRUE(Locked([&] { return inner->IsHidden(); }));
    EXPECT_FALSE(screen::Find("inner").exists);
}
