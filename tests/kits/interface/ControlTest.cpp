#include "Button.h"
#include "CheckBox.h"
#include "TestWindow.h"
#include "TextView.h"

namespace {

// What a message tells of input, 0 for what it does not.
std::string Text(const BMessage& message)
{
    BPoint where, screenWhere;
    float x = 0, y = 0;
    const char* bytes = nullptr;
    message.FindPoint("where", &where);
    message.FindPoint("screen_where", &screenWhere);
    message.FindFloat("be:wheel_delta_x", &x);
    message.FindFloat("be:wheel_delta_y", &y);
    message.FindString("bytes", &bytes);
    char text[200];
    snprintf(text, sizeof(text), " at %g,%g on screen %g,%g wheel %g,%g bytes %zu", where.x,
        where.y, screenWhere.x, screenWhere.y, x + 0, y + 0, bytes ? strlen(bytes) : 0);
    std::string all = message.HasInt64("when") ? text : "at no time";
    for (const char* name : { "buttons", "modifiers", "clicks", "be:transit", "key", "raw_char" }) {
        int32 number = 0;
        message.FindInt32(name, &number);
        all += number == 0 ? "" : std::string(" ") + name + " " + std::to_string(number);
    }
    return all;
}

// A view whose input is recorded.
class InputView : public BView {
public:
    InputView(BRect frame, std::shared_ptr<Log> log)
        : BView(frame, "input", B_FOLLOW_NONE, B_WILL_DRAW | B_NAVIGABLE), fLog(std::move(log))
    {
    }
    void KeyDown(const char* bytes, int32 numBytes) override
    {
        Add("key");
        if (bytes[0] == B_ENTER)
            BView::KeyDown(bytes, numBytes);
    }
    void MouseDown(BPoint) override
    {
        Add("down");
        MakeFocus();
    }
    void MouseUp(BPoint) override { Add("up"); }
    void MouseMoved(BPoint, uint32 transit, const BMessage*) override
    {
        if (transit == B_ENTERED_VIEW || transit == B_EXITED_VIEW)
            Add("moved");
    }
    void MessageReceived(BMessage*) override { Add("wheel"); }

    void MakeFocus(bool focus = true) override
    {
        BView::MakeFocus(focus);
        hasKeyboard = screen::Find("input").focused;
    }

    bool hasKeyboard = false;

private:
    void Add(const std::string& what) { fLog->Add(what + Text(*Window()->CurrentMessage())); }

    const std::shared_ptr<Log> fLog;
};

} // namespace

TEST_F(WindowTest, ClicksAndKeysReachTheirViewEnterTheDefaultButtonAndTabTheNext)
{
    BButton* first = new BButton(BRect(10, 10, 90, 34), "first", "First", new BMessage(1));
    BButton* second = new BButton(BRect(110, 10, 190, 34), "second", "Second", new BMessage(2));
    auto* check = new BCheckBox(BRect(110, 50, 290, 70), "check", "Check", new BMessage(3));
    auto* input = new InputView(BRect(10, 50, 90, 90), fLog);
    first->MakeDefault(true);
    for (BView* view : std::initializer_list<BView*> { first, second, check, input })
        fWindow->AddChild(view);
    second->MakeDefault(true);
    EXPECT_FALSE(first->IsDefault());
    const BPoint inside(200 + 10 + 5, 150 + 50 + 6);
    screen::MoveTo(inside - BPoint(0, 20));
    Follow(
        "input.txt",
        [&](const Row& words) {
            BView* view = words.size() > 1
                ? Locked([&] { return fWindow->FindView(words[1].c_str()); })
                : nullptr;
            return Commands {
                { "scroll", [=] { input->ScrollTo(0, 1000); } },
                { "double", [=] { screen::DoubleClickAt(inside); } },
                { "button", [=] { screen::ClickAt(inside, std::stoi(words[1])); } },
                { "press", [=] { screen::Click(words[1]); } },
                { "edge",
                    [=, this] { screen::ClickAt(fWindow->Frame().LeftTop() + BPoint(288, 69)); } },
                { "to and fro",
                    [=] { check->SetValue(B_CONTROL_OFF), check->SetValue(B_CONTROL_ON); } },
                { "focus",
                    [=] {
                        view->MakeFocus();
                        EXPECT_TRUE(input->hasKeyboard) << "until another has it: no key is lost";
                    } },
                { "default", [=] { static_cast<BButton*>(view)->MakeDefault(true); } },
                { "usual", [=] { static_cast<BButton*>(view)->MakeDefault(false); } },
                { "delete", [=] { delete view; } },
            };
        },
        [&] { return Locked([&] { return std::string(fWindow->CurrentFocus()->Name()); }); });
    EXPECT_TRUE(first->Value() == B_CONTROL_OFF && !fWindow->DefaultButton());
}

TEST_F(WindowTest, ATextTakesTypingButLeavesEnterToTheDefaultButtonIfItIsTold)
{
    auto* text = new BTextView(BRect(10, 10, 200, 80), "text", BRect(4, 4, 180, 60), B_FOLLOW_NONE);
    auto* button = new BButton(BRect(10, 90, 90, 114), "button", "Button", new BMessage(1));
    button->MakeDefault(true);
    text->LeaveEnterToWindow();
    text->SetText("\xc3\xa9: ");
    fWindow->AddChild(text);
    fWindow->AddChild(button);
    Show();
    EXPECT_TRUE(screen::Click("text"));
    screen::Key("ctrl+End");
    screen::Type("It's");
    screen::Key("shift+Return");
    screen::Type("typed");
    screen::Key("Return");
    EXPECT_TRUE(fLog->WaitFor("1 value 0"));
    EXPECT_EQ(screen::Find("text").text, "\u00e9: It's\ntyped");
    Locked([&] {
        int32 start = -1, finish = -1;
        text->Select(0, 2); // bytes: the first letter has two
        text->GetSelection(&start, &finish);
        EXPECT_TRUE(start == 0 && finish == 2);
        text->Insert("e");
        text->GetSelection(&start, &finish);
        EXPECT_TRUE(start == 1 && finish == 1);
        const float usual = text->TextHeight();
        BFont large(be_bold_font);
        large.SetSize(30);
        text->SetFontAndColor(0, 1, &large);
        EXPECT_GT(text->TextHeight(), usual);
        text->SetText(text->Text());
        EXPECT_EQ(text->TextHeight(), usual) << "the font goes with its text";
        text->MakeEditable(false);
    });
    screen::Type("no");
    EXPECT_TRUE(Locked([&] { return text->RemoveSelf(); }));
    EXPECT_STREQ(text->Text(), "e: It's\ntyped");
    EXPECT_EQ(text->TextLength(), 13);
    delete text;
}
