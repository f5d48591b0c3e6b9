// A line of text that is a link: a click, or Enter on it, shows a page in the browser.
#pragma once

#include "foundation/LibString.h"

#include <StringView.h>

class WebLinkStringView : public BStringView {
public:
    WebLinkStringView(BRect frame, const char* name, const char* text, const char* url);

    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 numBytes) override;

private:
    LibString page;
};
