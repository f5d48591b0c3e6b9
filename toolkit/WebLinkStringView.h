// Ways out of the program: a page in the browser, a letter in the mailer.
#pragma once

#include "foundation/LibString.h"

#include <StringView.h>

// Shows the page in the desktop's browser.
void WebLinkTo(const char* url);
// Opens a new letter in the desktop's mailer. subject and body may be null.
void EmailTo(const char* address, const char* subject, const char* body);
// The same by a command of the user's own, run by the shell in the background. False, and nothing
// is run, if the command line exceeds 512 bytes.
bool EmailToCommand(
    const char* command, const char* address, const char* subject, const char* body);

// A line of text that is a link: a click, or Enter on it, shows a page in the browser.
class WebLinkStringView : public BStringView {
public:
    WebLinkStringView(BRect frame, const char* name, const char* text, const char* url);

    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 numBytes) override;

private:
    LibString page;
};
