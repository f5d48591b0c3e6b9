// A line of text to fill in. While a name is being typed it puts the rest of the first name that
// begins so behind it, selected: typing on replaces that, Right or End keeps it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <TextControl.h>

class LibEditEntry : public BTextControl {
public:
    typedef std::vector<std::string> Names;

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
