// Lists: their rows, and what mouse, keyboard and scroll bar do to them.
#include "ListView.h"

#include "ScrollBar.h"
#include "ScrollView.h"
#include "tests/kits/interface/TestWindow.h"

namespace {

constexpr rgb_color kBlue { 0, 0, 255 }, kRed { 255, 0, 0 };

// Fills its frame with a colour of its own.
class ColorItem : public BListItem {
public:
    void DrawItem(BView* owner, BRect frame, bool) override
    {
        owner->SetHighColor(IsSelected() ? kRed : kBlue);
        owner->FillRect(frame);
    }
    void Update(BView*, const BFont* font) override { SetHeight(font->Size() - 1); }
};

// A list of rows ten pixels high in a view of 100 pixels with a vertical bar. The window's log has
// the selection as "50 ROW...", an invocation as "51 ROW...".
class ListViewTest : public WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        fList = new BListView(BRect(10, 10, 109, 109), "list", B_MULTIPLE_SELECTION_LIST,
            B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_NAVIGABLE);
        fList->SetFontSize(10);
        fScroll = new BScrollView("scroll", fList, B_FOLLOW_ALL_SIDES, 0, false, true);
        fWindow->AddChild(fScroll);
        fList->SetSelectionMessage(new BMessage(50));
        fList->SetInvocationMessage(new BMessage(51));
    }
    void Add(int count, int32 firstRow = 0)
    {
        for (int i = 0; i < count; i++) {
            fItems.push_back(std::make_unique<ColorItem>());
            EXPECT_TRUE(fList->AddItem(fItems.back().get(), firstRow + i));
        }
    }
    // Waits until the row at y is on the screen in that colour.
    bool Shows(float y, rgb_color color)
    {
        return screen::WaitFor([&] { return screen::PixelAt(OnScreen(y)) == color; });
    }
    BPoint OnScreen(float y)
    {
        return Locked([&] { return fList->ConvertToScreen(BPoint(50, y)); });
    }
    void ShowRows(int count)
    {
        Add(count);
        Show();
        ASSERT_TRUE(Shows(5, kBlue));
        screen::ClickAt(OnScreen(25));
        ASSERT_TRUE(fLog->WaitFor("50 2")); // from here on keys go to the list
        ASSERT_TRUE(Shows(25, kRed));
    }
    void ClickWith(const std::string& key, float y)
    {
        screen::MoveTo(OnScreen(y));
        EXPECT_EQ(system(("xdotool keydown " + key + " click 1 keyup " + key).c_str()), 0);
    }

    BListView* fList = nullptr;
    BScrollView* fScroll = nullptr;
    std::vector<std::unique_ptr<ColorItem>> fItems;
};

TEST_F(ListViewTest, RowsLieBelowEachOtherAsTheyComeAndGo)
{
    Add(5);
    ColorItem extra;
    EXPECT_FALSE(
        fList->AddItem(&extra, 6) || fList->AddItem(&extra, -1) || fList->AddItem(nullptr));
    EXPECT_EQ(fList->ItemFrame(3), BRect(0, 30, 99, 39));
    const std::pair<float, int32> places[] = { { -1, -1 }, { 0, 0 }, { 9, 0 }, { 10, 1 }, { 49, 4 },
        { 50, -1 } };
    for (const auto& [y, index] : places)
        EXPECT_EQ(fList->IndexOf(BPoint(3, y)), index) << y;
    EXPECT_TRUE(fList->AddItem(&extra, 1));
    EXPECT_EQ(fList->IndexOf(&extra), 1);
    EXPECT_EQ(fList->ItemFrame(5), BRect(0, 50, 99, 59));
    EXPECT_TRUE(fList->RemoveItem(&extra));
    EXPECT_FALSE(fList->RemoveItem(&extra) || fList->RemoveItem(5) || fList->RemoveItem(-1));
    fList->SetFontSize(20);
    EXPECT_EQ(fList->ItemFrame(4), BRect(0, 80, 99, 99));
    fList->MakeEmpty();
    EXPECT_FALSE(fList->ItemFrame(0).IsValid());
}

TEST_F(ListViewTest, TellsEachSelectionByTheProgram)
{
    Add(6);
    fItems[2]->SetEnabled(false);
    fList->Select(4, 1); // but not row 2
    fList->Select(4, 3, true); // are already
    fList->Select(0, true);
    fList->Select(6, true); // is not there, nor are these
    fList->Select(-1, 3);
    fList->Deselect(6);
    fList->Deselect(3);
    EXPECT_TRUE(fList->RemoveItem(0) == fItems[0].get() && !fItems[0]->IsSelected());
    fList->Select(2, true); // what was row 3
    EXPECT_EQ(fList->CurrentSelection(2), 3);
    EXPECT_EQ(fList->CurrentSelection(3), -1);
    fList->SetListType(B_SINGLE_SELECTION_LIST);
    fList->Select(4, true);
    fList->Select(0, 3);
    EXPECT_TRUE(fList->IsItemSelected(4) && !fList->IsItemSelected(0) && !fList->IsItemSelected(5));
    fList->DeselectAll();
    fList->DeselectAll();
    fWindow->Show();
    EXPECT_EQ(fLog->WaitFor(6),
        (Entries { "50 1 3 4", "50 0 1 3 4", "50 0 1 4", "50 0 2 3", "50 4", "50" }));
}

TEST_F(ListViewTest, ClicksSelectAndADoubleClickInvokes)
{
    ShowRows(8);
    ClickWith("shift", 45);
    ClickWith("shift", 5); // the range still begins at row 2
    ClickWith("ctrl", 65);
    ClickWith("ctrl", 15);
    screen::DoubleClickAt(OnScreen(35));
    EXPECT_TRUE(fLog->WaitFor("51 3"));
    Locked([&] { Add(1, 3); });
    EXPECT_TRUE(Shows(45, kRed));
    ClickWith("shift", 65); // from what is row 4 now
    ClickWith("shift", 95); // below the rows
    screen::ClickAt(OnScreen(95));
    EXPECT_EQ(fLog->WaitFor(9),
        (Entries { "50 2", "50 2 3 4", "50 0 1 2", "50 0 1 2 6", "50 0 2 6", "50 3", "51 3",
            "50 4 5 6", "50" }));
}

TEST_F(ListViewTest, KeysMoveTheSelectionAndScrollToItAndItsBorderShowsThem)
{
    fWindow->AddChild(
        new BView(BRect(150, 10, 190, 50), "other", B_FOLLOW_NONE, B_WILL_DRAW | B_NAVIGABLE));
    ShowRows(40);
    const BPoint border = OnScreen(50) - BPoint(50 + 2, 0);
    const rgb_color color = ui_color(B_MENU_SELECTED_BACKGROUND_COLOR);
    EXPECT_SOON(screen::PixelAt(border) == color);
    Locked([&] { fItems[38]->SetEnabled(false); });
    for (const char* key : { "Down", "shift+Down", "Next", "End", "Return" }) // a page has ten rows
        screen::Key(key);
    EXPECT_TRUE(Shows(395, kRed));
    EXPECT_TRUE(Becomes([&] { return fScroll->ScrollBar(B_VERTICAL)->Value() == 300; }));
    for (const char* key : { "Up", "Prior", "space", "Home", "Up", "shift+Next", "x" })
        screen::Key(key);
    EXPECT_EQ(fLog->WaitFor(11),
        (Entries { "50 2", "50 3", "50 3 4", "50 13", "50 39", "51 39", "50 37", "50 28", "51 28",
            "50 0", "50 0 1 2 3 4 5 6 7 8 9" }));
    EXPECT_TRUE(Shows(5, kRed));
    screen::Key("Tab");
    EXPECT_SOON(screen::PixelAt(border) != color);
}

TEST_F(ListViewTest, TheBarFollowsRowsAndSize)
{
    // The list is always scrolled down as far as it goes.
    const auto becomes = [this](float max, float proportion, float page) {
        return Becomes([&] {
            BScrollBar* bar = fScroll->ScrollBar(B_VERTICAL);
            float least, most, small, large;
            bar->GetRange(&least, &most);
            bar->GetSteps(&small, &large);
            return least == 0 && most == max && bar->Proportion() == proportion && large == page
                && small == (max == 0 ? 1 : 10) && fList->LeftTop().y == max;
        });
    };
    Show();
    EXPECT_TRUE(becomes(0, 1, 99));
    Locked([&] {
        Add(25);
        for (const int32 row : { 24, 18 }) { // the second is in sight already
            fList->Select(row);
            fList->ScrollToSelection();
            EXPECT_EQ(fList->LeftTop().y, 150) << "with the range as it is now";
        }
    });
    EXPECT_TRUE(becomes(150, 0.4f, 90));
    EXPECT_TRUE(screen::Click("list", "", 4)); // a notch of the wheel: three rows
    EXPECT_TRUE(Becomes([&] { return fList->LeftTop().y == 120; }));
    Locked([&] {
        fList->ScrollTo(0, 150);
        fScroll->ResizeBy(0, 25);
    });
    EXPECT_TRUE(becomes(125, 0.5f, 115));
    Locked([&] {
        for (int i = 0; i < 10; i++)
            fList->RemoveItem(0);
    });
    EXPECT_TRUE(becomes(25, 125.0f / 150, 115));
    Locked([&] { fList->MakeEmpty(); });
    EXPECT_TRUE(becomes(0, 1, 124));
}

} // namespace
