// A line of text to fill in. While a name is being typed it puts the rest of the first name that
// begins so behind it, selected: typing on replaces that, Right or End keeps it.
#pragma once

#include <TextControl.h>
#include <View.h>

#include <memory>
#include <string>
#include <vector>

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
