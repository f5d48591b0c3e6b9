// What a view has drawn into a picture, call by call, each with the state of its moment.
#pragma once

#include "Font.h"
#include "GraphicsDefs.h"
#include "Rect.h"

#include <array>
#include <string>
#include <variant>
#include <vector>

class BBitmap;
struct DrawState;

struct DrawnShape {
    enum class Form { kLine, kBox, kEllipse, kTriangle };
    enum class Ink { kStroke, kFill };

    Form form;
    Ink ink;
    std::array<BPoint, 3> points; // of a box or an ellipse: left top and right bottom
    rgb_color color {};
    float penSize = 1;
};

struct DrawnString {
    std::string text;
    BPoint pen;
    float width; // as BFont measures it
    rgb_color color;
    BFont font;
};

struct DrawnBitmap {
    int32 width; // in pixels
    int32 height;
    std::vector<rgb_color> pixels; // row by row; alpha 0: nothing is drawn there
    BRect destination;
};

class PictureRecord {
public:
    // What lies wholly outside bounds will be left out.
    void Begin(BRect bounds) { fBounds = bounds; }

    // A pattern other than the two solid ones is taken as the high colour.
    void AddShape(const DrawState& state, DrawnShape shape, pattern p);
    void AddString(const DrawState& state, const char* text, BPoint pen);
    void AddBitmap(const DrawState& state, const BBitmap& bitmap, BRect source, BRect destination);

    using Step = std::variant<DrawnShape, DrawnString, DrawnBitmap>;
    const std::vector<Step>& Steps() const { return fSteps; }

private:
    BRect fBounds;
    std::vector<Step> fSteps;
};
