#include "results/MetricNames.h"

namespace {

constexpr struct {
    int32 id;
    const char* name;
} kNames[] = {
    { 100, "Strings Copy" },
    { 101, "Strings Compare" },
    { 200, "Memory" },
    { 300, "Savage" },
    { 400, "Ackerman" },
    { 500, "Dhrystone" },
    { 550, "Fourier" },
    { 600, "Whetstone" },
    { 601, "Ten Sequential Whetstones" },
    { 602, "Ten Threaded Whetstones" },
    { 700, "Sieve" },
    { 800, "Disk File Output" },
    { 801, "Disk File Input" },
    { 900, "Disk File Creation" },
    { 901, "Disk File Deletion" },
    { 902, "Disk File/Thread Creation" },
    { 903, "Disk File/Thread Deletion" },
    { 1010, "Graphics Lines Flushed" },
    { 1011, "Graphics Lines Unflushed" },
    { 1020, "Graphics Ellipses Flushed" },
    { 1021, "Graphics Ellipses Unflushed" },
    { 1022, "Graphics Ellipses Unflushed Filled" },
    { 1030, "Graphics Rectangles Flushed" },
    { 1031, "Graphics Rectangles Unflushed" },
    { 1032, "Graphics Rectangles Unflushed Filled" },
    { 1040, "Graphics Polygons Flushed" },
    { 1041, "Graphics Polygons Unflushed" },
    { 1042, "Graphics Polygons Unflushed Filled" },
    { 1050, "Graphics Strings Flushed" },
    { 1051, "Graphics Strings Unflushed" },
};

} // namespace

const char* MetricName(const int32& id)
{
    for (const auto& row : kNames) {
        if (row.id == id)
            return row.name;
    }
    return "";
}
