#include "results/RunFile.h"

#include <gtest/gtest.h>

#include "tests/results/SampleRun.h"

namespace {

// The record's, or why there is none.
std::string Again(const std::string& json)
{
    const auto read = RunFromJson(json);
    const auto* record = std::get_if<RunRecord>(&read);
    return record ? RunAsJson(*record) : std::get<std::string>(read);
}

TEST(RunFile, WhatWasWrittenIsRead)
{
    const std::string full = RunAsJson(SampleRun());
    EXPECT_EQ(Again(full), full);
    const std::string empty = RunAsJson({});
    EXPECT_EQ(Again(empty), empty);
}

} // namespace
