#pragma once

#include "kits/kernel/Processors.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <stdlib.h>
#include <string>

// A folder that takes the place of the system's root, gone with the object.
class MachineTree {
public:
    MachineTree()
    {
        char folder[] = "/tmp/tarvex-tree-XXXXXX";
        fPath = mkdtemp(folder);
    }
    ~MachineTree() { std::filesystem::remove_all(fPath); }
    MachineTree(const MachineTree&) = delete;
    MachineTree& operator=(const MachineTree&) = delete;

    const std::string& Path() const { return fPath; }

    void Write(const std::string& file, const std::string& text) const
    {
        const std::filesystem::path path = fPath + "/" + file;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }

    // Fills the tree from a captured machine, as far as tar's options name it. False where
    // there is no such capture.
    [[nodiscard]] bool Unpack(const std::string& name, const std::string& options) const
    {
        const std::string archive = std::string(TARVEX_CAPTURES) + "/" + name + ".tar.bz2";
        if (!std::filesystem::exists(archive))
            return false;
        const std::string command = "tar xjf '" + archive + "' -C '" + fPath
            + "' --strip-components=1 --no-same-owner --wildcards " + options;
        EXPECT_EQ(system(command.c_str()), 0);
        return true;
    }

    [[nodiscard]] std::string Read(const std::string& file) const
    {
        std::ostringstream text;
        text << std::ifstream(fPath + "/" + file).rdbuf();
        return text.str();
    }

private:
    std::string fPath;
};

// Makes a tree the machine of this process as long as it lives.
class RootGuard {
public:
    explicit RootGuard(const std::string& root) { kernel::Processors::SetRoot(root); }
    ~RootGuard() { kernel::Processors::SetRoot(""); }
    RootGuard(const RootGuard&) = delete;
    RootGuard& operator=(const RootGuard&) = delete;
};
