// Lists: their rows, and what mouse, keyboard and scroll bar do to them.
#include "ListView.h"

#include "ScrollBar.h"
#include "ScrollView.h"
#include "tests/kits/interface/TestWindow.h"
#include "tests/support/Rows.h"

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
// the selection as "50 ROW...", an invocation as "51 ROW...". Rows are clicked by their place.
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
    BPoint OnScreen(float y)
    {
        return Locked([&] { return fList->ConvertToScreen(BPoint(50, y)); });
    }
    void ClickWith(const std::string& key, float y)
    {
        screen::MoveTo(OnScreen(y));
        EXPECT_EQ(system(("xdotool keydown " + key + " click 1 keyup " + key).c_str()), 0);
    }
    // What the program or the user does, as a line of a file has it.
    void Do(const Row& words)
    {
        const int n = words.size() > 1 ? std::stoi(words[1]) : 0;
        const int m = words.size() > 2 ? std::stoi(words[2]) : 0;
        const std::map<std::string, std::function<void()>> byUser = {
            { "show", [&] { Show(); } },
            { "click", [&] { screen::ClickAt(OnScreen(n)); } },
            { "double", [&] { screen::DoubleClickAt(OnScreen(n)); } },
            { "shift", [&] { ClickWith("shift", n); } },
            { "ctrl", [&] { ClickWith("ctrl", n); } },
            { "wheel", [&] { screen::Click("list", "", n); } },
            { "bar", [&] { screen::ClickAt(fList->ConvertToScreen(BPoint(107, n))); } },
        };
        const std::map<std::string, std::function<void()>> byProgram = {
            { "add", [&] { Add(n, m); } },
            { "remove", [&] { EXPECT_EQ(fList->RemoveItem(n) != nullptr, m == 0); } },
            { "disable", [&] { fItems[n]->SetEnabled(false); } },
            { "select", [&] { fList->Select(n); } },
            { "also", [&] { fList->Select(n, true); } },
            { "range", [&] { fList->Select(n, m); } },
            { "more", [&] { fList->Select(n, m, true); } },
            { "deselect", [&] { fList->Deselect(n); } },
            { "none", [&] { fList->DeselectAll(); } },
            { "single", [&] { fList->SetListType(B_SINGLE_SELECTION_LIST); } },
            { "empty", [&] { fList->MakeEmpty(); } },
            { "font", [&] { fList->SetFontSize(n); } },
            { "higher", [&] { fScroll->ResizeBy(0, n); } },
            { "scroll", [&] { fList->ScrollTo(0, n); } },
            { "reach", [&] { Add(n), fList->Select(n - 1), fList->ScrollToSelection(); } },
            { "seen", [&] { fList->ScrollToSelection(); } },
        };
        if (byUser.contains(words[0]))
            byUser.at(words[0])();
        else if (byProgram.contains(words[0]))
            Locked(byProgram.at(words[0]));
        else
            screen::Key(words[0]);
    }
    // Rows, the bar's range, steps and share, and where the list is.
    std::string State()
    {
        return Locked([&] {
            float least, most, small, large;
            const BScrollBar& bar = *fScroll->ScrollBar(B_VERTICAL);
            bar.GetRange(&least, &most);
            bar.GetSteps(&small, &large);
            const BRect last = fList->ItemFrame(fList->CountItems() - 1);
            char text[200];
            snprintf(text, sizeof(text),
                "%d rows, the last %gx%g; %g..%g by %g and %g, %.3f; at %g.", fList->CountItems(),
                last.Width() + 1, last.Height() + 1, least, most, small, large, bar.Proportion(),
                fList->LeftTop().y);
            return std::string(text);
        });
    }
    // Does what a file says, line by line: what is logged then, and the state where a line ends it
    // with a full stop.
    void Follow(const std::string& name)
    {
        for (const TextRow& row : ReadRows("kits/interface/drawing/" + name + ".txt")) {
            SCOPED_TRACE(row.given);
            Do(RowOf(row.given));
            std::string told;
            screen::WaitFor([&] {
                const Entries all = fLog->Now();
                told.clear();
                for (size_t i = fKnown; i < all.size(); i++)
                    told += all[i] + "\n";
                told += row.told.ends_with(".") ? State() : "";
                return told == row.told + (told.ends_with("\n") ? "\n" : "");
            });
            EXPECT_EQ(told, row.told + (told.ends_with("\n") ? "\n" : ""));
            fKnown = fLog->Now().size();
        }
    }

    size_t fKnown = 0; // of the log
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
    EXPECT_TRUE(fList->IndexOf(&extra) == 1 && fList->ItemFrame(5) == BRect(0, 50, 99, 59));
    EXPECT_TRUE(fList->RemoveItem(&extra));
    EXPECT_FALSE(fList->RemoveItem(&extra) || fList->RemoveItem(5) || fList->RemoveItem(-1));
    EXPECT_FALSE(fList->ItemFrame(5).IsValid());
}

TEST_F(ListViewTest, TellsEachSelectionByTheProgram)
{
    Follow("list-selection");
    EXPECT_TRUE(fList->CurrentSelection(2) == 3 && fList->CurrentSelection(4) == -1);
    EXPECT_TRUE(fList->IsItemSelected(2) && !fList->IsItemSelected(1) && !fList->IsItemSelected(5));
    EXPECT_FALSE(fItems[0]->IsSelected()) << "it was taken out";
}

TEST_F(ListViewTest, ClicksSelectAndADoubleClickInvokes)
{
    Follow("list-clicks");
}

TEST_F(ListViewTest, KeysMoveTheSelectionAndScrollToItAndItsBorderShowsThem)
{
    fWindow->AddChild(
        new BView(BRect(150, 10, 190, 50), "other", B_FOLLOW_NONE, B_WILL_DRAW | B_NAVIGABLE));
    Follow("list-keys");
    const auto shows = [&](BPoint from, rgb_color color) {
        return screen::PixelAt(OnScreen(5) + from) == color;
    };
    const rgb_color color = ui_color(B_MENU_SELECTED_BACKGROUND_COLOR);
    EXPECT_SOON(
        shows(BPoint(), kRed) && shows(BPoint(0, 90), kRed) && shows(BPoint(-52, 0), color));
    screen::Key("Tab");
    EXPECT_SOON(!shows(BPoint(-52, 0), color));
    Locked([&] { fList->DeselectAll(); });
    EXPECT_SOON(shows(BPoint(), kBlue) && shows(BPoint(0, 90), kBlue));
}

TEST_F(ListViewTest, TheBarFollowsRowsAndSize)
{
    Follow("list-bar");
}

} // namespace
