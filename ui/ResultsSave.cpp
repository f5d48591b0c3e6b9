// How the results window saves and sends a run.
#include "foundation/LibPath.h"
#include "results/ResultsFile.h"
#include "results/TestCatalogue.h"
#include "sysinfo/LibDeviceInfo.h"
#include "toolkit/Maker.h"
#include "toolkit/MessageBoxes.h"
#include "ui/GetSysDeviceWin.h"
#include "ui/ResultsPackage.h"
#include "ui/ResultsWin.h"
#include "ui/TarvexAlert.h"

#include <Alert.h>
#include <E-mail.h>
#include <FilePanel.h>
#include <Message.h>

#include <cstdio>
#include <cstring>

void ResultsWin::SaveResults()
{
    if (results.Size() != CompleteRunSize() && !WantsIncompleteRun())
        return;
    LibDeviceInfo devices;
    if (devices.AllDevicesKnown())
        ShowSavePanel();
    else
        ShowDevices();
}

bool ResultsWin::WantsIncompleteRun()
{
    BAlert* alert =
        new BAlert("", "Not all the tests were run.  Do you still wish to save the results?", "No",
            "Yes", nullptr, B_WIDTH_AS_USUAL, B_WARNING_ALERT);
    alert->SetShortcut(0, 'n');
    alert->SetShortcut(1, 'y');
    constexpr int32 kYes = 1;
    return LibAnswer(alert) == kYes;
}

void ResultsWin::ShowDevices()
{
    bool isClosed = false;
    unknownDevices.With([&](GetSysDeviceWin& form) { isClosed = form.IsHidden(); });
    if (isClosed)
        QuitDevices(); // a form takes names but once
    unknownDevices.Show([this] {
        LibDeviceInfo devices;
        auto* form = new GetSysDeviceWin(devices, this);
        form->FillIn(typedNames);
        form->SetPosition(kBesideMain);
        return form;
    });
}

// The form is only hidden: what was typed into it goes into the package.
void ResultsWin::GetSysDeviceQuit(const BMessage& closing)
{
    if (!unknownDevices.IsFrom(closing))
        return;
    unknownDevices.Hide();
    ShowSavePanel();
}

void ResultsWin::QuitDevices()
{
    unknownDevices.With([this](GetSysDeviceWin& form) { typedNames = form.TypedNames(); });
    unknownDevices.End();
}

void ResultsWin::ShowSavePanel()
{
    if (!savePanel) {
        const BMessenger thisWindow(this);
        BMessage reply(kMsgSavePanel);
        reply.AddString("be:also_written", kZipEnding); // the panel asks before it is replaced
        savePanel = std::make_unique<BFilePanel>(B_SAVE_PANEL, &thisWindow, nullptr, &reply);
    }
    savePanel->SetSaveText("Tarvex.results");
    savePanel->Show();
}

void ResultsWin::SaveResultFile(BMessage* reply)
{
    BPath path;
    if (!LibGetFilePath(reply, path))
        return;
    if (savePanel)
        savePanel->Hide();
    saved = path;
    if (WriteResultsFile(saved.Path(), results))
        Pack();
    else
        saved.Unset(); // no mail may take along half a file, or one of before
    (new TarvexAlert(this))->Go(nullptr);
    QuitDevices();
}

void ResultsWin::Pack()
{
    Packed packed = Packed::kNot;
    const auto pack = [&](GetSysDeviceWin& form) { packed = PackResults(saved, &form); };
    if (!unknownDevices.With(pack))
        packed = PackResults(saved, nullptr);
    if (packed != Packed::kNoZip)
        return;
    LibInfo(
        "Tarvex was unable to ZIP your results because the utility 'zip' was not found. You may "
        "have trouble emailing the results. Please install 'zip' from your system's software "
        "catalogue and re-run the test.");
}

void ResultsWin::EmailResults(BMessage* answer)
{
    const char* config = nullptr;
    answer->FindString("config", &config);
    LibString text("Results for : "); // the user may have written more than Formatted() takes
    text.Concat(config);
    text.Concat(".");
    BMailMessage mail;
    const bool isComplete = mail.AddHeaderField(B_MAIL_TO, TARVEX_SUPPORT_ADDRESS) == B_OK
        && mail.AddHeaderField(B_MAIL_SUBJECT, "Tarvex results") == B_OK
        && mail.AddContent(text, int32(strlen(text))) == B_OK
        && mail.AddEnclosure(saved.Path()) == B_OK;
    if (!isComplete || mail.Send(true) != B_OK)
        fprintf(stderr, "The mail with <%s> was not sent\n", saved.Path() ? saved.Path() : "");
}
