// A form for the names of the machine's PCI devices that the program does not know. Closing it only
// takes the names over and tells the target, which hides it and has it saved. Return goes on to the
// next entry and closes it on the last one, as Escape does on any. What was typed is remembered for
// the next time, see TypedPciNames. The other mouse button opens a menu.
#pragma once

#include "foundation/LinkList.h"
#include "sysinfo/LibDeviceInfo.h"
#include "toolkit/LibWindow.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class BBox;
class BMenuItem;
class BPopUpMenu;
class BStringView;
class LibEditEntry;

class GetSysDeviceWin : public LibWindow {
public:
    // Has a box for each class of info with an unknown device. Moves info's cursors. closeTarget
    // gets 'gsdq'.
    GetSysDeviceWin(LibDeviceInfo& info, BLooper* closeTarget);
    ~GetSysDeviceWin() override;

    // The text of each entry by the entry's name, which is the same for the same machine, and its
    // way back into the entries of another form. The window must be locked, or not shown yet.
    using Names = std::map<std::string, std::string>;
    [[nodiscard]] Names TypedNames() const;
    void FillIn(const Names& names);

    void DispatchMessage(BMessage* message, BHandler* handler) override;
    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override; // false
    // Writes the classes with unknown devices, with the names given. Nothing happens if the file
    // cannot be opened. Not while the form is in use.
    void Save(const char* path);

private:
    struct KnownNames;
    struct Entry {
        LibEditEntry* view;
        uint16 vendorId;
        std::optional<uint16> deviceId; // none: it is for the vendor's name
        std::string typed; // what the user remembers it by since before, or ""
        std::string known; // that, or else the system's name
    };

    void AddInstructions();
    void AddMenu();
    void FitScreen(float height, float room);
    void AddClass(pciItem& item, const KnownNames& names, float& y);
    BView* AddVendor(BView* rows, const pciDevice& device, const LibString& name, float top,
        const KnownNames& names);
    BView* AddDevice(BView* rows, const pciDevice& device, const LibString& name, float top,
        const KnownNames& names);
    LibEditEntry* AddEntry(const LibString& name, const LibString& text, Entry entry);
    void GoOnFrom(const LibEditEntry* entry);
    void FillFromList();
    void TakeNames(pciItem& item, int32 classOrdinal);
    void RememberNames() const;
    const char* Typed(const LibString& name);

    BLooper* target;
    LinkList<pciItem> items; // copies, whose names the user gives
    BView* background;
    std::vector<Entry> entries; // from left to right, row by row
    std::shared_ptr<const std::vector<std::string>> vendorNames;
    std::unique_ptr<BPopUpMenu> menu;
    BMenuItem* resultsItem = nullptr;
};
