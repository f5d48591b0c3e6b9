// The platform's controls, with what it leaves to the program.
#pragma once

#include <MenuField.h>
#include <TabView.h>
#include <TextControl.h>
#include <View.h>

#include <memory>
#include <string>
#include <vector>

class BMessage;

// A line of text to fill in. While a name is being typed it puts the rest of the first name that
// begins so behind it, selected: typing on replaces that, Right or End keeps it.
class LibEditEntry : public BTextControl {
public:
    using Names = std::vector<std::string>;

    // Takes at most so many characters of text.
    LibEditEntry(BRect frame, const char* name, const char* text, int32 maxCharacters);

    // The names to complete, tried in this order: best, unless it is "", then the others (may be
    // null). Upper and lower case are the same.
    void SetCompletions(const std::string& best, std::shared_ptr<const Names> others);

    void AttachedToWindow() override; // this entry is the target of its messages
    void MessageReceived(BMessage* message) override;

private:
    void TextChanged(const BMessage& message);
    const std::string* NameFor(const std::string& beginning) const;

    std::string best;
    std::shared_ptr<const Names> others;
};

// A label in front of a view.
class LibLabelFrame : public BView {
public:
    // content, which the frame owns, stands right of the label, with this room around it. The label
    // has its font.
    LibLabelFrame(BRect frame, const char* label, float labelWidth, float inset, BView* content);

    void AttachedToWindow() override; // takes the parent's view colour
};

// A button that shows one choice out of a menu.
class LibMenuButton : public BMenuField {
public:
    LibMenuButton(BRect frame, const char* name, const char* label,
        uint32 resizeMode = B_FOLLOW_LEFT | B_FOLLOW_TOP);

    // Appends a choice that sends message, owned from here on; null sends nothing. The first one
    // is chosen.
    void AddItem(const char* text, BMessage* message);
    void MakeEmpty();
    // Makes the choice of that text the one shown, without its message; false if there is none.
    bool Choose(const char* text);
    // What is shown; "" without choices. Valid until the choices change.
    const char* Text() const;
};

// A tab view with contents that begin inside its border.
class LibTabView : public BTabView {
public:
    using BTabView::BTabView;

    // The room that a tab's contents have, in the coordinates that they are added with.
    BRect ContentFrame() const
    {
        constexpr float kInset = 5;
        BRect frame = Bounds().InsetByCopy(kInset, kInset);
        frame.bottom -= TabHeight();
        return frame;
    }
    using BTabView::AddTab;
    void AddTab(BView* contents, const char* label)
    {
        BTab* tab = new BTab;
        tab->SetLabel(label);
        BTabView::AddTab(contents, tab);
    }
};
