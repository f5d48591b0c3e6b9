#include "ui/GetSysDeviceWin.h"

#include "sysinfo/TypedPciNames.h"
#include "toolkit/LibControls.h"

#include <Box.h>
#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>
#include <Screen.h>
#include <ScrollBar.h>
#include <StringView.h>
#include <WholeFile.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr uint32 kMsgFormClosing = 'gsdq';
constexpr uint32 kMsgFill = 1020;
constexpr uint32 kMsgResults = 1021;
constexpr rgb_color grey_color = { 216, 216, 216, 255 };

constexpr float kWidth = 355;
constexpr float kInstructionsBottom = 70;
constexpr float kBoxMargin = 5; // above each box
constexpr float kBoxStep = 23; // of a box's height for a device
constexpr float kFirstRow = 18;
constexpr float kRowStep = 25;
constexpr float kVendorX = 8;
constexpr float kDeviceX = 170;
constexpr float kEntryWidth = 155;
constexpr float kEntryHeight = 24;
constexpr float kEntryInset = 2;
constexpr float kLabelWidth = 55;
constexpr float kKnownWidth = 150;
constexpr float kKnownHeight = 20;
constexpr int32 kMostCharacters = 50;
constexpr char kNoName[] = "Unknown";
constexpr float kFontSize = 10;
constexpr float kBoxBorder = 2;
constexpr float kRowsBarX = 325; // right of the entries
constexpr float kAroundWindow = 60; // of the screen's height: the window's border, a panel

// The number of the class among those shown, that of the device in its class, and its id.
// The form finds its entries again by it, so that all who number do it in the same way.
LibString EntryName(const char* kind, int32 classOrdinal, int32 deviceOrdinal, uint16 id)
{
    LibString name;
    name.Formatted("%s_%d-%d_0x%X", kind, classOrdinal, deviceOrdinal, id);
    return name;
}

LibLabelFrame* Framed(const char* label, float left, float top, LibEditEntry* entry)
{
    return new LibLabelFrame(BRect(left, top, left + kEntryWidth, top + kEntryHeight), label,
        kLabelWidth, kEntryInset, entry);
}

BStringView* KnownName(
    const char* name, const char* kind, const LibString& known, float left, float top)
{
    const char* value = known;
    LibString text;
    text.Formatted("%s : %s", kind, value);
    auto* view =
        new BStringView(BRect(left, top, left + kKnownWidth, top + kKnownHeight), name, text);
    view->SetFontSize(kFontSize);
    return view;
}

// Where rows run past the box's lower edge a view in it, which scrolls; else the box. Both have the
// same coordinates.
BView* RowsIn(BBox* box, int32 nbrRows)
{
    const float bottom =
        kFirstRow + kRowStep * static_cast<float>(nbrRows - 1) + kEntryHeight - kEntryInset;
    const BRect seen(kBoxBorder, kFirstRow, kRowsBarX - 1, box->Bounds().bottom - kBoxBorder);
    if (bottom <= seen.bottom)
        return box;
    auto* rows = new BView(seen, "rows", B_FOLLOW_LEFT | B_FOLLOW_TOP, 0);
    rows->SetViewColor(box->Parent()->ViewColor());
    rows->ScrollTo(seen.LeftTop());
    box->AddChild(rows);
    const BRect right(kRowsBarX, seen.top, box->Bounds().right - kBoxBorder, seen.bottom);
    const float below = bottom + kEntryInset - seen.bottom;
    auto* bar = new BScrollBar(right, "_VSB_", rows, seen.top, seen.top + below, B_VERTICAL);
    bar->SetProportion(seen.Height() / (seen.Height() + below));
    bar->SetSteps(kRowStep, seen.Height() - kRowStep);
    box->AddChild(bar);
    return rows;
}

// The board that the device is on: its ids, its maker, and what that calls it.
std::string BoardOf(const pciDevice& device, const PciNameList& names)
{
    if (device.boardVendorId == 0 || device.boardVendorId == UINT16_MAX)
        return "";
    LibString ids;
    ids.Formatted("Board 0x%4.4X, 0x%4.4X", device.boardVendorId, device.boardId);
    std::string text(ids.operator const char*());
    for (const std::string& name : { names.Vendor(device.boardVendorId),
             names.Subsystem(
                 device.vendorId, device.deviceId, device.boardVendorId, device.boardId) })
        text += name.empty() ? "" : ", " + name;
    return text;
}

// The system's name, or else the table's, which a row may have no room for.
std::string Or(const std::string& name, const LibString& known)
{
    return name.empty() && known.Compare(kNoName) != 0 ? known.operator const char*() : name;
}

// Which device it is: where it is found in the machine, its ids, and the names for it.
std::string TipFor(int classId, const pciDevice& device, const PciNameList& names)
{
    const char* slot = device.slot;
    LibString ids;
    ids.Formatted(
        "Slot %s, vendor 0x%4.4X, device 0x%4.4X", slot, device.vendorId, device.deviceId);
    std::string tip(ids.operator const char*());
    for (const std::string& name : { Or(names.Vendor(device.vendorId), device.vendorLong),
             Or(names.Device(device.vendorId, device.deviceId), device.description),
             BoardOf(device, names), names.Class(static_cast<uint8>(classId), device.subclass) })
        tip += name.empty() ? "" : "\n" + name;
    return tip;
}

bool IsEmpty(const LibEditEntry& entry)
{
    return strcmp(entry.Text(), "") == 0 || strcmp(entry.Text(), kNoName) == 0;
}

// Whether the text is all that an entry can show of the name.
bool IsCutFrom(const std::string& name, const std::string& text)
{
    const auto isFirstByte = [](char c) { return (c & 0xc0) != 0x80; };
    return name.starts_with(text)
        && std::count_if(text.begin(), text.end(), isFirstByte) >= kMostCharacters;
}

} // namespace

// What devices are called by others than the tables: the user's names come first.
struct GetSysDeviceWin::KnownNames {
    std::string Vendor(uint16 id) const
    {
        const std::string name = typed.Vendor(id);
        return name.empty() ? system.Vendor(id) : name;
    }
    std::string Device(uint16 vendorId, uint16 id) const
    {
        const std::string name = typed.Device(vendorId, id);
        return name.empty() ? system.Device(vendorId, id) : name;
    }

    const TypedPciNames typed;
    const PciNameList system;
};

GetSysDeviceWin::GetSysDeviceWin(LibDeviceInfo& info, BLooper* closeTarget)
    : LibWindow(BRect(0, 0, kWidth, 200), "Unknown Devices", B_TITLED_WINDOW_LOOK,
        B_NORMAL_WINDOW_FEEL, B_NOT_RESIZABLE | B_NOT_ZOOMABLE),
      target(closeTarget), background(new BView(Bounds(), "view", B_FOLLOW_ALL_SIDES, B_WILL_DRAW))
{
    SetName("GetSysDeviceWin");
    CloseOnEscape();
    const BScreen screen(B_MAIN_SCREEN_ID);
    background->SetViewColor(screen.ColorForIndex(screen.IndexForColor(grey_color)));
    AddChild(background);
    AddInstructions();

    const KnownNames names;
    vendorNames = std::make_shared<std::vector<std::string>>(names.system.Vendors());
    float y = kInstructionsBottom;
    for (pciItem& item : info) {
        if (item.NumberDevicesUnknown() > 0)
            AddClass(item, names, y);
    }
    FitScreen(y + 10, screen.Frame().Height() - kAroundWindow);
    SetPosition();
    AddMenu();
}

GetSysDeviceWin::~GetSysDeviceWin() = default;

void GetSysDeviceWin::AddInstructions()
{
    const char* const lines[] = { "Some devices are currently unknown to Tarvex.",
        "These hardware devices are needed to properly list",
        "the configuration of your system.  Could you please",
        "fill in the unknown vendor(s) and device(s) that you know." };
    float top = 5;
    int number = 1;
    for (const char* line : lines) {
        LibString name;
        name.Formatted("instructions%d", number++);
        auto* view = new BStringView(BRect(30, top, 30 + kWidth - 20, top + 15), name, line);
        view->SetFontSize(kFontSize);
        background->AddChild(view);
        top += 15;
    }
}

void GetSysDeviceWin::AddMenu()
{
    menu = std::make_unique<BPopUpMenu>("devices menu", false, false);
    menu->AddItem(new BMenuItem("Names from the list", new BMessage(kMsgFill), 'L'));
    resultsItem = new BMenuItem("Names in results", new BMessage(kMsgResults), 'R');
    resultsItem->SetMarked(TypedPciNames::AreForResults());
    menu->AddItem(resultsItem);
    menu->Join(this);
    for (const Entry& entry : entries)
        entry.view->AddToMenu(*menu);
}

// Machines of today have more unknown devices than the screen has room for.
void GetSysDeviceWin::FitScreen(float height, float room)
{
    if (height <= room)
        return ResizeTo(kWidth, height);
    ResizeTo(kWidth + B_V_SCROLL_BAR_WIDTH, room);
    // The bar stands beside what it scrolls, not on it.
    background->ResizeTo(kWidth, room);
    auto* bar = new BScrollBar(BRect(kWidth + 1, 0, kWidth + B_V_SCROLL_BAR_WIDTH, room), "_VSB_",
        background, 0, height - room, B_VERTICAL);
    bar->SetProportion(room / height);
    bar->SetSteps(kRowStep, room - kRowStep);
    AddChild(bar);
}

void GetSysDeviceWin::AddClass(pciItem& item, const KnownNames& names, float& y)
{
    const float height = static_cast<float>(item.devices.Size() + 1) * kBoxStep;
    y += kBoxMargin;
    auto* box = new BBox(BRect(10, y, 10 + kWidth - 20, y + height), item.type,
        B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE_JUMP,
        B_FANCY_BORDER);
    box->SetLabel(item.type);
    box->SetFontSize(kFontSize);
    background->AddChild(box);
    y += height;

    // A copy: the inventory goes when the form has been made.
    items.Insert(std::make_unique<pciItem>(item));
    BView* rows = RowsIn(box, item.devices.Size());
    float top = kFirstRow;
    int32 ordinal = 0;
    for (const pciDevice& device : item.devices) {
        // Known devices count too, as they have a row as well.
        ordinal++;
        const std::string tip = TipFor(item.classId, device, names.system);
        for (BView* view :
            { AddVendor(rows, device, EntryName("vendor", items.Size(), ordinal, device.vendorId),
                  top, names),
                AddDevice(rows, device, EntryName("device", items.Size(), ordinal, device.deviceId),
                    top, names) })
            view->SetToolTip(tip.c_str());
        top += kRowStep;
    }
}

BView* GetSysDeviceWin::AddVendor(
    BView* rows, const pciDevice& device, const LibString& name, float top, const KnownNames& names)
{
    BView* view = nullptr;
    if (device.IsVendorMatched()) {
        view = KnownName("known_vendor", "Vendor", device.vendorShort, kVendorX, top);
    } else {
        const std::string known = names.Vendor(device.vendorId);
        LibEditEntry* entry = AddEntry(name, device.vendorLong,
            { nullptr, device.vendorId, {}, names.typed.Vendor(device.vendorId), known });
        entry->SetCompletions(known, vendorNames);
        view = Framed("Vendor", kVendorX, top, entry);
    }
    rows->AddChild(view);
    return view;
}

BView* GetSysDeviceWin::AddDevice(
    BView* rows, const pciDevice& device, const LibString& name, float top, const KnownNames& names)
{
    BView* view = nullptr;
    if (device.IsDeviceMatched()) {
        view = KnownName("known_device", "Device", device.description, kDeviceX, top);
    } else {
        const std::string known = names.Device(device.vendorId, device.deviceId);
        LibEditEntry* entry = AddEntry(name, device.description,
            { nullptr, device.vendorId, device.deviceId,
                names.typed.Device(device.vendorId, device.deviceId), known });
        entry->SetCompletions(known,
            std::make_shared<std::vector<std::string>>(names.system.Devices(device.vendorId)));
        view = Framed("Device", kDeviceX, top, entry);
    }
    rows->AddChild(view);
    return view;
}

LibEditEntry* GetSysDeviceWin::AddEntry(const LibString& name, const LibString& text, Entry entry)
{
    const bool isNew = entry.typed.empty();
    entry.view = new LibEditEntry(
        BRect(), name, isNew ? text.operator const char*() : entry.typed.c_str(), kMostCharacters);
    entry.view->SetFontSize(kFontSize);
    entries.push_back(entry);
    return entry.view;
}

GetSysDeviceWin::Names GetSysDeviceWin::TypedNames() const
{
    Names names;
    for (const Entry& entry : entries)
        names[entry.view->Name()] = entry.view->Text();
    return names;
}

void GetSysDeviceWin::FillIn(const Names& names)
{
    for (const Entry& entry : entries) {
        if (const auto name = names.find(entry.view->Name()); name != names.end())
            entry.view->SetText(name->second.c_str());
    }
}

void GetSysDeviceWin::DispatchMessage(BMessage* message, BHandler* handler)
{
    int32 buttons = 0;
    BPoint where;
    // Wherever it is but in an entry, whose own menu has the items too.
    if (message->what == B_MOUSE_DOWN && message->FindInt32("buttons", &buttons) == B_OK
        && buttons == B_SECONDARY_MOUSE_BUTTON
        && message->FindPoint("screen_where", &where) == B_OK)
        return menu->Open(where);
    LibWindow::DispatchMessage(message, handler);
    const char* bytes = nullptr;
    // The key goes to the text inside the entry, and the entry itself never sees it.
    const auto* text = dynamic_cast<BView*>(handler);
    if (message->what == B_KEY_DOWN && text && message->FindString("bytes", &bytes) == B_OK
        && bytes[0] == B_ENTER)
        GoOnFrom(dynamic_cast<LibEditEntry*>(text->Parent()));
}

void GetSysDeviceWin::GoOnFrom(const LibEditEntry* entry)
{
    const auto place = std::find_if(
        entries.begin(), entries.end(), [entry](const Entry& one) { return one.view == entry; });
    if (place == entries.end())
        return;
    if (place + 1 == entries.end())
        PostMessage(B_QUIT_REQUESTED);
    else
        (place + 1)->view->MakeFocus();
}

void GetSysDeviceWin::MessageReceived(BMessage* message)
{
    switch (message->what) {
        case kMsgFill: FillFromList(); break;
        case kMsgResults:
            static_cast<void>(
                TypedPciNames::SetForResults(!resultsItem->IsMarked())); // the mark tells
            resultsItem->SetMarked(TypedPciNames::AreForResults());
            break;
        default: LibWindow::MessageReceived(message); break;
    }
}

void GetSysDeviceWin::FillFromList()
{
    for (const Entry& entry : entries) {
        if (IsEmpty(*entry.view) && !entry.known.empty())
            entry.view->SetText(entry.known.c_str());
    }
}

bool GetSysDeviceWin::QuitRequested()
{
    // Counted as when the form was made: classes with an unknown device. Once names are taken over
    // there are fewer, so this works but once.
    int32 classOrdinal = 0;
    for (pciItem& item : items) {
        if (item.NumberDevicesUnknown() > 0)
            TakeNames(item, ++classOrdinal);
    }
    RememberNames();
    target->PostMessage(kMsgFormClosing, nullptr, this);
    return false;
}

void GetSysDeviceWin::TakeNames(pciItem& item, int32 classOrdinal)
{
    int32 ordinal = 0;
    for (pciDevice& device : item.devices) {
        ordinal++;
        if (!device.IsVendorMatched()) {
            if (const char* text =
                    Typed(EntryName("vendor", classOrdinal, ordinal, device.vendorId)))
                device.VendorLong(text);
        }
        if (!device.IsDeviceMatched()) {
            if (const char* text =
                    Typed(EntryName("device", classOrdinal, ordinal, device.deviceId)))
                device.Description(text);
        }
    }
}

// What was left as it was is not written: the file may say something else by now.
void GetSysDeviceWin::RememberNames() const
{
    TypedPciNames names;
    for (const Entry& entry : entries) {
        const std::string text = entry.view->Text();
        const std::string name = IsCutFrom(entry.known, text) ? entry.known : text;
        if (name == entry.typed || (IsEmpty(*entry.view) && entry.typed.empty()))
            continue;
        if (entry.deviceId)
            names.SetDevice(entry.vendorId, *entry.deviceId, name);
        else
            names.SetVendor(entry.vendorId, name);
    }
    static_cast<void>(names.Save()); // it has said so
}

// What the entry of this name holds, null if there is none.
const char* GetSysDeviceWin::Typed(const LibString& name)
{
    const auto* entry = dynamic_cast<LibEditEntry*>(FindView(name));
    if (!entry)
        return nullptr;
    const char* entryName = name;
    fprintf(stderr, "%s found <%s>\n", entryName, entry->Text());
    return entry->Text();
}

void GetSysDeviceWin::Save(const char* path)
{
    WholeFile file(path);
    if (!file.Stream())
        return;
    for (const pciItem& item : items)
        item.Write(file.Stream());
    if (!file.Commit())
        fprintf(stderr, "Error writing <%s>: %s\n", path, file.Error().c_str());
}
