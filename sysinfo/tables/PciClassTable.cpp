#include "sysinfo/PciNames.h"

const PciClassRow g_pci_class_list[] = {
    { "Base Peripheral", 8 },
    { "Bridge", 6 },
    { "Display", 3 },
    { "Docking Station", 10 },
    { "Early", 0 },
    { "Input", 9 },
    { "Mass Storage", 1 },
    { "Memory", 5 },
    { "Multimedia", 4 },
    { "Network", 2 },
    { "Processor", 11 },
    { "Serial Bus", 12 },
    { "Simple Communications", 7 },
    { "Undefined", 255 },
    { nullptr, 0 },
};
