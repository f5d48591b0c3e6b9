// Results as text: the record, one machine on one line, as results files and the comparison store
// hold it; and the table, machines as lines, metrics as groups of columns, one for each processor
// count.
#include "foundation/LibStringIterator.h"
#include "foundation/PlainText.h"
#include "foundation/Utf8.h"
#include "results/Results.h"
#include "results/TestCatalogue.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

namespace {

std::string TextOf(const LibString& text)
{
    const char* bytes = text;
    return bytes ? bytes : "";
}

// "type:text" and a tab.
std::string DeviceField(const RelatedDevices& device)
{
    return std::to_string(device.type) + ":" + TextOf(device.description) + "\t";
}

// "id:cycles/time,time;"
std::string MetricField(const Metric& metric)
{
    std::string field = std::to_string(metric.index) + ":" + std::to_string(metric.cycles) + "/";
    for (int slot = 0; slot < metric.Slots(); slot++) {
        if (slot > 0)
            field += ",";
        field += LibFixedText(static_cast<double>(metric.times[slot]), 6);
    }
    return field + ";";
}

// Puts fields together as long as they fit into room bytes.
class FieldWriter {
public:
    explicit FieldWriter(size_t room) : fRoom(room) { }

    void Add(const std::string& field)
    {
        fComplete = fComplete && fText.size() + field.size() <= fRoom;
        if (fComplete)
            fText += field;
    }
    const std::string& Text() const { return fText; }
    bool IsComplete() const { return fComplete; }

private:
    size_t fRoom;
    std::string fText;
    bool fComplete = true;
};

} // namespace

bool Results::Write(char* buffer) const
{
    if (IsPacked()) {
        strcpy(buffer, packed.Text().c_str());
        return true;
    }
    constexpr size_t kRoom = kRecordSize - 1;
    const std::string machine = TextOf(description);
    const std::string beginning = machine.substr(0, kRoom - 1) + "\t";
    FieldWriter metricFields(kRoom - beginning.size()); // first: they are what was measured
    for (const Metric& metric : *this)
        metricFields.Add(MetricField(metric));
    FieldWriter deviceFields(kRoom - beginning.size() - metricFields.Text().size());
    for (const RelatedDevices& device : devices)
        deviceFields.Add(DeviceField(device));
    strcpy(buffer, (beginning + deviceFields.Text() + metricFields.Text()).c_str());
    if (machine.size() < kRoom && metricFields.IsComplete() && deviceFields.IsComplete())
        return true;
    fprintf(stderr, "The record of <%s> was shortened to %d bytes\n",
        LibPrintable(machine.c_str(), 200).c_str(), kRecordSize);
    return false;
}

// Reading a record, which may come from anywhere: nothing in it is taken at its word.

namespace {

// The digit after the first "(", or else the first character. A letter counts as 0.
int32 ProcessorCount(const LibString& description)
{
    const char* text = description;
    const char digit = text[description.Index('(') + 1];
    return digit >= '0' && digit <= '9' ? digit - '0' : 0;
}

// A field on standard error, cut short: a record can hold thousands that cannot be read.
void PrintField(const LibString& field)
{
    fprintf(stderr, "<%s>\n", LibPrintable(field, 60).c_str());
}

} // namespace

void Results::Read(const char* text)
{
    LibStringIterator line(text);
    const int32 nbrDevices = line.Count('\t') - 1;
    LibString field;
    if (!line.GetNextField('\t', field))
        return;
    description = static_cast<const char*>(field);
    nbrCpus = ProcessorCount(description);
    cpu = nbrCpus + 1;
    ReadDevices(line, nbrDevices);
    while (line.GetNextField(':', field))
        ReadMetric(line, field);
}

std::unique_ptr<Results> Results::FromRecord(const char* record, const LibSysInfo& thisMachine)
{
    PackedRecord packed = PackedRecord::Of(record);
    if (packed.IsEmpty()) {
        auto machine = std::make_unique<Results>(false, thisMachine);
        machine->Read(record);
        return machine;
    }
    std::unique_ptr<Results> machine(new Results(std::move(packed)));
    machine->ReadMachine();
    return machine;
}

// What is in front of a packed machine's metrics.
void Results::ReadMachine()
{
    description = std::string(packed.Machine()).c_str();
    nbrCpus = ProcessorCount(description);
    cpu = nbrCpus + 1;
    LibStringIterator fields(std::string(packed.Devices()).c_str());
    ReadDevices(fields, fields.Count('\t'));
}

std::unique_ptr<Results> Results::Unpacked() const
{
    std::unique_ptr<Results> machine(new Results(PackedRecord()));
    machine->Read(packed.Text().c_str());
    return machine;
}

void Results::ReadDevices(LibStringIterator& line, int32 nbrFields)
{
    LibString field;
    int32 type = 0;
    for (; nbrFields > 0 && line.GetNextField('\t', field); nbrFields--) {
        LibString id(field);
        if (id.ToChar(':', 0, 0))
            id.GetInt32(type);
        else
            fprintf(stderr, "Unable to get class id for <%s>\n", LibPrintable(id, 1000).c_str());
        field.FromChar(':', 0, 1);
        auto device = std::make_unique<RelatedDevices>();
        device->Description(type, field);
        devices.Insert(std::move(device));
    }
}

void Results::ReadMetric(LibStringIterator& line, const LibString& id)
{
    int32 index = 0;
    if (!id.GetInt32(index)) {
        fprintf(stderr, "Error extracting metric type for <%s>. <%s>\n",
            LibPrintable(description, 1000).c_str(), LibPrintable(id, 60).c_str());
        return;
    }
    auto metric = std::make_unique<Metric>();
    metric->Index(index);
    metric->Description(MetricName(index));
    LibString cycles;
    int32 nbrCycles = 0;
    if (line.GetNextField('/', cycles) && cycles.GetInt32(nbrCycles))
        metric->NbrCycles(nbrCycles);
    else
        fprintf(stderr, "Error extracting number of iterations\n");
    if (Metric* inserted = Insert(std::move(metric)))
        ReadTimes(line, *inserted);
}

void Results::ReadTimes(LibStringIterator& line, Metric& metric)
{
    // Where a metric has fewer times than that, the fields of the next one are taken for them: a
    // file says nowhere how many there are.
    for (int32 i = 0; i < nbrCpus; i++) {
        LibString field;
        float seconds = 0;
        if (line.GetNextField(",;", field) && field.GetFloat32(seconds)) {
            metric.Time(seconds);
            continue;
        }
        PrintField(field);
        const char* name = metric.description;
        fprintf(stderr, "Error extracting time for metric <%s> (%d)\n", name, metric.index);
    }
}

namespace {

void PutTabs(FILE* file, int count)
{
    for (; count > 0; count--)
        fputc('\t', file);
}

void PutCell(FILE* file, const char* text)
{
    fprintf(file, "%s\t", text);
}

} // namespace

void Metric::Save(FILE* file, const int& columns) const
{
    // The columns go from the most processors down to one, so a machine with fewer has its first
    // ones empty.
    PutTabs(file, columns - Slots());
    for (int slot = 0; slot < Slots(); slot++)
        PutCell(file, FormatRate(Rate(slot)));
}

void Results::SaveHeader(FILE* file, const int& columns) const
{
    if (IsPacked())
        return Unpacked()->SaveHeader(file, columns);
    PutTabs(file, 1);
    for (const Metric& metric : *this) {
        PutCell(file, metric.description);
        PutTabs(file, columns - 1);
    }
    fputc('\n', file);
}

void Results::SaveUnits(FILE* file, const int& columns) const
{
    if (IsPacked())
        return Unpacked()->SaveUnits(file, columns);
    PutTabs(file, 1);
    for (const Metric& metric : *this) {
        const char* units = metric.units;
        fprintf(file, "(%s)\t", units);
        PutTabs(file, columns - 1);
    }
    fputc('\n', file);
    PutTabs(file, 1);
    for (int32 metric = 0; metric < Size(); metric++) {
        for (int cpus = columns; cpus > 0; cpus--)
            fprintf(file, "%d cpu\t", cpus);
    }
    fputc('\n', file);
}

void Results::Save(FILE* file, const int& columns) const
{
    if (IsPacked())
        return Unpacked()->Save(file, columns);
    PutCell(file, description);
    for (const Metric& metric : *this)
        metric.Save(file, columns);
    fputc('\n', file);
}
