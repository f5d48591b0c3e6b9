// A looper that remembers what a run told it.
#pragma once

#include "tests/support/Log.h"

#include <Looper.h>
#include <Message.h>
#include <Messenger.h>

// Lives until Quit().
class Recorder : public BLooper {
public:
    Recorder() : BLooper("recorder") { }

    void MessageReceived(BMessage* message) override
    {
        const char* text = "";
        int32 status = 0;
        message->FindString(message->what == 'BmkS' ? "status" : "name", &text);
        const bool isEnd = message->what == 'LThC' && message->FindInt32("status", &status) == B_OK;
        log.Add(text + (isEnd ? ": " + std::to_string(status) : ""));
    }

    Log log; // the status texts, and "name: status" for the end of a thread
};

// One that runs for the length of a block.
struct ScopedRecorder {
    ScopedRecorder() { looper->Run(); }
    ~ScopedRecorder()
    {
        looper->Lock();
        looper->Quit();
    }
    ScopedRecorder(const ScopedRecorder&) = delete;
    ScopedRecorder& operator=(const ScopedRecorder&) = delete;

    BMessenger* NewMessenger() const { return new BMessenger(looper); }
    Entries WaitFor(size_t count) const { return looper->log.WaitFor(count); }

    Recorder* const looper = new Recorder;
};
