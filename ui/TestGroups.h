// The test groups that the user can choose.
#pragma once

#include <SupportDefs.h>

class Benchmark;
class LibSysInfo;

constexpr int32 kNbrTestGroups = 10;

struct TestGroup {
    const char* label;
    const char* viewName;
    uint32 what; // the message of the group's check box
    int32 seconds; // how long one pass takes, about
    bool Benchmark::*selected;
};

// In the order of the main window's check boxes as members, which is that of the engine's flags.
extern const TestGroup kTestGroups[kNbrTestGroups];

// Indices into kTestGroups; from the first disk group on all are such.
constexpr int32 kGraphicsGroup = 0;
constexpr int32 kFirstDiskGroup = 8;
constexpr int32 kInputOutputGroup = 8;
constexpr int32 kLifeCycleGroup = 9;

// True if what is the message of a check box.
[[nodiscard]] bool IsTestGroupMessage(uint32 what);

// True if the main screen is the one that graphics figures of different machines are compared on:
// 1024 by 768 pixels with a table of 256 colours.
[[nodiscard]] bool SuitsGraphicsTests(const LibSysInfo& info);
