// The kernel kit: threads, the clock, the description of the machine and the switching of its
// processors. Times are in microseconds throughout.
#pragma once

#include "SupportDefs.h"

#include <memory>

namespace kernel {
class Processors;
}

#define B_OS_NAME_LENGTH 32 // of a name's array, the final 0 included
#define B_PAGE_SIZE 4096
#define B_INFINITE_TIMEOUT (9223372036854775807LL)
#define B_MAX_CPU_COUNT 8

// --- Threads ---------------------------------------------------------------------------------
//
// spawn_thread --> suspended --resume_thread--> running <--suspend_thread/resume_thread-->
// suspended A thread ends by returning from its function, by exit_thread or by kill_thread. From
// then on every call on its id returns B_BAD_THREAD_ID, except the first wait_for_thread, which
// fetches its value. Ids are never used twice in a run. A thread that the kit did not create (the
// main one) gets an id and the rest when it first calls find_thread(NULL).

using thread_id = int32;
using team_id = int32;
using thread_func = int32 (*)(void*);

enum thread_state {
    B_THREAD_RUNNING = 1, // running or ready to run
    B_THREAD_READY,
    B_THREAD_RECEIVING,
    B_THREAD_ASLEEP, // in snooze
    B_THREAD_SUSPENDED, // suspended, or not resumed yet
    B_THREAD_WAITING, // blocked in anything else
};

// The best a priority can do here is to shift the thread's share of the processors (its nice value,
// counted from that of the program); none is ever real-time, and without the right to raise a
// priority the thread keeps the share it has.
enum {
    B_LOW_PRIORITY = 5,
    B_NORMAL_PRIORITY = 10,
    B_DISPLAY_PRIORITY = 15,
    B_URGENT_DISPLAY_PRIORITY = 20,
    B_REAL_TIME_DISPLAY_PRIORITY = 100,
    B_URGENT_PRIORITY = 110,
    B_REAL_TIME_PRIORITY = 120,
};

struct thread_info {
    thread_id thread;
    team_id team; // the process
    char name[B_OS_NAME_LENGTH]; // the first 31 bytes of the thread's name
    thread_state state;
    int32 priority; // as last asked for
    bigtime_t user_time; // processor time spent in the program
    bigtime_t kernel_time; // and in the system on its behalf
};

// Creates a suspended thread that will run function(data); its return value is the thread's. Of a
// name (any length, NULL counts as "") 31 bytes are kept. Returns the id, B_BAD_VALUE without a
// function, B_NO_MORE_THREADS or B_NO_MEMORY.
thread_id spawn_thread(thread_func function, const char* name, int32 priority, void* data);

// Lets a suspended thread run. B_BAD_THREAD_STATE if it is not suspended.
status_t resume_thread(thread_id thread);

// Stops a thread until resume_thread; suspensions do not add up. When the call returns the thread
// runs no more instruction. It keeps the locks it holds. B_BAD_THREAD_STATE if it is being killed.
status_t suspend_thread(thread_id thread);

// Ends a thread and returns when it has ended. It ends at its next kit call (see
// KillGuard.h), with its stack unwound; one not resumed yet ends without running its
// function. A thread that kills itself does not return, unless it cannot be unwound from here: then
// it ends at its next kit call. Of two threads that kill each other both end, unless both do it in
// destructors: then they wait for ever.
status_t kill_thread(thread_id thread);

// Waits until a thread has ended and fetches its value (may be NULL), B_INTERRUPTED for a killed
// one. A suspended thread is resumed first. Of a thread that has ended already the value can be
// fetched once, and only among the latest 1024 to end. B_NOT_ALLOWED for the caller itself.
status_t wait_for_thread(thread_id thread, status_t* value);

// Returns the previous priority, or B_BAD_THREAD_ID.
status_t set_thread_priority(thread_id thread, int32 priority);

// Describes a thread. B_BAD_VALUE without an info.
status_t get_thread_info(thread_id thread, thread_info* info);

// The id of the thread of this name (the oldest of several), or B_NAME_NOT_FOUND; of the caller for
// NULL.
thread_id find_thread(const char* name);

// Changes a thread's name. B_BAD_VALUE without a name.
status_t rename_thread(thread_id thread, const char* name);

// Ends the calling thread with this value, its stack unwound. Not from inside a destructor.
[[noreturn]] void exit_thread(status_t value);

// Sleeps this long; at once B_OK for 0 and less. Never shorter, except in a thread that is killed.
status_t snooze(bigtime_t microseconds);

// Microseconds since the machine started; never goes back.
bigtime_t system_time();

// --- The machine -----------------------------------------------------------------------------

// For processors younger than the list: the maker's plain x86 value. 0 for kinds that are not in
// it.
enum cpu_types {
    B_CPU_PPC_601 = 1,
    B_CPU_PPC_603 = 2,
    B_CPU_PPC_603e = 3,
    B_CPU_PPC_604 = 4,
    B_CPU_PPC_604e = 5,
    B_CPU_PPC_686 = 13,
    B_CPU_AMD_29K,
    B_CPU_X86,
    B_CPU_MC6502,
    B_CPU_Z80,
    B_CPU_ALPHA,
    B_CPU_MIPS,
    B_CPU_HPPA,
    B_CPU_M68K,
    B_CPU_ARM,
    B_CPU_SH,
    B_CPU_SPARC,

    B_CPU_INTEL_X86 = 0x1000,
    B_CPU_INTEL_PENTIUM = 0x1051,
    B_CPU_INTEL_PENTIUM75,
    B_CPU_INTEL_PENTIUM_486_OVERDRIVE,
    B_CPU_INTEL_PENTIUM_MMX,
    B_CPU_INTEL_PENTIUM_MMX_MODEL_8 = 0x1058,
    B_CPU_INTEL_PENTIUM75_486_OVERDRIVE,
    B_CPU_INTEL_PENTIUM_PRO = 0x1061,
    B_CPU_INTEL_PENTIUM_II_MODEL_3 = 0x1063,
    B_CPU_INTEL_PENTIUM_II_MODEL_5 = 0x1065,
    B_CPU_INTEL_CELERON = 0x1066,
    B_CPU_INTEL_PENTIUM_III = 0x1067,

    B_CPU_AMD_X86 = 0x1100,
    B_CPU_AMD_K5_MODEL0 = 0x1150,
    B_CPU_AMD_K5_MODEL1,
    B_CPU_AMD_K5_MODEL2,
    B_CPU_AMD_K5_MODEL3,
    B_CPU_AMD_K6_MODEL6 = 0x1156,
    B_CPU_AMD_K6_MODEL7,
    B_CPU_AMD_K6_MODEL8,
    B_CPU_AMD_K6_MODEL9,

    B_CPU_CYRIX_X86 = 0x1200,
    B_CPU_CYRIX_GXm = 0x1254,
    B_CPU_CYRIX_6x86MX = 0x1260,

    B_CPU_IDT_WINCHIP_C6 = 0x1354,
    B_CPU_IDT_WINCHIP_2 = 0x1358,

    B_CPU_RISE_X86 = 0x1400,
    B_CPU_RISE_mP6 = 0x1450,
};
using cpu_type = cpu_types;

enum platform_type {
    B_BEBOX_PLATFORM = 0,
    B_MAC_PLATFORM,
    B_AT_CLONE_PLATFORM, // every machine here
    B_ENIAC_PLATFORM,
    B_APPLE_II_PLATFORM,
    B_CRAY_PLATFORM,
    B_LISA_PLATFORM,
    B_TI_994A_PLATFORM,
    B_TIMEX_SINCLAIR_PLATFORM,
    B_ORAC_1_PLATFORM,
    B_HAL_PLATFORM,
    B_BESM_6_PLATFORM,
    B_MK_61_PLATFORM,
    B_NINTENDO_64_PLATFORM,
};

struct cpu_info {
    bigtime_t active_time; // not idle since the machine started; 0 while it is off
};

struct system_info {
    bigtime_t boot_time; // microseconds since 1970
    int32 cpu_count; // 1 to B_MAX_CPU_COUNT; the same throughout a run
    cpu_types cpu_type;
    int32 cpu_revision;
    cpu_info cpu_infos[B_MAX_CPU_COUNT]; // cpu_count of them
    int64 cpu_clock_speed; // Hz; 0: not known
    int64 bus_clock_speed; // Hz; 0: not known
    enum platform_type platform_type;
    int32 max_pages; // at most 524287: the bytes fit 31 bits
    int32 used_pages; // 0 to max_pages
    char kernel_name[256];
    char kernel_build_date[B_OS_NAME_LENGTH]; // "Jan 31 2024", or "" where the kernel does not tell
    char kernel_build_time[B_OS_NAME_LENGTH]; // "23:59:59", likewise
};

// Describes the machine. B_BAD_VALUE without an info. What the system does not tell is 0 or "".
status_t get_system_info(system_info* info);

// Switches processor cpu (0 to cpu_count - 1) off (state 0) or on (1), for the whole machine where
// the program may do so, else for itself, with a line on standard error. What is off comes on again
// when the program ends, however it ends; see also MachineRun.h. B_OK also if it was so already;
// B_BAD_VALUE for another number or state; B_NOT_ALLOWED for switching off processor 0; B_ERROR,
// with a line on standard error, if the system refused.
status_t _kset_cpu_state_(int32 cpu, int32 state);

// As long as one lives or one of the processors is off, every thread of the program, also one that
// starts later, may use exactly those of the processors 0 to cpu_count - 1 that are on: the machine
// may have more than the platform counts, and what is measured with n processors must not find time
// on those. Afterwards each thread has what it had before. They may overlap. What the system
// refuses is told on standard error.
class ProcessorConfinement {
public:
    ProcessorConfinement();
    ~ProcessorConfinement();
    ProcessorConfinement(const ProcessorConfinement&) = delete;
    ProcessorConfinement& operator=(const ProcessorConfinement&) = delete;

private:
    const std::shared_ptr<kernel::Processors> fProcessors;
};
