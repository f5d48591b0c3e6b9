#include "ui/ResultsWin.h"

#include "foundation/LibPath.h"
#include "foundation/PlainText.h"
#include "results/ChartText.h"
#include "results/Metric.h"
#include "results/ResultsFile.h"
#include "results/TestCatalogue.h"
#include "sysinfo/LibDeviceInfo.h"
#include "sysinfo/LibSysInfo.h"
#include "toolkit/DialogWindow.h"
#include "toolkit/Maker.h"
#include "toolkit/MessageBoxes.h"
#include "toolkit/StatusLine.h"
#include "ui/CompareWin.h"
#include "ui/GetSysDeviceWin.h"
#include "ui/ResultsMail.h"

#include <Alert.h>
#include <Button.h>
#include <ClipboardData.h>
#include <E-mail.h>
#include <FilePanel.h>
#include <GraphicsDefs.h>
#include <ListView.h>
#include <MachineDetails.h>
#include <Message.h>
#include <ScrollView.h>
#include <StringView.h>
#include <TypeConstants.h>
#include <View.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

// From the row's left edge. The columns' titles stand above them.
constexpr float kDescriptionX = 5;
constexpr float kUnitsX = 190;
constexpr float kRatesX = 290;
constexpr float kRateWidth = 55;
constexpr float kColumnGap = 4; // at least
constexpr float kBaseline = 3; // above the row's bottom

// Draws in a column of that width, a wider text with its letters closer together.
void DrawFitted(BView* owner, const char* text, BPoint place, float width)
{
    const float excess = owner->StringWidth(text) - (width - kColumnGap);
    if (excess <= 0)
        return owner->DrawString(text, place);
    // The last letter has none behind it that comes closer. No column is as narrow as one letter.
    const float closer = -excess / static_cast<float>(strlen(text) - 1);
    escapement_delta delta { closer, closer };
    owner->DrawString(text, place, &delta);
}

} // namespace

ResultItem::ResultItem(const char* text) : description(text ? text : "") { }

void ResultItem::Branch(const char* text)
{
    branch = text;
}

void ResultItem::Units(const char* text)
{
    units = text;
}

void ResultItem::Quantity(const int& nbrRates)
{
    quantity = nbrRates;
}

void ResultItem::Rate(const int& slot, const float& value)
{
    if (slot < 0 || slot >= kMaxRates)
        return;
    quantity++;
    rates[slot] = value;
}

void ResultItem::DrawItem(BView* owner, BRect frame, bool)
{
    owner->SetHighColor(white_color);
    owner->FillRect(frame);
    owner->SetHighColor(black_color);

    const float baseline = frame.bottom - kBaseline;
    DrawFitted(owner, Description(), BPoint(frame.left + kDescriptionX, baseline),
        kUnitsX - kDescriptionX);
    owner->DrawString(Units(), BPoint(frame.left + kUnitsX, baseline));
    // Quantity() may have been told more than there is room for.
    for (int slot = 0; slot < std::min(quantity, kMaxRates); slot++) {
        const BPoint place(frame.left + kRatesX + kRateWidth * static_cast<float>(slot), baseline);
        DrawFitted(owner, FormatRate(static_cast<double>(rates[slot])), place, kRateWidth);
    }
    if (IsSelected())
        owner->InvertRect(frame);
}

namespace {

constexpr uint32 kMsgCancel = 500;
constexpr uint32 kMsgCompare = 501;
constexpr uint32 kMsgSave = 502;
constexpr uint32 kMsgCopy = 504;

// In the background view.
constexpr float kListLeft = 10;
constexpr float kTitlesX = kListLeft + kRatesX;
constexpr float kRightMargin = 25; // holds the scroll bar
constexpr float kFontSize = 10;

BRect FrameFor(int nbrCpus)
{
    // The row of buttons makes it wider where these are few.
    return BRect(0, 0, kTitlesX + kRateWidth * static_cast<float>(nbrCpus) + kRightMargin, 470);
}

// What this machine is called elsewhere; empty for the run of another one.
std::string TrueName(const Results& run)
{
    LibString description;
    LibSysInfo().Description(description);
    return run.description.Compare(description) == 0 ? LibMachineText(ReadMachineDetails()) : "";
}

} // namespace

ResultsWin::ResultsWin(const int& nbrCpus)
    : DialogWindow(FrameFor(nbrCpus), "ResultsWin", "Results"), results(false)
{
    // First, as the row takes its height from the background, which the list then fills.
    AddButtons();
    AddTitles(nbrCpus);
    AddList();
    const BRect frame = Frame();
    SetSizeLimits(frame.Width(), 4000, 200, 4000);
    SetPosition(kBesideMain);
    HideOnClose();
    AddShortcut('C', B_COMMAND_KEY, new BMessage(kMsgCopy));
}

ResultsWin::~ResultsWin()
{
    EmptyList();
}

void ResultsWin::AddTitles(int nbrCpus)
{
    AddTitle("banner1", "Test", 15, 60);
    AddTitle("banner2", "Units", 198, 60);
    for (int k = 0; k < nbrCpus; k++) {
        LibString name;
        LibString text;
        name.Formatted("cpus%d", nbrCpus - k);
        text.Formatted("%d CPU", nbrCpus - k);
        AddTitle(name, text, kTitlesX + kRateWidth * static_cast<float>(k), 50);
    }
}

void ResultsWin::AddTitle(const char* name, const char* text, float left, float width)
{
    BStringView* title = new BStringView(BRect(left, 3, left + width, 3 + 14), name, text);
    title->SetFontSize(kFontSize);
    Background()->AddChild(title);
}

void ResultsWin::AddList()
{
    BRect frame = Background()->Bounds();
    frame.left += kListLeft;
    frame.top += 20;
    frame.right -= kRightMargin;
    frame.bottom -= 10;
    list = new BListView(frame, "list", B_SINGLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES);
    list->SetFontSize(kFontSize);
    Background()->AddChild(new BScrollView("scroll", list, B_FOLLOW_ALL_SIDES, 0, false, true));
    list->MakeFocus();
}

void ResultsWin::AddButtons()
{
    ButtonRow* row = new ButtonRow;
    row->AddButton("cancel", "Cancel", kMsgCancel);
    row->AddButton("compare", "Compare...", kMsgCompare);
    row->AddButton("save", "Save...", kMsgSave);
    status = row->AddStatus("status");
    SetDefaultRow(row);
}

void ResultsWin::Update(Results& run, bool allow)
{
    allowSaveCompare = allow;
    results = run;

    EmptyList();
    for (const Metric& metric : results) {
        ResultItem* item = new ResultItem(metric.description);
        item->Units(metric.units);
        for (int slot = 0; slot < metric.Slots(); slot++)
            item->Rate(slot, static_cast<float>(metric.Rate(slot)));
        list->AddItem(item);
    }
    Background()->SetToolTip(TrueName(run).c_str()); // of the titles, where the list has no rows
    if (comparison.IsThere())
        CompareResults();
}

void ResultsWin::ShowUnsaved(bool allow)
{
    const auto run = unsaved.Read();
    if (!run)
        return;
    Update(*run, allow);
    status->Say("Not saved yet: the run of " + unsaved.Ended());
}

void ResultsWin::Say(const std::string& text, const std::string& more)
{
    status->Say(text, more);
}

void ResultsWin::CompareResults()
{
    ShowComparison();
    comparison.With([this](CompareWin& window) { window.SetResults(results); });
    fprintf(stderr, "time 2: %.3f 1: %.3f\n", static_cast<double>(results.Time(1)),
        static_cast<double>(results.Time(0)));
}

void ResultsWin::CopyResults() const
{
    const std::string text = ResultsAsText(results);
    BMessage data;
    data.AddData("text/plain", B_MIME_TYPE, text.data(), static_cast<ssize_t>(text.size()));
    copy_to_clipboard(data);
}

void ResultsWin::CompareFiles(BMessage* files, bool allow)
{
    allowSaveCompare = allow;
    ShowComparison();
    comparison.With([files](CompareWin& window) { window.OpenFiles(files); });
}

void ResultsWin::ShowComparison()
{
    comparison.Show([this] {
        auto* window = new CompareWin(this, allowSaveCompare);
        window->SetPosition(kBesideMain);
        return window;
    });
}

void ResultsWin::EmptyList()
{
    // The platform's lists do not own their items.
    while (BListItem* item = list->RemoveItem(list->CountItems() - 1))
        delete item;
}

void ResultsWin::MessageReceived(BMessage* message)
{
    switch (message->what) {
        case kMsgCancel: PostMessage(B_QUIT_REQUESTED); break;
        case kMsgCompare: CompareResults(); break;
        case kMsgCopy: CopyResults(); break;
        case kMsgSave: SaveResults(); break;
        case kMsgSavePanel: SaveResultFile(message); break;
        case TarvexAlert::kMsgEmail: EmailResults(message); break;
        case 'cmpq': comparison.Closed(*message); break;
        case 'gsdq': GetSysDeviceQuit(*message); break;
        default: DialogWindow::MessageReceived(message); break;
    }
}

// --- Saving and sending

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
    if (results.RenameDevices())
        comparison.With([this](CompareWin& window) { window.SetResults(results); });
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
    std::string why;
    if (WriteResultsFile(path.Path(), results, &why)) {
        saved = path;
        unsaved.Forget();
        status->Say(Pack());
        // It waits for nothing: the answer comes by a message, and the alert deletes itself.
        (new TarvexAlert(this))->Go(nullptr);
    } else {
        why[0] = LibToLower(why[0]);
        status->Say("Could not write " + std::string(path.Path()) + ": " + why);
    }
    // After the package, which takes the form's report along.
    QuitDevices();
}

// Returns what there is to be said of it.
std::string ResultsWin::Pack()
{
    // With its form locked, as the user may have opened it again beside the panel.
    Package package;
    const auto pack = [&](GetSysDeviceWin& form) { package = PackResults(saved, &form); };
    if (!unknownDevices.With(pack))
        package = PackResults(saved, nullptr);
    if (package.packed == Packed::kNoZip) {
        LibInfo("Tarvex was unable to ZIP your results because the utility 'zip' was not found. "
                "You may have trouble emailing the results. Please install 'zip' from your "
                "system's software catalogue and re-run the test.");
    }
    return SavedText(saved.Path(), package);
}

void ResultsWin::EmailResults(BMessage* answer)
{
    const char* config = nullptr;
    answer->FindString("config", &config);
    LibString text("Results for : "); // the user may have written more than Formatted() takes
    text.Concat(config);
    text.Concat(".");
    BMailMessage mail;
    if (mail.AddEnclosure(saved.Path()) != B_OK) {
        status->Say("Not mailed: what was saved is not there any more");
    } else if (mail.AddHeaderField(B_MAIL_TO, TARVEX_SUPPORT_ADDRESS) == B_OK
        && mail.AddHeaderField(B_MAIL_SUBJECT, "Tarvex results") == B_OK
        && mail.AddContent(text, static_cast<int32>(strlen(text))) == B_OK
        && mail.Send(true) == B_OK) {
        status->Say(mail.IsLeftToUser() ? "The mailer has the mail to " TARVEX_SUPPORT_ADDRESS
                                          ", for you to send"
                                        : "Mailed to " TARVEX_SUPPORT_ADDRESS);
        return;
    } else {
        status->Say("The mailer refused: " + mail.Error());
    }
    fprintf(stderr, "The mail with <%s> was not sent\n", saved.Path() ? saved.Path() : "");
}
