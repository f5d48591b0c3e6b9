// What the comparison window does with machines: takes them in, keeps them, writes them out.
#include "foundation/LibFileInfo.h"
#include "foundation/LibNode.h"
#include "foundation/LibPath.h"
#include "results/ResultsFile.h"
#include "sysinfo/LibSysInfo.h"
#include "toolkit/LibMenuButton.h"
#include "ui/CompareResultsView.h"
#include "ui/CompareWin.h"

#include <Application.h>
#include <Entry.h>
#include <Message.h>
#include <Roster.h>
#include <StorageDefs.h>

#include <cstring>
#include <memory>

namespace {

constexpr char kStore[] = "qv:benchmark"; // an attribute of the program's own file
constexpr char kDamaged[] = "qv:benchmark damaged";
constexpr char kRecords[] = "results";

// The program's file; false if the application cannot tell.
bool GetOwnFile(entry_ref& ref)
{
    app_info info;
    if (!be_app || be_app->GetAppInfo(&info) != B_OK)
        return false;
    ref = info.ref;
    return true;
}

// Puts a store that can be read but is no message aside. False: it may be one, or that failed.
bool SetDamagedAside(LibNode& node)
{
    attr_info info;
    if (node.GetAttrInfo(kStore, &info) != B_OK)
        return false;
    std::string data(size_t(info.size), '\0');
    if (node.ReadAttr(kStore, info.type, 0, data.data(), data.size()) != info.size
        || BMessage().Unflatten(data.data(), info.size) == B_OK
        || node.WriteAttr(kDamaged, info.type, 0, data.data(), data.size()) != info.size)
        return false;
    fprintf(stderr, "The machines of the comparison are damaged and have been set aside as <%s>\n",
        kDamaged);
    return true;
}

// Locks a window for the length of a block.
class WindowLock {
public:
    explicit WindowLock(BWindow& locked) : window(locked), isLocked(locked.Lock()) { }
    ~WindowLock()
    {
        if (isLocked)
            window.Unlock();
    }
    WindowLock(const WindowLock&) = delete;
    WindowLock& operator=(const WindowLock&) = delete;
    explicit operator bool() const { return isLocked; }

private:
    BWindow& window;
    const bool isLocked;
};

} // namespace

void CompareWin::ReadFromResource()
{
    entry_ref ref;
    BMessage store;
    attr_info info;
    if (!GetOwnFile(ref))
        return;
    const LibNode node(&ref);
    const bool isThere = node.ReadMessageAttr(kStore, store);
    isStoreRead = isThere || node.GetAttrInfo(kStore, &info) == B_ENTRY_NOT_FOUND;
    if (!isThere)
        return;
    const LibSysInfo thisMachine;
    const char* record = nullptr;
    for (int32 i = 0; store.FindString(kRecords, i, &record) == B_OK; i++) {
        auto machine = std::make_unique<Results>(false, thisMachine);
        machine->Read(record);
        if (chart->machines.Insert(machine.get()))
            machine.release();
    }
    TestItemSelected();
}

void CompareWin::SaveToResource()
{
    const WindowLock lock(*this);
    entry_ref ref;
    if (!lock || !GetOwnFile(ref))
        return;
    LibNode node(&ref);
    if (!isStoreRead)
        ReadFromResource(); // it may be possible now; else those of before would be lost
    BMessage store;
    char record[kRecordSize];
    ResultList& machines = chart->machines;
    for (Results* machine = machines.First(); machine; machine = machines.Next()) {
        if (machine->current)
            continue;
        machine->Write(record);
        store.AddString(kRecords, record);
    }
    const bool mayReplace = isStoreRead || SetDamagedAside(node);
    if (!mayReplace || !node.WriteMessageAttr(kStore, store))
        fprintf(stderr, "The machines of the comparison could not be stored\n");
    else
        isStoreRead = true;
    TestItemSelected();
}

void CompareWin::LoadResults(const char* path)
{
    const WindowLock lock(*this);
    if (lock && ReadResultsFile(path, chart->machines))
        SaveToResource();
}

void CompareWin::LoadResults(BMessage* message)
{
    const WindowLock lock(*this);
    type_code type = 0;
    int32 nbrFiles = 0;
    if (!lock || message->GetInfo("refs", &type, &nbrFiles) != B_OK)
        return;
    bool isRead = false;
    for (int32 i = nbrFiles - 1; i >= 0; i--) {
        entry_ref ref;
        char mimeType[B_MIME_TYPE_LENGTH] = "";
        LibString path;
        if (message->FindRef("refs", i, &ref) != B_OK || !LibGetMimeType(ref, mimeType, false)
            || strcmp(mimeType, "text/plain") != 0 || !LibGetFullPath(ref, path))
            continue;
        isRead |= ReadResultsFile(path, chart->machines);
    }
    if (isRead)
        SaveToResource(); // once: a store of thousands takes its time
}

void CompareWin::OpenFiles(BMessage* message)
{
    const WindowLock lock(*this);
    if (!lock)
        return;
    entry_ref ref;
    LibString path;
    bool isRead = false;
    for (int32 i = 0; message->FindRef("refs", i, &ref) == B_OK; i++)
        isRead |= LibGetFullPath(ref, path) && ReadResultsFile(path, chart->machines);
    Results* first = chart->machines.First();
    if (first && !first->current)
        OfferTests(*first);
    if (isRead)
        SaveToResource();
}

void CompareWin::SetResults(Results& run)
{
    const WindowLock lock(*this);
    if (!lock)
        return;
    ResultList& machines = chart->machines;
    Results* first = machines.First();
    if (first && first->current) {
        first->Clear();
        *first = run;
    } else {
        auto machine = std::make_unique<Results>(true);
        *machine = run;
        if (!machines.InsertBefore(machine.get(), 0))
            return;
        first = machine.release();
    }
    chart->selected = first;
    OfferTests(*first);
    TestItemSelected();
}

void CompareWin::OfferTests(Results& machine)
{
    const LibString before(choices->Text());
    choices->MakeEmpty();
    for (const Metric* metric = machine.First(); metric; metric = machine.Next())
        choices->AddItem(metric->description, new BMessage(kMsgTest));
    choices->Choose(before);
}

void CompareWin::SaveComparison()
{
    const WindowLock lock(*this);
    if (!lock)
        return;
    chart->Save();
    TestItemSelected();
}

// Walking a machine's metrics moves its mark of the current one, so that this follows every walk.
void CompareWin::TestItemSelected()
{
    Metric probe;
    probe.Description(choices->Text());
    Results* first = chart->machines.First();
    if (first && first->Get(&probe)) {
        chart->machines.MakeCurrent(probe);
        chart->UpdateMaxScale();
    }
    chart->Redraw();
}
