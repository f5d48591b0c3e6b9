#include "toolkit/WebLinkStringView.h"

#include "toolkit/Links.h"
#include "toolkit/PanelColor.h"

namespace {

constexpr rgb_color kLinkColor = { 30, 90, 200, 255 };

} // namespace

WebLinkStringView::WebLinkStringView(
    BRect frame, const char* name, const char* text, const char* url)
    : BStringView(frame, name, text, B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW | B_NAVIGABLE),
      page(url)
{
    SetHighColor(LibOnPanel(kLinkColor));
}

void WebLinkStringView::MouseDown(BPoint)
{
    WebLinkTo(page);
}

void WebLinkStringView::KeyDown(const char* bytes, int32 numBytes)
{
    if (bytes[0] == B_ENTER || bytes[0] == B_SPACE)
        WebLinkTo(page);
    else
        BStringView::KeyDown(bytes, numBytes);
}
