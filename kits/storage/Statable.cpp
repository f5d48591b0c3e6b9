#include "Statable.h"

#include <algorithm>
#include <sys/stat.h>

namespace {

bool IsKind(const BStatable& file, mode_t kind)
{
    struct stat info = {};
    return file.GetStat(&info) == B_OK && (info.st_mode & S_IFMT) == kind;
}

template <typename Value, typename Field>
status_t Ask(const BStatable& file, Value* value, Field field)
{
    if (!value)
        return B_BAD_VALUE;
    struct stat info = {};
    const status_t error = file.GetStat(&info);
    if (error == B_OK)
        *value = field(info);
    return error;
}

} // namespace

bool BStatable::IsFile() const
{
    return IsKind(*this, S_IFREG);
}

bool BStatable::IsDirectory() const
{
    return IsKind(*this, S_IFDIR);
}

bool BStatable::IsSymLink() const
{
    return IsKind(*this, S_IFLNK);
}

status_t BStatable::GetOwner(uid_t* owner) const
{
    return Ask(*this, owner, [](const auto& info) { return info.st_uid; });
}

status_t BStatable::GetSize(off_t* size) const
{
    return Ask(*this, size, [](const auto& info) { return info.st_size; });
}

status_t BStatable::GetModificationTime(time_t* time) const
{
    return Ask(*this, time, [](const auto& info) { return info.st_mtime; });
}

status_t BStatable::GetAccessTime(time_t* time) const
{
    return Ask(*this, time, [](const auto& info) { return info.st_atime; });
}

status_t BStatable::GetCreationTime(time_t* time) const
{
    return Ask(*this, time, [this](const auto& info) {
        const time_t birth = BirthTime();
        // Where none is kept the older of the two is nearest: to change the file moves both on.
        return birth != 0 ? birth : std::min(info.st_mtime, info.st_ctime);
    });
}
