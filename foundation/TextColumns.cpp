#include "foundation/TextColumns.h"

#include <algorithm>

namespace {

// Of UTF-8 the bytes that begin a character.
size_t WidthOf(const std::string& text)
{
    return static_cast<size_t>(std::count_if(text.begin(), text.end(),
        [](char c) { return (static_cast<unsigned char>(c) & 0xc0) != 0x80; }));
}

} // namespace

LibTextColumns::LibTextColumns(std::string_view sides) : fSides(sides), fWidths(sides.size(), 0) { }

void LibTextColumns::Widen(std::span<const std::string> row)
{
    for (size_t i = 0; i < row.size(); i++)
        fWidths[i] = std::max(fWidths[i], WidthOf(row[i]));
}

std::string LibTextColumns::Line(std::span<const std::string> row) const
{
    std::string line;
    for (size_t i = 0; i < row.size(); i++) {
        const std::string blanks(fWidths[i] - std::min(fWidths[i], WidthOf(row[i])), ' ');
        line += (i > 0 ? "  " : "") + (fSides[i] == '<' ? row[i] + blanks : blanks + row[i]);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

std::string LibColumnsText(
    LibTextColumns columns, const std::vector<std::vector<std::string>>& rows)
{
    for (const std::vector<std::string>& row : rows)
        columns.Widen(row);
    std::string text;
    for (const std::vector<std::string>& row : rows)
        text += columns.Line(row);
    return text;
}
