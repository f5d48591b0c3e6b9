#pragma once

#include "MachineTree.h"

// The first 64 bytes of a configuration, all else 0. classes: base, sub and interface in one
// number, as in 0x030000.
inline std::string PciConfig(int vendor, int device, int classes)
{
    std::string bytes(64, '\0');
    const int numbers[] = { vendor & 255, vendor >> 8, device & 255, device >> 8 };
    for (size_t i = 0; i < 4; i++)
        bytes[i] = static_cast<char>(numbers[i]);
    for (size_t i = 0; i < 3; i++)
        bytes[9 + i] = static_cast<char>(classes >> (8 * i));
    return bytes;
}

// Puts a function on the tree's buses at a place like "0000:00:01.0".
inline void AddPciFunction(
    const MachineTree& tree, const std::string& place, const std::string& config)
{
    tree.Write("sys/bus/pci/devices/" + place + "/config", config);
}
