#include "Entry.h"

#include "FileDescriptor.h"
#include "Locations.h"
#include "Path.h"
#include "store/Store.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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
    // The path does not count: two names of the same directory are the same place.
    if (device != ref.device || directory != ref.directory)
        return false;
    return name && ref.name ? strcmp(name, ref.name) == 0 : name == ref.name;
}

status_t get_ref_for_path(const char* path, entry_ref* ref)
{
    if (!ref)
        return B_BAD_VALUE;
    const BEntry entry(path);
    return entry.InitCheck() == B_OK ? entry.GetRef(ref) : entry.InitCheck();
}

std::string PathOfRef(const entry_ref& ref)
{
    if (ref.directoryPath.empty() || !ref.name)
        return "";
    if (strcmp(ref.name, ".") == 0)
        return ref.directoryPath;
    return JoinPath(ref.directoryPath, ref.name);
}

BEntry::BEntry(const char* path, bool traverse)
{
    SetTo(path, traverse);
}

BEntry::BEntry(const entry_ref* ref, bool traverse)
{
    SetTo(ref, traverse);
}

status_t BEntry::InitCheck() const
{
    return fStatus;
}

bool BEntry::Exists() const
{
    struct stat info = {};
    return GetStat(&info) == B_OK;
}

status_t BEntry::GetStat(struct stat* info) const
{
    if (!info)
        return B_BAD_VALUE;
    if (fStatus != B_OK)
        return B_NO_INIT;
    const int result = fstatat(fDirectory.Get(), fName.c_str(), info, AT_SYMLINK_NOFOLLOW);
    return result == 0 ? B_OK : StatusOfErrno();
}

time_t BEntry::BirthTime() const
{
    NodeIdentity identity;
    const status_t error = IdentifyNode(fDirectory.Get(), fName, &identity);
    return error == B_OK ? static_cast<time_t>(identity.birth / 1'000'000'000) : 0;
}

status_t BEntry::SetTo(const char* path, bool traverse)
{
    return Set(AT_FDCWD, path ? LocalPath(path) : "", traverse);
}

status_t BEntry::SetTo(const entry_ref* ref, bool traverse)
{
    return Set(AT_FDCWD, ref ? PathOfRef(*ref) : "", traverse);
}

void BEntry::Unset()
{
    *this = BEntry();
}

status_t BEntry::Set(int base, const std::string& path, bool traverse)
{
    BEntry entry; // base may be this one's own directory
    entry.fStatus = path.empty() ? B_BAD_VALUE : entry.Open(base, path);
    if (entry.fStatus == B_OK && traverse)
        entry.fStatus = entry.Follow(40); // links in a row, as many as the system follows
    if (entry.fStatus != B_OK) {
        const status_t error = entry.fStatus;
        entry.Unset();
        entry.fStatus = error;
    }
    *this = entry;
    return fStatus;
}

status_t BEntry::Open(int base, const std::string& path)
{
    // The directory is held open, not its path: the entry stays where it is when a folder above it
    // is renamed. O_PATH needs no right to read it.
    PathParts parts = SplitPath(path);
    if (parts.leaf == "." || parts.leaf == "..") {
        // "." and ".." are no names of their own: the entry is what they stand for, by its real
        // name in its own parent.
        const FileDescriptor end(openat(base, path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!end.IsOpen())
            return StatusOfErrno();
        parts = SplitPath(PathOfDescriptor(end.Get()));
        if (parts.directory == ".") // it has been removed while it was open
            return B_ENTRY_NOT_FOUND;
    }
    if (parts.leaf.size() >= static_cast<size_t>(B_FILE_NAME_LENGTH))
        return B_NAME_TOO_LONG;
    fName = parts.leaf.empty() ? "." : parts.leaf;
    fDirectory =
        FileDescriptor(openat(base, parts.directory.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    return fDirectory.IsOpen() ? B_OK : StatusOfErrno();
}

status_t BEntry::Follow(int linksLeft)
{
    char target[PATH_MAX + 1];
    const ssize_t length = readlinkat(fDirectory.Get(), fName.c_str(), target, PATH_MAX);
    if (length < 0)
        return errno == EINVAL || errno == ENOENT ? B_OK : StatusOfErrno(); // no link
    if (linksLeft == 0)
        return B_LINK_LIMIT;
    target[length] = '\0';
    const FileDescriptor base = fDirectory;
    const status_t error = Open(base.Get(), target);
    return error == B_OK ? Follow(linksLeft - 1) : error;
}

status_t BEntry::GetRef(entry_ref* ref) const
{
    if (!ref)
        return B_BAD_VALUE;
    if (fStatus != B_OK)
        return B_NO_INIT;
    struct stat info = {};
    if (fstat(fDirectory.Get(), &info) != 0)
        return StatusOfErrno();
    entry_ref result(info.st_dev, info.st_ino, fName.c_str());
    result.directoryPath = PathOfDescriptor(fDirectory.Get());
    if (result.directoryPath.empty())
        return B_ENTRY_NOT_FOUND;
    *ref = result;
    return B_OK;
}

status_t BEntry::GetPath(BPath* path) const
{
    entry_ref ref;
    if (!path)
        return B_BAD_VALUE;
    const status_t error = GetRef(&ref);
    if (error == B_OK)
        return path->SetTo(&ref);
    path->Unset();
    return error;
}

status_t BEntry::GetParent(BEntry* parent) const
{
    if (!parent)
        return B_BAD_VALUE;
    if (fStatus != B_OK)
        return B_NO_INIT;
    // Only the root has that name here.
    return fName == "." ? B_ENTRY_NOT_FOUND : parent->Set(fDirectory.Get(), ".", false);
}

status_t BEntry::Rename(const char* path, bool clobber)
{
    if (!path || !*path)
        return B_BAD_VALUE;
    return fStatus == B_OK ? Relocate(fDirectory.Get(), path, clobber) : B_NO_INIT;
}

status_t BEntry::Relocate(int base, const std::string& path, bool clobber)
{
    BEntry target;
    if (const status_t error = target.Set(base, path, false); error != B_OK)
        return error;
    // The store knows files by their paths too, so what it holds for them has to move along.
    NodeIdentity before;
    if (const status_t error = IdentifyNode(fDirectory.Get(), fName, &before); error != B_OK)
        return error;
    // In one step: between a look and the renaming another program could put a file there, and it
    // would be lost.
    int result = renameat2(fDirectory.Get(), fName.c_str(), target.fDirectory.Get(),
        target.fName.c_str(), clobber ? 0 : RENAME_NOREPLACE);
    if (result != 0 && errno == EINVAL && !clobber && !target.Exists()) // no such flag there
        result = renameat(
            fDirectory.Get(), fName.c_str(), target.fDirectory.Get(), target.fName.c_str());
    if (result != 0)
        return StatusOfErrno();
    *this = target;
    NodeIdentity after;
    if (IdentifyNode(fDirectory.Get(), fName, &after) == B_OK)
        Store::Shared().Moved(before.path, after.path);
    return B_OK;
}

status_t BEntry::Remove()
{
    if (fStatus != B_OK)
        return B_NO_INIT;
    NodeIdentity file;
    if (const status_t error = IdentifyNode(fDirectory.Get(), fName, &file); error != B_OK)
        return error;
    int result = unlinkat(fDirectory.Get(), fName.c_str(), 0);
    // The system says which of the two it is; a look beforehand could be wrong by now.
    const bool isDirectory = result != 0 && errno == EISDIR;
    if (isDirectory)
        result = unlinkat(fDirectory.Get(), fName.c_str(), AT_REMOVEDIR);
    if (result != 0)
        return StatusOfErrno();
    // A file with other names is still there, and keeps its attributes.
    if (isDirectory || file.links == 1)
        Store::Shared().Removed(file);
    return B_OK;
}
