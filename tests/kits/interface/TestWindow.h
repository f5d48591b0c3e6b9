// A window for tests: it records what it is sent, and goes away with its holder.
#pragma once

#include "Application.h"
#include "Entry.h"
#include "Message.h"
#include "tests/support/Log.h"
#include "tests/support/Rows.h"
#include "tests/support/ScreenDriver.h"
#include "tests/support/Test.h"
#include "tests/support/WithLock.h"
#include "View.h"
#include "Window.h"

constexpr uint32 kAsk = 99;

class TestWindow : public BWindow {
public:
    TestWindow(std::shared_ptr<Log> log, BRect frame, const char* title, uint32 flags = 0)
        : BWindow(frame, title, B_TITLED_WINDOW, flags), fLog(std::move(log))
    {
    }

    // Messages below 'AAAA' are the tests' own: "7", "7 value 1" from a control, "7 2 3" from the
    // items 2 and 3 of a menu or list.
    void MessageReceived(BMessage* message) override
    {
        int32 value = 0;
        entry_ref ref;
        if (message->what == kAsk)
            return fAsked();
        if (message->FindRef("refs", &ref) == B_OK)
            fLog->Add(PathOfRef(ref));
        const char* name = "";
        if (message->FindRef("directory", &ref) == B_OK
            && message->FindString("name", &name) == B_OK)
            fLog->Add(PathOfRef(ref) + " " + name);
        if (message->FindInt32("old_what", &value) == B_OK)
            fLog->Add("forgone " + std::to_string(value));
        if (message->what >= 'AAAA')
            return BWindow::MessageReceived(message);
        std::string event = std::to_string(message->what);
        for (const char* field : { "be:value", "which" }) {
            if (message->FindInt32(field, &value) == B_OK)
                event += (*field == 'b' ? " value " : " which ") + std::to_string(value);
        }
        for (int32 i = 0; message->FindInt32("index", i, &value) == B_OK; i++)
            event += " " + std::to_string(value);
        if (event.find(' ') != event.npos && !message->HasInt32("which"))
            event += message->HasInt64("when") && message->HasPointer("source") ? "" : " of nobody";
        fLog->Add(event);
    }
    bool QuitRequested() override
    {
        fLog->Add("quit requested");
        return false;
    }
    void FrameMoved(BPoint where) override { fPlaces.push_back(where); }
    void FrameResized(float width, float height) override { fSize = BPoint(width, height); }

    std::vector<BPoint> fPlaces; // that it was moved to
    BPoint fSize; // that it was given last
    std::function<void()> fAsked; // what kAsk makes it do, in its own thread

private:
    const std::shared_ptr<Log> fLog;
};

// A test with a window of 300 by 200 at (200, 150), titled "Test".
class WindowTest : public testing::Test {
protected:
    void SetUp() override
    {
        fWindow = new TestWindow(fLog, BRect(200, 150, 499, 349), "Test");
        fTarget = BMessenger(fWindow);
    }
    void TearDown() override
    {
        if (fTarget.LockTarget())
            fWindow->Quit();
    }
    // Shows the window and waits until it has the keyboard.
    void Show()
    {
        fWindow->Show();
        ASSERT_TRUE(screen::BecomesActive("Test"));
    }
    // f under the window's lock.
    template <typename F>
    auto Locked(F f)
    {
        return WithLock(fWindow, f);
    }
    // Whether condition, asked again and again under the window's lock, comes true.
    template <typename F>
    bool Becomes(F condition)
    {
        return screen::WaitFor([&] { return Locked(condition); });
    }
    // Does what a file here says, line by line: a command under the window's lock, or else a key.
    // What is logged then stands below it, and the state where that ends with a full stop.
    using Commands = std::map<std::string, std::function<void()>>;
    void Follow(const std::string& file, const std::function<Commands(const Row&)>& commandsFor,
        const std::function<std::string()>& state = {})
    {
        size_t known = fLog->Now().size();
        for (const TextRow& row : ReadRows("kits/interface/" + file)) {
            SCOPED_TRACE(row.given);
            const Row words = RowOf(row.given);
            const Commands commands = commandsFor(words);
            if (words[0] == "show")
                Show();
            else if (words[0] == "menu")
                EXPECT_TRUE(screen::ClickMenu({ words.begin() + 1, words.end() }));
            else if (commands.contains(words[0]))
                Locked(commands.at(words[0]));
            else
                screen::Key(words[0]);
            std::string told;
            Entries all;
            screen::WaitFor([&] {
                told.clear();
                all = fLog->Now();
                for (size_t i = known; i < all.size(); i++)
                    told += (told.empty() ? "" : "\n") + all[i];
                if (row.told.ends_with("."))
                    told += (told.empty() ? "" : "\n") + state() + ".";
                return told == row.told;
            });
            EXPECT_EQ(told, row.told);
            known = all.size();
        }
    }

    BApplication fApplication { "application/x-vnd.Tarvex-test" };
    const std::shared_ptr<Log> fLog = std::make_shared<Log>();
    TestWindow* fWindow = nullptr;
    BMessenger fTarget;
};
