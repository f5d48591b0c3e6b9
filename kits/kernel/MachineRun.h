// Beside the platform's calls: one run at a time on a machine, with any number of its processors,
// and what a run that was killed has left of it.
#pragma once

#include "SupportDefs.h"

#include <string>
#include <vector>

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

// How many processors a run can work with: all that the process may use, on a machine of more than
// the platform counts too. They are in one order: the platform's first, whole cores before their
// siblings.
[[nodiscard]] int32 CountProcessors();

// Leaves the first count processors to the program: switches those that the platform counts on or
// off as _kset_cpu_state_ does, and binds the threads to exactly these as long as a
// ProcessorConfinement lives. B_BAD_VALUE, and nothing done, for less than 1 or more than
// CountProcessors(); else the first error, told on standard error, and the rest done.
status_t UseProcessors(int32 count);

// The system's numbers of the processors that the program uses now, and of those that it has
// switched off. Others are on, and left alone.
struct ProcessorUse {
    std::vector<int> used;
    std::vector<int> off;
};
[[nodiscard]] ProcessorUse ProcessorsInUse();

// Switches on the processors that runs have left off that were killed, and whoever should have
// switched them on with them. Returns a line without its end that says which, or which could not be
// switched on and why; "" if there were none. Every program calls it when it starts; may take
// some seconds if there is something to do.
[[nodiscard]] std::string restore_processors();
