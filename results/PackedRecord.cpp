#include "results/PackedRecord.h"

#include "foundation/PlainText.h"
#include "results/Results.h"
#include "results/TestCatalogue.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int64 kMillion = 1'000'000; // times have six decimals

// Reads a record from left to right. Each step is false where the text is another than Write()'s.
class Scanner {
public:
    explicit Scanner(std::string_view text) : fAt(text.data()), fEnd(text.data() + text.size()) { }

    bool AtEnd() const { return fAt == fEnd; }
    bool Take(char wanted)
    {
        if (AtEnd() || *fAt != wanted)
            return false;
        fAt++;
        return true;
    }
    // Digits without a zero in front, of at most nine: more may be beyond an int32.
    bool TakeNumber(int64& value)
    {
        const char* const first = fAt;
        for (value = 0; fAt != fEnd && LibIsDigit(*fAt); fAt++)
            value = 10 * value + (*fAt - '0');
        const auto digits = fAt - first;
        return digits > 0 && digits <= 9 && (*first != '0' || digits == 1);
    }
    // A time that a float holds so exactly that it is written alike.
    bool TakeTime(float& seconds)
    {
        int64 whole = 0;
        if (!TakeNumber(whole) || !Take('.') || fEnd - fAt < 6)
            return false;
        int64 micros = 0;
        for (int i = 0; i < 6; i++, fAt++) {
            if (!LibIsDigit(*fAt))
                return false;
            micros = 10 * micros + (*fAt - '0');
        }
        micros += kMillion * whole;
        // Both are exact, so the quotient is the nearest double, as of the text itself.
        const double value = static_cast<double>(micros) / static_cast<double>(kMillion);
        seconds = static_cast<float>(value);
        const double written = static_cast<double>(seconds) * static_cast<double>(kMillion);
        return std::abs(written - static_cast<double>(micros)) < 0.499;
    }
    // "id:cycles/time,time;" with so many times.
    bool TakeMetric(int32 times, Metric* metric)
    {
        int64 id = 0;
        int64 cycles = 0;
        if (!TakeNumber(id) || !Take(':') || !TakeNumber(cycles) || !Take('/'))
            return false;
        if (metric) {
            metric->Index(id);
            metric->NbrCycles(cycles);
        }
        for (int32 slot = 0; slot < times; slot++) {
            float seconds = 0;
            if ((slot > 0 && !Take(',')) || !TakeTime(seconds))
                return false;
            if (metric)
                metric->Time(seconds);
        }
        return Take(';');
    }

private:
    const char* fAt;
    const char* fEnd;
};

// Behind the last tab. Not by rfind(), which takes as long for that as the rest of a record.
std::string_view MetricsIn(std::string_view record)
{
    const auto* tab = static_cast<const char*>(memrchr(record.data(), '\t', record.size()));
    return record.substr(tab ? static_cast<size_t>(tab - record.data()) + 1 : 0);
}

// As Results::Read() finds it.
int32 ProcessorCount(std::string_view record)
{
    const std::string_view machine = record.substr(0, record.find('\t'));
    const size_t at = machine.find('(') + 1; // 0 if there is none
    const char digit = at < machine.size() ? machine[at] : '0';
    return LibIsDigit(digit) ? digit - '0' : 0;
}

// "type:text", the type without a zero in front.
bool IsDevice(std::string_view field)
{
    int64 type = 0;
    const bool isNegative = field.starts_with('-');
    Scanner scanner(field.substr(isNegative ? 1 : 0));
    return scanner.TakeNumber(type) && scanner.Take(':') && (type > 0 || !isNegative);
}

bool IsWritten(std::string_view record)
{
    const size_t devices = record.find('\t');
    const int32 times = ProcessorCount(record);
    if (record.size() >= kRecordSize || devices == record.npos || devices == 0 || times < 1
        || times > kMostTimes || record.find('\0') != record.npos)
        return false;
    const size_t metrics = record.size() - MetricsIn(record).size();
    for (size_t at = devices + 1; at < metrics;) {
        const size_t end = record.find('\t', at);
        if (!IsDevice(record.substr(at, end - at)))
            return false;
        at = end + 1;
    }
    Scanner scanner(MetricsIn(record));
    while (!scanner.AtEnd()) {
        if (!scanner.TakeMetric(times, nullptr))
            return false;
    }
    return metrics < record.size();
}

std::unique_ptr<Metric> MadeFrom(std::string_view field, int32 times)
{
    auto metric = std::make_unique<Metric>();
    static_cast<void>(Scanner(field).TakeMetric(times, metric.get())); // looked at by Of()
    metric->Description(MetricName(metric->index));
    return metric;
}

} // namespace

PackedRecord PackedRecord::Of(std::string_view record)
{
    PackedRecord packed;
    if (IsWritten(record))
        packed.text = std::string(record);
    return packed;
}

std::string_view PackedRecord::Machine() const
{
    const std::string_view record = text;
    return record.substr(0, record.find('\t'));
}

std::string_view PackedRecord::Devices() const
{
    const std::string_view record = text;
    const std::string_view rest = record.substr(record.find('\t') + 1);
    return rest.substr(0, rest.size() - MetricsIn(record).size());
}

std::unique_ptr<Metric> PackedRecord::Find(const Metric& probe) const
{
    const std::string_view metrics = MetricsIn(text);
    for (size_t at = 0; at < metrics.size(); at = metrics.find(';', at) + 1) {
        int64 id = 0;
        static_cast<void>(Scanner(metrics.substr(at)).TakeNumber(id)); // looked at by Of()
        if (probe.description.Compare(MetricName(static_cast<int32>(id))) == 0)
            return MadeFrom(metrics.substr(at), ProcessorCount(text));
    }
    return nullptr;
}

std::unique_ptr<Metric> PackedRecord::First() const
{
    return IsEmpty() ? nullptr : MadeFrom(MetricsIn(text), ProcessorCount(text));
}
