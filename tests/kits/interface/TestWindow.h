// A window for tests: it records what it is sent, and goes away with its holder.
#pragma once

#include "Application.h"
#include "Message.h"
#include "Mutex.h"
#include "tests/support/ScreenDriver.h"
#include "View.h"
#include "Window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

// What happened, in order; from any thread.
class EventLog {
public:
    void Add(const std::string& event)
    {
        MutexLock lock(fLock);
        fEvents.push_back(event);
    }
    std::vector<std::string> Events()
    {
        MutexLock lock(fLock);
        return fEvents;
    }
    bool WaitForCount(size_t count)
    {
        return screen::WaitFor([&] { return Events().size() >= count; });
    }
    bool WaitFor(const std::string& event)
    {
        return screen::WaitFor([&] {
            const auto events = Events();
            return std::find(events.begin(), events.end(), event) != events.end();
        });
    }

private:
    Mutex fLock;
    std::vector<std::string> fEvents GUARDED_BY(fLock);
};

class TestWindow : public BWindow {
public:
    TestWindow(std::shared_ptr<EventLog> log, BRect frame, const char* title, uint32 flags = 0)
        : BWindow(frame, title, B_TITLED_WINDOW, flags), fLog(std::move(log))
    {
    }

    // Messages below 'AAAA' are the tests' own: "7", or "7 value 1" from a control.
    void MessageReceived(BMessage* message) override
    {
        int32 value = 0;
        if (message->what >= 'AAAA')
            return BWindow::MessageReceived(message);
        std::string event = std::to_string(message->what);
        if (message->FindInt32("be:value", &value) == B_OK)
            event += " value " + std::to_string(value);
        fLog->Add(event);
    }
    bool QuitRequested() override
    {
        fLog->Add("quit requested");
        return fMayQuit && BWindow::QuitRequested();
    }
    void FrameMoved(BPoint where) override { fPlaces.push_back(where); }

    bool fMayQuit = false;
    std::vector<BPoint> fPlaces; // that it was moved to

protected:
    const std::shared_ptr<EventLog> fLog;
};

// A test with a window of 300 by 200 at (200, 150), titled "Test".
class WindowTest : public testing::Test {
protected:
    WindowTest()
    {
        if (!screen::IsThere())
            return;
        fWindow = new TestWindow(fLog, BRect(200, 150, 499, 349), "Test");
        fTarget = BMessenger(fWindow);
    }
    ~WindowTest() override
    {
        if (fTarget.LockTarget())
            fWindow->Quit();
    }
    void SetUp() override
    {
        if (!fWindow)
            GTEST_SKIP() << "no display";
    }
    // Shows the window and waits until it has the keyboard.
    void Show()
    {
        fWindow->Show();
        ASSERT_TRUE(screen::WaitFor([] { return screen::IsActive("Test"); }));
    }
    // f under the window's lock.
    template <typename F>
    auto Locked(F f)
    {
        fWindow->Lock();
        const auto result = f();
        fWindow->Unlock();
        return result;
    }

    BApplication fApplication { "application/x-vnd.Tarvex-test" };
    const std::shared_ptr<EventLog> fLog = std::make_shared<EventLog>();
    TestWindow* fWindow = nullptr;
    BMessenger fTarget;
};
