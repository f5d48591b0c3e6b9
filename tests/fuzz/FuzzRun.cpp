// The bytes are the JSON of a run.
#include "results/RunFile.h"
#include "tests/fuzz/Require.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const auto read = RunFromJson(std::string(reinterpret_cast<const char*>(data), size));
    if (const auto* why = std::get_if<std::string>(&read)) {
        Require(!why->empty() && why->find('\n') == std::string::npos, "one line says why not");
        return 0;
    }
    const auto& run = std::get<RunRecord>(read);
    const std::string json = RunAsJson(run);
    const auto again = RunFromJson(json);
    Require(again.index() == 0, "what was written is read");
    Require(RunAsJson(std::get<RunRecord>(again)) == json, "nothing changes on the way");
    Require(RunAsTable(run, ',').starts_with("label,"), "tables begin with their columns");
    return 0;
}
