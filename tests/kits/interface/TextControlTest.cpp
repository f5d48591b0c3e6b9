#include "TextControl.h"

#include "TestWindow.h"
#include "TextView.h"

namespace {

class TextControlTest : public WindowTest {
protected:
    BTextControl* Add(const char* text)
    {
        auto* control =
            new BTextControl(BRect(10, 10, 209, 34), "line", nullptr, text, new BMessage(1));
        control->SetModificationMessage(new BMessage(2));
        fWindow->AddChild(control);
        return control;
    }
    // Presses the keys and waits until the control has that text, and shows it.
    void Becomes(BTextControl* control, const std::string& text, const Entries& keys = {})
    {
        for (const std::string& key : keys)
            screen::Key(key);
        EXPECT_SOON(Locked([&] { return control->Text() == text; }));
        EXPECT_EQ(screen::Find(control->Name()).text, text);
    }
};

} // namespace

TEST_F(TextControlTest, HoldsNoMoreThanItsLimitInWholeLetters)
{
    const std::string e = "\xc3\xa9"; // a letter of two bytes
    const std::string face = "\xf0\x9f\x98\x80"; // one of four
    BTextControl* control = Add((e + e + e).c_str());
    control->TextView()->SetMaxBytes(5);
    EXPECT_EQ(control->Text(), e + e);
    Show();
    Locked([&] { control->MakeFocus(); });
    Becomes(control, e + e + "a", { "End", "a", "b" });
    Becomes(control, e + "a", { "Home", "Delete" });
    Locked([&] {
        control->TextView()->Select(2, 2);
        control->TextView()->Insert("1234"); // its own end falls off, not the text's
    });
    Becomes(control, e + "12a");
    Locked([&] { control->SetText("123456"); });
    Becomes(control, "12345");
    Locked([&] { control->TextView()->SetMaxBytes(2); });
    Becomes(control, "12");
    Becomes(control, "x2", { "Delete", "x" }); // the caret is at its beginning
    Locked([&] {
        control->TextView()->SetMaxBytes(INT32_MAX);
        control->TextView()->SetMaxCharacters(3);
        control->SetText((e + face + e + e).c_str());
    });
    Becomes(control, e + face + e);
    Becomes(control, face + "a", { "End", "BackSpace", "a", "b", "Home", "Delete" });
}

TEST_F(TextControlTest, KeysStayInOrderWhereTheFocusMovesMeanwhile)
{
    BTextControl* control = Add("");
    auto* next = new BTextControl(BRect(10, 50, 209, 74), "next", nullptr, "", new BMessage(1));
    fWindow->AddChild(next);
    Show();
    Locked([&] { control->MakeFocus(); });
    Locked([&] {
        control->TextView()->Insert("Intel"); // from here on keys wait for the end of this message
        screen::Type("a");
        next->MakeFocus();
        screen::Type("bc");
    });
    Becomes(next, "abc");
    Becomes(control, "Intel");
}

TEST_F(TextControlTest, AChangeMeantForAnOlderTextIsLeftOut)
{
    BTextControl* control = Add("Int");
    Show();
    Locked([&] { control->MakeFocus(); });
    screen::Key("End");
    Locked([&] {
        screen::Type("x"); // the window cannot have heard of it
        EXPECT_SOON(screen::Find("line").text == "Intx");
        EXPECT_STREQ(control->Text(), "Int");
        control->TextView()->Insert("el");
        control->TextView()->Select(0, 4);
    });
    Becomes(control, "Intx");
    Locked([&] {
        screen::Type("y");
        EXPECT_SOON(screen::Find("line").text == "Intxy");
        control->SetText("Intel"); // but this says what the text is, whatever it was
    });
    Becomes(control, "Intel.", { "End", "period" });
    Locked([&] {
        screen::Key("Return"); // which selects what is done
        const auto selected = [&] {
            int32 start = 0, end = 0;
            control->TextView()->GetSelection(&start, &end);
            return end - start;
        };
        EXPECT_SOON(selected() == 6);
        control->TextView()->Insert("Inc.");
    });
    EXPECT_TRUE(fLog->WaitFor("1 value 0"));
    Becomes(control, "Intel.");
    EXPECT_EQ(fLog->Now(), (Entries { "2 value 0", "2 value 0", "1 value 0" })); // none for "y"

    Locked([&] { // its changes in one message are one to the user
        control->SetText("Int");
        control->TextView()->Select(3, 3);
        control->TextView()->Insert("el Corp.");
        screen::Type("x");
        EXPECT_STREQ(control->Text(), "Intel Corp.");
        control->TextView()->Select(3, 11);
        screen::Key("Return");
    });
    Becomes(control, "Intx");
    EXPECT_EQ(fLog->WaitFor(5).size(), 5u);
}
