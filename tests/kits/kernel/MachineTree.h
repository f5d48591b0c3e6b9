#pragma once

#include "kits/kernel/Processors.h"

#include <filesystem>
#include <fstream>
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
