// Tables as lines of text, for people.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

// Columns two blanks apart, each as wide as the longest of its cells, by characters of UTF-8.
class LibTextColumns {
public:
    // A sign a column: '<' where its cells stand left, '>' where they stand right as numbers do.
    explicit LibTextColumns(std::string_view sides);

    // Makes room for a row, which has a cell a column.
    void Widen(std::span<const std::string> row);
    // The row as a line, without blanks at its end: beyond the edge of a narrow terminal they would
    // begin a line of their own.
    [[nodiscard]] std::string Line(std::span<const std::string> row) const;

private:
    std::string fSides;
    std::vector<size_t> fWidths;
};

// The rows as lines, each in columns that have room for all.
[[nodiscard]] std::string LibColumnsText(
    LibTextColumns columns, const std::vector<std::vector<std::string>>& rows);
