#include "ui/GetSysDeviceWin.h"

#include "sysinfo/PciNameList.h"
#include "toolkit/LibEditEntry.h"
#include "toolkit/LibLabelFrame.h"

#include <Box.h>
#include <Screen.h>
#include <ScrollBar.h>
#include <StringView.h>
#include <WholeFile.h>

#include <cstdio>

namespace {

constexpr uint32 kMsgFormClosing = 'gsdq';
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
constexpr float kFontSize = 10;
constexpr float kAroundWindow = 60; // of the screen's height: the window's border, a panel

// The number of the class among those shown, that of the device in its class, and its id.
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

LibEditEntry* NewEntry(const LibString& name, const LibString& text)
{
    auto* entry = new LibEditEntry(BRect(), name, text, kMostCharacters);
    entry->SetFontSize(kFontSize);
    return entry;
}

} // namespace

GetSysDeviceWin::GetSysDeviceWin(LibDeviceInfo& info, BLooper* closeTarget)
    : LibWindow(BRect(0, 0, kWidth, 200), "Unknown Devices", B_TITLED_WINDOW_LOOK,
        B_NORMAL_WINDOW_FEEL, B_NOT_RESIZABLE | B_NOT_ZOOMABLE),
      target(closeTarget), background(new BView(Bounds(), "view", B_FOLLOW_ALL_SIDES, B_WILL_DRAW))
{
    SetName("GetSysDeviceWin");
    const BScreen screen(B_MAIN_SCREEN_ID);
    background->SetViewColor(screen.ColorForIndex(screen.IndexForColor(grey_color)));
    AddChild(background);
    AddInstructions();

    const PciNameList names;
    vendorNames = std::make_shared<std::vector<std::string>>(names.Vendors());
    float y = kInstructionsBottom;
    for (pciItem* item = info.First(); item != nullptr; item = info.Next()) {
        if (item->NumberDevicesUnknown() > 0)
            AddClass(*item, names, y);
    }
    FitScreen(y + 10, screen.Frame().Height() - kAroundWindow);
    SetPosition();
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

// Machines of today have more unknown devices than the screen has room for.
void GetSysDeviceWin::FitScreen(float height, float room)
{
    if (height <= room)
        return ResizeTo(kWidth, height);
    ResizeTo(kWidth + B_V_SCROLL_BAR_WIDTH, room);
    background->ResizeTo(kWidth, room);
    auto* bar = new BScrollBar(BRect(kWidth + 1, 0, kWidth + B_V_SCROLL_BAR_WIDTH, room), "_VSB_",
        background, 0, height - room, B_VERTICAL);
    bar->SetProportion(room / height);
    bar->SetSteps(kRowStep, room - kRowStep);
    AddChild(bar);
}

void GetSysDeviceWin::AddClass(pciItem& item, const PciNameList& names, float& y)
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

    auto copy = std::make_unique<pciItem>(item);
    if (items.Insert(copy.get()))
        static_cast<void>(copy.release());
    float top = kFirstRow;
    int32 ordinal = 0;
    for (const pciDevice* device = item.devices.First(); device != nullptr;
         device = item.devices.Next()) {
        ordinal++;
        AddVendor(
            box, *device, EntryName("vendor", items.Size(), ordinal, device->vendorId), top, names);
        AddDevice(
            box, *device, EntryName("device", items.Size(), ordinal, device->deviceId), top, names);
        top += kRowStep;
    }
}

void GetSysDeviceWin::AddVendor(
    BBox* box, const pciDevice& device, const LibString& name, float top, const PciNameList& names)
{
    if (device.IsVendorMatched())
        return box->AddChild(
            KnownName("known_vendor", "Vendor", device.vendorShort, kVendorX, top));
    auto* entry = NewEntry(name, device.vendorLong);
    entry->SetCompletions(names.Vendor(device.vendorId), vendorNames);
    box->AddChild(Framed("Vendor", kVendorX, top, entry));
}

void GetSysDeviceWin::AddDevice(
    BBox* box, const pciDevice& device, const LibString& name, float top, const PciNameList& names)
{
    if (device.IsDeviceMatched())
        return box->AddChild(
            KnownName("known_device", "Device", device.description, kDeviceX, top));
    auto* entry = NewEntry(name, device.description);
    entry->SetCompletions(names.Device(device.vendorId, device.deviceId),
        std::make_shared<std::vector<std::string>>(names.Devices(device.vendorId)));
    box->AddChild(Framed("Device", kDeviceX, top, entry));
}

bool GetSysDeviceWin::QuitRequested()
{
    int32 classOrdinal = 0;
    for (pciItem* item = items.First(); item != nullptr; item = items.Next()) {
        if (item->NumberDevicesUnknown() > 0)
            TakeNames(*item, ++classOrdinal);
    }
    target->PostMessage(kMsgFormClosing);
    return false;
}

void GetSysDeviceWin::TakeNames(pciItem& item, int32 classOrdinal)
{
    int32 ordinal = 0;
    for (pciDevice* device = item.devices.First(); device != nullptr;
         device = item.devices.Next()) {
        ordinal++;
        if (!device->IsVendorMatched()) {
            if (const char* text =
                    Typed(EntryName("vendor", classOrdinal, ordinal, device->vendorId)))
                device->VendorLong(text);
        }
        if (!device->IsDeviceMatched()) {
            if (const char* text =
                    Typed(EntryName("device", classOrdinal, ordinal, device->deviceId)))
                device->Description(text);
        }
    }
}

// What the entry of this name holds, null if there is none.
const char* GetSysDeviceWin::Typed(const LibString& name)
{
    const auto* entry = dynamic_cast<LibEditEntry*>(FindView(name));
    if (entry == nullptr)
        return nullptr;
    const char* entryName = name;
    fprintf(stderr, "%s found <%s>\n", entryName, entry->Text());
    return entry->Text();
}

void GetSysDeviceWin::Save(const char* path)
{
    WholeFile file(path);
    if (file.Stream() == nullptr)
        return;
    for (pciItem* item = items.First(); item != nullptr; item = items.Next())
        item->Write(file.Stream());
    if (!file.Commit())
        fprintf(stderr, "Error writing <%s>: %s\n", path, file.Error().c_str());
}
