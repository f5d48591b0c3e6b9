#include "console/RunLooper.h"

#include "console/StopSignals.h"

#include <Message.h>

#include <cstdio>
#include <cstring>
#include <unistd.h>

RunLooper::RunLooper(RunOutcome& runOutcome)
    : BLooper("run"), outcome(runOutcome), onTerminal(isatty(STDOUT_FILENO) == 1)
{
}

void RunLooper::MessageReceived(BMessage* message)
{
    const char* text = nullptr;
    switch (message->what) {
        case 'BmkS':
            if (message->FindString("status", &text) == B_OK)
                ShowStatus(text);
            break;
        case 'LThC': ThreadEnded(message); break;
        default: BLooper::MessageReceived(message);
    }
}

void RunLooper::ShowStatus(const char* text)
{
    // The cursor goes back to the line's start, so that a word on standard error replaces it too.
    printf(onTerminal ? "\x1b[K%s\r" : "%s\n", text);
    // Other errors are told at the end: the run has its results file yet to write.
    if (fflush(stdout) == 0 || !StopSignals::PipeIsBroken())
        return;
    outcome.signal = SIGPIPE;
    Quit(); // deletes this and does not return
}

void RunLooper::ThreadEnded(BMessage* message)
{
    const char* name = "";
    int32 status = 0;
    message->FindString("name", &name);
    message->FindInt32("status", &status);
    if (strcmp(name, kSignalThread) == 0)
        outcome.signal = status;
    else
        outcome.finished = true;
    if (onTerminal)
        printf("\x1b[K");
    Quit(); // deletes this and does not return
}
