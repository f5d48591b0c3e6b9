// The package of a run that goes to the maker: an archive of the results file and of the report on
// unknown devices.
#pragma once

#include <SupportDefs.h>

#include <string>

class BPath;
class GetSysDeviceWin;

constexpr char kZipEnding[] = ".zip"; // behind the results file's name

enum class Packed {
    kNot, // the results file is as it was
    kTar, // in its place lies the archive: it could not be compressed
    kNoZip, // the same, as the tool is not installed
    kZip, // in place of it lies the compressed archive, with kZipEnding behind its name
};

struct Package {
    Packed packed = Packed::kNot;
    int32 nbrFiles = 0; // in the archive
    std::string why; // for people, where it is not kZip
};

// What is said of the file that was saved at path, and perhaps packed: "Saved: PATH (2 files, 3
// KB)".
[[nodiscard]] std::string SavedText(const char* path, const Package& package);

// Packs the results file at saved, and the report of devices unless that is null, and makes saved
// the file that can be sent. Nothing that belongs to another user is touched, and until the archive
// is whole the results file stays. What fails is told on standard error; only that the folder
// /tmp/results, which shows what is packed meanwhile, cannot be made changes nothing. Changes the
// process's working directory.
[[nodiscard]] Package PackResults(BPath& saved, GetSysDeviceWin* devices);
