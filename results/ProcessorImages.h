// The pictures of a processor beside a machine in the chart: 16 rows of 16 pixels in B_CMAP8.
#pragma once

#include <array>

#include <SupportDefs.h>

extern const std::array<uint8, 256> Processor; // closed
extern const std::array<uint8, 256> ProcessorOpen; // without its lid: the machine is expanded
