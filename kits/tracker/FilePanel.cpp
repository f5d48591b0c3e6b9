#include "FilePanel.h"

#include "Application.h"
#include "Message.h"
#include "MessagePoster.h"
#include "server/DisplayServer.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QTreeView>

// The dialog; made, used and deleted on the display server's thread.
struct FilePanelPeer {
    QFileDialog* dialog = nullptr;
};

namespace {

uint32 DefaultCode(file_panel_mode mode)
{
    return mode == B_SAVE_PANEL ? uint32(B_SAVE_REQUESTED) : uint32(B_REFS_RECEIVED);
}

std::string ChosenPath(const QFileDialog& dialog)
{
    const QStringList files = dialog.selectedFiles();
    return files.isEmpty() ? "" : QFile::encodeName(files.first()).toStdString();
}

// Sizes, types and dates are as wide as they are: only names may be cut off.
void FitColumns(const QFileDialog& dialog)
{
    const auto* files = dialog.findChild<QTreeView*>(); // none where the desktop has its own panel
    if (!files)
        return;
    files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
}

QFileDialog* MakeDialog(file_panel_mode mode)
{
    auto* dialog = new QFileDialog;
    dialog->setObjectName(mode == B_SAVE_PANEL ? "save_panel" : "open_panel");
    dialog->setAcceptMode(mode == B_SAVE_PANEL ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog->setFileMode(mode == B_SAVE_PANEL ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    FitColumns(*dialog);
    return dialog;
}

// What the user's choice adds to the message.
void AddChoice(BMessage& message, file_panel_mode mode, const std::string& path)
{
    entry_ref ref;
    if (mode == B_OPEN_PANEL) {
        if (get_ref_for_path(path.c_str(), &ref) == B_OK)
            message.AddRef("refs", &ref);
        return;
    }
    const size_t slash = path.rfind('/');
    const std::string directory = slash == 0 ? "/" : path.substr(0, slash);
    if (get_ref_for_path(directory.c_str(), &ref) == B_OK)
        message.AddRef("directory", &ref);
    message.AddString("name", path.c_str() + slash + 1);
}

} // namespace

BFilePanel::BFilePanel(file_panel_mode mode, const BMessenger* target, const entry_ref* directory,
    const BMessage* message)
    : fMode(mode), fTarget(target ? *target : be_app_messenger),
      fMessage(message ? std::make_unique<BMessage>(*message)
                       : std::make_unique<BMessage>(DefaultCode(mode))),
      fPeer(std::make_unique<FilePanelPeer>())
{
    display::Call([this] {
        fPeer->dialog = MakeDialog(fMode);
        QObject::connect(
            fPeer->dialog, &QFileDialog::finished, fPeer->dialog, [this](int) { Report(); });
    });
    if (directory)
        SetPanelDirectory(PathOfRef(*directory).c_str());
}

BFilePanel::~BFilePanel()
{
    display::Call([this] { delete fPeer->dialog; });
}

// On the server's thread; what it reads is changed there only.
void BFilePanel::Report()
{
    const bool isChosen = fPeer->dialog->result() == QDialog::Accepted;
    BMessage message(isChosen ? *fMessage : BMessage(B_CANCEL));
    if (isChosen)
        AddChoice(message, fMode, ChosenPath(*fPeer->dialog));
    else
        message.AddInt32("old_what", static_cast<int32>(fMessage->what));
    PostAlways(fTarget, message);
}

void BFilePanel::Show()
{
    display::Call([this] {
        fPeer->dialog->show();
        fPeer->dialog->raise();
        fPeer->dialog->activateWindow();
    });
}

void BFilePanel::Hide()
{
    display::Call([this] { fPeer->dialog->hide(); });
}

bool BFilePanel::IsShowing() const
{
    return display::Call([this] { return fPeer->dialog->isVisible(); });
}

void BFilePanel::SetTarget(const BMessenger& target)
{
    display::Call([this, &target] { fTarget = target; });
}

void BFilePanel::SetMessage(const BMessage* message)
{
    display::Call(
        [this, message] { *fMessage = message ? *message : BMessage(DefaultCode(fMode)); });
}

void BFilePanel::SetPanelDirectory(const char* path)
{
    display::Call([this, path] { fPeer->dialog->setDirectory(QFile::decodeName(path)); });
}

void BFilePanel::SetSaveText(const char* name)
{
    display::Call([this, name] { fPeer->dialog->selectFile(QString::fromUtf8(name)); });
}
