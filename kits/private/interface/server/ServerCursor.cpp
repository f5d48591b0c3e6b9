#include "server/ServerCursor.h"

#include "AppDefs.h"
#include "ApplicationState.h"
#include "server/DisplayServer.h"

#include <QBitmap>
#include <QCursor>
#include <QGuiApplication>

#include <cstring>

namespace {

constexpr int kSize = 16;
constexpr int kImageOffset = 4; // after size, depth and hot spot
constexpr int kMaskOffset = kImageOffset + kSize * 2;

QBitmap BitmapOf(const uint8* rows)
{
    return QBitmap::fromData(QSize(kSize, kSize), rows, QImage::Format_Mono);
}

// Image bits outside the mask would invert the screen on some displays.
QBitmap MaskedImage(const CursorState& state)
{
    uint8 rows[kMaskOffset - kImageOffset];
    for (size_t i = 0; i < sizeof rows; i++)
        rows[i] = state.image[kImageOffset + i] & state.image[kMaskOffset + i];
    return BitmapOf(rows);
}

QCursor CursorOf(const CursorState& state)
{
    return QCursor(
        MaskedImage(state), BitmapOf(state.image + kMaskOffset), state.image[3], state.image[2]);
}

bool IsNormalPointer(const CursorState& state)
{
    return !state.isSet || memcmp(state.image, B_HAND_CURSOR, sizeof state.image) == 0;
}

} // namespace

void CursorChanged()
{
    display::Post([] {
        const CursorState state = CurrentCursor();
        if (QGuiApplication::overrideCursor())
            QGuiApplication::restoreOverrideCursor();
        if (!IsNormalPointer(state))
            QGuiApplication::setOverrideCursor(CursorOf(state));
    });
}
