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
    constexpr rgb_color kDisabledText { 128, 128, 128 };
    const rgb_color ground = complete ? owner->LowColor() : owner->ViewColor();
    const bool isDark = ground.red + ground.green + ground.blue < 3 * 128;
    const uint8 grey = isDark ? 88 : 184;
    const rgb_color selectedGround { grey, grey, grey };
    const rgb_color before = owner->HighColor();
    // The list has cleared the ground with its view colour unless it says complete.
    if (IsSelected() || complete) {
        owner->SetHighColor(IsSelected() ? selectedGround : owner->LowColor());
        owner->FillRect(frame);
    }
    owner->SetHighColor(!IsEnabled() ? kDisabledText : isDark ? white_color : black_color);
    owner->DrawString(Text(), BPoint(frame.left + kMargin, frame.top + fBaseline));
    owner->SetHighColor(before);
}
