// The base of a program with windows, help and tool tips.
#pragma once

#include <Application.h>

class LibInterfaceApp : public BApplication {
public:
    explicit LibInterfaceApp(const char* signature);

    // "-help FILE" adds a help file to the application and ends the program with status 0; "-help"
    // with anything else is told on standard error. Other arguments are left alone.
    void ArgvReceived(int32 argc, char** argv) override;
    // 'help' asks for a help page, 'stip' and 'tipf' concern tool tips.
    void MessageReceived(BMessage* message) override;

protected:
    // Writes on standard error that this version of the program lacks what the user asked for.
    void SayMissing(const char* feature) const;
};
