#include "toolkit/WebLinkStringView.h"

#include "foundation/LibString.h"
#include "foundation/LibTools.h"
#include "toolkit/LibWindow.h"

#include <AppDefs.h>
#include <Message.h>
#include <Roster.h>

#include <cstdio>

namespace {

void LaunchFor(const char* type, BMessage& arguments, int32 count, const char* what)
{
    arguments.AddInt32("argc", count);
    if (be_roster->Launch(type, &arguments) != B_OK)
        fprintf(stderr, "Nothing opens <%s>\n", what);
}

constexpr rgb_color kLinkColor = { 30, 90, 200, 255 };

} // namespace

void WebLinkTo(const char* url)
{
    BMessage arguments(B_ARGV_RECEIVED);
    // The first argument stands for the program's name, which the roster finds by the type.
    arguments.AddString("argv", "browser");
    arguments.AddString("argv", url);
    LaunchFor("text/html", arguments, 2, url);
}

void EmailTo(const char* address, const char* subject, const char* body)
{
    BMessage arguments(B_ARGV_RECEIVED);
    LibString mailto;
    mailto.Formatted("mailto:%s", address);
    int32 count = 2;
    arguments.AddString("argv", "mailer");
    arguments.AddString("argv", mailto);
    const auto addOption = [&](const char* name, const char* text) {
        if (!text)
            return;
        arguments.AddString("argv", name);
        arguments.AddString("argv", text);
        count += 2;
    };
    addOption("-subject", subject);
    addOption("-body", body);
    LaunchFor("text/x-email", arguments, count, mailto);
}

bool EmailToCommand(const char* command, const char* address, const char* subject, const char* body)
{
    LibString mailto;
    mailto.Formatted("mailto:%s", address);
    ToolCommand mailer(command);
    mailer.Quoted(mailto);
    if (subject)
        mailer.Option("-subject").Quoted(subject);
    if (body)
        mailer.Option("-body").Quoted(body);
    // In the background: a mailer stays for as long as its user writes.
    mailer.Option("&");
    return mailer.Run() == 0;
}

WebLinkStringView::WebLinkStringView(
    BRect frame, const char* name, const char* text, const char* url)
    : BStringView(frame, name, text, B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW | B_NAVIGABLE),
      page(url)
{
    SetHighColor(LibOnPanel(kLinkColor));
    ShowLinkPointer();
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
