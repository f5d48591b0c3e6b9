// Lists: their rows, and what mouse, keyboard and scroll bar do to them.
#include "ListView.h"

#include "ScrollBar.h"
#include "ScrollView.h"
#include "tests/support/ScreenDriver.h"
#include "Window.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>

namespace {

constexpr uint32 kMsgSelected = 'slct';
constexpr uint32 kMsgInvoked = 'invk';

// Counts how often it is drawn and fills its frame with a colour of its own.
class ColorItem : public BListItem {
public:
    void DrawItem(BView* owner, BRect frame, bool) override
    {
        draws++;
        owner->SetHighColor(IsSelected() ? rgb_color { 255, 0, 0 } : rgb_color { 0, 0, 255 });
        owner->FillRect(frame);
    }
    void Update(BView*, const BFont* font) override { SetHeight(font->Size() - 1); }

    int draws = 0;
};

class ListWindow : public BWindow {
public:
    ListWindow() : BWindow(BRect(100, 100, 299, 299), "List", B_TITLED_WINDOW, 0) { }
    void MessageReceived(BMessage* message) override
    {
        if (message->what == kMsgInvoked || message->what == kMsgSelected)
            last = *message;
        else
            BWindow::MessageReceived(message);
    }

    BMessage last;
};

// A list of rows ten pixels high in a view of 100 pixels with a vertical bar.
class ListViewTest : public testing::Test {
protected:
    void SetUp() override
    {
        fWindow = new ListWindow;
        fList = new BListView(BRect(10, 10, 109, 109), "list", B_MULTIPLE_SELECTION_LIST,
            B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_NAVIGABLE);
        fList->SetFontSize(10);
        fScroll = new BScrollView("scroll", fList, B_FOLLOW_ALL_SIDES, 0, false, true);
        fWindow->AddChild(fScroll);
        fList->SetInvocationMessage(new BMessage(kMsgInvoked));
        fList->SetSelectionMessage(new BMessage(kMsgSelected));
    }
    void TearDown() override
    {
        if (fWindow->Lock())
            fWindow->Quit();
    }
    void Add(int count)
    {
        for (int i = 0; i < count; i++) {
            fItems.push_back(std::make_unique<ColorItem>());
            fList->AddItem(fItems.back().get());
        }
    }
    // Waits until the row at y is on the screen in that colour.
    bool Shows(float y, rgb_color color)
    {
        return screen::WaitFor([&] { return screen::PixelAt(OnScreen(y)) == color; });
    }
    BPoint OnScreen(float y)
    {
        fWindow->Lock();
        const BPoint point = fList->ConvertToScreen(BPoint(50, y));
        fWindow->Unlock();
        return point;
    }
    void ShowRows(int count)
    {
        Add(count);
        fWindow->Show();
        ASSERT_TRUE(Shows(5, { 0, 0, 255 }));
    }
    std::vector<int32> Selection()
    {
        std::vector<int32> rows;
        fWindow->Lock();
        for (int32 i = 0; fList->CurrentSelection(i) >= 0; i++)
            rows.push_back(fList->CurrentSelection(i));
        fWindow->Unlock();
        return rows;
    }
    bool Selects(const std::vector<int32>& rows)
    {
        if (screen::WaitFor([&] { return Selection() == rows; }))
            return true;
        for (const int32 row : Selection())
            ADD_FAILURE() << "selected: " << row;
        return false;
    }
    // The rows that the last message of that kind named.
    bool Reports(uint32 what, const std::vector<int32>& rows)
    {
        return screen::WaitFor([&] {
            fWindow->Lock();
            std::vector<int32> indices;
            int32 index;
            while (fWindow->last.FindInt32("index", indices.size(), &index) == B_OK)
                indices.push_back(index);
            const bool same = fWindow->last.what == what && indices == rows;
            fWindow->Unlock();
            return same;
        });
    }
    static void ClickWith(const char* key, BPoint where)
    {
        screen::MoveTo(where);
        const std::string tool = std::string("xdotool keydown ") + key + " click 1 keyup " + key;
        EXPECT_EQ(system(tool.c_str()), 0);
    }

    ListWindow* fWindow = nullptr;
    BListView* fList = nullptr;
    BScrollView* fScroll = nullptr;
    std::vector<std::unique_ptr<ColorItem>> fItems;
};

TEST_F(ListViewTest, RowsLieBelowEachOtherAsTheyComeAndGo)
{
    Add(5);
    EXPECT_EQ(fList->CountItems(), 5);
    EXPECT_EQ(fList->ItemFrame(3), BRect(0, 30, 99, 39));
    EXPECT_EQ(fList->IndexOf(BPoint(3, 39)), 3);
    EXPECT_EQ(fList->IndexOf(BPoint(3, 40)), 4);
    EXPECT_EQ(fList->IndexOf(BPoint(3, 49)), 4);
    EXPECT_EQ(fList->IndexOf(BPoint(3, 50)), -1);
    EXPECT_EQ(fList->IndexOf(BPoint(3, -1)), -1);
    ColorItem extra;
    EXPECT_TRUE(fList->AddItem(&extra, 1));
    EXPECT_EQ(fList->ItemFrame(5), BRect(0, 50, 99, 59));
    EXPECT_EQ(fList->ItemAt(2), fItems[1].get());
    EXPECT_TRUE(fList->RemoveItem(&extra));
    EXPECT_FALSE(fList->RemoveItem(&extra));
    EXPECT_EQ(fList->RemoveItem(5), nullptr);
    EXPECT_FALSE(fList->AddItem(&extra, 6));
    EXPECT_FALSE(fList->AddItem(nullptr));
    EXPECT_EQ(fList->IndexOf(fItems[4].get()), 4);
    fList->SetFontSize(20);
    EXPECT_EQ(fList->ItemFrame(4), BRect(0, 80, 99, 99));
    fList->MakeEmpty();
    EXPECT_TRUE(fList->IsEmpty());
    EXPECT_FALSE(fList->ItemFrame(0).IsValid());
}

TEST_F(ListViewTest, SelectionByTheProgram)
{
    Add(6);
    fItems[2]->SetEnabled(false);
    fList->Select(1, 4);
    EXPECT_EQ(Selection(), (std::vector<int32> { 1, 3, 4 })); // row 2 cannot be
    fList->Select(0, true);
    fList->Deselect(3);
    EXPECT_EQ(Selection(), (std::vector<int32> { 0, 1, 4 }));
    EXPECT_EQ(fList->RemoveItem(0), fItems[0].get());
    EXPECT_EQ(Selection(), (std::vector<int32> { 0, 3 }));
    EXPECT_FALSE(fItems[0]->IsSelected());
    fList->SetListType(B_SINGLE_SELECTION_LIST);
    fList->Select(1, true);
    fList->Select(2, true);
    EXPECT_EQ(Selection(), (std::vector<int32> { 2 }));
    fList->DeselectAll();
    EXPECT_EQ(fList->CurrentSelection(), -1);
    fList->Select(77);
    EXPECT_EQ(fList->CurrentSelection(), -1);
    EXPECT_TRUE(Reports(0, {})) << "the looper does not run yet";
    fWindow->Show();
    EXPECT_TRUE(Reports(kMsgSelected, {}));
}

TEST_F(ListViewTest, ClicksSelectAndADoubleClickInvokes)
{
    ShowRows(8);
    screen::ClickAt(OnScreen(25));
    EXPECT_TRUE(Selects({ 2 }));
    EXPECT_TRUE(Reports(kMsgSelected, { 2 }));
    EXPECT_TRUE(Shows(25, { 255, 0, 0 }));
    ClickWith("shift", OnScreen(45));
    EXPECT_TRUE(Selects({ 2, 3, 4 }));
    ClickWith("shift", OnScreen(5)); // the range still begins at row 2
    EXPECT_TRUE(Selects({ 0, 1, 2 }));
    ClickWith("ctrl", OnScreen(65));
    EXPECT_TRUE(Selects({ 0, 1, 2, 6 }));
    ClickWith("ctrl", OnScreen(15));
    EXPECT_TRUE(Selects({ 0, 2, 6 }));
    screen::DoubleClickAt(OnScreen(35));
    EXPECT_TRUE(Reports(kMsgInvoked, { 3 }));
    fItems.push_back(std::make_unique<ColorItem>());
    fWindow->Lock();
    fList->AddItem(fItems.back().get(), 0);
    fWindow->Unlock();
    ClickWith("shift", OnScreen(65)); // from what is row 4 now
    EXPECT_TRUE(Selects({ 4, 5, 6 }));
    screen::ClickAt(OnScreen(95)); // below the rows
    EXPECT_TRUE(Selects({}));
}

TEST_F(ListViewTest, KeysMoveTheSelectionAndScrollToIt)
{
    ShowRows(40);
    screen::ClickAt(OnScreen(5));
    EXPECT_TRUE(Selects({ 0 }));
    screen::Key("Down");
    EXPECT_TRUE(Selects({ 1 }));
    screen::Key("shift+Down");
    EXPECT_TRUE(Selects({ 1, 2 }));
    screen::Key("Next");
    EXPECT_TRUE(Selects({ 11 })); // a page shows ten rows; one of them stays in sight
    screen::Key("End");
    EXPECT_TRUE(Selects({ 39 }));
    EXPECT_TRUE(Shows(395, { 255, 0, 0 }));
    EXPECT_TRUE(screen::WaitFor([this] {
        fWindow->Lock();
        const float value = fScroll->ScrollBar(B_VERTICAL)->Value();
        fWindow->Unlock();
        return value == 300;
    }));
    screen::Key("Return");
    EXPECT_TRUE(Reports(kMsgInvoked, { 39 }));
    screen::Key("Home");
    EXPECT_TRUE(Selects({ 0 }));
    EXPECT_TRUE(Shows(5, { 255, 0, 0 }));
}

TEST_F(ListViewTest, TheBarFollowsRowsAndSize)
{
    const auto becomes = [this](float max, float proportion) {
        return screen::WaitFor([&] {
            fWindow->Lock();
            BScrollBar* bar = fScroll->ScrollBar(B_VERTICAL);
            float shownMin, shownMax;
            bar->GetRange(&shownMin, &shownMax);
            const bool same = shownMax == max && bar->Proportion() == proportion;
            fWindow->Unlock();
            return same;
        });
    };
    fWindow->Show();
    EXPECT_TRUE(becomes(0, 1));
    fWindow->Lock();
    Add(25);
    fList->Select(24);
    fList->ScrollToSelection();
    EXPECT_EQ(fList->LeftTop().y, 150) << "with the range as it is now";
    fList->Select(18);
    fList->ScrollToSelection();
    EXPECT_EQ(fList->LeftTop().y, 150) << "in sight already";
    fWindow->Unlock();
    EXPECT_TRUE(becomes(150, 0.4f));
    fWindow->Lock();
    fScroll->ResizeBy(0, 25);
    fWindow->Unlock();
    EXPECT_TRUE(becomes(125, 0.5f));
    fWindow->Lock();
    for (int i = 0; i < 10; i++)
        fList->RemoveItem(0);
    fWindow->Unlock();
    EXPECT_TRUE(becomes(25, 125.0f / 150));
    fWindow->Lock();
    EXPECT_EQ(fList->LeftTop().y, 25) << "scrolled back with the shorter range";
    fList->MakeEmpty();
    EXPECT_EQ(fList->LeftTop().y, 0);
    fWindow->Unlock();
    EXPECT_TRUE(becomes(0, 1));
}

TEST_F(ListViewTest, OnlyVisibleRowsOfManyAreDrawn)
{
    ShowRows(10000);
    fWindow->Lock();
    fList->ScrollTo(0, 50000);
    fWindow->Unlock();
    EXPECT_TRUE(Shows(50005, { 0, 0, 255 }));
    fWindow->Lock();
    int drawn = 0;
    for (const auto& item : fItems)
        drawn += item->draws > 0;
    fWindow->Unlock();
    EXPECT_GE(drawn, 20);
    EXPECT_LE(drawn, 24);
}

TEST_F(ListViewTest, StringItemsShowTheirText)
{
    BStringItem item("HHHH");
    fList->AddItem(&item);
    EXPECT_GE(item.Height(), 10);
    EXPECT_GT(item.Width(), be_plain_font->StringWidth("H"));
    fWindow->Show();
    EXPECT_TRUE(screen::WaitFor([&] {
        for (float x = 5; x < 30; x++) {
            if (screen::PixelAt(OnScreen(7) + BPoint(x - 50, 0)) == black_color)
                return true;
        }
        return false;
    }));
    screen::ClickAt(OnScreen(5));
    EXPECT_TRUE(Shows(1, { 184, 184, 184 }));
    fWindow->Lock();
    fList->MakeEmpty(); // the item goes first
    fWindow->Unlock();
}

} // namespace
