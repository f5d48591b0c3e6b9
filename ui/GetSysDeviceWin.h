// A form for the names of the machine's PCI devices that the program does not know. Closing it only
// takes the names over and tells the target, which hides it and has it saved. Return goes on to the
// next entry and closes it on the last one, as Escape does on any.
#pragma once

#include "foundation/LinkList.h"
#include "sysinfo/LibDeviceInfo.h"
#include "toolkit/LibWindow.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

class BBox;
class BStringView;
class LibEditEntry;
class PciNameList;

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
    bool QuitRequested() override; // false
    // Writes the classes with unknown devices, with the names given. Nothing happens if the file
    // cannot be opened. Not while the form is in use.
    void Save(const char* path);

private:
    void AddInstructions();
    void FitScreen(float height, float room);
    void AddClass(pciItem& item, const PciNameList& names, float& y);
    void AddVendor(BView* rows, const pciDevice& device, const LibString& name, float top,
        const PciNameList& names);
    void AddDevice(BView* rows, const pciDevice& device, const LibString& name, float top,
        const PciNameList& names);
    LibEditEntry* NewEntry(const LibString& name, const LibString& text);
    void GoOnFrom(const LibEditEntry* entry);
    void TakeNames(pciItem& item, int32 classOrdinal);
    const char* Typed(const LibString& name);

    BLooper* target;
    LinkList<pciItem> items; // copies, whose names the user gives
    BView* background;
    std::vector<LibEditEntry*> entries; // from left to right, row by row
    std::shared_ptr<const std::vector<std::string>> vendorNames;
};
