// Heat and power at a moment; see MachineState.
#pragma once

#include "MachineState.h"
#include "SystemTree.h"

namespace kernel {
// Of the sensors in the processors' packages; where there are none, of the firmware's zones.
[[nodiscard]] std::optional<double> ReadTemperature(const SystemTree& tree);

// Nothing unless all packages can be read.
[[nodiscard]] std::vector<EnergyCounter> ReadEnergy(const SystemTree& tree);

// Fills onBattery, batteryPercent and mainsOnline.
void ReadPowerSupply(const SystemTree& tree, MachineState& state);
} // namespace kernel
