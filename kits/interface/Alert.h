// A window that tells or asks something with a text and up to three buttons, and goes away when one
// is pressed: new BAlert(...)->Go(). It deletes itself.
#pragma once

#include "Window.h"

class BInvoker;
class BTextView;
struct AlertText;

class BAlert : public BWindow {
public:
    // button1 to button3 from left to right; at least the first. The rightmost one is the default.
    BAlert(const char* title, const char* text, const char* button1, const char* button2 = nullptr,
        const char* button3 = nullptr, button_width width = B_WIDTH_AS_USUAL,
        alert_type type = B_INFO_ALERT);
    BAlert(const char* title, const char* text, const char* button1, const char* button2,
        const char* button3, button_width width, button_spacing spacing,
        alert_type type = B_INFO_ALERT);
    ~BAlert() override;

    // Shows the alert, in the middle of the window whose thread this is, if that can be seen, else
    // of the screen, and waits for the answer: the button's index from 0, or -1 if the alert was
    // closed otherwise or no thread could be made for it; then its text is on standard error. May
    // be called with other windows locked; the calling window's views are drawn meanwhile. The user
    // can close it where the program takes B_NOT_CLOSABLE off its flags: by its close box, and by
    // Escape unless that is a button's shortcut.
    int32 Go();
    // Shows it and returns at once; the answer is sent with invoker, its message's "which" (int32)
    // being the index. The alert owns invoker, which may be null. Returns B_OK, or B_ERROR where
    // Go() would give -1 at once.
    status_t Go(BInvoker* invoker);

    // A key that presses the button, such as B_ESCAPE or 'n' (both cases do; underlined in its
    // label). 0: none.
    void SetShortcut(int32 index, char key);
    BButton* ButtonAt(int32 index) const; // null beyond the last
    BTextView* TextView() const { return fText; }
    // The left top of a window of that size in the middle of the screen.
    static BPoint AlertPosition(float width, float height);

    // A button's message has "which" (int32): sends the answer and quits.
    void MessageReceived(BMessage* message) override;

protected:
    void UnusedKeyDown(const char* bytes, int32 numBytes) override;

private:
    struct Answer;

    void Build(
        const char* text, const char* const labels[3], button_width width, button_spacing spacing);
    float AddText(BView* back, const char* text, const AlertText& laidOut, float left);
    float AddButtons(
        BView* back, const char* const labels[3], button_width width, button_spacing spacing);
    BPoint PlaceOver(const BWindow* caller);
    bool Present(const BWindow* caller);
    void GiveUp();
    void Answered(int32 which);

    alert_type fType;
    BTextView* fText = nullptr;
    std::vector<BButton*> fButtons;
    char fShortcuts[3] = {};
    bool fIsAnswered = false;
    std::unique_ptr<BInvoker> fInvoker;
    std::shared_ptr<Answer> fAnswer; // shared with a waiting Go()
};
