// The record: one machine on one line, as results files and the comparison store hold it.
#include <cstdio>
#include <cstring>
#include <string>

#include "foundation/FixedText.h"
#include "foundation/Utf8.h"
#include "results/Results.h"

namespace {

std::string TextOf(const LibString& text)
{
    const char* bytes = text;
    return bytes != nullptr ? bytes : "";
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
