// Tables of cases that are too long for a test's text, as files beside it. A line that begins with
// "#" is for the reader.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

// A case a line, its fields between " | ". A field "" is empty; "\n", "\t", "\r", "\\" and "\x41"
// stand for what they do in C.
using Row = std::vector<std::string>;

inline Row RowOf(const std::string& line)
{
    const std::string names = "ntr\\", meanings = "\n\t\r\\";
    Row fields(1);
    for (size_t i = 0; i < line.size(); i++) {
        if (line.compare(i, 3, " | ") == 0) {
            fields.emplace_back();
            i += 2;
        } else if (line[i] != '\\') {
            fields.back() += line[i];
        } else if (line.at(++i) == 'x') {
            fields.back() += static_cast<char>(std::stoi(line.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            fields.back() += meanings.at(names.find(line[i]));
        }
    }
    for (std::string& field : fields)
        field = field == "\"\"" ? "" : field;
    return fields;
}

// The cases of a file below tests/, each of so many fields at least.
inline std::vector<Row> RowsOf(const std::string& file, size_t fields)
{
    std::vector<Row> rows;
    std::ifstream lines(TARVEX_TESTS "/" + file);
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        rows.push_back(RowOf(line));
        EXPECT_GE(rows.back().size(), fields) << line;
        rows.back().resize(std::max(fields, rows.back().size()));
    }
    EXPECT_FALSE(rows.empty()) << file;
    return rows;
}

// A case that is given a line, and told what stands below it behind four blanks.
struct TextRow {
    std::string given, told;
};

// The cases of a file below tests/.
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
