#include "FilePanel.h"

#include "Application.h"
#include "Message.h"
#include "MessageDelivery.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/WindowWidget.h"
#include "Window.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <QThread>
#include <QTimer>
#include <QTreeView>

#include <algorithm>

namespace {

// The list of files; null where the desktop has its own panel.
QTreeView* ListOf(const QFileDialog& dialog)
{
    return dialog.findChild<QTreeView*>();
}

// Asks by itself whether to replace what is there, and tells of what is not there. Qt's question
// knows the chosen name only, and its boxes run on the stack, see DeleteUnwound().
class PanelDialog : public QFileDialog {
public:
    // Behind the chosen name it is that of another file which the program will write.
    void SetSecondEnding(const char* ending) { fSecondEnding = QString::fromUtf8(ending); }

    // First over the window that asks, then where the user left it the last time.
    void Appear(const QRect& asking)
    {
        if (!isVisible() && fHasAppeared)
            setGeometry(geometry()); // not move(): Qt may not know the border yet
        else if (!fHasAppeared)
            PlaceOver(asking);
        fHasAppeared = true;
        show();
    }

    void accept() override
    {
        ForgetFolderOnTheWay();
        const QString chosen = selectedFiles().value(0);
        const bool isSaved = acceptMode() == AcceptSave;
        if (isSaved && !QFileInfo(chosen).dir().exists())
            TellOfMissing(QFileInfo(chosen).path(),
                QFileDialog::tr("%1\nDirectory not found.\nPlease verify the correct directory "
                                "name was given."));
        else if (!isSaved && !QFileInfo::exists(chosen))
            TellOfMissing(QFileInfo(chosen).fileName(),
                QFileDialog::tr(
                    "%1\nFile not found.\nPlease verify the correct file name was given."));
        else if (const QStringList inTheWay = FilesInTheWay(); !inTheWay.isEmpty())
            AskToReplace(inTheWay);
        else
            QFileDialog::accept();
    }

protected:
    // Else the list of names that begin as the typed one may come up when a slow folder has been
    // read, with the keyboard, although the panel has gone.
    void hideEvent(QHideEvent* event) override
    {
        for (const QLineEdit* edit : findChildren<QLineEdit*>()) {
            if (QCompleter* names = edit->completer()) {
                names->popup()->hide();
                names->setWidget(nullptr); // until the edit has the focus again
            }
        }
        QFileDialog::hideEvent(event);
    }

private:
    // As far as the screen has room; without a window Qt finds the place.
    void PlaceOver(const QRect& asking)
    {
        constexpr int kTitle = 28;
        if (!asking.isValid())
            return;
        const QRect room = screen()->availableGeometry().adjusted(0, kTitle, 0, 0);
        QRect frame(QPoint(), sizeHint());
        frame.moveCenter(asking.center());
        frame.moveRight(std::min(frame.right(), room.right()));
        frame.moveBottom(std::min(frame.bottom(), room.bottom()));
        frame.moveLeft(std::max(frame.left(), room.left()));
        frame.moveTop(std::max(frame.top(), room.top()));
        setGeometry(frame);
    }

    // While a path is typed Qt selects the folders on the way, and unless the field has the
    // keyboard they stay selected: then Return would open one.
    void ForgetFolderOnTheWay()
    {
        const auto* edit = findChild<QLineEdit*>("fileNameEdit");
        if (const QTreeView* files = ListOf(*this); files && edit && edit->text().contains('/'))
            files->selectionModel()->clearSelection();
    }

    QStringList FilesInTheWay() const
    {
        const QStringList chosen = selectedFiles();
        QStringList names;
        if (acceptMode() != AcceptSave || chosen.isEmpty() || QFileInfo(chosen.first()).isDir())
            return names;
        for (const QString& ending : { QString(), fSecondEnding }) {
            const QFileInfo file(chosen.first() + ending);
            if (file.exists() && !names.contains(file.fileName()))
                names += file.fileName();
        }
        return names;
    }

    QMessageBox* OpenBox(
        const QString& title, const QString& text, QMessageBox::StandardButtons buttons)
    {
        auto* box = new QMessageBox(QMessageBox::Warning, title, text, buttons, this);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->setTextFormat(Qt::PlainText);
        box->open();
        return box;
    }

    void TellOfMissing(const QString& name, const QString& text)
    {
        const QMessageBox* box = OpenBox(windowTitle(), text.arg(name), QMessageBox::Ok);
        connect(box, &QMessageBox::finished, this, [this] { ComeBack(); });
    }

    void AskToReplace(const QStringList& names)
    {
        const QString text = names.size() == 1
            ? QFileDialog::tr("%1 already exists.\nDo you want to replace it?").arg(names.first())
            : QString("%1 already exist.\nDo you want to replace them?").arg(names.join(" and "));
        auto* question = OpenBox("Replace", text, QMessageBox::Yes | QMessageBox::No);
        question->setDefaultButton(QMessageBox::No);
        connect(question, &QMessageBox::finished, this, [this](int answer) {
            if (answer == QMessageBox::Yes)
                QFileDialog::accept();
            else
                ComeBack();
        });
    }

    // Qt does not know that the desktop's own panel, where there is one, has gone.
    void ComeBack()
    {
        if (!ListOf(*this))
            hide();
        show();
    }

    QString fSecondEnding;
    bool fHasAppeared = false;
};

} // namespace

// The dialog; made, used and deleted on the display server's thread.
struct FilePanelPeer {
    PanelDialog* dialog = nullptr;
};

namespace {

uint32 DefaultCode(file_panel_mode mode)
{
    return mode == B_SAVE_PANEL ? static_cast<uint32>(B_SAVE_REQUESTED)
                                : static_cast<uint32>(B_REFS_RECEIVED);
}

std::string ChosenPath(const QFileDialog& dialog)
{
    const QStringList files = dialog.selectedFiles();
    return files.isEmpty() ? "" : QFile::encodeName(files.first()).toStdString();
}

// Sizes, types and dates are as wide as they are: only names may be cut off.
void FitColumns(const QFileDialog& dialog)
{
    const QTreeView* files = ListOf(dialog);
    if (!files)
        return;
    files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
}

PanelDialog* MakeDialog(file_panel_mode mode)
{
    auto* dialog = new PanelDialog;
    dialog->setOption(QFileDialog::DontConfirmOverwrite); // done by accept()
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

// What Qt asks by itself, as before it deletes a file, and its menu run loops on the stack of the
// dialog's functions, and of objects there that are its children: these are to return first. By
// close(), which Qt's questions take for a No.
void DeleteUnwound(PanelDialog* dialog)
{
    constexpr int kLookMillis = 20;
    if (QThread::currentThread()->loopLevel() <= 1) {
        delete dialog;
        return;
    }
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (QWidget* popup = QApplication::activePopupWidget())
        popup->close();
    else if (box && (!box->parentWidget() || box->parentWidget() == dialog))
        box->close();
    QTimer::singleShot(kLookMillis, qApp, [dialog] { DeleteUnwound(dialog); });
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
        TakeSecondEnding();
        QObject::connect(
            fPeer->dialog, &QFileDialog::finished, fPeer->dialog, [this](int) { Report(); });
    });
    if (directory)
        SetPanelDirectory(PathOfRef(*directory).c_str());
}

BFilePanel::~BFilePanel()
{
    display::Call([this] {
        // It may outlive this panel.
        QObject::disconnect(fPeer->dialog, &QFileDialog::finished, nullptr, nullptr);
        fPeer->dialog->hide();
        DeleteUnwound(fPeer->dialog);
    });
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
    const BWindow* caller = BWindow::Calling();
    const QRect asking = caller && !caller->IsHidden() ? ToQRect(caller->Frame()) : QRect();
    display::Call([this, caller, asking] {
        StandOver(*fPeer->dialog, caller ? caller->Widget() : nullptr);
        fPeer->dialog->Appear(asking);
        fPeer->dialog->raise();
        fPeer->dialog->activateWindow();
    });
}

void BFilePanel::Hide()
{
    display::Call([this] { fPeer->dialog->hide(); });
}

void BFilePanel::TakeSecondEnding()
{
    const char* ending = "";
    fMessage->FindString("be:also_written", &ending);
    fPeer->dialog->SetSecondEnding(ending);
}

void BFilePanel::SetPanelDirectory(const char* path)
{
    display::Call([this, path] { fPeer->dialog->setDirectory(QFile::decodeName(path)); });
}

void BFilePanel::SetSaveText(const char* name)
{
    display::Call([this, name] { fPeer->dialog->selectFile(QString::fromUtf8(name)); });
}
