#include "results/Comparison.h"

#include "foundation/LibNode.h"
#include "foundation/Utf8.h"
#include "results/ComparisonChart.h"
#include "results/MachineFiles.h"
#include "results/ResultsFile.h"
#include "results/TestCatalogue.h"
#include "sysinfo/LibSysInfo.h"

#include <Message.h>
#include <WholeFile.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <set>
#include <type_traits>
#include <utility>

namespace {

// Under this name, and kRecords within, lie the machines of programs in use: with other names they
// would be lost.
constexpr char kStore[] = "qv:benchmark";
constexpr char kDamaged[] = "qv:benchmark damaged";
constexpr char kRecords[] = "results";

// Puts a store that can be read but is no message aside. False: it may be one, or that failed.
bool SetDamagedAside(LibNode& file)
{
    attr_info info;
    if (file.GetAttrInfo(kStore, &info) != B_OK)
        return false;
    // Each of these must be known for certain. After an error that passes the store stays as it is,
    // for the next time.
    std::string data(static_cast<size_t>(info.size), '\0');
    if (file.ReadAttr(kStore, info.type, 0, data.data(), data.size()) != info.size
        || BMessage().Unflatten(data.data(), info.size) == B_OK
        || file.WriteAttr(kDamaged, info.type, 0, data.data(), data.size()) != info.size)
        return false;
    fprintf(stderr, "The machines of the comparison are damaged and have been set aside as <%s>\n",
        kDamaged);
    return true;
}

// The last part of a path, fit to be shown.
std::string LeafOf(const char* path)
{
    const char* slash = strrchr(path, '/');
    return LibPrintable(slash ? slash + 1 : path);
}

// The greater, the further up in an order by rates.
double Rank(const Results& machine)
{
    const Metric* metric = machine.Current();
    if (!metric || metric->BestRate() <= 0)
        return -INFINITY;
    const double rate = metric->BestRate();
    const TestType* type = FindTestType(metric->index);
    return type && type->better == Better::kLess ? -rate : rate;
}

// By a key that is worked out once for each. Equal ones stay in their order.
template <typename Key>
void SortByKey(std::vector<Results*>& machines, Key key)
{
    std::vector<std::pair<std::invoke_result_t<Key, const Results&>, Results*>> rows;
    rows.reserve(machines.size());
    for (Results* machine : machines)
        rows.emplace_back(key(*machine), machine);
    std::stable_sort(
        rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::transform(
        rows.begin(), rows.end(), machines.begin(), [](const auto& row) { return row.second; });
}

} // namespace

std::string LoadOutcome::Text() const
{
    std::string text;
    if (added > 0 || known > 0)
        text = std::to_string(added) + (added == 1 ? " machine added" : " machines added");
    if (known > 0)
        text += ", " + std::to_string(known) + (known == 1 ? " was" : " were") + " there already";
    if (refused.empty())
        return text;
    text += (text.empty() ? "" : "; ") + refused.front();
    if (refused.size() > 1)
        text += ", and " + std::to_string(refused.size() - 1) + " more";
    return text;
}

ChartScale ChartScale::For(double greatest)
{
    constexpr double kMost = 1'999'999'999; // of which the next step is still an int32
    const auto rounded = static_cast<int32>(std::lround(std::clamp(greatest, 0.0, kMost)));
    const size_t digits = std::to_string(rounded).size();
    ChartScale scale;
    scale.step = 10;
    for (size_t i = 3; i < digits; i++)
        scale.step *= 10;
    // One step beyond the greatest, so that its bar ends before the edge.
    const auto steps = (scale.step + rounded) / scale.step;
    scale.maxScale = static_cast<float>(steps * scale.step);
    return scale;
}

float ChartScale::XFor(double value, float left, float right) const
{
    return static_cast<float>((right - left) * value / maxScale + left);
}

bool Comparison::SetRun(Results& run)
{
    Results* first = machines.First();
    if (!first || !first->current) {
        auto machine = std::make_unique<Results>(true);
        first = machine.get();
        if (!machines.InsertBefore(first, 0))
            return false;
        static_cast<void>(machine.release()); // the list's now
    }
    *first = run;
    selected = first;
    ShowTest();
    return true;
}

LoadOutcome Comparison::Load(const std::vector<LibString>& paths)
{
    LoadOutcome outcome;
    for (const LibString& path : paths) {
        const int32 before = machines.Size();
        if (!ReadResultsFile(path, machines, MachinesAre::kPacked)) {
            outcome.refused.push_back(LeafOf(path) + " cannot be read: " + strerror(errno));
            continue;
        }
        outcome.isRead = true;
        outcome.added += machines.Size() - before;
        if (machines.Size() == before)
            outcome.refused.push_back(LeafOf(path) + " is no results file");
    }
    if (outcome.isRead)
        ShowTest(); // once: there may be thousands of machines
    return outcome;
}

LoadOutcome Comparison::Open(const std::vector<std::string>& paths)
{
    LoadOutcome outcome;
    const int32 before = machines.Size();
    for (const std::string& path : paths) {
        const std::string why = ReadMachineFiles(path, machines);
        if (why.empty())
            continue;
        fprintf(stderr, "<%s> %s\n", LibPrintable(path.c_str()).c_str(), why.c_str());
        outcome.refused.push_back(LeafOf(path.c_str()) + " " + why);
    }
    outcome.isRead = machines.Size() > before;
    outcome.known = RemoveKnown(before);
    outcome.added = machines.Size() - before;
    if (outcome.isRead)
        ShowTest();
    return outcome;
}

// Removes, from the machine at first on, those whose record a machine before them has; how many.
int32 Comparison::RemoveKnown(int32 first)
{
    char record[kRecordSize];
    std::set<std::string> records;
    std::vector<int32> known;
    int32 i = 0;
    for (const Results& machine : machines) {
        if (!machine.current) { // a run may be shown and stored beside itself
            machine.Write(record);
            if (!records.insert(record).second && i >= first)
                known.push_back(i);
        }
        i++;
    }
    // From the end, where places before stay as they are.
    for (auto place = known.rbegin(); place != known.rend(); ++place) {
        machines.Position(*place);
        machines.Remove();
    }
    return static_cast<int32>(known.size());
}

void Comparison::ChooseTest(const char* description)
{
    if (test && test->description.Compare(description) == 0)
        return;
    test.emplace().Description(description);
    ShowTest();
}

// Marks the chosen test in all machines, of which some may be new.
void Comparison::ShowTest()
{
    shown = {};
    const Results* first = machines.First();
    if (!test || !first || !first->Has(*test))
        return;
    machines.MakeCurrent(*test);
    UpdateScale();
}

void Comparison::UpdateScale()
{
    const double base = byRatio && test ? BaseRate(*test) : 0;
    ratioBase = base > 0 ? static_cast<float>(base) : -1;
    if (!shown.greatest)
        shown.greatest = machines.MaxRate();
    const double greatest = *shown.greatest;
    scale = ChartScale::For(base > 0 ? 100 * greatest / static_cast<double>(ratioBase) : greatest);
}

const std::vector<Results*>& Comparison::InOrder()
{
    if (shown.machines.size() == static_cast<size_t>(machines.Size()) && shown.order == order)
        return shown.machines;
    shown.machines.clear();
    shown.bottoms.clear();
    shown.order = order;
    for (Results& machine : machines)
        shown.machines.push_back(&machine);
    if (order == ChartOrder::kByName) {
        SortByKey(shown.machines,
            [](const Results& machine) { return LibFoldCase(std::string(machine.description)); });
    } else if (order == ChartOrder::kByRate) {
        SortByKey(shown.machines, [](const Results& machine) { return -Rank(machine); });
    }
    return shown.machines;
}

const std::vector<float>& Comparison::RowBottoms()
{
    const std::vector<Results*>& all = InOrder();
    if (shown.bottoms.size() == all.size())
        return shown.bottoms;
    float y = ComparisonChart::kFirstRowY;
    for (Results* machine : all) {
        machine->Place(y);
        shown.bottoms.push_back(y);
    }
    return shown.bottoms;
}

Results* Comparison::MachineAt(float y)
{
    const std::vector<float>& bottoms = RowBottoms();
    const auto row = std::upper_bound(bottoms.begin(), bottoms.end(), y);
    if (y < ComparisonChart::kFirstRowY || row == bottoms.end())
        return nullptr;
    return shown.machines[static_cast<size_t>(row - bottoms.begin())];
}

Results* Comparison::NextToSelected(bool below)
{
    const std::vector<Results*>& all = InOrder();
    const auto at = std::find(all.begin(), all.end(), selected);
    if (at == all.end())
        return all.empty() ? nullptr : all.front();
    if (below)
        return at + 1 == all.end() ? nullptr : *(at + 1);
    return at == all.begin() ? nullptr : *(at - 1);
}

// --- Forgetting

int32 Comparison::Forget(const Results& machine)
{
    return ForgetIf([&](const Results& each) { return &each == &machine; });
}

int32 Comparison::ForgetOthers(const Results& machine)
{
    return ForgetIf([&](const Results& each) { return &each != &machine; });
}

// The run comes and goes with the results, so places count from the machine behind it.
int32 Comparison::PlaceOfFirst()
{
    const Results* first = machines.First();
    return first && first->current ? 1 : 0;
}

int32 Comparison::ForgetIf(const std::function<bool(const Results&)>& isMeant)
{
    std::vector<Forgotten> gone;
    const int32 first = PlaceOfFirst();
    int32 i = 0;
    for (const Results& machine : machines) {
        char record[kRecordSize];
        if (!machine.current && isMeant(machine)) {
            machine.Write(record);
            gone.push_back(
                { i - first, record, machine.origin, machine.trueName, &machine == selected });
        }
        i++;
    }
    // From the end, where places before stay as they are.
    for (auto each = gone.rbegin(); each != gone.rend(); ++each) {
        if (each->wasSelected)
            selected = first > 0 ? machines.First() : nullptr;
        machines.Position(each->place + first);
        machines.Remove();
    }
    const auto count = static_cast<int32>(gone.size());
    if (count > 0)
        forgotten.push_back(std::move(gone));
    ShowTest();
    return count;
}

int32 Comparison::Restore()
{
    if (forgotten.empty())
        return 0;
    const int32 first = PlaceOfFirst();
    const LibSysInfo thisMachine; // asked once, as there may be thousands of records
    const std::vector<Forgotten> back = std::move(forgotten.back());
    forgotten.pop_back();
    for (const Forgotten& each : back) {
        auto machine = Results::FromRecord(each.record.c_str(), thisMachine);
        machine->origin = each.origin;
        machine->trueName = each.trueName;
        if (each.wasSelected)
            selected = machine.get();
        const int32 place = each.place + first;
        if (place < machines.Size() && machines.InsertBefore(machine.get(), place))
            static_cast<void>(machine.release()); // the list's now
        else if (!machines.Insert(std::move(machine)) && each.wasSelected)
            selected = nullptr;
    }
    ShowTest();
    return static_cast<int32>(back.size());
}

double Comparison::BaseRate(const Metric& metric) const
{
    return selected ? selected->BestRate(metric) : 0;
}

void Comparison::ReadStore(const LibNode& file)
{
    BMessage store;
    attr_info info;
    const bool isThere = file.ReadMessageAttr(kStore, store);
    // That there is none is an answer too. After any other error it may be there, and is not
    // replaced.
    isStoreRead = isThere || file.GetAttrInfo(kStore, &info) == B_ENTRY_NOT_FOUND;
    if (!isThere)
        return;
    // Asked once, as there may be thousands of records.
    const LibSysInfo thisMachine;
    const char* record = nullptr;
    for (int32 i = 0; store.FindString(kRecords, i, &record) == B_OK; i++)
        machines.Insert(Results::FromRecord(record, thisMachine));
    ShowTest();
}

bool Comparison::WriteStore(LibNode& file)
{
    if (!isStoreRead)
        ReadStore(file); // it may be possible now; else those of before would be lost
    BMessage store;
    char record[kRecordSize];
    for (const Results& machine : machines) {
        if (machine.current)
            continue;
        machine.Write(record);
        store.AddString(kRecords, record);
    }
    const bool mayReplace = isStoreRead || SetDamagedAside(file);
    if (mayReplace && file.WriteMessageAttr(kStore, store)) {
        isStoreRead = true;
        return true;
    }
    fprintf(stderr, "The machines of the comparison could not be stored\n");
    return false;
}

std::string Comparison::WriteTable(const char* path) const
{
    WholeFile table(path);
    if (FILE* file = machines.Size() > 0 ? table.Stream() : nullptr) {
        const Results& first = *machines.begin();
        const int columns = machines.MaxNbrCpus();
        first.SaveHeader(file, columns);
        first.SaveUnits(file, columns);
        first.Save(file, columns); // and once more among all of them
        machines.Save(file, columns);
    }
    if (table.Commit())
        return "";
    fprintf(stderr, "Error writing <%s>: %s\n", path, table.Error().c_str());
    return table.Error();
}
