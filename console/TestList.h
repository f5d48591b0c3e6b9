// What the tests are, for people who choose some or read their figures.
#pragma once

#include <optional>
#include <string>

// A paragraph for each test, in the order of the catalogue, under the name of its group: unit,
// direction, what it measures and what not.
[[nodiscard]] std::string TestList();
// The paragraph of one test, by its name or id; nothing for an unknown one.
[[nodiscard]] std::optional<std::string> ExplainTest(const std::string& test);
