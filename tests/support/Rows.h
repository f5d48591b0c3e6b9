// Tables that are too long for a test's text, as files beside it.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

struct TextRow {
    std::string given, told;
};

// Of a file below tests/: each line that begins at the edge, and below it, behind four blanks, what
// is told of it. Those that begin with a # are for the reader.
inline std::vector<TextRow> ReadRows(const std::string& name)
{
    std::vector<TextRow> rows;
    std::ifstream file(TARVEX_TESTS "/" + name);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("    ") && !rows.empty())
            rows.back().told += (rows.back().told.empty() ? "" : "\n") + line.substr(4);
        else if (!line.empty() && !line.starts_with("#"))
            rows.push_back({ line, "" });
    }
    EXPECT_FALSE(rows.empty()) << name;
    return rows;
}
