// What a user does and comes to see, as files beside the tests: a step a line, its word and what it
// is about between " | ", as in Rows.h. Words of the test stand for others.
//     key | ctrl+t | Return    one after the other
//     type | TEXT
//     click | VIEW             in whichever window
//     menu | Benchmark | All
//     active | TITLE           it comes to have the keyboard
//     shows | VIEW | TEXT
//     lines | VIEW | LINE ...  it comes to show these
//     tree | TITLE | ui/Results
//     gone | VIEW
#pragma once

#include "tests/support/Rows.h"
#include "tests/support/ScreenDriver.h"

#include <numeric>
#include <regex>

using Steps = std::map<std::string, std::function<void(const Row&)>>;

// The fields from one on, as lines.
inline std::string Joined(const Row& row, size_t from)
{
    return std::accumulate(row.begin() + static_cast<long>(from), row.end(), std::string(),
        [](const std::string& text, const std::string& line) { return text + line + "\n"; });
}

// Follows the steps of a file below tests/ up to one that fails; beside those above there are the
// test's own, which get a whole line.
inline void Follow(
    const std::string& file, Steps steps = {}, const std::map<std::string, std::string>& words = {})
{
    const auto press = [](const Row& row) {
        std::for_each(row.begin() + 1, row.end(), screen::Key);
    };
    steps.merge(Steps {
        { "key", press },
        { "type", [](const Row& row) { screen::Type(row[1]); } },
        { "click", [](const Row& row) { EXPECT_TRUE(screen::Click(row[1])); } },
        { "menu",
            [](const Row& row) {
                EXPECT_TRUE(screen::ClickMenu({ row.begin() + 1, row.end() }));
            } },
        { "active", [](const Row& row) { EXPECT_TRUE(screen::BecomesActive(row[1])); } },
        { "shows", [](const Row& row) { EXPECT_TRUE(screen::Shows(row[1], row.at(2))); } },
        { "tree",
            [&](const Row& row) { EXPECT_TRUE(screen::ShowsTree(row[1], row.at(2), words)); } },
        { "lines",
            [](const Row& row) {
                EXPECT_SOON(screen::Lines(row[1]) == Joined(row, 2)) << screen::Lines(row[1]);
            } },
        { "gone", [](const Row& row) { EXPECT_SOON(!screen::Find(row[1]).exists); } },
    });
    for (Row row : RowsOf(file, 2)) {
        SCOPED_TRACE(testing::PrintToString(row));
        for (std::string& field : row)
            for (const auto& [word, meaning] : words)
                field = std::regex_replace(field, std::regex(word), meaning);
        ASSERT_EQ(steps.count(row[0]), 1u);
        steps.at(row[0])(row);
        if (testing::Test::HasFailure())
            return;
    }
}
