// A looper that remembers what a run told it.
#pragma once

#include <Looper.h>
#include <Message.h>
#include <Messenger.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

typedef std::vector<std::string> Texts;

// Lives until Quit().
class Recorder : public BLooper {
public:
    Recorder() : BLooper("recorder") { }

    void MessageReceived(BMessage* message) override
    {
        const char* text = "";
        int32 status = 0;
        message->FindString(message->what == 'BmkS' ? "status" : "name", &text);
        const std::lock_guard lock(fMutex);
        fTexts.push_back(text);
        if (message->what == 'LThC' && message->FindInt32("status", &status) == B_OK)
            fTexts.back() += ": " + std::to_string(status);
        fArrived.notify_all();
    }

    // Waits for count messages, a minute at most. Returns all so far: the status texts, and "name:
    // status" for the end of a thread.
    Texts WaitFor(size_t count)
    {
        std::unique_lock lock(fMutex);
        fArrived.wait_for(lock, std::chrono::minutes(1), [&] { return fTexts.size() >= count; });
        return fTexts;
    }

private:
    std::mutex fMutex;
    std::condition_variable fArrived;
    Texts fTexts;
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
    Texts WaitFor(size_t count) const { return looper->WaitFor(count); }

    Recorder* const looper = new Recorder;
};
