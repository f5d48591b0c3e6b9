#include "foundation/LibTrash.h"

#include <cstdio>
#include <ctime>
#include <string>
#include <string_view>

#include <Directory.h>
#include <File.h>
#include <FindDirectory.h>
#include <TextCoding.h>

#include "foundation/LibDateTime.h"
#include "foundation/LibPath.h"
#include "foundation/LibTools.h"
#include "foundation/Utf8.h"

namespace {

constexpr std::string_view kRecordEnding = ".trashinfo";
constexpr int kMaxCopies = 10'000;

// The copy-th new name, from 0, with the text cut so that its record's name fits too.
std::string CopyName(const char* leaf, int copy)
{
    const std::string ending = copy == 0 ? " copy" : " copy " + std::to_string(copy);
    const size_t room = B_FILE_NAME_LENGTH - 1 - ending.size() - kRecordEnding.size();
    return std::string(LibCutUtf8(leaf, room)) + ending;
}

std::string Record(const char* path)
{
    LibDateTime now(true);
    struct tm moment = {};
    now.GetDateTime(&moment);
    char date[32];
    strftime(date, sizeof(date), "%Y-%m-%dT%H:%M:%S", &moment);
    return "[Trash Info]\nPath=" + PercentEncoded(path) + "\nDeletionDate=" + date + "\n";
}

// A new name in the trash, reserved by its record.
class TrashPlace {
public:
    explicit TrashPlace(const BPath& original)
    {
        BPath files;
        BPath records;
        if (find_directory(B_TRASH_DIRECTORY, &files, true) != B_OK
            || files.GetParent(&records) != B_OK || records.Append("info") != B_OK
            || create_directory(records.Path(), 0700) != B_OK)
            return;
        for (int copy = 0; copy < kMaxCopies && !reserved; copy++) {
            const std::string name = CopyName(original.Leaf(), copy);
            target.SetTo(files.Path(), name.c_str());
            record.SetTo(records.Path(), (name + std::string(kRecordEnding)).c_str());
            if (!BEntry(target.Path()).Exists() && !Reserve(original.Path()))
                return;
        }
    }
    TrashPlace(const TrashPlace&) = delete;
    TrashPlace& operator=(const TrashPlace&) = delete;

    bool IsReserved() const { return reserved; }
    const char* Path() const { return target.Path(); }
    void GiveUp() { BEntry(record.Path()).Remove(); }

private:
    // False if no other name would help.
    bool Reserve(const char* original)
    {
        BFile file;
        const status_t status =
            file.SetTo(record.Path(), B_WRITE_ONLY | B_CREATE_FILE | B_FAIL_IF_EXISTS);
        if (status != B_OK)
            return status == B_FILE_EXISTS;
        const std::string text = Record(original);
        reserved = file.Write(text.data(), text.size()) == static_cast<ssize_t>(text.size());
        if (!reserved)
            GiveUp();
        return reserved;
    }

    BPath target;
    BPath record;
    bool reserved = false;
};

bool MoveToTrash(const BPath& path)
{
    BEntry entry(path.Path());
    if (!entry.Exists())
        return false;
    TrashPlace place(path);
    if (!place.IsReserved())
        return false;
    const status_t status = entry.Rename(place.Path());
    if (status == B_OK || (status == B_CROSS_DEVICE_LINK && LibMove(path.Path(), place.Path())))
        return true;
    if (!BEntry(place.Path()).Exists()) // a move from another disk may have come half the way
        place.GiveUp();
    return false;
}

} // namespace

bool LibTrash(const BPath& path, const bool& report)
{
    const bool moved = MoveToTrash(path);
    if (!moved && report)
        fprintf(stderr, "Not moved to the trash <%s>\n", path.Path() ? path.Path() : "");
    return moved;
}

bool LibDuplicate(const char* path)
{
    const BPath original(path);
    BPath parent;
    if (original.GetParent(&parent) != B_OK || !BEntry(original.Path()).Exists())
        return false;
    for (int copy = 0; copy < kMaxCopies; copy++) {
        const BPath target(parent.Path(), CopyName(original.Leaf(), copy).c_str());
        if (!BEntry(target.Path()).Exists())
            return LibCopy(original.Path(), target.Path());
    }
    return false;
}
