// What the maker gets of a run: a package of files, and what its user says of the machine.
#pragma once

#include <Alert.h>

#include <string>

class BLooper;
class BPath;
class BTextView;
class GetSysDeviceWin;

// The package: an archive of the results file and of the report on unknown devices.

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

// The alert in which the user describes the machine before the results are mailed.
// Buttons: 0 "Save", 1 "E-mail". The answer "E-mail" posts kMsgEmail with the string field
// "config" to the target, before the alert ends as any other.
class TarvexAlert : public BAlert {
public:
    static constexpr uint32 kMsgEmail = 5000;

    explicit TarvexAlert(BLooper* target);

    void MessageReceived(BMessage* message) override;
    // What the user has typed, valid until the next change. The alert must be locked.
    const char* Configuration();

private:
    void AddConfiguration();

    BTextView* configuration = nullptr;
    BLooper* target;
};
