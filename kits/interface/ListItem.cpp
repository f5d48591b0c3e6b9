#include "ListItem.h"

#include "Font.h"
#include "View.h"

#include <cmath>

void BListItem::Update(BView* owner, const BFont* font)
{
    font_height height;
    font->GetHeight(&height);
    fWidth = owner->Bounds().Width();
    fHeight = std::ceil(height.ascent + height.descent + height.leading);
}

BStringItem::BStringItem(const char* text) : fText(text ? text : "") { }

void BStringItem::Update(BView* owner, const BFont* font)
{
    BListItem::Update(owner, font);
    SetWidth(2 * kMargin + font->StringWidth(Text()));
    font_height height;
    font->GetHeight(&height);
    // Half of the leading above the letters, so that they stand in the middle of the row.
    fBaseline = std::ceil(height.ascent + height.leading / 2);
}

void BStringItem::DrawItem(BView* owner, BRect frame, bool complete)
{
    constexpr rgb_color kSelectedGround { 184, 184, 184 };
    constexpr rgb_color kDisabledText { 128, 128, 128 };
    const rgb_color before = owner->HighColor();
    // The list has cleared the ground with its view colour unless it says complete.
    if (IsSelected() || complete) {
        owner->SetHighColor(IsSelected() ? kSelectedGround : owner->LowColor());
        owner->FillRect(frame);
    }
    owner->SetHighColor(IsEnabled() ? black_color : kDisabledText);
    owner->DrawString(Text(), BPoint(frame.left + kMargin, frame.top + fBaseline));
    owner->SetHighColor(before);
}
