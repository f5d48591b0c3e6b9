#include "ui/ResultsMail.h"

#include "foundation/LibFiles.h"
#include "foundation/LibPath.h"
#include "foundation/LibTools.h"
#include "results/ResultsFile.h"
#include "toolkit/Maker.h"
#include "ui/GetSysDeviceWin.h"

#include <Box.h>
#include <Button.h>
#include <Directory.h>
#include <Entry.h>
#include <File.h>
#include <Looper.h>
#include <Message.h>
#include <Path.h>
#include <TextView.h>
#include <WholeFile.h>

#include <cstdio>
#include <cstring>
#include <unistd.h>
#include <vector>

namespace {

// Known names where everybody may write: what lies there is looked at before it is touched.
constexpr char kFolder[] = "/tmp/results";
constexpr char kReport[] = "/tmp/results/unknown_devices";
constexpr char kArchived[] = "tmp/results"; // the folder's name in the archive

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
    // Only this user may put something in.
    if (create_directory(kFolder, 0700) != B_OK)
        return Fail(kFolder);
    return (entry.IsDirectory() && IsOwn(entry)) || InTheWay(kFolder); // somebody was quicker
}

bool Fill(const char* folder, const char* results, GetSysDeviceWin* devices)
{
    if (devices)
        devices->Save(BPath(folder, "unknown_devices").Path());
    return LibCopy(results, folder);
}

// Puts results file and report into the archive and returns how many files that are, 0 if it is not
// whole. All lies beside the archive, where nobody else can write.
int32 MakeArchive(const BPath& archive, const char* results, GetSysDeviceWin* devices)
{
    BPath folder;
    if (archive.InitCheck() != B_OK) // said already
        return 0;
    if (archive.GetParent(&folder) != B_OK || folder.Append(kArchived) != B_OK
        || create_directory(folder.Path(), 0700) != B_OK
        || !Fill(folder.Path(), results, devices)) {
        Fail(archive.Path());
        return 0;
    }
    // A header and the contents in blocks of 512 bytes each, and two empty ones at the end.
    const off_t least = SizeOf(folder.Path()) + 2 * 512;
    if (LibTar(kArchived, archive.Path()) && SizeOf(archive.Path()) >= least)
        return BDirectory(folder.Path()).CountEntries();
    Fail(archive.Path());
    return 0;
}

// Writes what is in the file from to the file to.
bool CopyWhole(const char* from, const char* to)
{
    BFile source(from, B_READ_ONLY);
    WholeFile file(to);
    std::vector<char> part(1 << 16);
    ssize_t size = 0;
    while (file.Stream() && (size = source.Read(part.data(), part.size())) > 0)
        fwrite(part.data(), 1, static_cast<size_t>(size), file.Stream());
    // 0 is the end of the source. What could not be read to there must not take the place.
    if (size == 0 && file.Commit())
        return true;
    const char* reason = size < 0 ? "its contents cannot be read" : file.Error().c_str();
    fprintf(stderr, "Error writing <%s>: %s\n", to, reason);
    return false;
}

bool ReplaceBy(const char* archive, const char* results)
{
    const bool isDone = CopyWhole(archive, results);
    LibUnlink(archive);
    return isDone;
}

// Compresses saved into zip and makes it that; first elsewhere, as the tool adds to an archive that
// is there and leaves it where it fails.
Packed Compress(BPath& saved, const char* zip)
{
    const TemporaryFolder folder;
    if (!folder.Path()) {
        Fail(zip);
        return Packed::kTar;
    }
    const BPath beside(folder.Path(), "package.zip");
    if (!LibZip(beside.Path(), saved, 9))
        return Packed::kNoZip;
    // LibZip() tells whether the tool was started, and only the file whether it has worked.
    const bool isPacked = SizeOf(beside.Path()) > 0 || Fail(zip);
    if (!isPacked || !CopyWhole(beside.Path(), zip))
        return Packed::kTar;
    // Not before: until here it is the only copy.
    LibUnlink(saved.Path());
    saved.SetTo(zip);
    return Packed::kZip;
}

} // namespace

std::string SavedText(const char* path, const Package& package)
{
    std::string text = "Saved: " + std::string(path) + " (";
    if (package.packed == Packed::kNot)
        return text + "not packed: " + package.why + ")";
    text += package.nbrFiles == 1 ? "1 file" : std::to_string(package.nbrFiles) + " files";
    text += ", " + std::to_string((SizeOf(path) + 1023) / 1024) + " KB"; // what was begun counts
    return text + (package.packed == Packed::kZip ? ")" : ", not compressed: " + package.why + ")");
}

Package PackResults(BPath& saved, GetSysDeviceWin* devices)
{
    LibString zip(saved.Path());
    zip.Concat(kZipEnding);
    // First: nothing is begun that has no place to go.
    if (!IsFree(zip))
        return { .why = std::string(BPath(zip).Leaf()) + " is in the way" };
    const bool isShown = MakeFolder();
    if (isShown && !Fill(kFolder, saved.Path(), devices))
        Fail(kFolder);
    const TemporaryFolder folder;
    const BPath archive(folder.Path(), "Tarvex.tar");
    const int32 nbrFiles = MakeArchive(archive, saved.Path(), devices);
    if (isShown)
        LibUnlink(kFolder);
    if (nbrFiles <= 0)
        return { .why = "the archive could not be made" };
    if (!ReplaceBy(archive.Path(), saved.Path()))
        return { .why = "the archive could not be written" };
    const Packed packed = Compress(saved, zip);
    return { packed, nbrFiles, packed == Packed::kNoZip ? "there is no zip" : "zip failed" };
}

namespace {

constexpr char kText[] =
    "Please send your results to " TARVEX_SUPPORT_ADDRESS
    ", so that they can be distrubuted in the next release.\n\n"
    "You may send the file yourself, or you can e-mail it now.\n"
    "When e-mailing your results, please describe the configuration of your system. "
    "For example: BeBox 133, Mac 7600, UMAX s9000, Presario 4500.";

constexpr int32 kEmailButton = 1;

constexpr float kMargin = 12;
constexpr float kLabelHeight = 20;
constexpr float kFrameHeight = 110;

} // namespace

TarvexAlert::TarvexAlert(BLooper* answerTarget)
    : BAlert("alert", kText, "Save", "E-mail", nullptr, B_WIDTH_AS_USUAL, B_OFFSET_SPACING,
        B_INFO_ALERT),
      target(answerTarget)
{
    SetShortcut(0, B_ESCAPE); // the file is there already
    SetFlags(Flags() & ~(B_NOT_CLOSABLE));
    AddConfiguration();
}

// The alert has laid out its text and, at its bottom, its buttons: the frame goes in between.
void TarvexAlert::AddConfiguration()
{
    BView* back = ButtonAt(0)->Parent();
    const float top = ButtonAt(0)->Frame().top;
    ResizeBy(0, kFrameHeight + kMargin);

    BBox* frame = new BBox(BRect(kMargin, top, back->Bounds().right - kMargin, top + kFrameHeight),
        "config_frame", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM);
    frame->SetLabel("Configuration");
    back->AddChild(frame);

    BRect inside = frame->Bounds();
    inside.InsetBy(kMargin, kMargin);
    inside.top = kLabelHeight + kMargin;
    configuration = new BTextView(
        inside, "config", inside.OffsetToCopy(0, 0).InsetByCopy(4, 4), B_FOLLOW_ALL_SIDES);
    configuration->LeaveEnterToWindow(); // in every box it presses the default button
    configuration->SetToolTip(
        "The configuration of your system; Enter sends the mail, Shift+Enter begins a new line");
    frame->AddChild(configuration);
    configuration->MakeFocus();
}

void TarvexAlert::MessageReceived(BMessage* message)
{
    // Before the base, which ends the alert, and the text with it.
    int32 which = 0;
    if (message->FindInt32("which", &which) == B_OK && which == kEmailButton) {
        BMessage answer(kMsgEmail);
        answer.AddString("config", Configuration());
        target->PostMessage(&answer);
    }
    BAlert::MessageReceived(message);
}

const char* TarvexAlert::Configuration()
{
    return configuration->Text();
}
