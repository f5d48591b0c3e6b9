#pragma once

#include "results/RunFile.h"
#include "tests/support/TempFolder.h"

// A run's record with a value in every field that a record has.
inline RunRecord SampleRun()
{
    return std::get<RunRecord>(RunFromJson(ReadFile(TARVEX_TESTS "/fuzz/corpus/run/full")));
}
