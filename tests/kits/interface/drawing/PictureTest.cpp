// What a view draws into a picture against what it draws on the screen.
#include "Picture.h"

#include "Bitmap.h"
#include "Canvas.h"
#include "server/DisplayServer.h"

#include <QImage>

namespace {

using PictureTest = CanvasTest;

// draw's drawing as a PNG, whose pixels are half as large: one of the four in each of the canvas's.
std::string Written(const std::function<void(BView& view)>& draw, int corner)
{
    const TempFolder folder;
    BPicture picture;
    BView view(BRect(0, 0, 39, 29), "picture", B_FOLLOW_NONE, B_WILL_DRAW);
    view.BeginPicture(&picture);
    draw(view);
    view.EndPicture();
    view.FillRect(view.Bounds()); // no more of it
    const std::string path = folder / "a.PNG";
    EXPECT_EQ(WritePicture(path.c_str(), picture, view.Bounds(), "A picture"), "");
    const QImage image(QString::fromStdString(path));
    EXPECT_EQ(image.size(), QSize(80, 60));
    std::vector<uint32> pixels;
    for (int i = 0; i < 40 * 30; i++)
        pixels.push_back(image.pixel(i % 40 * 2 + corner % 2, i / 40 * 2 + corner / 2) & 0xffffff);
    return Letters(pixels, 40);
}

} // namespace

// Each pixel of the screen is a square of the file.
TEST_F(PictureTest, ShowsUprightShapesAndBitmapsAsTheScreenDoes)
{
    BBitmap bitmap(BRect(0, 0, 1, 1), B_CMAP8);
    const uint8 pixels[] = { 0, B_TRANSPARENT_8_BIT, 27, 63 };
    bitmap.SetBits(pixels, 2, 0, B_CMAP8);
    bitmap.SetBits(pixels + 2, 2, bitmap.BytesPerRow(), B_CMAP8);
    const auto draw = [&bitmap](BView& v) {
        v.FillRect(BRect(12, 8, 3, 2)); // corners swapped
        v.FillRect(BRect(14, 2, 14, 2));
        v.SetHighColor({ 255, 0, 0 });
        v.StrokeRect(BRect(24, 2, 30, 8));
        v.StrokeRect(BRect(-5, 15, 39, 35)); // over the edges
        v.StrokeLine(BPoint(1, 12), BPoint(1, 4));
        v.StrokeLine(BPoint(20, 12), BPoint(30, 12));
        v.SetPenSize(3);
        v.StrokeLine(BPoint(10, 20), BPoint(20, 20));
        v.SetLowColor({ 0, 0, 255 });
        v.FillRect(BRect(32, 2, 37, 9), B_SOLID_LOW);
        v.DrawBitmap(&bitmap, BRect(2, 20, 5, 23));
        v.SetDrawingMode(B_OP_OVER);
        v.DrawBitmap(&bitmap, BRect(32, 2, 35, 5));
    };
    const std::string shown = Drawn(draw);
    for (const int corner : { 0, 1, 2, 3 })
        EXPECT_EQ(Written(draw, corner), shown) << corner;
}
