// The devices on the machine's PCI buses.
#pragma once

#include "SupportDefs.h"

// The known values of header_type, without its top bit (a device of several functions).
enum {
    PCI_header_type_generic = 0x00,
    PCI_header_type_PCI_to_PCI_bridge = 0x01,
    PCI_header_type_mask = 0x7f,
};

// One function of a device: the first 64 bytes of its configuration space, taken apart. Addresses
// and sizes are those of 32 bits; of a register pair that holds 64 bits the second element holds
// the upper half. Where the system does not show the configuration, only the ids, the class and the
// place on the bus are filled in and the rest is 0.
struct pci_info {
    uint16 vendor_id;
    uint16 device_id;
    uint8 bus;
    uint8 device; // 0 to 31
    uint8 function; // 0 to 7
    uint8 revision;
    uint8 class_api;
    uint8 class_sub;
    uint8 class_base;
    uint8 line_size; // of the cache, in words of 32 bits
    uint8 latency;
    uint8 header_type;
    uint8 bist;
    uint8 reserved;
    union {
        struct { // PCI_header_type_generic
            uint32 cardbus_cis;
            uint16 subsystem_id;
            uint16 subsystem_vendor_id;
            uint32 base_registers[6]; // as the processor sees them
            uint32 base_registers_pci[6]; // as the bus does
            uint32 base_register_sizes[6]; // bytes; 0: not in use
            uint8 base_register_flags[6]; // the register's low bits: 1 is an I/O address
            uint32 rom_base;
            uint32 rom_base_pci;
            uint32 rom_size; // bytes
            uint8 interrupt_line;
            uint8 interrupt_pin; // 1 is A; 0: none
            uint8 min_grant;
            uint8 max_latency;
        } h0;
        struct { // PCI_header_type_PCI_to_PCI_bridge
            uint32 base_registers[2];
            uint32 base_registers_pci[2];
            uint32 base_register_sizes[2];
            uint8 base_register_flags[2];
            uint8 primary_bus;
            uint8 secondary_bus;
            uint8 subordinate_bus;
            uint8 secondary_latency;
            uint8 io_base;
            uint8 io_limit;
            uint16 secondary_status;
            uint16 memory_base;
            uint16 memory_limit;
            uint16 prefetchable_memory_base;
            uint16 prefetchable_memory_limit;
            uint32 prefetchable_memory_base_upper32;
            uint32 prefetchable_memory_limit_upper32;
            uint16 io_base_upper16;
            uint16 io_limit_upper16;
            uint32 rom_base;
            uint32 rom_base_pci;
            uint8 interrupt_line;
            uint8 interrupt_pin;
            uint16 bridge_control;
        } h1;
    } u;
};

// Describes the function at index, counted from 0 without gaps in the order of the buses: domain,
// bus, device, function. A function that the system does not let be read is left out. Whoever
// starts over at 0 sees devices that came and went. B_ERROR if there is no such function;
// B_BAD_VALUE without an info.
status_t get_nth_pci_info(long index, pci_info* info);
