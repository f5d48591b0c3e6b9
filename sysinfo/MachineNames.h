// The names of the platform's codes for processors, platforms and screen depths. Every function
// returns "Unknown" for a code that it does not know.
#pragma once

#include <GraphicsDefs.h>

// The name of a system_info's cpu_type.
[[nodiscard]] const char* LibProcessorName(const int32& type);
// The name of a system_info's platform_type.
[[nodiscard]] const char* LibPlatformName(const int32& type);
// "8 bit color" and so on; the spaces with alpha have no name.
[[nodiscard]] const char* LibColorDepthName(const color_space& space);
