#include "server/DrawnText.h"

#include <algorithm>

namespace {

thread_local DrawnText* tNoting = nullptr;

void Append(DrawnLine& line, const std::string& piece)
{
    line.text += line.text.empty() || piece.empty() ? piece : ", " + piece;
}

} // namespace

DrawnText::DrawnText(BPoint origin) : fOrigin(origin)
{
    tNoting = this;
}

DrawnText::~DrawnText()
{
    tNoting = nullptr;
}

DrawnText* DrawnText::Noting()
{
    return tNoting;
}

void DrawnText::BeginRow(DrawnLine row)
{
    row.isRow = true;
    row.frame.OffsetBy(-fOrigin.x, -fOrigin.y);
    fPieces.push_back(std::move(row));
}

void DrawnText::Add(const char* string, BRect frame)
{
    if (!fPieces.empty() && fPieces.back().isRow)
        return Append(fPieces.back(), string);
    fPieces.push_back({ string, frame.OffsetByCopy(-fOrigin.x, -fOrigin.y) });
}

std::vector<DrawnLine> DrawnText::Lines() const
{
    const auto isFirst = [this](const DrawnLine& piece) {
        return piece.isRow || piece.frame.bottom == fPieces.front().frame.bottom;
    };
    if (std::all_of(fPieces.begin(), fPieces.end(), isFirst))
        return fPieces;
    std::vector<DrawnLine> lines;
    for (const DrawnLine& piece : fPieces) {
        const auto line = std::find_if(lines.begin(), lines.end(),
            [&](const DrawnLine& known) { return known.frame.bottom == piece.frame.bottom; });
        if (line == lines.end()) {
            lines.push_back(piece);
        } else {
            Append(*line, piece.text);
            line->frame = line->frame | piece.frame;
        }
    }
    return lines;
}
