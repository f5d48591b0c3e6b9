#include "TestWindow.h"

#include "Box.h"
#include "Button.h"
#include "CheckBox.h"
#include "ScrollBar.h"
#include "ScrollView.h"
#include "StringView.h"
#include "TextView.h"

namespace {

typedef std::vector<std::string> Events;

// A view whose keys and clicks are recorded.
class InputView : public BView {
public:
    InputView(BRect frame, std::shared_ptr<EventLog> log)
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
        fLog->Add("click " + std::to_string(clicks) + " at "
            + std::to_string(static_cast<int>(where.x)) + ","
            + std::to_string(static_cast<int>(where.y)));
        MakeFocus();
    }

private:
    const std::shared_ptr<EventLog> fLog;
};

} // namespace

TEST_F(WindowTest, ACheckBoxReportsEachClickWithItsValue)
{
    BCheckBox* box = new BCheckBox(BRect(10, 10, 200, 28), "box", "Tick & tock", new BMessage(7));
    BCheckBox* grey = new BCheckBox(BRect(10, 40, 200, 58), "grey", "Grey", new BMessage(8));
    grey->SetEnabled(false);
    fWindow->AddChild(box);
    fWindow->AddChild(grey);
    Show();
    EXPECT_EQ(screen::Find("box").text, "Tick & tock");
    EXPECT_TRUE(screen::Click("grey"));
    EXPECT_TRUE(screen::Click("box"));
    EXPECT_TRUE(fLog->WaitForCount(1));
    EXPECT_EQ(Locked([&] { return box->Value(); }), B_CONTROL_ON);
    EXPECT_TRUE(screen::Click("box"));
    EXPECT_TRUE(fLog->WaitForCount(2));
    screen::Key("space"); // the click gave it the keyboard
    EXPECT_TRUE(fLog->WaitForCount(3));
    EXPECT_EQ(fLog->Events(), (Events { "7 value 1", "7 value 0", "7 value 1" }));
    Locked([&] {
        box->SetValue(B_CONTROL_OFF);
        return true;
    });
    EXPECT_FALSE(screen::Find("box").checked);
    EXPECT_EQ(fLog->Events().size(), 3u); // the program's own change is no news
}

TEST_F(WindowTest, EnterPressesTheDefaultButtonFromAnyViewThatLeavesIt)
{
    BButton* first = new BButton(BRect(10, 10, 90, 34), "first", "First", new BMessage(1));
    BButton* second = new BButton(BRect(110, 10, 190, 34), "second", "Second", new BMessage(2));
    first->MakeDefault(true);
    fWindow->AddChild(first);
    fWindow->AddChild(second);
    fWindow->AddChild(new InputView(BRect(10, 50, 90, 90), fLog));
    EXPECT_EQ(fWindow->DefaultButton(), first);
    second->MakeDefault(true); // no longer the first
    EXPECT_FALSE(first->IsDefault());
    EXPECT_EQ(fWindow->DefaultButton(), second);
    Show();
    EXPECT_TRUE(screen::Click("input"));
    EXPECT_TRUE(fLog->WaitFor("click 1 at 40,20"));
    screen::Key("x");
    screen::Key("Return");
    EXPECT_TRUE(fLog->WaitFor("2 value 0"));
    EXPECT_TRUE(screen::Click("first"));
    EXPECT_TRUE(fLog->WaitFor("1 value 1"));
    EXPECT_EQ(fLog->Events(), (Events { "click 1 at 40,20", "key x", "2 value 0", "1 value 1" }));
    EXPECT_EQ(Locked([&] { return first->Value(); }), B_CONTROL_OFF);
    Locked([&] {
        second->RemoveSelf();
        delete second;
        return true;
    });
    EXPECT_EQ(fWindow->DefaultButton(), nullptr);
}

TEST_F(WindowTest, TabGoesThroughTheNavigableViewsInTheOrderTheyWereAdded)
{
    const char* const names[] = { "one", "two", "three" };
    for (int i = 0; i < 3; i++) {
        const float top = 10 + 30 * static_cast<float>(i);
        fWindow->AddChild(
            new BCheckBox(BRect(10, top, 100, top + 18), names[i], names[i], new BMessage(1)));
    }
    fWindow->AddChild(new InputView(BRect(10, 110, 90, 140), fLog));
    BView* first = fWindow->FindView("one");
    first->MakeFocus();
    EXPECT_EQ(fWindow->CurrentFocus(), first);
    Show();
    for (const char* name : { "two", "three", "input", "one" }) {
        screen::Key("Tab");
        EXPECT_TRUE(screen::WaitFor([&] {
            return Locked([&] { return fWindow->CurrentFocus() == fWindow->FindView(name); });
        })) << name;
    }
}

TEST_F(WindowTest, ClicksCountAndKnowScrolledCoordinates)
{
    InputView* view = new InputView(BRect(10, 10, 109, 109), fLog);
    fWindow->AddChild(view);
    view->ScrollTo(0, 1000);
    Show();
    screen::DoubleClickAt(BPoint(200 + 10 + 5, 150 + 10 + 6));
    EXPECT_TRUE(fLog->WaitForCount(2));
    EXPECT_EQ(fLog->Events(), (Events { "click 1 at 5,1006", "click 2 at 5,1006" }));
    BPoint where;
    uint32 buttons = 1;
    Locked([&] {
        view->GetMouse(&where, &buttons);
        return true;
    });
    EXPECT_EQ(where, BPoint(5, 1006));
    EXPECT_EQ(buttons, 0u);
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
    EXPECT_TRUE(screen::WaitFor([] { return screen::Find("text").text == "\u00e9: It's typed"; }));
    EXPECT_STREQ(Locked([&] { return text->Text(); }), "\xc3\xa9: It's typed");
    Locked([&] {
        text->Select(0, 2); // bytes: the first letter has two
        text->Insert("e");
        text->MakeEditable(false);
        return true;
    });
    screen::Type("no");
    EXPECT_TRUE(fWindow->RemoveChild(text));
    EXPECT_STREQ(text->Text(), "e: It's typed");
    EXPECT_EQ(text->TextLength(), 13);
    delete text;
}

TEST_F(WindowTest, AScrollBarMovesItsTargetAndIsMovedByIt)
{
    BView* target = new BView(BRect(10, 10, 109, 109), "target", B_FOLLOW_NONE, B_WILL_DRAW);
    BScrollView* scroller =
        new BScrollView("scroller", target, B_FOLLOW_NONE, 0, false, true, B_FANCY_BORDER);
    EXPECT_EQ(scroller->Frame(), BRect(8, 8, 125, 111));
    EXPECT_EQ(target->Frame(), BRect(2, 2, 101, 101));
    BScrollBar* bar = scroller->ScrollBar(B_VERTICAL);
    ASSERT_EQ(target->ScrollBar(B_VERTICAL), bar);
    bar->SetRange(0, 300);
    bar->SetProportion(0.25f);
    bar->SetSteps(5, 80);
    fWindow->AddChild(scroller);
    Show();
    const auto top = [&] { return Locked([&] { return target->Bounds().top; }); };
    EXPECT_TRUE(screen::Click("target", "", 5)); // a notch of the wheel: three small steps
    EXPECT_TRUE(screen::WaitFor([&] { return top() == 15; }));
    const BRect frame = screen::Find("_VSB_").frame;
    screen::ClickAt(BPoint(frame.left + 7, frame.bottom - 20)); // the trough: a large step
    EXPECT_TRUE(screen::WaitFor([&] { return top() == 95; })) << top();
    Locked([&] {
        target->ScrollTo(0, 1000);
        return true;
    });
    EXPECT_EQ(Locked([&] { return bar->Value(); }), 300);
    Locked([&] {
        bar->SetRange(0, 40);
        return true;
    });
    EXPECT_EQ(top(), 40);
}

TEST_F(WindowTest, LabelsAndStringsShowWhatTheyAreSetTo)
{
    BBox* box = new BBox(BRect(10, 10, 200, 100), "box");
    BStringView* string = new BStringView(BRect(10, 20, 150, 36), "string", "0:00");
    box->AddChild(string);
    box->SetLabel("Before");
    fWindow->AddChild(box);
    Show();
    Locked([&] {
        box->SetLabel("Disk & more");
        string->SetText("3:58 <b>&amp;");
        string->SetHighColor(0, 99, 0);
        return true;
    });
    EXPECT_EQ(screen::Find("box").text, "Disk & more");
    EXPECT_EQ(screen::Find("string").text, "3:58 <b>&amp;");
}
