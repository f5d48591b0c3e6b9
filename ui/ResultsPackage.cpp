#include "ui/ResultsPackage.h"

#include "foundation/LibPath.h"
#include "foundation/LibTools.h"
#include "results/ResultsFile.h"
#include "ui/GetSysDeviceWin.h"

#include <Directory.h>
#include <Entry.h>
#include <Path.h>

#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

constexpr char kFolder[] = "/tmp/results";
constexpr char kReport[] = "/tmp/results/unknown_devices";
constexpr char kArchive[] = "/tmp/Tarvex.tar";

bool InTheWay(const char* path)
{
    fprintf(stderr, "<%s> is in the way\n", path);
    return false;
}

bool IsOwn(const BEntry& entry)
{
    uid_t owner = 0;
    return entry.GetOwner(&owner) == B_OK && owner == geteuid();
}

// Whether a file may be made at path: at most a file of this user's is there, and no link, which
// may point to what is another user's.
bool IsFree(const char* path)
{
    const BEntry entry(path);
    return !entry.Exists() || (entry.IsFile() && IsOwn(entry)) || InTheWay(path);
}

// Whether kFolder is what a run that was broken off has left: results files without a report may be
// somebody's own.
bool IsLeftover()
{
    BDirectory folder(kFolder);
    BEntry entry;
    BPath path;
    bool hasReport = false, hasOthers = false;
    while (folder.GetNextEntry(&entry) == B_OK) {
        if (entry.GetPath(&path) != B_OK || !entry.IsFile())
            return false;
        const bool isReport = strcmp(path.Path(), kReport) == 0;
        if (!isReport && !IsResultsFile(path.Path()))
            return false;
        (isReport ? hasReport : hasOthers) = true;
    }
    return hasReport || !hasOthers;
}

LibString Beside(const char* path)
{
    LibString beside(path);
    beside.Concat(".part");
    return beside;
}

off_t SizeOf(const char* path)
{
    return LibEntrySize(path, false);
}

bool Fail(const char* path)
{
    fprintf(stderr, "Error writing <%s>\n", path);
    return false;
}

bool MakeFolder()
{
    const BEntry entry(kFolder);
    if (entry.IsDirectory() && IsOwn(entry) && IsLeftover())
        LibUnlink(kFolder);
    if (entry.Exists())
        return InTheWay(kFolder);
    return Libmkdir(kFolder) || Fail(kFolder);
}

// Puts results file and report into the archive; false if it is not whole.
bool MakeArchive(const char* results, GetSysDeviceWin* devices)
{
    if (!IsFree(kArchive) || !MakeFolder())
        return false;
    if (devices)
        devices->Save(kReport);
    const bool isCopied = LibCopy(results, kFolder);
    // A header and the contents in blocks of 512 bytes each, and two empty ones at the end.
    const off_t least = SizeOf(kFolder) + 2 * 512;
    const bool isPacked = LibTar(kFolder, kArchive) && SizeOf(kArchive) >= least;
    LibUnlink(kFolder);
    if (isCopied && isPacked)
        return true;
    LibUnlink(kArchive);
    return Fail(kArchive);
}

// Moves the archive to the results file's place; first beside it, so that a full disk leaves that
// as it was.
bool ReplaceBy(const char* archive, const char* results)
{
    const LibString beside = Beside(results);
    const bool isFree = IsFree(beside);
    if (isFree && LibMove(archive, beside) && LibMove(beside, results))
        return true;
    LibUnlink(archive);
    if (isFree)
        LibUnlink(beside);
    return Fail(results);
}

// Compresses saved into zip and makes it that; first beside it, as the tool adds to an archive that
// is there and leaves it where it fails.
Packed Compress(BPath& saved, const char* zip)
{
    const LibString beside = Beside(zip);
    if (!IsFree(beside))
        return Packed::kTar;
    LibUnlink(beside);
    if (!LibZip(beside, saved, 9))
        return Packed::kNoZip;
    if (SizeOf(beside) <= 0 || !LibMove(beside, zip)) {
        LibUnlink(beside);
        Fail(zip);
        return Packed::kTar;
    }
    LibUnlink(saved.Path());
    saved.SetTo(zip);
    return Packed::kZip;
}

} // namespace

Packed PackResults(BPath& saved, GetSysDeviceWin* devices)
{
    LibString zip(saved.Path());
    zip.Concat(kZipEnding);
    if (!IsFree(zip) || !MakeArchive(saved.Path(), devices) || !ReplaceBy(kArchive, saved.Path()))
        return Packed::kNot;
    return Compress(saved, zip);
}
