#include "foundation/LibByteCount.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

constexpr uint32 kKilobyte = 1024;
constexpr uint32 kMegabyte = 1'048'576;

} // namespace

void LibBytesToString(const uint32& bytes, LibString& text, int decimals)
{
    double value = bytes;
    const char* unit = "bytes";
    if (bytes > kMegabyte) {
        value /= kMegabyte;
        unit = "MB";
    } else if (bytes > kKilobyte) {
        value /= kKilobyte;
        unit = "KB";
    }
    text.Formatted("%.*f %s", decimals, value, unit);
}

uint32 LibStringToBytes(const char* text)
{
    const std::string all = text != nullptr ? text : "";
    const size_t blank = all.find(' ');
    const LibString number(all.substr(0, blank).c_str());
    const std::string unit = blank == all.npos ? "" : all.substr(blank + 1);
    float value = 0;
    if (!number.GetFloat32(value)) {
        const char* shown = number;
        fprintf(stderr, "LibConvertBytes <%s> not a float\n", shown);
        return 0;
    }
    if (unit != "KB" && unit != "MB")
        return 0;
    const double bytes = double(value) * (unit == "KB" ? kKilobyte : kMegabyte);
    return static_cast<uint32>(std::clamp(bytes, 0.0, double(UINT32_MAX)));
}
