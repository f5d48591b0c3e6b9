// What the widgets of views are to those who look at them and to those who have them read.
#include "Box.h"
#include "Button.h"
#include "CheckBox.h"
#include "ListView.h"
#include "MenuField.h"
#include "PopUpMenu.h"
#include "StatusBar.h"
#include "StringView.h"
#include "TestWindow.h"
#include "TextControl.h"
#include "TextView.h"

namespace {

class TextCanvas : public BView {
public:
    using BView::BView;
    void Draw(BRect) override
    {
        for (const auto& [text, x, y] : { std::tuple("left", 5, 30), { "right", 60, 30 },
                 { "below", 5, 60 }, { "beside", -500, 90 } })
            DrawString(text, BPoint(x, y));
    }
};

} // namespace

TEST_F(WindowTest, AFormIsReadAsItIsShown)
{
    auto* back = new BView(BRect(0, 0, 399, 299), "back", B_FOLLOW_ALL_SIDES, 0);
    back->SetViewColor(rgb_color { 220, 210, 200 });
    auto* box = new BBox(BRect(5, 30, 144, 129), "box");
    box->SetLabel("Box & Co");
    auto* check =
        new BCheckBox(BRect(5, 20, 134, 39), "check", "A & B", new BMessage(1), B_FOLLOW_NONE, 0);
    check->SetValue(B_CONTROL_ON);
    auto* words = new BStringView(BRect(5, 40, 134, 59), "words", "<b>Words</b>");
    words->SetAlignment(B_ALIGN_RIGHT);
    auto* bar = new BStatusBar(BRect(5, 60, 134, 69), "bar");
    bar->SetMaxValue(50);
    bar->Update(20);
    auto* link =
        new BStringView(BRect(5, 75, 134, 94), "link", "A link", B_FOLLOW_NONE, B_NAVIGABLE);
    link->SetHighColor(rgb_color { 3, 2, 1 });
    link->SetViewColor(rgb_color { 200, 200, 0 });
    auto* line =
        new BTextControl(BRect(150, 30, 289, 54), "line", "Maker", "Unknown", new BMessage(2));
    auto* heading = new BStringView(BRect(150, 60, 289, 74), "heading", "Remarks");
    auto* bare =
        new BTextControl(BRect(150, 75, 289, 99), "bare", nullptr, nullptr, new BMessage(3));
    auto* popUp = new BPopUpMenu("Nothing yet");
    for (const char* label : { "one", "two" })
        popUp->AddItem(new BMenuItem(label, new BMessage(4)));
    auto* field = new BMenuField(BRect(150, 105, 289, 129), "field", "Pick & choose", popUp);
    auto* notes =
        new BTextView(BRect(152, 140, 251, 169), "notes", BRect(2, 2, 97, 27), B_FOLLOW_NONE);
    notes->SetText("Noted");
    auto* ok = new BButton(BRect(5, 260, 84, 284), "ok", "OK", new BMessage(5));
    ok->SetToolTip("Takes <b>it</b>");
    auto* no = new BButton(BRect(90, 260, 169, 284), "no", "R&D", new BMessage(6));
    no->MakeDefault(true);
    no->SetEnabled(false);
    auto* hidden = new BView(BRect(300, 30, 309, 39), "hidden_one", B_FOLLOW_NONE, B_NAVIGABLE);
    hidden->Hide();
    auto* list = new BListView(BRect(310, 30, 389, 99), "list");
    BStringItem first("first"), second("second");
    first.SetEnabled(false);
    EXPECT_TRUE(list->AddItem(&first) && list->AddItem(&second));
    auto* canvas = new TextCanvas(BRect(310, 110, 389, 209), "canvas", B_FOLLOW_NONE, B_WILL_DRAW);
    for (BView* view : std::initializer_list<BView*> { link, no, line })
        view->ResizeToPreferred();
    for (const border_style border : { B_PLAIN_BORDER, B_NO_BORDER }) {
        const float left = border == B_NO_BORDER ? 335 : 310;
        const BRect frame(left, 220, left + 19, 239);
        back->AddChild(new BBox(frame, "border", B_FOLLOW_NONE, 0, border));
    }
    fWindow->ResizeTo(399, 299);
    fWindow->AddChild(back);
    for (BView* view : std::initializer_list<BView*> {
             box, heading, bare, line, field, notes, ok, no, hidden, list, canvas })
        back->AddChild(view);
    for (BView* view : std::initializer_list<BView*> { check, words, bar, link })
        box->AddChild(view);
    Show();
    const auto inked = [&](float left) { // pixels that are not as around them
        const auto all = screen::PixelsIn(BRect(left, 0, left + 19, 19).OffsetByCopy(200, 370));
        return std::count_if(
            all.begin(), all.end(), [](uint32 color) { return color != 0xdcd2c8; });
    };
    EXPECT_SOON(inked(310) > 200 && inked(335) == 0);
    Locked([&] { line->MakeFocus(); });
    EXPECT_TRUE(!back->Parent() && box->Parent() == back);
    screen::Tree("Test"); // from here on views note what they draw
    EXPECT_SOON(screen::Lines("list") == "first\nsecond\n" && screen::Lines("canvas") != "");
    const std::string trees = screen::Tree("Test", true);
    Locked([&] {
        back->SetViewColor(rgb_color { 40, 50, 60 });
        box->SetLabel("Boxes");
        check->SetValue(B_CONTROL_OFF);
        check->SetLabel("C & D");
        words->SetText("Other");
        words->SetAlignment(B_ALIGN_CENTER);
        words->SetHighColor(rgb_color { 1, 2, 3 });
        words->SetFontSize(20);
        words->SetFont(be_bold_font, B_FONT_FACE);
        words->ResizeToPreferred();
        bar->Reset(); // now of 100
        bar->Update(120);
        bar->Update(-20);
        link->ShowLinkPointer();
        box->ScrollTo(2, 3);
        line->SetLabel("Vendor");
        line->SetDivider(40);
        line->SetAlignment(B_ALIGN_RIGHT, B_ALIGN_CENTER);
        line->SetText("Known");
        back->RemoveChild(heading);
        EXPECT_EQ(heading->Looper(), nullptr);
        bare->SetToolTip("What else?"); // which names it now
        for (const int32 item : { 0, 1 })
            popUp->ItemAt(item)->SetMarked(true);
        EXPECT_FALSE(popUp->ItemAt(0)->IsMarked());
        field->SetLabel("Take");
        field->SetDivider(30);
        field->SetEnabled(false);
        notes->Hide();
        notes->Hide();
        notes->Show();
        notes->MakeEditable(false);
        ok->MakeDefault(true);
        ok->SetLabel("Fine");
        no->SetEnabled(true);
        hidden->Show();
        hidden->ResizeTo(-5, 19);
        list->Select(1);
        EXPECT_TRUE(list->RemoveItem(&first) && canvas->RemoveSelf());
        fWindow->SetTitle("Title");
        fWindow->ResizeTo(449, 329);
    });
    delete heading;
    delete canvas;
    const std::string expected = ReadFile(TARVEX_TESTS "/kits/interface/form.txt");
    const auto shown = [&] { return trees + "\n" + screen::Tree("Title", true); };
    screen::WaitFor([&] { return shown() == expected; });
    EXPECT_EQ(shown(), expected);
    Locked([&] { list->MakeEmpty(); }); // the items go first
}

TEST_F(WindowTest, ATipThatComesLateIsShownWhereThePointerRests)
{
    auto* around = new BView(BRect(0, 0, 299, 199), "around", B_FOLLOW_NONE, 0);
    around->SetToolTip("Around");
    auto* view = new BView(BRect(50, 50, 149, 149), "place", B_FOLLOW_NONE, 0);
    around->AddChild(view);
    fWindow->AddChild(around);
    Show();
    const BPoint where = screen::Settled("place").LeftTop() + BPoint(50, 50);
    screen::MoveTo(where - BPoint(9, 9)); // a move to where it was seen last is none
    screen::MoveTo(where);
    const char kTip[] = "qtooltip_label";
    EXPECT_TRUE(screen::Shows(kTip, "Around"));
    const std::tuple<BView*, const char*, const char*> tips[] = { { view, "", "Around" },
        { around, "", "Around" }, { view, "Late", "Late" }, { around, "Other", "Late" },
        { view, "Later", "Later" }, { view, "", "" }, { view, "Last", "Last" } };
    for (const auto& [of, tip, shown] : tips) {
        Locked([of = of, tip = tip] { of->SetToolTip(tip); });
        EXPECT_TRUE(screen::Shows(kTip, shown)) << tip;
    }
    screen::MoveTo(BPoint(2, 2));
    EXPECT_SOON(!screen::Find(kTip).exists);
    for (const char* tip : { "", "More" })
        Locked([&] { view->SetToolTip(tip); });
    EXPECT_FALSE(screen::Find(kTip).exists);
}
