#include "Entry.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>

entry_ref::entry_ref(dev_t directoryDevice, ino_t directoryNode, const char* leafName)
    : device(directoryDevice), directory(directoryNode)
{
    set_name(leafName);
}

entry_ref::entry_ref(const entry_ref& ref)
    : device(ref.device), directory(ref.directory), directoryPath(ref.directoryPath)
{
    set_name(ref.name);
}

entry_ref& entry_ref::operator=(const entry_ref& ref)
{
    if (this == &ref)
        return *this;
    device = ref.device;
    directory = ref.directory;
    directoryPath = ref.directoryPath;
    set_name(ref.name);
    return *this;
}

entry_ref::~entry_ref()
{
    free(name);
}

status_t entry_ref::set_name(const char* leafName)
{
    char* copy = leafName ? strdup(leafName) : nullptr;
    if (leafName && !copy)
        return B_NO_MEMORY;
    free(name);
    name = copy;
    return B_OK;
}

bool entry_ref::operator==(const entry_ref& ref) const
{
    if (device != ref.device || directory != ref.directory)
        return false;
    return name && ref.name ? strcmp(name, ref.name) == 0 : name == ref.name;
}

namespace {

// The absolute path with all links in it followed; empty if there is no such thing.
std::string RealPath(const std::string& path)
{
    char* real = realpath(path.c_str(), nullptr);
    const std::string result = real ? real : "";
    free(real);
    return result;
}

struct PathParts {
    std::string directory;
    std::string leaf;
};

PathParts SplitPath(std::string path)
{
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    const size_t slash = path.rfind('/');
    if (slash == path.npos)
        return { ".", path };
    return { path.substr(0, slash + 1), path.substr(slash + 1) };
}

} // namespace

status_t get_ref_for_path(const char* path, entry_ref* ref)
{
    if (!path || !*path || !ref)
        return B_BAD_VALUE;
    PathParts parts = SplitPath(path);
    if (parts.leaf == "." || parts.leaf == "..")
        parts = SplitPath(RealPath(path));
    const std::string directory = RealPath(parts.directory);
    struct stat info = {};
    if (directory.empty() || stat(directory.c_str(), &info) != 0 || !S_ISDIR(info.st_mode))
        return B_ENTRY_NOT_FOUND;
    const char* leaf = parts.leaf.empty() ? "." : parts.leaf.c_str(); // of the root
    entry_ref result(info.st_dev, info.st_ino, leaf);
    result.directoryPath = directory;
    *ref = result;
    return B_OK;
}

std::string PathOfRef(const entry_ref& ref)
{
    if (ref.directoryPath.empty() || !ref.name)
        return "";
    if (strcmp(ref.name, ".") == 0)
        return ref.directoryPath;
    return ref.directoryPath == "/" ? "/" + std::string(ref.name)
                                    : ref.directoryPath + "/" + ref.name;
}
