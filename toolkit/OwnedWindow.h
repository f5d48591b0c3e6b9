// A window as the one who opens it has it: made when it is first wanted, shown, told and ended.
#pragma once

#include <Autolock.h>
#include <Message.h>
#include <Messenger.h>
#include <Window.h>

// Holds the lock of the looper behind a messenger for the length of a block. A messenger may
// outlive its looper, whose address may then be another one's: so this never touches what has gone.
class LibTargetLock {
public:
    // Waits for the lock.
    explicit LibTargetLock(const BMessenger& target);

    // False if the looper has gone: the block must leave it alone.
    bool IsLocked() const { return lock.IsLocked(); }
    BLooper* Looper() const { return looper; } // null if it has gone

private:
    BLooper* const looper;
    const BAutolock lock;
};

// The window runs in a thread of its own and may go at any moment: its user closes it, the
// application quits. After that every call does nothing, and the next Show() makes another one.
//
// A window tells its owner that it closes by a message that names itself as where replies go:
// target->PostMessage('cmpq', nullptr, this). It may then go by itself or wait to be ended.
//
// What waits for the window's lock says so: the owner's lock comes before the window's. Used by
// the owner's thread, or with the owner locked.
template <class Window>
class OwnedWindow {
public:
    OwnedWindow() = default;
    ~OwnedWindow() { End(); }
    OwnedWindow(const OwnedWindow&) = delete;
    OwnedWindow& operator=(const OwnedWindow&) = delete;

    // From when it is made until it has gone, whoever ended it; shown or not.
    bool IsThere() const { return address.IsValid(); }
    // Makes the window by make(), which returns it, unless it is there; shows nothing. The result
    // is the window, for as long as nobody ends it.
    template <class Maker>
    Window* Make(Maker make)
    {
        if (!IsThere())
            Own(make());
        return window;
    }
    // Makes the window unless it is there, and brings it to the front. Locks it.
    template <class Maker>
    void Show(Maker make)
    {
        // One that closes just now is still there, but does not come to the front any more.
        if (Front())
            return;
        Own(make());
        Front();
    }
    // Gives it the keyboard, in front of other windows, be it hidden or minimized. Locks it. False
    // if it has gone.
    bool Front()
    {
        return With([](Window& there) {
            if (there.IsHidden())
                there.Show();
            there.Activate();
        });
    }
    // Hides it, unless it is hidden. Locks it.
    void Hide()
    {
        With([](Window& there) {
            if (!there.IsHidden())
                there.Hide();
        });
    }
    // Posts a copy of the message without waiting. False if it has gone, or its port is full.
    [[nodiscard]] bool Tell(BMessage message) const
    {
        return address.SendMessage(&message, static_cast<BHandler*>(nullptr), 0) == B_OK;
    }
    // Calls use(Window&) with the window locked. False, and nothing done, if it has gone.
    template <class Use>
    bool With(Use use)
    {
        // The address is asked, as a window that has gone would be looked at to lock it.
        const LibTargetLock lock(address);
        if (!lock.IsLocked())
            return false;
        use(*window);
        return true;
    }
    // Quits it unasked and returns when it has gone. Locks it.
    void End()
    {
        if (address.LockTarget())
            window->Quit(); // which unlocks: so this is no block
        Own(nullptr);
    }

    // Whether a message is this window's own. One that its user closed twice tells so twice, and
    // the second time there may be another in its place.
    bool IsFrom(const BMessage& closing) const
    {
        return window && closing.ReturnAddress() == address;
    }
    // Ends the window if the message is its own; one that goes by itself keeps its lock until then.
    void Closed(const BMessage& closing)
    {
        if (IsFrom(closing))
            End();
    }

private:
    void Own(Window* made)
    {
        window = made;
        address = BMessenger(made);
    }

    Window* window = nullptr; // may have gone:
    BMessenger address; // knows
};
