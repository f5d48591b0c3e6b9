#include "sysinfo/PciNames.h"

#include "foundation/Utf8.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <set>
#include <sstream>

namespace {

constexpr const char* kSystemLists[] = { "/usr/share/misc/pci.ids", "/usr/share/hwdata/pci.ids" };
constexpr size_t kMostTabs = 2;
constexpr size_t kMostNameBytes = 200;

// Takes so many digits and the blanks behind them off the line.
bool TakeId(std::string_view& line, size_t digits, size_t blanks, uint32& id)
{
    const std::string_view number = line.substr(0, digits);
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), id, 16);
    if (error != std::errc() || number.size() != digits || end != number.data() + digits
        || line.substr(digits, blanks) != std::string_view("  ", blanks))
        return false;
    line.remove_prefix(digits + blanks);
    return true;
}

// A list that was copied from another system ends its lines with "\r".
std::string_view WithoutEnd(std::string_view line)
{
    return line.substr(0, line.find_last_not_of(" \r") + 1);
}

// The one that stands below at the ids, or null.
template <class... Ids>
const PciName* Find(const PciName& above, uint32 id, Ids... further)
{
    const auto found = above.below.find(id);
    if (found == above.below.end())
        return nullptr;
    if constexpr (sizeof...(further) > 0)
        return Find(found->second, further...);
    else
        return &found->second;
}

std::string TextOf(const PciName* name)
{
    return name ? name->name : "";
}

// Several ids belong to one name: a vendor that was bought keeps its old ids.
std::vector<std::string> NamesBelow(const PciName& above)
{
    std::set<std::string> names;
    for (const auto& [id, entry] : above.below)
        names.insert(entry.name);
    return { names.begin(), names.end() };
}

} // namespace

std::optional<PciNameLine> ParsePciName(std::string_view line, bool inClasses)
{
    PciNameLine parsed;
    line = WithoutEnd(line);
    parsed.tabs = std::min(line.find_first_not_of('\t'), line.size());
    line.remove_prefix(parsed.tabs);
    parsed.isClass = parsed.tabs == 0 ? line.starts_with("C ") : inClasses;
    if (parsed.tabs == 0 && parsed.isClass)
        line.remove_prefix(2);
    // "\t\t8086 0001  A board"
    const bool isBoard = parsed.tabs == kMostTabs && !parsed.isClass;
    uint32 vendor = 0;
    if (parsed.tabs > kMostTabs || (isBoard && !TakeId(line, 4, 1, vendor))
        || !TakeId(line, parsed.isClass ? 2 : 4, 2, parsed.id))
        return {};
    parsed.id |= vendor << 16;
    parsed.name = line;
    // It goes into tips and records as it is.
    if (line.empty() || line.size() > kMostNameBytes
        || LibPrintable(std::string(line).c_str()) != line)
        return {};
    return parsed;
}

PciNameList::PciNameList()
{
    // The distributions keep the same list in different places; where both are there, one is
    // enough.
    for (const char* path : kSystemLists) {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        if (vendors.below.empty())
            Read(text.str());
    }
}

void PciNameList::Read(std::string_view text)
{
    // What the next line may stand below: the list itself, and the last name behind each number of
    // tabs. Nothing stands below a line that is damaged.
    PciName* above[kMostTabs + 2] = {};
    bool inClasses = false;
    for (size_t number = 1; !text.empty(); number++) {
        const std::string_view line = WithoutEnd(text.substr(0, text.find('\n')));
        text.remove_prefix(std::min(text.size(), text.find('\n')) + (text.find('\n') != text.npos));
        if (line.find_first_not_of(" \t") == line.npos || line.starts_with('#'))
            continue;
        const auto parsed = ParsePciName(line, inClasses);
        const size_t tabs = std::min(line.find_first_not_of('\t'), kMostTabs);
        if (tabs == 0) {
            inClasses = parsed && parsed->isClass;
            above[0] = inClasses ? &classes : &vendors;
        }
        std::fill(above + tabs + 1, std::end(above), nullptr);
        if (!parsed || !above[tabs]) {
            firstDamaged = firstDamaged > 0 ? firstDamaged : number;
            continue;
        }
        const auto [entry, isNew] = above[tabs]->below.try_emplace(parsed->id);
        above[tabs + 1] = &entry->second;
        if (isNew)
            entry->second.name = parsed->name;
    }
}

std::string PciNameList::Vendor(const uint16& vendorId) const
{
    return TextOf(Find(vendors, vendorId));
}

std::string PciNameList::Device(const uint16& vendorId, const uint16& deviceId) const
{
    return TextOf(Find(vendors, vendorId, deviceId));
}

std::string PciNameList::Subsystem(const uint16& vendorId, const uint16& deviceId,
    const uint16& boardVendorId, const uint16& boardId) const
{
    return TextOf(
        Find(vendors, vendorId, deviceId, static_cast<uint32>(boardVendorId) << 16 | boardId));
}

std::string PciNameList::Class(const uint8& base, const uint8& sub) const
{
    const std::string more = TextOf(Find(classes, base, sub));
    return TextOf(Find(classes, base)) + (more.empty() ? "" : ", " + more);
}

std::vector<std::string> PciNameList::Vendors() const
{
    return NamesBelow(vendors);
}

std::vector<std::string> PciNameList::Devices(const uint16& vendorId) const
{
    const PciName* vendor = Find(vendors, vendorId);
    return vendor ? NamesBelow(*vendor) : std::vector<std::string>();
}
