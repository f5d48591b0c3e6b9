// Beside the platform's calls: one run at a time on a machine, and what a run that was killed has
// left of it.
#pragma once

#include "SupportDefs.h"

#include <string>

// A run of this process, which every user's programs see until it or the process ends. It is a lock
// by consent: nobody is kept from running without it, so that a program that merely holds it stops
// nobody for good. Programs in containers with a network of their own do not see each other.
class BMachineRun {
public:
    // Runs under different names do not mind each other.
    explicit BMachineRun(const char* name = "tarvex-run");
    // Ends it.
    ~BMachineRun();
    BMachineRun(const BMachineRun&) = delete;
    BMachineRun& operator=(const BMachineRun&) = delete;

    // B_OK: it has begun, or had before. B_BUSY: another has, see Holder(). B_ERROR, with a line on
    // standard error: the system does not let this process find out. Never waits.
    status_t Begin();
    void End();

    // Who held it at the last Begin() that was B_BUSY and since when, local time:
    // "root (process 4711) since 2026-11-21 14:03:05", as far as that is known; at least
    // "another program".
    const std::string& Holder() const { return fHolder; }

private:
    const std::string fName;
    std::string fHolder;
    int fLock = -1;
    int fStart = -1;
};

// Switches on the processors that runs have left off that were killed, and whoever should have
// switched them on with them. Returns a line without its end that says which, or which could not be
// switched on and why; "" if there were none. Every program calls it when it starts; may take
// some seconds if there is something to do.
[[nodiscard]] std::string restore_processors();
