#include "ui/ResultsPackage.h"

#include "foundation/LibPath.h"
#include "foundation/LibTools.h"
#include "ui/GetSysDeviceWin.h"

#include <Entry.h>
#include <Path.h>

#include <cstdio>
#include <unistd.h>

namespace {

constexpr char kFolder[] = "/tmp/results";
constexpr char kReport[] = "/tmp/results/unknown_devices";
constexpr char kArchive[] = "/tmp/Tarvex.tar";

// Removes what an earlier run may have left at path. False, with a line on standard error, if
// something is there that is not this user's own.
bool MakeFree(const char* path)
{
    const BEntry entry(path);
    if (!entry.Exists())
        return true;
    uid_t owner = 0;
    if (entry.GetOwner(&owner) == B_OK && owner == geteuid() && !entry.IsSymLink())
        LibUnlink(path);
    if (!entry.Exists())
        return true;
    fprintf(stderr, "<%s> is in the way\n", path);
    return false;
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

// Puts results file and report into the archive; false if it is not whole.
bool MakeArchive(const char* results, GetSysDeviceWin* devices)
{
    if (!MakeFree(kFolder) || !MakeFree(kArchive))
        return false;
    if (!Libmkdir(kFolder))
        return Fail(kFolder);
    if (devices)
        devices->Save(kReport);
    const bool isCopied = LibCopy(results, kFolder);
    // A header and the contents in blocks of 512 bytes each, and two empty ones at the end.
    const off_t least = SizeOf(kFolder) + 2 * 512;
    const bool isPacked = LibTar(kFolder, kArchive) && SizeOf(kArchive) >= least;
    LibUnlink(kFolder);
    return (isCopied && isPacked) || Fail(kArchive);
}

// Moves the archive to the results file's place; first beside it, so that a full disk leaves that
// as it was.
bool ReplaceBy(const char* archive, const char* results)
{
    LibString beside(results);
    beside.Concat(".part");
    if (MakeFree(beside) && LibMove(archive, beside) && LibMove(beside, results))
        return true;
    LibUnlink(archive);
    LibUnlink(beside);
    return Fail(results);
}

} // namespace

Packed PackResults(BPath& saved, GetSysDeviceWin* devices)
{
    if (!MakeArchive(saved.Path(), devices) || !ReplaceBy(kArchive, saved.Path()))
        return Packed::kNot;
    LibString zip(saved.Path());
    zip.Concat(".zip");
    if (!LibZip(zip, saved, 9))
        return Packed::kNoZip;
    if (SizeOf(zip) <= 0) {
        Fail(zip);
        return Packed::kTar;
    }
    LibUnlink(saved.Path());
    saved.SetTo(zip);
    return Packed::kZip;
}
