#pragma once

#include "Processors.h"
#include "tests/support/Test.h"

#include <optional>

// A folder that takes the place of the system's root, gone with the object.
class MachineTree : public TempFolder {
public:
    void Write(const std::string& file, const std::string& text) const
    {
        const std::filesystem::path path = *this / file;
        std::filesystem::create_directories(path.parent_path());
        WriteFile(path, text);
    }

    // Fills the tree from a captured machine, as far as tar's options name it. False where
    // there is no such capture.
    [[nodiscard]] bool Unpack(const std::string& name, const std::string& options) const
    {
        const std::string archive = std::string(TARVEX_CAPTURES) + "/" + name + ".tar.bz2";
        if (!std::filesystem::exists(archive))
            return false;
        const std::string command = "tar xjf '" + archive + "' -C '" + Path()
            + "' --strip-components=1 --no-same-owner --wildcards " + options;
        EXPECT_EQ(system(command.c_str()), 0);
        return true;
    }

    [[nodiscard]] std::string Read(const std::string& file) const { return ReadFile(*this / file); }
};

// Makes a tree the machine of this process as long as it lives.
class RootGuard {
public:
    explicit RootGuard(const std::string& root) { kernel::Processors::SetRoot(root); }
    ~RootGuard() { kernel::Processors::SetRoot(""); }
    RootGuard(const RootGuard&) = delete;
    RootGuard& operator=(const RootGuard&) = delete;
};

// What there is, or "-".
template <class Number>
[[nodiscard]] std::string Text(const std::optional<Number>& number)
{
    std::ostringstream text;
    number ? text << *number : text << "-";
    return text.str();
}

// A tree that is one from its start to its end.
class ThisMachine : public MachineTree {
    const RootGuard fRoot { Path() };
};
