// What a view draws with: kept whether it is in a window or not.
#pragma once

#include "drawing/DrawContext.h"
#include "Font.h"
#include "GraphicsDefs.h"
#include "Rect.h"

#include <memory>

class PictureRecord;

struct DrawState {
    rgb_color highColor = black_color;
    rgb_color lowColor = white_color;
    rgb_color viewColor = white_color;
    drawing_mode mode = B_OP_COPY;
    float penSize = 1;
    BFont font;
    std::unique_ptr<DrawContext> context; // made when the view first draws in a shown window
    PictureRecord* record = nullptr; // between BeginPicture() and EndPicture()
    BRect updateRect; // valid between BeginUpdate() and EndUpdate()
};
