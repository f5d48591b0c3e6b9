// Which key of the JSON holds which field of a run's record, and what it may be: the one table from
// which records are written and read. What is worked out from these fields is in RunFile.cpp. A
// field added here is in docs/run-format.md and docs/run.schema.json too.
#pragma once

#include "results/RunRecord.h"

#include <limits>
#include <type_traits>

namespace runfile {

struct Limits {
    double lowest = 0;
    double highest = 1e18;
};
inline constexpr Limits kProcessors { 1, 65536 }; // how many
inline constexpr Limits kNumber { 0, 65535 }; // of a processor
inline constexpr Limits kSigned { -65536, 65535 }; // some systems number from -1
inline constexpr Limits kDegrees { -273, 1000 };
inline constexpr Limits kAboveZero { 1e-18, 1e18 };

// Io is the writer, or the reader, for which the fields are not constant. Both have
//
//     Field(key, field, limits): null stands for an empty text and an empty optional;
//     FieldOr(key, field, unknown, limits): null stands for that number, and so does no such key,
//         as in files of the versions before it.
template <class Io, class T>
using Of = std::conditional_t<Io::kReads, T, const T>;

template <class Io>
void Fields(Io& io, Of<Io, BuildDetails>& build)
{
    io.Field("version", build.version);
    io.Field("compiler", build.compiler);
    io.Field("flags", build.flags);
}

template <class Io>
void Fields(Io& io, Of<Io, RunPlan>& plan)
{
    io.Field("groups", plan.groups);
    io.Field("counts", plan.counts, kProcessors);
    io.Field("repeats", plan.repeats, { 1, kMostRepeats });
    io.Field("until_percent", plan.untilPercent, kAboveZero);
}

template <class Io>
void Fields(Io& io, Of<Io, RunWarning>& warning)
{
    io.Field("id", warning.id);
    io.Field("text", warning.text);
}

template <class Io>
void Fields(Io& io, Of<Io, ProcessorDetails>& processor)
{
    io.Field("number", processor.number, kNumber);
    io.Field("core", processor.core, kSigned);
    io.Field("package", processor.package, kSigned);
    io.Field("siblings", processor.siblings, kNumber);
    io.Field("kind", processor.kind);
    io.Field("lowest_hz", processor.lowestClock);
    io.Field("highest_hz", processor.highestClock);
    io.Field("lower_limit_hz", processor.lowerLimit);
    io.Field("upper_limit_hz", processor.upperLimit);
    io.Field("clock_driver", processor.clockDriver);
    io.Field("governor", processor.governor);
    io.Field("energy_preference", processor.energyPreference);
}

template <class Io>
void Fields(Io& io, Of<Io, MachineDetails>& details)
{
    io.Field("kernel_release", details.kernelRelease);
    io.Field("kernel_version", details.kernelVersion);
    io.Field("distribution", details.distribution);
    io.Field("processor_model", details.processorModel);
    io.Field("memory_bytes", details.memory);
    io.Field("virtual_machine", details.virtualMachine);
    io.Field("container", details.container);
    io.Field("processors", details.processors);
}

template <class Io>
void Fields(Io& io, Of<Io, ProcessorTimes>& times)
{
    io.Field("number", times.number, kNumber);
    io.Field("total_ticks", times.total);
    io.Field("busy_ticks", times.busy);
    io.Field("stolen_ticks", times.stolen);
    io.Field("core_throttles", times.coreThrottles);
    io.Field("package_throttles", times.packageThrottles);
}

template <class Io>
void Fields(Io& io, Of<Io, EnergyCounter>& counter)
{
    io.Field("name", counter.name);
    io.Field("microjoules", counter.microjoules);
    io.FieldOr("range_microjoules", counter.range, 0);
}

template <class Io>
void Fields(Io& io, Of<Io, MachineState>& state)
{
    io.Field("load_1", state.load1);
    io.Field("load_5", state.load5);
    io.Field("load_15", state.load15);
    io.Field("temperature_celsius", state.temperature, kDegrees);
    io.Field("on_battery", state.onBattery);
    io.Field("battery_percent", state.batteryPercent);
    io.Field("mains_online", state.mainsOnline);
    io.Field("asleep_microseconds", state.asleep);
    io.Field("sleeps", state.sleeps);
    io.Field("energy", state.energy);
    io.Field("processors", state.processors);
}

template <class Io>
void Fields(Io& io, Of<Io, DisplayDetails>& display)
{
    io.Field("vendor", display.vendor);
    io.Field("extensions", display.extensions);
    io.Field("outputs", display.outputs);
}

template <class Io>
void Fields(Io& io, Of<Io, FileSystemDetails>& folder)
{
    io.Field("file_system", folder.type);
    io.Field("in_memory", folder.isInMemory);
}

template <class Io>
void Fields(Io& io, Of<Io, PassRecord>& pass)
{
    io.Field("processors", pass.processors, kProcessors);
    io.Field("used", pass.used, kNumber);
    io.Field("off", pass.off, kNumber);
    io.Field("before", pass.before);
    io.Field("after", pass.after);
}

template <class Io>
void Fields(Io& io, Of<Io, Span>& span)
{
    io.Field("seconds", span.seconds);
    io.Field("work", span.work);
    io.FieldOr("probe_before_seconds", span.probeBefore.core, 0);
    io.FieldOr("probe_after_seconds", span.probeAfter.core, 0);
    io.FieldOr("clock_before_seconds", span.probeBefore.clock, 0);
    io.FieldOr("clock_after_seconds", span.probeAfter.clock, 0);
    io.Field("waited_seconds", span.waited);
    io.Field("throttled", span.isThrottled);
    io.Field("joules", span.joules);
}

template <class Io>
void Fields(Io& io, Of<Io, Series>& series)
{
    io.Field("test", series.test);
    io.Field("processors", series.processors, kProcessors);
    io.Field("undone", series.undone);
    io.Field("spans", series.spans);
}

template <class Io>
void Fields(Io& io, Of<Io, RunRecord>& record)
{
    io.Field("label", record.label);
    io.Field("started", record.started);
    io.Field("machine", record.machine);
    io.Field("build", record.build);
    io.Field("plan", record.plan);
    io.Field("warnings", record.warnings);
    io.Field("system", record.details);
    io.Field("display", record.display);
    io.Field("display_size", record.displaySize);
    io.Field("temporary_folder", record.temporaryFolder);
    io.FieldOr("best_probe_seconds", record.bestProbe.core, kUnknownBest.core, kAboveZero);
    io.FieldOr("best_clock_seconds", record.bestProbe.clock, kUnknownBest.clock, kAboveZero);
    io.Field("passes", record.passes);
    io.Field("series", record.series);
}

} // namespace runfile
