// A row of a BListView.
#pragma once

#include "Rect.h"

#include <string>

class BFont;
class BView;

class BListItem {
public:
    BListItem() = default;
    virtual ~BListItem() = default;
    BListItem(const BListItem&) = delete;
    BListItem& operator=(const BListItem&) = delete;

    // Draws the row into frame, in the owner's coordinates, with the window locked. complete is
    // false where the background has been cleared just before. Called for visible rows only.
    virtual void DrawItem(BView* owner, BRect frame, bool complete = false) = 0;
    // Tells the item its owner and font, so that it may set its height: when it is added to a list
    // in a window, when the list comes into one, and when the list's font changes. Takes the
    // owner's width and the font's height.
    virtual void Update(BView* owner, const BFont* font);

    float Height() const { return fHeight; } // the row is this high plus 1, as a BRect's Height()
    float Width() const { return fWidth; }
    void SetHeight(float height) { fHeight = height; }
    void SetWidth(float width) { fWidth = width; }

    // The list keeps them; a list is told by its own Select(), not here.
    bool IsSelected() const { return fSelected; }
    void Select() { fSelected = true; }
    void Deselect() { fSelected = false; }
    bool IsEnabled() const { return fEnabled; } // false: cannot be selected
    void SetEnabled(bool enabled) { fEnabled = enabled; }

private:
    friend class BListView;

    float fTop = 0; // in the list; kept right by it
    float fHeight = 0;
    float fWidth = 0;
    bool fSelected = false;
    bool fEnabled = true;
};

// A row that shows one line of text in black, on a grey ground where it is selected; without a
// cleared background on the owner's low colour.
class BStringItem : public BListItem {
public:
    explicit BStringItem(const char* text); // copied; null is empty
    void DrawItem(BView* owner, BRect frame, bool complete = false) override;
    void Update(BView* owner, const BFont* font) override; // also measures the text

    const char* Text() const { return fText.c_str(); }

private:
    static constexpr float kMargin = 4; // left and right of the text

    std::string fText;
    float fBaseline = 0; // from the row's top
};
