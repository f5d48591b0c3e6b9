// How the program was built, for the record of a run.
#pragma once

#include <string>

struct BuildFacts {
    std::string version; // of Tarvex: "1.2.6"
    std::string compiler; // "GNU 12.2.0"
    std::string buildType; // "RelWithDebInfo"; "" if none was named
    std::string flags; // of everything: "-O2 -g -DNDEBUG"
    std::string kernelFlags; // what the measured code has on top of them
    std::string target; // the processors it was built for: "x86_64"
};

[[nodiscard]] const BuildFacts& ThisBuild();
