// Lists: their rows, and what mouse, keyboard and scroll bar do to them.
#include "ListView.h"

#include "ScrollBar.h"
#include "ScrollView.h"
#include "tests/kits/interface/TestWindow.h"

namespace {

constexpr rgb_color kBlue { 0, 0, 255 };
constexpr rgb_color kRed { 255, 0, 0 };

// Counts how often it is drawn and fills its frame with a colour of its own.
class ColorItem : public BListItem {
public:
    void DrawItem(BView* owner, BRect frame, bool) override
    {
        draws++;
        owner->SetHighColor(IsSelected() ? kRed : kBlue);
        owner->FillRect(frame);
    }
    void Update(BView*, const BFont* font) override { SetHeight(font->Size() - 1); }

    int draws = 0;
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
            fList->AddItem(fItems.back().get(), firstRow + i);
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
    }
    static void ClickWith(const std::string& key, BPoint where)
    {
        screen::MoveTo(where);
        EXPECT_EQ(system(("xdotool keydown " + key + " click 1 keyup " + key).c_str()), 0);
    }

    BListView* fList = nullptr;
    BScrollView* fScroll = nullptr;
    std::vector<std::unique_ptr<ColorItem>> fItems;
};

TEST_F(ListViewTest, RowsLieBelowEachOtherAsTheyComeAndGo)
{
    Add(5);
    EXPECT_EQ(fList->ItemFrame(3), BRect(0, 30, 99, 39));
    EXPECT_EQ(fList->IndexOf(BPoint(3, 39)), 3);
    EXPECT_EQ(fList->IndexOf(BPoint(3, 50)), -1);
    ColorItem extra;
    EXPECT_TRUE(fList->AddItem(&extra, 1));
    EXPECT_EQ(fList->ItemFrame(5), BRect(0, 50, 99, 59));
    EXPECT_TRUE(fList->RemoveItem(&extra));
    EXPECT_FALSE(fList->RemoveItem(&extra));
    fList->SetFontSize(20);
    EXPECT_EQ(fList->ItemFrame(4), BRect(0, 80, 99, 99));
    fList->MakeEmpty();
    EXPECT_FALSE(fList->ItemFrame(0).IsValid());
}

TEST_F(ListViewTest, ItsBorderShowsThatItHasTheKeyboard)
{
    fWindow->AddChild(
        new BView(BRect(150, 10, 190, 50), "other", B_FOLLOW_NONE, B_WILL_DRAW | B_NAVIGABLE));
    ShowRows(1);
    const BPoint border = OnScreen(50) - BPoint(50 + 2, 0);
    const rgb_color color = ui_color(B_MENU_SELECTED_BACKGROUND_COLOR);
    Locked([&] { fList->MakeFocus(); });
    EXPECT_SOON(screen::PixelAt(border) == color);
    screen::Key("Tab");
    EXPECT_SOON(screen::PixelAt(border) != color);
}

TEST_F(ListViewTest, TellsEachSelectionByTheProgram)
{
    Add(6);
    fItems[2]->SetEnabled(false);
    fList->Select(1, 4); // but not row 2
    fList->Select(0, true);
    fList->Deselect(3);
    EXPECT_EQ(fList->RemoveItem(0), fItems[0].get());
    fList->Select(2, true); // what was row 3
    fList->SetListType(B_SINGLE_SELECTION_LIST);
    fList->Select(4, true);
    fList->DeselectAll();
    fWindow->Show();
    EXPECT_EQ(fLog->WaitFor(6),
        (Entries { "50 1 3 4", "50 0 1 3 4", "50 0 1 4", "50 0 2 3", "50 4", "50" }));
}

TEST_F(ListViewTest, ClicksSelectAndADoubleClickInvokes)
{
    ShowRows(8);
    screen::ClickAt(OnScreen(25));
    EXPECT_TRUE(fLog->WaitFor("50 2"));
    EXPECT_TRUE(Shows(25, kRed));
    const std::tuple<const char*, float, const char*> rows[] = {
        { "shift", 45, "50 2 3 4" },
        { "shift", 5, "50 0 1 2" }, // the range still begins at row 2
        { "ctrl", 65, "50 0 1 2 6" },
        { "ctrl", 15, "50 0 2 6" },
    };
    for (const auto& [key, y, event] : rows) {
        ClickWith(key, OnScreen(y));
        EXPECT_TRUE(fLog->WaitFor(event)) << event;
    }
    screen::DoubleClickAt(OnScreen(35));
    EXPECT_TRUE(fLog->WaitFor("51 3"));
    Locked([&] { Add(1, 0); });
    EXPECT_TRUE(Shows(45, kRed));
    ClickWith("shift", OnScreen(65)); // from what is row 4 now
    EXPECT_TRUE(fLog->WaitFor("50 4 5 6"));
    screen::ClickAt(OnScreen(95)); // below the rows
    EXPECT_TRUE(fLog->WaitFor("50"));
}

TEST_F(ListViewTest, KeysMoveTheSelectionAndScrollToIt)
{
    ShowRows(40);
    screen::ClickAt(OnScreen(5));
    EXPECT_TRUE(fLog->WaitFor("50 0"))
        << "keys go where the click led, once the window has seen it";
    const std::pair<const char*, const char*> rows[] = { { "Down", "50 1" },
        { "shift+Down", "50 1 2" }, // a page shows ten rows; one of them stays in sight:
        { "Next", "50 11" }, { "End", "50 39" }, { "Return", "51 39" } };
    for (const auto& [key, event] : rows) {
        screen::Key(key);
        EXPECT_TRUE(fLog->WaitFor(event)) << event;
    }
    EXPECT_TRUE(Shows(395, kRed));
    EXPECT_TRUE(Becomes([&] { return fScroll->ScrollBar(B_VERTICAL)->Value() == 300; }));
    screen::Key("Home");
    EXPECT_TRUE(Shows(5, kRed));
}

TEST_F(ListViewTest, TheBarFollowsRowsAndSize)
{
    // The list is always scrolled down as far as it goes.
    const auto becomes = [this](float max, float proportion) {
        return Becomes([&] {
            BScrollBar* bar = fScroll->ScrollBar(B_VERTICAL);
            float shownMin, shownMax;
            bar->GetRange(&shownMin, &shownMax);
            return shownMax == max && bar->Proportion() == proportion && fList->LeftTop().y == max;
        });
    };
    Show();
    EXPECT_TRUE(becomes(0, 1));
    Locked([&] {
        Add(25);
        for (const int32 row : { 24, 18 }) { // the second is in sight already
            fList->Select(row);
            fList->ScrollToSelection();
            EXPECT_EQ(fList->LeftTop().y, 150) << "with the range as it is now";
        }
    });
    EXPECT_TRUE(becomes(150, 0.4f));
    EXPECT_TRUE(screen::Click("list", "", 4)); // a notch of the wheel: three rows
    EXPECT_TRUE(Becomes([&] { return fList->LeftTop().y == 120; }));
    Locked([&] {
        fList->ScrollTo(0, 150);
        fScroll->ResizeBy(0, 25);
    });
    EXPECT_TRUE(becomes(125, 0.5f));
    Locked([&] {
        for (int i = 0; i < 10; i++)
            fList->RemoveItem(0);
    });
    EXPECT_TRUE(becomes(25, 125.0f / 150));
    Locked([&] { fList->MakeEmpty(); });
    EXPECT_TRUE(becomes(0, 1));
}

TEST_F(ListViewTest, StringItemsShowTheirText)
{
    BStringItem item("HHHH");
    fList->AddItem(&item);
    Show();
    EXPECT_TRUE(screen::WaitFor([&] {
        for (float x = 5; x < 30; x++) {
            if (screen::PixelAt(OnScreen(7) + BPoint(x - 50, 0)) == black_color)
                return true;
        }
        return false;
    }));
    screen::ClickAt(OnScreen(5));
    EXPECT_TRUE(Shows(1, { 184, 184, 184 }));
    Locked([&] { fList->MakeEmpty(); }); // the item goes first
}

} // namespace
