#include "toolkit/LibAboutWindow.h"

#include "foundation/LibAppInfo.h"
#include "toolkit/LibAboutView.h"

#include <Looper.h>

#include <algorithm>

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
    if (!Lock())
        return;
    SetWorkspaces(uint32(workspaces));
    Unlock();
}

bool LibAboutWindow::QuitRequested()
{
    target->PostMessage('ABTQ', nullptr, this);
    return true;
}
