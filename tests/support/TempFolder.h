#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

// A folder of the test's own, gone with the object.
class TempFolder {
public:
    TempFolder()
    {
        std::string name = std::filesystem::temp_directory_path() / "tarvex-test-XXXXXX";
        fPath = std::filesystem::canonical(mkdtemp(name.data()));
    }
    ~TempFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(fPath, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::string operator/(const std::string& below) const { return fPath / below; }
    const std::string& Path() const { return fPath.native(); }
    // Of what is in it.
    std::set<std::string> Names() const { return NamesIn(fPath); }
    static std::set<std::string> NamesIn(const std::string& folder)
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            names.insert(entry.path().filename());
        return names;
    }

private:
    std::filesystem::path fPath;
};

// Where the test program's user has his data: asked for once in a program, so name it first.
inline const TempFolder& DataHome()
{
    static const struct Home : TempFolder {
        Home() { setenv("XDG_DATA_HOME", Path().c_str(), 1); }
    } sHome;
    return sHome;
}

// "none" where there is no file.
inline std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return file ? std::string(std::istreambuf_iterator<char>(file), {}) : "none";
}

inline void WriteFile(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}
