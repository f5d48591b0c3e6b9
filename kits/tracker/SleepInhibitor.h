// Keeps the machine awake.
#pragma once

#include <string>

// As long as it lives the machine neither goes to sleep nor takes the user for gone, as far as the
// system's login manager grants it. The end of the process ends it too, whatever way that comes.
class BSleepInhibitor {
public:
    // why: shown to a user who wants the machine to sleep. Where there is no login manager, or it
    // does not answer within so many milliseconds, it does nothing, without a word.
    explicit BSleepInhibitor(const std::string& why, int mostMillis = 1000);
    ~BSleepInhibitor();
    BSleepInhibitor(const BSleepInhibitor&) = delete;
    BSleepInhibitor& operator=(const BSleepInhibitor&) = delete;

    // "sleep:idle"; "idle" where only that was granted, as to a user who came over the network:
    // then the machine sleeps when somebody asks it to; "" if it holds nothing.
    const std::string& Held() const { return fHeld; }

private:
    int fFile = -1; // closing it gives everything back
    std::string fHeld;
};
