#pragma once

#include "TestLooper.h"

#include <Application.h>

constexpr char kSignature[] = "application/x-vnd.Test-App";

// Logs what its hooks are called with, and quits after so many of them.
class TestApp : public BApplication {
public:
    TestApp(Log& log, size_t quitAfter) : BApplication(kSignature), fLog(log), fQuitAfter(quitAfter)
    {
    }
    using BLooper::PulsePeriod;
    void ReadyToRun() override
    {
        EXPECT_TRUE(CurrentMessage()->ReturnAddress() == be_app_messenger);
        Add("ready");
    }
    void ArgvReceived(int32 argc, char** argv) override
    {
        int32 count = 0;
        const char* folder = "";
        CurrentMessage()->FindInt32("argc", &count);
        CurrentMessage()->FindString("cwd", &folder);
        std::string entry = "argv " + std::to_string(count);
        for (int32 i = 0; i < argc; ++i)
            entry += std::string(" ") + argv[i];
        Add(argv[argc] || std::filesystem::current_path() != folder ? "wrong" : entry);
    }
    void RefsReceived(BMessage*) override { Add("refs"); }
    void AboutRequested() override { Add("about"); }
    void AppActivated(bool active) override { Add(active ? "active" : "inactive"); }
    void Pulse() override { Add("pulse"); }
    void MessageReceived(BMessage* message) override { Add(std::to_string(message->what)); }

private:
    void Add(const std::string& entry)
    {
        fLog.Add(entry);
        if (fLog.Now().size() >= fQuitAfter)
            Quit();
    }

    Log& fLog;
    const size_t fQuitAfter;
};
