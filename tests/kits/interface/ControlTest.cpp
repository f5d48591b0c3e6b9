#include "Button.h"
#include "ScrollBar.h"
#include "ScrollView.h"
#include "TabView.h"
#include "TestWindow.h"
#include "TextView.h"

namespace {

// A view whose keys and clicks are recorded.
class InputView : public BView {
public:
    InputView(BRect frame, std::shared_ptr<Log> log)
        : BView(frame, "input", B_FOLLOW_NONE, B_WILL_DRAW | B_NAVIGABLE), fLog(std::move(log))
    {
    }
    void KeyDown(const char* bytes, int32 numBytes) override
    {
        if (bytes[0] == B_ENTER)
            return BView::KeyDown(bytes, numBytes);
        fLog->Add("key " + std::string(bytes, static_cast<size_t>(numBytes)));
    }
    void MouseDown(BPoint where) override
    {
        int32 clicks = 0;
        Window()->CurrentMessage()->FindInt32("clicks", &clicks);
        char text[64];
        snprintf(text, sizeof(text), "click %d at %g,%g", clicks, where.x, where.y);
        fLog->Add(text);
        MakeFocus();
    }

    void MakeFocus(bool focus = true) override
    {
        BView::MakeFocus(focus);
        hasKeyboard = screen::Find("input").focused;
    }

    bool hasKeyboard = false;

private:
    const std::shared_ptr<Log> fLog;
};

} // namespace

TEST_F(WindowTest, ClicksAndKeysReachTheirViewEnterTheDefaultButtonAndTabTheNext)
{
    BButton* first = new BButton(BRect(10, 10, 90, 34), "first", "First", new BMessage(1));
    BButton* second = new BButton(BRect(110, 10, 190, 34), "second", "Second", new BMessage(2));
    first->MakeDefault(true);
    fWindow->AddChild(first);
    fWindow->AddChild(second);
    auto* input = new InputView(BRect(10, 50, 90, 90), fLog);
    fWindow->AddChild(input);
    second->MakeDefault(true); // no longer the first
    EXPECT_FALSE(first->IsDefault());
    Show();
    Locked([&] { fWindow->FindView("input")->ScrollTo(0, 1000); });
    screen::DoubleClickAt(BPoint(200 + 10 + 5, 150 + 50 + 6));
    EXPECT_TRUE(fLog->WaitFor("click 2 at 5,1006"));
    screen::Key("x");
    screen::Key("Return");
    EXPECT_TRUE(fLog->WaitFor("2 value 0"));
    EXPECT_TRUE(screen::Click("first"));
    EXPECT_TRUE(fLog->WaitFor("1 value 1"));
    EXPECT_EQ(fLog->Now(),
        (Entries { "click 1 at 5,1006", "click 2 at 5,1006", "key x", "2 value 0", "1 value 1" }));
    Locked([&] {
        input->MakeFocus();
        first->MakeFocus();
    });
    EXPECT_TRUE(input->hasKeyboard) << "until another has it, so that no key is lost";
    for (const char* name : { "second", "input", "first" }) { // in the order they were added
        screen::Key("Tab");
        EXPECT_TRUE(Becomes([&] { return fWindow->FindView(name)->IsFocus(); })) << name;
    }
    Locked([&] {
        second->SetLabel("Other");
        EXPECT_EQ(screen::Find("second").text, "Other");
        second->RemoveSelf();
        delete second;
        EXPECT_EQ(fWindow->DefaultButton(), nullptr);
    });
}

TEST_F(WindowTest, ATextViewTakesTypingAndKeepsItOutsideTheWindow)
{
    BTextView* text =
        new BTextView(BRect(10, 10, 200, 80), "text", BRect(4, 4, 180, 60), B_FOLLOW_NONE);
    text->SetText("\xc3\xa9: ");
    fWindow->AddChild(text);
    Show();
    EXPECT_TRUE(screen::Click("text"));
    screen::Key("ctrl+End");
    screen::Type("It's typed");
    EXPECT_SOON(screen::Find("text").text == "\u00e9: It's typed");
    EXPECT_STREQ(Locked([&] { return text->Text(); }), "\xc3\xa9: It's typed");
    Locked([&] {
        text->Select(0, 2); // bytes: the first letter has two
        text->Insert("e");
        text->MakeEditable(false);
    });
    screen::Type("no");
    EXPECT_TRUE(Locked([&] { return text->RemoveSelf(); }));
    EXPECT_STREQ(text->Text(), "e: It's typed");
    EXPECT_EQ(text->TextLength(), 13);
    delete text;
}

TEST_F(WindowTest, ATextLeavesEnterToTheDefaultButtonAndShowsAPartInAnotherFont)
{
    auto* text = new BTextView(BRect(10, 10, 200, 80), "text", BRect(4, 4, 180, 60), B_FOLLOW_NONE);
    auto* button = new BButton(BRect(10, 90, 90, 114), "button", "Button", new BMessage(1));
    button->MakeDefault(true);
    text->LeaveEnterToWindow();
    fWindow->AddChild(text);
    fWindow->AddChild(button);
    Show();
    Locked([&] { text->MakeFocus(); });
    for (const char* key : { "a", "shift+Return", "b", "Return" })
        screen::Key(key);
    EXPECT_TRUE(fLog->WaitFor("1 value 0"));
    EXPECT_EQ(screen::Find("text").text, "a\nb");
    Locked([&] {
        const float usual = text->TextHeight();
        BFont large(be_bold_font);
        large.SetSize(30);
        text->SetFontAndColor(0, 1, &large);
        EXPECT_GT(text->TextHeight(), usual);
        text->SetText("a\nb");
        EXPECT_EQ(text->TextHeight(), usual) << "the font goes with its text";
    });
}

TEST_F(WindowTest, TabsShowTheirViewsByMouseAndByProgram)
{
    auto* tabs = new BTabView(BRect(10, 10, 289, 189), "tab view", B_WIDTH_FROM_WIDEST);
    fWindow->AddChild(tabs);
    for (const char* name : { "one", "other" })
        tabs->AddTab(new BView(BRect(0, 0, 9, 9), name, B_FOLLOW_NONE, 0));
    Show();
    const BRect row = screen::Settled("tabs");
    EXPECT_EQ(row.bottom + 1,
        Locked([&] { return tabs->ContainerView()->ConvertToScreen(BPoint(0, 0)).y; }));
    screen::ClickAt(row.LeftTop() + BPoint(90, 12));
    EXPECT_SOON(screen::Find("other").exists && !screen::Find("one").exists);
    EXPECT_EQ(Locked([&] { return tabs->Selection(); }), 1);
    Locked([&] {
        tabs->Select(0);
        tabs->Select(2); // there is no such tab
        tabs->TabAt(0)->SetLabel("first");
        EXPECT_STREQ(tabs->TabAt(0)->Label(), "first");
    });
    EXPECT_SOON(screen::Find("one").exists && !screen::Find("other").exists);
}

TEST_F(WindowTest, AScrollBarMovesItsTargetAndIsMovedByIt)
{
    BView* target = new BView(BRect(10, 10, 109, 109), "target", B_FOLLOW_NONE, B_WILL_DRAW);
    BScrollView* scroller =
        new BScrollView("scroller", target, B_FOLLOW_NONE, 0, false, true, B_FANCY_BORDER);
    EXPECT_EQ(scroller->Frame(), BRect(8, 8, 125, 111));
    BScrollBar* bar = scroller->ScrollBar(B_VERTICAL);
    bar->SetRange(0, 300);
    bar->SetProportion(0.25f);
    bar->SetSteps(5, 80);
    fWindow->AddChild(scroller);
    Show();
    const auto top = [&] { return Locked([&] { return target->Bounds().top; }); };
    EXPECT_TRUE(screen::Click("target", "", 5)); // a notch of the wheel: three small steps
    EXPECT_SOON(top() == 15);
    const BRect frame = screen::Find("_VSB_").frame;
    screen::ClickAt(BPoint(frame.left + 7, frame.bottom - 20)); // the trough: a large step
    EXPECT_SOON(top() == 95) << top();
    Locked([&] {
        target->ScrollTo(0, 1000);
        EXPECT_EQ(bar->Value(), 300);
        bar->SetRange(0, 40);
    });
    EXPECT_EQ(top(), 40);

    const BRect place(150, 10, 249, 109);
    auto* text = new BTextView(place, "text", place.OffsetToCopy(0, 0), B_FOLLOW_NONE);
    fWindow->AddChild(new BScrollView("notes", text, B_FOLLOW_NONE, 0, false, true));
    const auto most = [&] {
        float max = -1;
        text->ScrollBar(B_VERTICAL)->GetRange(nullptr, &max);
        return max;
    };
    EXPECT_TRUE(Becomes([&] { return most() == 0; })) << "a short text has no way to scroll";
    Locked([&] { text->SetText(std::string(99, '\n').c_str()); });
    EXPECT_TRUE(Becomes([&] { return most() > 500; }));
}
