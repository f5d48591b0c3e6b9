#include "toolkit/LibAboutWindow.h"

#include "foundation/LibAppInfo.h"
#include "foundation/LibDate.h"
#include "foundation/LibString.h"
#include "toolkit/LibWindow.h"
#include "toolkit/Maker.h"
#include "toolkit/WebLinkStringView.h"

#include <Autolock.h>
#include <Looper.h>
#include <StringView.h>

#include <algorithm>

namespace {

constexpr rgb_color kMakerColor = { 0, 99, 0, 255 };

} // namespace

LibAboutView::LibAboutView(BRect frame)
    : BView(frame, "about_view", B_FOLLOW_ALL_SIDES, B_WILL_DRAW)
{
    SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    appName = AddLine("app_name", 10, 45, 36);
    version = AddLine("version", 45, 60, 12);
    releaseDate = AddLine("rel_date", 60, 75, 12);

    company = AddLine("company", 77, 117, 36);
    company->SetFont(be_bold_font, B_FONT_FAMILY_AND_STYLE);
    company->SetHighColor(LibOnPanel(kMakerColor));
    company->SetText(kMakerName);

    const BRect link(20, 115, frame.Width() - 20, 130);
    WebLinkStringView* url = new WebLinkStringView(link, "url", kMakerPage, kMakerPage);
    url->SetAlignment(B_ALIGN_CENTER);
    url->SetViewColor(ViewColor());
    AddChild(url);

    LibString notice;
    notice.Formatted("\u00a9 %d %s", LibDate(true, true).GetYear(), kMakerName);
    AddLine("copyright", 135, 150, 12)->SetText(notice);
}

BStringView* LibAboutView::AddLine(const char* name, float top, float bottom, float size)
{
    const BRect frame(10, top, Frame().Width() - 10, bottom);
    BStringView* line = new BStringView(frame, name, "", B_FOLLOW_H_CENTER, B_WILL_DRAW);
    line->SetFontSize(size);
    line->SetAlignment(B_ALIGN_CENTER);
    line->SetViewColor(ViewColor());
    AddChild(line);
    return line;
}

void LibAboutView::SetAppName(const char* name)
{
    appName->SetText(name);
}

void LibAboutView::SetVersion(const char* number)
{
    LibString text;
    text.Formatted("Version: %s", number);
    version->SetText(text);
}

void LibAboutView::SetReleaseDate(const char* date)
{
    LibString text;
    text.Formatted("%s: %s", "Released", date);
    releaseDate->SetText(text);
}

float LibAboutView::WidestString() const
{
    float widest = 0;
    for (const BStringView* line : { appName, version, releaseDate, company })
        widest = std::max(widest, line->StringWidth(line->Text()));
    return widest;
}

LibAboutWindow::LibAboutWindow(BLooper* looper, const char* appName, const char* releaseDate)
    : LibWindow(BRect(100, 50, 430, 225), "", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL,
        B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE),
      target(looper), aboutView(new LibAboutView(Bounds()))
{
    SetName("AboutWindow");
    CloseOnEscape();
    LibString title;
    title.Formatted("%s %s", "About", appName);
    SetTitle(title);
    AddChild(aboutView);
    aboutView->SetAppName(appName);
    aboutView->SetVersion(LibGetAppVersion(nullptr));
    aboutView->SetReleaseDate(releaseDate);
    ResizeTo(aboutView->WidestString() + 20, 175);
    // It keeps its left edge, so that it stands in the middle only if it ends where the rest does.
    if (BView* url = FindView("url"))
        url->ResizeTo(Bounds().Width() - 40, url->Bounds().Height());
}

void LibAboutWindow::UpdateWorkspace(const long& workspaces)
{
    const BAutolock lock(this);
    if (lock.IsLocked())
        SetWorkspaces(static_cast<uint32>(workspaces));
}

bool LibAboutWindow::QuitRequested()
{
    // It names itself as where replies go: should it be told late, the application must not take it
    // for the end of a window that was opened since.
    target->PostMessage('ABTQ', nullptr, this);
    return true;
}
