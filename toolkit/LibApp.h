// The bases of a program, and the menu that it has of its own.
#pragma once

#include "foundation/LibString.h"
#include "toolkit/LibHelp.h"
#include "toolkit/OwnedWindow.h"

#include <Application.h>
#include <MenuBar.h>

#include <atomic>

class BMenu;
class LibAboutWindow;

// The base of a program with windows, help and tool tips.
class LibInterfaceApp : public BApplication {
public:
    // helpText: the program's own help, see LibHelp; null: none.
    explicit LibInterfaceApp(const char* signature, const char* helpText = nullptr);
    ~LibInterfaceApp() override;

    // "-help FILE" adds a help file to the application and ends the program, with status 0 if that
    // was done; "-help" with anything else is told on standard error. Other arguments are left
    // alone.
    void ArgvReceived(int32 argc, char** argv) override;
    // 'appr', when the first window is shown, brings the tool tips. 'help' shows the help on the
    // first of its strings "topic" that there is any on. 'tipf' switches tool tips by its bool
    // "show", or else over; 'stip' changes the tip of the views "name" to the string "text", from
    // the next pulse on.
    void MessageReceived(BMessage* message) override;
    // Puts the tips that were changed on the windows.
    void Pulse() override;

protected:
    // Adds help of the program that stands in no file, behind that of the constructor's text.
    virtual void AddHelp(LibHelp&) { }
    // Shows the help on a topic, or on the first one where there is none on it.
    void ShowHelp(const char* topic);

private:
    void ReadOwnHelp();
    void ReadHelp();
    void AnswerHelp(const BMessage& request);
    void SwitchTips(const BMessage& request);
    void SetTip(const BMessage& request);
    void ShowTopic(int32 index);

    const char* ownHelp;
    LibHelp help;
    bool hasOwnHelp = false; // it was read
    bool hasHelp = false; // and so were the files that were added
    bool showsTips = true;
    bool hasNewTips = false; // which no window has yet
    OwnedWindow<LibHelpWindow> helpWindow; // shows help
};

// The base of a program with one main window.
class LibApp : public LibInterfaceApp {
public:
    // helpText: as LibInterfaceApp's.
    LibApp(const char* signature, const char* name, const char* buildDate,
        const char* helpText = nullptr);
    ~LibApp() override;

    // Makes the main window where there is none, and returns it: a window whose thread runs.
    virtual BWindow* Window() = 0;

    // Shows the main window, the first time only.
    void ReadyToRun() override;
    // Shows the main window. The first time, posts 'appr' to the application afterwards.
    void ShowMainWindow();

    // 'sabt' shows the about window, 'ssys' the system window: each is made on the first request
    // and brought to the front on the next ones, until it says by 'ABTQ' or 'SYSQ' that it closes.
    void MessageReceived(BMessage* message) override;

    // Asks the platform whether the program may quit; IsQuitting() is true meanwhile, and stays so
    // when the answer is yes.
    bool QuitRequested() override;
    bool IsQuitting() const { return quitting; }

    // What the program says of itself.
    const char* AppName() const { return name; }
    const char* BuildDate() const { return buildDate; }

protected:
    // A new system window that tells this application by 'SYSQ' when it closes; see OwnedWindow.
    virtual BWindow* MakeSystemWindow() = 0;

private:
    void ShowAbout();

    LibString name;
    LibString buildDate;
    OwnedWindow<LibAboutWindow> about;
    OwnedWindow<BWindow> system;
    bool ready = false;
    bool shown = false;
    std::atomic<bool> quitting = false; // windows ask from their own threads
};

// The menu bar of a main window. Its first menu is the application's own: what is about the program
// and not about its work, answered by the bases above.
class MainMenuBar : public BMenuBar {
public:
    // Fills the application's menu with "About", "Help...", "System..." and "Quit", sent to be_app.
    MainMenuBar(BRect frame, const char* applicationName);

    BMenu* ApplicationMenu() const { return applicationMenu; }

private:
    BMenu* applicationMenu;
};
