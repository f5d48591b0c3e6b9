// What a user does and comes to see, as files beside the tests: a step a line, its word and what it
// is about between " | ", as in Rows.h. Words of the test stand for others.
//     key | ctrl+t | Return    one after the other
//     type | TEXT
//     click | VIEW             in whichever window
//     menu | Benchmark | All
//     active | TITLE           it comes to have the keyboard
//     shows | VIEW | TEXT
//     tree | TITLE | ui/Results
//     gone | VIEW
#pragma once

#include "tests/support/Rows.h"
#include "tests/support/ScreenDriver.h"

using Steps = std::map<std::string, std::function<void(const Row&)>>;

// Follows the steps of a file below tests/ up to one that fails; beside those above there are the
// test's own, which get a whole line.
inline void Follow(
    const std::string& file, Steps steps = {}, const std::map<std::string, std::string>& words = {})
{
    const auto all = [](const Row& row) { return Row(row.begin() + 1, row.end()); };
    steps.merge(Steps {
        { "key",
            [=](const Row& row) {
                for (const std::string& key : all(row))
                    screen::Key(key);
            } },
        { "type", [](const Row& row) { screen::Type(row[1]); } },
        { "click", [](const Row& row) { EXPECT_TRUE(screen::Click(row[1])); } },
        { "menu", [=](const Row& row) { EXPECT_TRUE(screen::ClickMenu(all(row))); } },
        { "active", [](const Row& row) { EXPECT_TRUE(screen::BecomesActive(row[1])); } },
        { "shows", [](const Row& row) { EXPECT_TRUE(screen::Shows(row[1], row.at(2))); } },
        { "tree", [](const Row& row) { EXPECT_TRUE(screen::ShowsTree(row[1], row.at(2))); } },
        { "gone", [](const Row& row) { EXPECT_SOON(!screen::Find(row[1]).exists); } },
    });
    for (Row row : RowsOf(file, 2)) {
        SCOPED_TRACE(testing::PrintToString(row));
        for (std::string& field : row) {
            for (const auto& [word, meaning] : words) {
                const size_t place = field.find(word);
                if (place != field.npos)
                    field.replace(place, word.size(), meaning);
            }
        }
        ASSERT_EQ(steps.count(row[0]), 1u);
        steps.at(row[0])(row);
        if (testing::Test::HasFailure())
            return;
    }
}
