#include "Directory.h"

#include "FileDescriptor.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr int kOpen = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

// Makes one directory. B_OK also if it is there.
status_t MakeDirectory(const std::string& path, mode_t mode)
{
    struct stat info = {};
    if (mkdir(path.c_str(), mode) == 0)
        return B_OK;
    const status_t error = StatusOfErrno();
    // Not by the number of the error: on a read-only disk it is another one, and a folder that is
    // there is all that is wanted.
    if (stat(path.c_str(), &info) != 0)
        return error;
    return S_ISDIR(info.st_mode) ? static_cast<status_t>(B_OK) : B_NOT_A_DIRECTORY;
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

BDirectory::BDirectory(const BDirectory& directory) : BNode(directory) { }

void BDirectory::CloseStream::operator()(DIR* stream) const
{
    closedir(stream);
}

status_t BDirectory::Take(int descriptor)
{
    // First, as it reads the errno of the open() that the caller has just made.
    const status_t status = BNode::Take(descriptor);
    fStream.reset();
    return status;
}

status_t BDirectory::SetTo(const char* path)
{
    return path && *path ? Take(open(path, kOpen)) : Fail(B_BAD_VALUE);
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
    return InitCheck() == B_OK ? static_cast<status_t>(B_OK) : B_NO_INIT;
}

int32 BDirectory::CountEntries()
{
    if (InitCheck() != B_OK)
        return B_NO_INIT;
    // A copy has a place of its own in the list: that of the caller stays.
    BDirectory other(*this);
    int32 count = 0;
    while (other.NextName())
        count++;
    return count;
}
