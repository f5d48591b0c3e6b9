// A labelled line of text that the user edits. Its message goes out when the user has changed the
// text and presses Enter or moves the keyboard elsewhere, its modification message at each change
// the user makes; what the program sets sends neither.
#pragma once

#include "Control.h"

class BPopUpMenu;
class BTextView;

class BTextControl : public BControl {
public:
    // The control owns message, which may be null. The label takes the left half; without one the
    // text has all of the frame.
    BTextControl(BRect frame, const char* name, const char* label, const char* text,
        BMessage* message, uint32 resizeMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
        uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    ~BTextControl() override;

    // The text as of the last message that the window has handled. The pointer holds until then and
    // until the next SetText().
    const char* Text() const;
    virtual void SetText(const char* text); // null is an empty one
    // The view in which the text stands, a child of this one: for its selection, SetMaxBytes() and
    // so on. Its text rectangle and its wrapping are the control's own affair.
    BTextView* TextView() const;

    // Sent as Invoke() sends the other, with the string "be:text", what the text has become (it may
    // have changed since), and the bool "be:inserted", false where something was only deleted. The
    // control owns message; null: none, as at first.
    virtual void SetModificationMessage(BMessage* message);
    BMessage* ModificationMessage() const { return fModificationMessage.get(); }

    // Beside the platform's calls: the items of a menu that has joined the window stand behind
    // those of the text's own menu, which copies and pastes. With the window locked.
    void AddToMenu(const BPopUpMenu& more);

    virtual void SetDivider(float x); // where the text begins, in this view's coordinates
    float Divider() const { return fDivider; }
    virtual void SetAlignment(alignment label, alignment text);

    void SetFont(const BFont* font, uint32 mask = B_FONT_ALL) override; // of label and text
    void MakeFocus(bool focus = true) override; // of the text
    void GetPreferredSize(float* width, float* height) override;

protected:
    void MakeWidget(ViewPeer& peer) override;
    void ShowLabel(ViewPeer& peer) override;

private:
    class Input; // the text view
    void TextReported(bool isDone, bool isInserted);
    void ShowLabelPlace(ViewPeer& peer);

    Input* fTextView;
    std::unique_ptr<BMessage> fModificationMessage;
    float fDivider;
    alignment fLabelAlignment = B_ALIGN_LEFT;
};
