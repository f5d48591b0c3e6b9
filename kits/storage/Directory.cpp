#include "Directory.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

#include "ErrorCodes.h"
#include "File.h"
#include "KillGuard.h"
#include "Locations.h"

namespace {

constexpr int kOpen = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

// Makes one directory. B_OK also if it is there.
status_t MakeDirectory(const std::string& path, mode_t mode)
{
    struct stat info = {};
    if (mkdir(path.c_str(), mode) == 0)
        return B_OK;
    const status_t error = StatusOfErrno();
    if (stat(path.c_str(), &info) != 0)
        return error;
    return S_ISDIR(info.st_mode) ? status_t(B_OK) : B_NOT_A_DIRECTORY;
}

int32 KindOf(mode_t mode)
{
    return S_ISDIR(mode) ? B_DIRECTORY_NODE : S_ISLNK(mode) ? B_SYMLINK_NODE : B_FILE_NODE;
}

} // namespace

status_t create_directory(const char* path, mode_t mode)
{
    if (!path || !*path)
        return B_BAD_VALUE;
    const std::string whole = path;
    status_t error = B_OK;
    for (size_t end = whole.find('/', 1); end != whole.npos && error == B_OK;
         end = whole.find('/', end + 1))
        error = MakeDirectory(whole.substr(0, end), mode);
    return error == B_OK ? MakeDirectory(whole, mode) : error;
}

BDirectory::BDirectory(const char* path)
{
    SetTo(path);
}

BDirectory::BDirectory(const entry_ref* ref)
{
    SetTo(ref);
}

BDirectory::BDirectory(const BEntry* entry)
{
    SetTo(entry);
}

BDirectory::BDirectory(const BDirectory* directory, const char* path)
{
    SetTo(directory, path);
}

BDirectory::BDirectory(const BDirectory& directory) : BNode(directory) { }

BDirectory& BDirectory::operator=(const BDirectory& directory)
{
    BNode::operator=(directory);
    fStream.reset();
    return *this;
}

void BDirectory::CloseStream::operator()(DIR* stream) const
{
    const KillGuard guard;
    closedir(stream);
}

status_t BDirectory::Take(int descriptor)
{
    const int error = errno;
    fStream.reset();
    errno = error;
    return BNode::Take(descriptor);
}

status_t BDirectory::SetTo(const char* path)
{
    return path && *path ? Take(open(path, kOpen)) : Fail(B_BAD_VALUE);
}

status_t BDirectory::SetTo(const entry_ref* ref)
{
    return SetTo(ref ? PathOfRef(*ref).c_str() : nullptr);
}

status_t BDirectory::SetTo(const BEntry* entry)
{
    if (!entry || entry->InitCheck() != B_OK)
        return Fail(B_BAD_VALUE);
    return Take(openat(entry->fDirectory.Get(), entry->fName.c_str(), kOpen));
}

status_t BDirectory::SetTo(const BDirectory* directory, const char* path)
{
    if (!directory || directory->InitCheck() != B_OK || !path || !*path)
        return Fail(B_BAD_VALUE);
    return Take(openat(directory->Descriptor(), path, kOpen));
}

void BDirectory::Unset()
{
    fStream.reset();
    BNode::Unset();
}

status_t BDirectory::GetEntry(BEntry* entry) const
{
    if (!entry)
        return B_BAD_VALUE;
    return InitCheck() == B_OK ? entry->Set(Descriptor(), ".", false) : B_NO_INIT;
}

bool BDirectory::IsRootDirectory() const
{
    return InitCheck() == B_OK && PathOfDescriptor(Descriptor()) == "/";
}

status_t BDirectory::FindEntry(const char* path, BEntry* entry, bool traverse) const
{
    if (!path || !entry)
        return B_BAD_VALUE;
    status_t error = InitCheck() == B_OK ? entry->SetTo(this, path, traverse) : B_NO_INIT;
    struct stat info = {};
    if (error == B_OK)
        error = entry->GetStat(&info);
    if (error != B_OK)
        entry->Unset();
    return error;
}

bool BDirectory::Contains(const char* path, int32 nodeFlags) const
{
    BEntry entry;
    return path && FindEntry(path, &entry) == B_OK && Contains(&entry, nodeFlags);
}

bool BDirectory::Contains(const BEntry* entry, int32 nodeFlags) const
{
    struct stat info = {};
    entry_ref ref;
    if (InitCheck() != B_OK || !entry || entry->GetStat(&info) != B_OK
        || entry->GetRef(&ref) != B_OK || !(KindOf(info.st_mode) & nodeFlags))
        return false;
    const std::string above = PathOfDescriptor(Descriptor());
    const std::string path = PathOfRef(ref);
    return !above.empty() && path != above && path.starts_with(JoinPath(above, ""));
}

status_t BDirectory::GetStatFor(const char* path, struct stat* info) const
{
    if (!path || !*path || !info)
        return B_BAD_VALUE;
    if (InitCheck() != B_OK)
        return B_NO_INIT;
    const int result = fstatat(Descriptor(), path, info, AT_SYMLINK_NOFOLLOW);
    return result == 0 ? B_OK : StatusOfErrno();
}

const char* BDirectory::NextName()
{
    if (!fStream) {
        // A descriptor of its own: a copy would share the place in the list.
        const int descriptor = openat(Descriptor(), ".", kOpen);
        fStream.reset(descriptor < 0 ? nullptr : fdopendir(descriptor));
    }
    while (const dirent* entry = fStream ? readdir(fStream.get()) : nullptr)
        if (strcmp(entry->d_name, ".") != 0 && strcmp(entry->d_name, "..") != 0)
            return entry->d_name;
    return nullptr;
}

status_t BDirectory::GetNextEntry(BEntry* entry, bool traverse)
{
    if (!entry)
        return B_BAD_VALUE;
    entry->Unset();
    if (InitCheck() != B_OK)
        return B_NO_INIT;
    const char* name = NextName();
    return name ? entry->Set(Descriptor(), name, traverse) : B_ENTRY_NOT_FOUND;
}

status_t BDirectory::GetNextRef(entry_ref* ref)
{
    BEntry entry;
    const status_t error = ref ? GetNextEntry(&entry) : B_BAD_VALUE;
    return error == B_OK ? entry.GetRef(ref) : error;
}

status_t BDirectory::Rewind()
{
    fStream.reset();
    return InitCheck() == B_OK ? status_t(B_OK) : B_NO_INIT;
}

int32 BDirectory::CountEntries()
{
    if (InitCheck() != B_OK)
        return B_NO_INIT;
    BDirectory other(*this);
    int32 count = 0;
    while (other.NextName())
        count++;
    return count;
}

status_t BDirectory::CreateDirectory(const char* path, BDirectory* directory)
{
    if (!path || !*path)
        return B_BAD_VALUE;
    if (InitCheck() != B_OK)
        return B_NO_INIT;
    if (mkdirat(Descriptor(), path, 0777) != 0)
        return StatusOfErrno();
    return directory ? directory->SetTo(this, path) : B_OK;
}

status_t BDirectory::CreateFile(const char* path, BFile* file, bool failIfExists)
{
    if (!path || !*path)
        return B_BAD_VALUE;
    if (InitCheck() != B_OK)
        return B_NO_INIT;
    const uint32 modes = B_READ_WRITE | B_CREATE_FILE;
    BFile created(this, path, modes | (failIfExists ? B_FAIL_IF_EXISTS : B_ERASE_FILE));
    if (file && created.InitCheck() == B_OK)
        *file = created;
    return created.InitCheck();
}
