// Lists: their rows, and what mouse, keyboard and scroll bar do to them.
#include "ListView.h"

#include "Button.h"
#include "ScrollBar.h"
#include "ScrollView.h"
#include "tests/kits/interface/TestWindow.h"

namespace {

constexpr rgb_color kBlue { 0, 0, 255 }, kRed { 255, 0, 0 }, kGreen { 0, 255, 0 };

// Fills its frame: red where it is selected, green where the ground is not cleared.
class ColorItem : public BListItem {
public:
    void DrawItem(BView* owner, BRect frame, bool complete) override
    {
        owner->SetHighColor(IsSelected() ? kRed : complete ? kGreen : kBlue);
        owner->FillRect(frame);
    }
    void Update(BView*, const BFont* font) override
    {
        SetHeight(font->Size() - 1);
        SetWidth(129);
    }
};

// A list of rows ten pixels high and 130 wide in a view of 100 pixels with two bars. The window's
// log has the selection as "50 ROW...", an invocation as "51 ROW...", the default button as "9
// value 0". Rows are clicked by their place.
class ListViewTest : public WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        fList = new BListView(BRect(10, 10, 109, 109), "list", B_MULTIPLE_SELECTION_LIST,
            B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_NAVIGABLE);
        fList->SetFontSize(10);
        fScroll = new BScrollView("scroll", fList, B_FOLLOW_ALL_SIDES, 0, true, true);
        fWindow->AddChild(fScroll);
        auto* button = new BButton(BRect(10, 165, 90, 189), "button", "OK", new BMessage(9));
        button->MakeDefault(true);
        fWindow->AddChild(button);
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
    // A double click's second one, wherever the first was.
    void PostSecondClick(float y)
    {
        BMessage click(B_MOUSE_DOWN);
        click.AddPoint("where", BPoint(50, y));
        click.AddInt32("clicks", 2);
        EXPECT_EQ(fWindow->PostMessage(&click, fList), B_OK);
    }
    // What the program or the user does, as a line of a file has it.
    Commands CommandsFor(const Row& words)
    {
        const int n = words.size() > 1 ? std::stoi(words[1]) : 0;
        const int m = words.size() > 2 ? std::stoi(words[2]) : 0;
        return {
            { "click", [=, this] { screen::ClickAt(OnScreen(n)); } },
            { "double", [=, this] { screen::DoubleClickAt(OnScreen(n)); } },
            { "shift", [=, this] { ClickWith("shift", n); } },
            { "ctrl", [=, this] { ClickWith("ctrl", n); } },
            { "wheel", [=] { screen::Click("list", "", n); } },
            { "again", [=, this] { PostSecondClick(n); } },
            { "bar", [=, this] { screen::ClickAt(fList->ConvertToScreen(BPoint(107, n))); } },
            { "add", [=, this] { Add(n, m); } },
            { "remove", [=, this] { EXPECT_EQ(fList->RemoveItem(n) != nullptr, m == 0); } },
            { "disable", [=, this] { fItems[n]->SetEnabled(false); } }, // n in the order of coming
            { "enable", [=, this] { fItems[n]->SetEnabled(true); } },
            { "select", [=, this] { fList->Select(n); } },
            { "also", [=, this] { fList->Select(n, true); } },
            { "range", [=, this] { fList->Select(n, m); } },
            { "more", [=, this] { fList->Select(n, m, true); } },
            { "deselect", [=, this] { fList->Deselect(n); } },
            { "none", [=, this] { fList->DeselectAll(); } },
            { "single", [=, this] { fList->SetListType(B_SINGLE_SELECTION_LIST); } },
            { "empty", [=, this] { fList->MakeEmpty(); } },
            { "font", [=, this] { fList->SetFontSize(n); } },
            { "higher", [=, this] { fScroll->ResizeBy(0, n); } },
            { "scroll", [=, this] { fList->ScrollTo(0, n); } },
            { "reach", [=, this] { Add(n), fList->Select(n - 1), fList->ScrollToSelection(); } },
            { "seen", [=, this] { fList->ScrollToSelection(); } },
            { "down", [=, this] { fList->KeyDown("\x1f", 1); } },
            { "touch", [=, this] { fList->MouseDown(BPoint(50, n)); } },
            { "redraw", [=, this] { fList->Invalidate(BRect(0, n, 99, m)); } },
            { "clear",
                [=, this] { fList->SetViewColor(B_TRANSPARENT_COLOR), fList->Invalidate(); } },
            { "quiet", [=, this] { fList->SetSelectionMessage(nullptr); } },
            { "mute", [=, this] { fList->SetInvocationMessage(nullptr); } },
        };
    }
    // Rows, each bar's range, steps and share, where the list is, and the colours of the first
    // pixel in each ten.
    std::string State()
    {
        return Locked([&] {
            char text[200];
            const BRect last = fList->ItemFrame(fList->CountItems() - 1), all = fList->Bounds();
            snprintf(text, sizeof(text), "%d rows, the last %gx%g; ", fList->CountItems(),
                last.Width() + 1, last.Height() + 1);
            std::string state = text;
            for (const orientation direction : { B_VERTICAL, B_HORIZONTAL }) {
                float least, most, small, large;
                const BScrollBar& bar = *fScroll->ScrollBar(direction);
                bar.GetRange(&least, &most);
                bar.GetSteps(&small, &large);
                snprintf(text, sizeof(text), "%g..%g by %g and %g, %.3f; ", least, most, small,
                    large, bar.Proportion());
                state += text;
            }
            state += "at " + std::to_string(static_cast<int>(all.top)) + ": ";
            const auto pixels = screen::PixelsIn(
                fList->ConvertToScreen(BRect(all.left, all.top, all.left, all.bottom)));
            for (size_t y = 0; y < pixels.size(); y += 10)
                state += pixels[y] == 0xff0000 ? 'r'
                    : pixels[y] == 0xff        ? 'b'
                    : pixels[y] == 0xff00      ? 'g'
                                               : '-';
            return state;
        });
    }
    void Follow(const std::string& name)
    {
        WindowTest::Follow(
            "drawing/" + name + ".txt", [this](const Row& words) { return CommandsFor(words); },
            [this] { return State(); });
    }

    BListView* fList = nullptr;
    BScrollView* fScroll = nullptr;
    std::vector<std::unique_ptr<ColorItem>> fItems;
};

TEST_F(ListViewTest, TellsEachSelectionByTheProgram)
{
    Follow("list-selection");
    ColorItem extra;
    extra.BListItem::Update(fList, be_plain_font);
    EXPECT_EQ(extra.Width(), 99);
    EXPECT_FALSE(
        fList->AddItem(&extra, 6) || fList->AddItem(&extra, -1) || fList->AddItem(nullptr));
    EXPECT_FALSE(fList->RemoveItem(&extra) || fList->RemoveItem(5) || fList->RemoveItem(-1));
    EXPECT_FALSE(fList->ItemFrame(5).IsValid());
    EXPECT_EQ(BListView(BRect(), "bare").Invoke(), B_BAD_VALUE);
    EXPECT_TRUE(fList->CurrentSelection(2) == 3 && fList->CurrentSelection(4) == -1);
    EXPECT_TRUE(fList->IsItemSelected(2) && !fList->IsItemSelected(1) && !fList->IsItemSelected(5));
    EXPECT_FALSE(fItems[0]->IsSelected()) << "it was taken out";
}

TEST_F(ListViewTest, ClicksSelectAndADoubleClickInvokes)
{
    Follow("list-clicks");
    EXPECT_FALSE(fItems[3]->IsSelected()) << "the list has been emptied";
}

TEST_F(ListViewTest, KeysMoveTheSelectionAndScrollToItAndItsBorderShowsThem)
{
    Follow("list-keys");
    const BPoint border = Locked([&] { return fScroll->ConvertToScreen(BPoint(0, 50)); });
    const rgb_color color = ui_color(B_MENU_SELECTED_BACKGROUND_COLOR);
    EXPECT_SOON(screen::PixelAt(border) == color);
    screen::Key("Tab");
    EXPECT_SOON(screen::PixelAt(border) != color);
}

TEST_F(ListViewTest, TheBarFollowsRowsAndSize)
{
    Follow("list-bar");
}

} // namespace
