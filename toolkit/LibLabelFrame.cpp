#include "toolkit/LibLabelFrame.h"

#include <Font.h>
#include <StringView.h>

LibLabelFrame::LibLabelFrame(
    BRect frame, const char* label, float labelWidth, float inset, BView* content)
    : BView(frame, nullptr, B_FOLLOW_LEFT | B_FOLLOW_TOP, 0)
{
    BRect place = Bounds();
    place.right = labelWidth - 1;
    auto* title = new BStringView(place, nullptr, label);
    BFont font;
    content->GetFont(&font);
    title->SetFont(&font);
    AddChild(title);
    place = Bounds();
    place.left = labelWidth;
    place.InsetBy(inset, inset);
    content->MoveTo(place.LeftTop());
    content->ResizeTo(place.Width(), place.Height());
    AddChild(content);
}

void LibLabelFrame::AttachedToWindow()
{
    if (Parent())
        SetViewColor(Parent()->ViewColor());
}
