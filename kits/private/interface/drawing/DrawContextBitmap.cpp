// A drawing context's bitmaps, and what its window shows.
#include "drawing/DrawContext.h"

#include "Bitmap.h"
#include "drawing/DrawState.h"
#include "drawing/XcbReply.h"

#include <algorithm>
#include <vector>

namespace {

// A bitmap, part of it stretched over an area of pixels.
class StretchedBitmap {
public:
    StretchedBitmap(const BBitmap& bitmap, BRect source, const PixelRect& area)
        : fBitmap(bitmap), fSource(source), fArea(area)
    {
    }
    rgb_color ColorAt(int32 x, int32 y) const
    {
        return fBitmap.ColorAt(Sample(x - fArea.left, fArea.Width(), fSource.left, fSource.right,
                                   fBitmap.Bounds().right),
            Sample(y - fArea.top, fArea.Height(), fSource.top, fSource.bottom,
                fBitmap.Bounds().bottom));
    }

private:
    // The column or row of the source under the middle of a pixel.
    static int32 Sample(int32 pixel, int32 pixels, float first, float last, float end)
    {
        const double position = first + (pixel + 0.5) / pixels * (last - first + 1);
        return static_cast<int32>(std::clamp<double>(position, 0, end));
    }

    const BBitmap& fBitmap;
    const BRect fSource;
    const PixelRect fArea;
};

} // namespace

void DrawContext::DrawBitmap(
    const DrawState& state, const BBitmap& bitmap, BRect source, BRect destination)
{
    const PixelRect area = Area(destination);
    const PixelRect visible = area & Visible();
    if (visible.IsEmpty() || !bitmap.IsValid())
        return;
    const StretchedBitmap picture(bitmap, source, area);
    const int32 width = visible.Width();
    const int32 rowBytes = fFormat.BytesPerRow(width);
    std::vector<uint8> rows(static_cast<size_t>(rowBytes) * visible.Height());
    std::vector<bool> opaque(static_cast<size_t>(width) * visible.Height(), true);
    bool allOpaque = true;
    for (int32 y = 0; y < visible.Height(); y++) {
        for (int32 x = 0; x < width; x++) {
            const rgb_color color = picture.ColorAt(visible.left + x, visible.top + y);
            fFormat.Store(&rows[y * rowBytes], x, fFormat.PixelFor(color));
            if (state.mode == B_OP_OVER && color.alpha == 0)
                allOpaque = opaque[y * width + x] = false;
        }
    }
    if (allOpaque)
        PutImage(rows, visible);
    else
        PutOpaqueRuns(rows, opaque, visible);
}

// In as many requests as the server's limit on their length makes necessary.
void DrawContext::PutImage(const std::vector<uint8>& rows, const PixelRect& place)
{
    constexpr uint32 kHeaderBytes = 32;
    const uint32 rowBytes = fFormat.BytesPerRow(place.Width());
    const uint32 limit = xcb_get_maximum_request_length(fXcb) * 4 - kHeaderBytes;
    const int32 atOnce = std::max<int32>(limit / rowBytes, 1);
    for (int32 y = place.top; y < place.bottom; y += atOnce) {
        const int32 height = std::min(atOnce, place.bottom - y);
        xcb_put_image(fXcb, XCB_IMAGE_FORMAT_Z_PIXMAP, fTarget, fGc, place.Width(), height,
            static_cast<int16>(place.left), static_cast<int16>(y), 0, fFormat.Depth(),
            rowBytes * height, &rows[(y - place.top) * rowBytes]);
    }
}

void DrawContext::PutOpaqueRuns(
    const std::vector<uint8>& rows, const std::vector<bool>& opaque, const PixelRect& place)
{
    const int32 width = place.Width();
    const int32 rowBytes = fFormat.BytesPerRow(width);
    for (int32 y = 0; y < place.Height(); y++) {
        const auto begin = opaque.begin() + y * width;
        const auto end = begin + width;
        for (auto first = std::find(begin, end, true); first != end;) {
            const auto last = std::find(first, end, false);
            const auto x = static_cast<int32>(first - begin);
            const auto length = static_cast<int32>(last - first);
            std::vector<uint8> run(fFormat.BytesPerRow(length));
            const auto from = rows.begin() + y * rowBytes + fFormat.BytesOf(x);
            std::copy_n(from, fFormat.BytesOf(length), run.begin());
            PutImage(
                run, { place.left + x, place.top + y, place.left + x + length, place.top + y + 1 });
            first = std::find(last, end, true);
        }
    }
}

std::optional<bool> DrawContext::ShowsOnly(rgb_color color) const
{
    const PixelRect area = Visible();
    if (area.IsEmpty())
        return {};
    const auto image = MakeReply(xcb_get_image_reply(fXcb,
        xcb_get_image(fXcb, XCB_IMAGE_FORMAT_Z_PIXMAP, fWindow, static_cast<int16>(area.left),
            static_cast<int16>(area.top), area.Width(), area.Height(), ~0u),
        nullptr));
    const int32 rowBytes = fFormat.BytesPerRow(area.Width());
    if (image == nullptr || image->depth != fFormat.Depth()
        || xcb_get_image_data_length(image.get()) < rowBytes * area.Height())
        return {};
    const uint8* pixels = xcb_get_image_data(image.get());
    const uint32 pixel = fFormat.PixelFor(color);
    for (int32 y = 0; y < area.Height(); y++) {
        for (int32 x = 0; x < area.Width(); x++) {
            if (!fFormat.Shows(pixels + y * rowBytes, x, pixel))
                return false;
        }
    }
    return true;
}
