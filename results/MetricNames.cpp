#include "results/MetricNames.h"

#include <algorithm>
#include <iterator>

namespace {

struct MetricType {
    int32 id;
    const char* name;
    const char* units;
};

constexpr MetricType kTypes[] = {
    { 100, "Strings Copy", "MegaChars/sec" },
    { 101, "Strings Compare", "MegaChars/sec" },
    { 200, "Memory", "MB/sec" },
    { 300, "Savage", "KIPS" },
    { 400, "Ackerman", "IPS" },
    { 500, "Dhrystone", "IPS" },
    { 550, "Fourier", "FLOPS" },
    { 600, "Whetstone", "MWIPS" },
    { 601, "Ten Sequential Whetstones", "seconds" },
    { 602, "Ten Threaded Whetstones", "seconds" },
    { 700, "Sieve", "IPS" },
    { 800, "Disk File Output", "KB/sec" },
    { 801, "Disk File Input", "KB/sec" },
    { 900, "Disk File Creation", "files/second" },
    { 901, "Disk File Deletion", "files/second" },
    { 902, "Disk File/Thread Creation", "files/second" },
    { 903, "Disk File/Thread Deletion", "files/second" },
    { 1010, "Graphics Lines Flushed", "vectors/sec" },
    { 1011, "Graphics Lines Unflushed", "vectors/sec" },
    { 1020, "Graphics Ellipses Flushed", "ellipses/sec" },
    { 1021, "Graphics Ellipses Unflushed", "ellipses/sec" },
    { 1022, "Graphics Ellipses Unflushed Filled", "ellipses/sec" },
    { 1030, "Graphics Rectangles Flushed", "rectangles/sec" },
    { 1031, "Graphics Rectangles Unflushed", "rectangles/sec" },
    { 1032, "Graphics Rectangles Unflushed Filled", "rectangles/sec" },
    { 1040, "Graphics Polygons Flushed", "polygons/sec" },
    { 1041, "Graphics Polygons Unflushed", "polygons/sec" },
    { 1042, "Graphics Polygons Unflushed Filled", "polygons/sec" },
    { 1050, "Graphics Strings Flushed", "KiloChars/sec" },
    { 1051, "Graphics Strings Unflushed", "KiloChars/sec" },
};

const MetricType& TypeOf(int32 id)
{
    static constexpr MetricType kUnknown = { 0, "", "" };
    const auto* found = std::find_if(std::begin(kTypes), std::end(kTypes),
        [id](const MetricType& type) { return type.id == id; });
    return found != std::end(kTypes) ? *found : kUnknown;
}

} // namespace

const char* MetricName(const int32& id)
{
    return TypeOf(id).name;
}

const char* MetricUnits(const int32& id)
{
    return TypeOf(id).units;
}
