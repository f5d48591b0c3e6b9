// Several lines of text, editable unless that is switched off.
#pragma once

#include "View.h"

#include <cstdint>
#include <functional>
#include <string>

class TextPeer;
struct TextLimit;

class BTextView : public BView {
public:
    // textRect: where in the view the text stands, in its own coordinates.
    BTextView(BRect frame, const char* name, BRect textRect, uint32 resizeMode,
        uint32 flags = B_WILL_DRAW | B_NAVIGABLE);

    // The text as the user left it. The pointer holds until the next call of this view.
    const char* Text();
    int32 TextLength(); // in bytes
    virtual void SetText(const char* text); // null is an empty one; the caret goes to the start
    void Insert(const char* text); // in place of the selection, the caret behind it
    virtual void Select(int32 start, int32 finish); // byte offsets, cut to the text
    void GetSelection(int32* start, int32* finish);
    // The most bytes that the text may have, at first any number; what is there is cut. Of what
    // would exceed them the end is left out, in whole letters.
    void SetMaxBytes(int32 most);
    int32 MaxBytes() const { return fMaxBytes; }
    // The same in characters, which in most of the world's scripts are two bytes or more.
    void SetMaxCharacters(int32 most);

    // Shows a part of the text, by byte offsets, in that font until the text is set anew. Does
    // nothing outside windows.
    void SetFontAndColor(int32 start, int32 finish, const BFont* font);

    void MakeEditable(bool editable = true);
    bool IsEditable() const { return fEditable; }
    void MakeSelectable(bool selectable = true);
    // From here on Enter is for the window, whose default button it presses, and with the shift key
    // it begins a new line.
    void LeaveEnterToWindow();
    void SetTextRect(BRect rect);
    BRect TextRect() const { return fTextRect; }
    // What the whole text needs at the textRect's width, in view units.
    float TextHeight();

    // where: pixels of the text at the left top; also what scroll bars around the view show.
    void ScrollTo(BPoint where) override;
    using BView::ScrollTo;

protected:
    void MakeWidget(ViewPeer& peer) override;
    void WidgetChanged(BMessage* report) override; // how far the text reaches, and where it stands
    void WidgetGoes() override;

    // For a text whose widget reports every change of the user's. Text() then does not ask it, and
    // Insert() and Select() do nothing where the user has changed the text since: they were meant
    // for another one. Where they do, the user's next change comes when the message that is being
    // handled has been.
    void UseReports() { fIsReported = true; }
    void ReleaseText(); // for a report with "release"
    // Takes over a report; false if the program has changed the text since.
    bool TakeReport(const char* text, int32 version);
    // For MakeWidget(), at its end.
    void EquipText(ViewPeer& peer);

private:
    void FetchText();
    TextLimit Limit() const;
    void ApplyLimit();
    void HoldText(TextPeer& text);
    enum class Apply { kAlways, kToKnownText };
    void ChangeText(Apply apply, const std::function<void(TextPeer&)>& change); // on the server
    void ShowManners(); // what may be done with the text
    void ShowBar(const BMessage& report, BScrollBar* bar, const char* prefix);

    std::string fText; // as the program last set or read it
    BRect fTextRect;
    bool fEditable = true;
    bool fSelectable = true;
    bool fLeavesEnter = false;
    int32 fMaxBytes = INT32_MAX;
    int32 fMaxCharacters = INT32_MAX;
    bool fIsReported = false;
    int32 fVersion = 0; // of the text as last reported or changed here
};
