#include "drawing/PictureRecord.h"

#include "Bitmap.h"
#include "drawing/DrawContext.h"

#include <algorithm>
#include <cmath>

void PictureRecord::AddShape(const DrawState& state, DrawnShape shape, pattern p)
{
    const auto [a, b, c] = shape.points;
    BRect extent(std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y));
    if (shape.form == DrawnShape::Form::kTriangle)
        extent = extent | BRect(c, c);
    if (!extent.Intersects(fBounds))
        return;
    shape.color = p == B_SOLID_LOW ? state.lowColor : state.highColor;
    shape.penSize = state.penSize;
    fSteps.emplace_back(shape);
}

void PictureRecord::AddString(const DrawState& state, const char* text, BPoint pen)
{
    // As the screen's letters are, by which the program has placed what stands beside it.
    const float width = state.font.StringWidth(text);
    font_height height;
    state.font.GetHeight(&height);
    if (BRect(pen.x, pen.y - height.ascent, pen.x + width, pen.y + height.descent)
            .Intersects(fBounds))
        fSteps.emplace_back(DrawnString { text, pen, width, state.highColor, state.font });
}

void PictureRecord::AddBitmap(
    const DrawState& state, const BBitmap& bitmap, BRect source, BRect destination)
{
    const BRect part = source & bitmap.Bounds();
    if (!bitmap.IsValid() || !part.IsValid() || !destination.Intersects(fBounds))
        return;
    const auto left = static_cast<int32>(std::lround(part.left));
    const auto top = static_cast<int32>(std::lround(part.top));
    DrawnBitmap drawn { static_cast<int32>(std::lround(part.right)) - left + 1,
        static_cast<int32>(std::lround(part.bottom)) - top + 1, {}, destination };
    // A copy: the bitmap may change or go before the picture is written.
    for (int32 y = 0; y < drawn.height; y++) {
        for (int32 x = 0; x < drawn.width; x++) {
            rgb_color color = bitmap.ColorAt(left + x, top + y);
            if (state.mode != B_OP_OVER)
                color.alpha = 255;
            drawn.pixels.push_back(color);
        }
    }
    fSteps.emplace_back(std::move(drawn));
}
