// The base of a program with windows, help and tool tips.
#pragma once

#include "toolkit/LibHelp.h"
#include "toolkit/OwnedWindow.h"

#include <Application.h>

class LibHelpWindow;

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
    // "show", or else over; 'stip' changes the tip of the views "name" to the string "text".
    void MessageReceived(BMessage* message) override;

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
    OwnedWindow<LibHelpWindow> helpWindow; // shows help
};
