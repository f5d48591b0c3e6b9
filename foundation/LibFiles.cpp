#include "foundation/LibFiles.h"

#include "foundation/LibDateTime.h"
#include "foundation/LibPath.h"
#include "foundation/LibTools.h"
#include "foundation/Utf8.h"

#include <AppDefs.h>
#include <Directory.h>
#include <Entry.h>
#include <File.h>
#include <FindDirectory.h>
#include <Message.h>
#include <Messenger.h>
#include <Mime.h>
#include <Node.h>
#include <NodeInfo.h>
#include <TextCoding.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

namespace {

const char* Description(std::string_view type)
{
    if (type == B_DIRECTORY_MIME_TYPE)
        return "Folder";
    if (type == B_APP_MIME_TYPE)
        return "Be Application";
    if (type == B_SYMLINK_MIME_TYPE)
        return "Symbolic Link";
    return "Unknown";
}

LibDateTime Moment(
    const BStatable& entry, status_t (BStatable::*get)(time_t*) const, const bool& local)
{
    LibDateTime result;
    time_t moment = 0;
    if ((entry.*get)(&moment) == B_OK)
        result.SetMoment(moment, local);
    return result;
}

constexpr std::string_view kRecordEnding = ".trashinfo";
// Only so that a full or broken disk cannot keep the search going for ever.
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
    // In local time, without a zone: so the desktop's trash writes it.
    return "[Trash Info]\nPath=" + PercentEncoded(path)
        + "\nDeletionDate=" + LibLocalTimeText("%Y-%m-%dT%H:%M:%S") + "\n";
}

// A new name in the trash, reserved by its record.
class TrashPlace {
public:
    explicit TrashPlace(const BPath& original)
    {
        BPath files;
        BPath records;
        // The trash of desktops is two folders side by side, for the entries and for their records.
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
    // By making the record where there is none: of two programs that put away entries of one name
    // at the same time, one gets it, and the other goes on to the next.
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
    // A name can change within a disk only: to another one the entry is copied, then removed.
    if (status == B_OK || (status == B_CROSS_DEVICE_LINK && LibMove(path.Path(), place.Path())))
        return true;
    if (!BEntry(place.Path()).Exists()) // a move from another disk may have come half the way
        place.GiveUp();
    return false;
}

constexpr char kTracker[] = "application/x-vnd.Be-TRAK";
// The file manager's own message for its information window; no header names it.
constexpr uint32 kGetInfo = 'Tinf';

bool Ask(uint32 request, const char* path)
{
    entry_ref ref;
    if (get_ref_for_path(path, &ref) != B_OK)
        return false;
    BMessage message(request);
    message.AddRef("refs", &ref);
    return BMessenger(kTracker).SendMessage(&message) == B_OK;
}

constexpr uint32 kKilobyte = 1024;
constexpr uint32 kMegabyte = 1'048'576;

} // namespace

bool LibGetMimeType(const entry_ref& ref, char* type, bool describe)
{
    BNode node(&ref);
    char found[B_MIME_TYPE_LENGTH];
    if (BNodeInfo(&node).GetType(found) != B_OK)
        return false;
    // A link is known by what it is, whatever type was set for it.
    if (describe)
        strcpy(type, node.IsSymLink() ? "Symbolic Link" : Description(found));
    else
        strcpy(type, found);
    return true;
}

bool LibSetMimeType(const char* path, const char* type)
{
    BNode node(path);
    return BNodeInfo(&node).SetType(type) == B_OK;
}

bool LibSetFileType(const char* path, const char* type)
{
    return LibSetMimeType(path, type);
}

LibDateTime LibCreationDate(const entry_ref& ref, const bool& local)
{
    const BEntry entry(&ref);
    if (!entry.Exists())
        fprintf(stderr, "LibCreationDate: Unable to set entry\n");
    return Moment(entry, &BStatable::GetCreationTime, local);
}

LibDateTime LibCreationDate(const char* path, const bool& local)
{
    const BEntry entry(path);
    if (!entry.Exists())
        fprintf(stderr, "LibCreationDate: Unable to set entry <%s>\n", path ? path : "");
    return Moment(entry, &BStatable::GetCreationTime, local);
}

LibDateTime LibLastModifiedDate(const BEntry& entry, const bool& local)
{
    return Moment(entry, &BStatable::GetModificationTime, local);
}

LibDateTime LibLastModifiedDate(const char* path, const bool& local)
{
    const BEntry entry(path);
    if (!entry.Exists())
        fprintf(stderr, "LibLastModifiedDate: Unable to set entry <%s>\n", path ? path : "");
    return LibLastModifiedDate(entry, local);
}

LibDateTime LibAccessedDate(const BEntry& entry, const bool& local)
{
    return Moment(entry, &BStatable::GetAccessTime, local);
}

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

bool LibInfoEntry(const char* path)
{
    return Ask(kGetInfo, path);
}

bool LibOpenEntry(const char* path)
{
    return Ask(B_REFS_RECEIVED, path);
}

void LibBytesToString(const uint32& bytes, LibString& text, int decimals)
{
    double value = bytes;
    const char* unit = "bytes";
    if (bytes > kMegabyte) {
        value /= kMegabyte;
        unit = "MB";
    } else if (bytes > kKilobyte) {
        value /= kKilobyte;
        unit = "KB";
    }
    text.Formatted("%.*f %s", decimals, value, unit);
}

uint32 LibStringToBytes(const char* text)
{
    const std::string all = text ? text : "";
    const size_t blank = all.find(' ');
    const LibString number(all.substr(0, blank).c_str());
    const std::string unit = blank == all.npos ? "" : all.substr(blank + 1);
    float value = 0;
    if (!number.GetFloat32(value)) {
        const char* shown = number;
        fprintf(stderr, "LibConvertBytes <%s> not a float\n", shown);
        return 0;
    }
    if (unit != "KB" && unit != "MB")
        return 0;
    // Clamped as a double: turning 5000 MB into a uint32 would be undefined.
    const double bytes = static_cast<double>(value) * (unit == "KB" ? kKilobyte : kMegabyte);
    return static_cast<uint32>(std::clamp(bytes, 0.0, static_cast<double>(UINT32_MAX)));
}

TemporaryFolder::TemporaryFolder()
{
    LibGetWorkingDirectory(before);
    LibUniqueName(path, "zip");
    exists = Libmkdir(path.Path());
}

TemporaryFolder::~TemporaryFolder()
{
    if (!exists)
        return;
    const BDirectory folder(path.Path());
    if (BPath(&folder) == BPath(".")) // the tools go there and do not come back
        LibChangeDirectory(before.Path());
    LibUnlink(path.Path());
}
