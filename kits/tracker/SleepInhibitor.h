// Keeps the machine awake and its screen on.
#pragma once

#include <memory>
#include <string>

struct DBusConnection;

// As long as it lives the machine neither goes to sleep nor takes the user for gone, as far as the
// system's login manager grants it, and the desktop shows no screen saver. The end of the process
// ends it too, whatever way that comes.
class BSleepInhibitor {
public:
    // why: shown to a user who wants the machine to sleep. Where there is nobody to ask, or nobody
    // answers within so many milliseconds, it does nothing, without a word.
    explicit BSleepInhibitor(const std::string& why, int mostMillis = 1000);
    ~BSleepInhibitor();
    BSleepInhibitor(const BSleepInhibitor&) = delete;
    BSleepInhibitor& operator=(const BSleepInhibitor&) = delete;

    // Of the login manager: "sleep:idle"; "idle" where only that was granted, as to a user who came
    // over the network: then the machine sleeps when somebody asks it to; "" if it holds nothing.
    const std::string& Held() const { return fHeld; }
    // Which of the session's services holds the screen saver off: "org.freedesktop.portal.Desktop",
    // "org.freedesktop.ScreenSaver", or "" for none.
    const std::string& ScreenHeldBy() const { return fScreenHeldBy; }

private:
    int fFile = -1; // closing it gives everything back
    std::string fHeld;
    std::shared_ptr<DBusConnection> fSession; // likewise
    std::string fScreenHeldBy;
};
