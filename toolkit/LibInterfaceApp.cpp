#include "toolkit/LibInterfaceApp.h"

#include <Message.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

LibInterfaceApp::LibInterfaceApp(const char* signature) : BApplication(signature) { }

void LibInterfaceApp::ArgvReceived(int32 argc, char** argv)
{
    if (argc <= 1 || strcmp(argv[1], "-help") != 0)
        return;
    if (argc != 3) {
        fprintf(stderr, "Help file requred\n");
        return;
    }
    SayMissing(argv[2]);
    exit(0);
}

void LibInterfaceApp::MessageReceived(BMessage* message)
{
    switch (message->what) {
        case 'help': SayMissing("Help..."); break;
        case 'stip':
        case 'tipf': SayMissing("Tool tips"); break;
        default: BApplication::MessageReceived(message); break;
    }
}

void LibInterfaceApp::SayMissing(const char* feature) const
{
    fprintf(stderr, "<%s> comes with a later version\n", feature);
}
