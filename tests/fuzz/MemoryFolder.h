// A folder for the files of a fuzz target, where writing costs no disk.
#pragma once

#include "tests/fuzz/Require.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

class MemoryFolder {
public:
    MemoryFolder()
    {
        std::string name = std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : "/tmp";
        name += "/tarvex-fuzz-XXXXXX";
        Require(mkdtemp(name.data()) != nullptr, "there is room for a folder");
        fPath = name;
    }
    ~MemoryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(fPath, ignored);
    }
    MemoryFolder(const MemoryFolder&) = delete;
    MemoryFolder& operator=(const MemoryFolder&) = delete;

    const std::string& Path() const { return fPath; }
    void Write(const std::string& file, std::string_view text) const
    {
        const std::string path = fPath + "/" + file;
        std::ofstream out(path, std::ios::binary);
        if (!out) {
            std::filesystem::create_directories(path.substr(0, path.rfind('/')));
            out.open(path, std::ios::binary);
        }
        out << text;
    }

private:
    std::string fPath;
};
