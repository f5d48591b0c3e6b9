// What runs have switched off, written down before they do it: so that the next program to start
// finds what a run has left off that was killed together with its keeper, and describes the machine
// with what a run has taken away. The notes lie where only their owner can write, readable by
// others where that folder is: in /run/tarvex for root, else below $XDG_RUNTIME_DIR or the user's
// data. One file for each process, always replaced as a whole.
#pragma once

#include "TaskStat.h"

#include <string>
#include <vector>

namespace kernel {
struct RunNote {
    std::string path;
    std::string boot; // of the system when it was written
    ProcessTag program;
    ProcessTag keeper;
    std::vector<int> off; // the system's numbers, in the order of switching; or about to be off

    // Writes the file, or removes it where nothing is off. 0 or an error number, and then it is as
    // before.
    [[nodiscard]] int Write() const;
};

// The note of this process on the machine below root ("": the running system), not written yet.
// Without a place for it the path is "" and error says why.
[[nodiscard]] RunNote OwnNote(const std::string& root, int& error);

// What root or this user has noted there since the system started. Others' notes are not believed.
[[nodiscard]] std::vector<RunNote> ReadNotes(const std::string& root);

// Whether another process that lives has noted the processor.
[[nodiscard]] bool IsTakenByAnother(const std::string& root, int number);

// What became of the processors that dead runs have left off.
struct LeftOff {
    std::vector<int> nowOn;
    std::vector<int> stillOff;
    int error = 0; // why they are
};

// Switches them on. Where a dead program's keeper is about to do so, waits for it; one that is
// stopped is killed, or it might interfere with a later run.
[[nodiscard]] LeftOff SwitchOnLeftOff(const std::string& root);
} // namespace kernel
