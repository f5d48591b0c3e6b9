// Shapes on the screen, and in the files of pictures, against pictures of what they should be.
#include "Bitmap.h"
#include "Canvas.h"
#include "ListItem.h"
#include "Picture.h"

#include <QImage>

#include <fstream>
#include <sstream>

namespace {

// Red, transparent, blue; grey, red, transparent.
const BBitmap& Bitmap()
{
    static BBitmap sBitmap(BRect(0, 0, 2, 1), B_CMAP8);
    const uint8 bits[] = { 212, 255, 37, 0, 16, 212, 255, 0 };
    sBitmap.SetBits(bits, sizeof(bits), 0, B_CMAP8);
    return sBitmap;
}

void DrawRow(BView& v, BPoint corner, const std::string& how)
{
    BStringItem item("-=");
    BFont font;
    v.GetFont(&font);
    item.Update(&v, &font);
    item.SetEnabled(how != "disabled");
    if (how.starts_with("selected"))
        item.Select();
    item.DrawItem(&v, BRect(corner, corner + BPoint(item.Width() - 1, item.Height())),
        how.ends_with("complete"));
}

// A command, numbers, a pattern; what is behind a "-" is for the reader.
void DrawLine(BView& v, const std::string& line)
{
    static const std::map<std::string, pattern> sPatterns = { { "", B_SOLID_HIGH },
        { "low", B_SOLID_LOW }, { "mixed", B_MIXED_COLORS },
        { "corners", { { 0x80, 0, 0, 0, 0, 0, 0, 0x01 } } } };
    std::istringstream words(line);
    std::string what, name;
    std::vector<float> n;
    words >> what;
    for (std::string word; words >> word && word != "-";)
        isalpha(word[0]) ? name = word : (n.push_back(std::stof(word)), "");
    n.resize(8);
    const pattern ink = sPatterns.contains(name) ? sPatterns.at(name) : B_SOLID_HIGH;
    escapement_delta delta { 2, 5 };
    const BRect rect(n[0], n[1], n[2], n[3]);
    const BPoint a(n[0], n[1]), b(n[2], n[3]), c(n[4], n[5]);
    const auto color = [&] {
        return rgb_color { static_cast<uint8>(n[0]), static_cast<uint8>(n[1]),
            static_cast<uint8>(n[2]), static_cast<uint8>(n[3]) };
    };
    const std::map<std::string, std::function<void()>> commands = {
        { "fill", [&] { v.FillRect(rect, ink); } },
        { "stroke", [&] { v.StrokeRect(rect, ink); } },
        { "line", [&] { v.StrokeLine(a, b, ink); } },
        { "ring", [&] { v.StrokeEllipse(rect, ink); } },
        { "disc", [&] { v.FillEllipse(rect, ink); } },
        { "outline", [&] { v.StrokeTriangle(a, b, c, ink); } },
        { "triangle", [&] { v.FillTriangle(a, b, c, ink); } },
        { "bitmap", [&] { v.DrawBitmap(&Bitmap(), rect); } },
        { "part", [&] { v.DrawBitmap(&Bitmap(), rect, BRect(n[4], n[5], n[6], n[7])); } },
        { "invert", [&] { v.InvertRect(rect); } },
        { "high", [&] { v.SetHighColor(color()); } },
        { "low", [&] { v.SetLowColor(color()); } },
        { "text", [&] { v.DrawString(name.c_str(), a); } },
        { "long", [&] { v.DrawString((std::string(n[2], ' ') + name).c_str(), a); } },
        { "row", [&] { DrawRow(v, a, name); } },
        { "spaced", [&] { v.DrawString("a e", a, &delta); } },
        { "bold", [&] { v.SetFont(be_bold_font); } },
        { "size", [&] { v.SetFontSize(n[0]); } },
        { "pen", [&] { v.SetPenSize(n[0]); } },
        { "scroll", [&] { v.ScrollTo(a); } },
        { "over", [&] { v.SetDrawingMode(B_OP_OVER); } },
        { "copy", [&] { v.SetDrawingMode(B_OP_COPY); } },
    };
    commands.at(what)();
}

// A drawing as a PNG, whose pixels are half as large: one of the four in each of the canvas's.
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

using ShapesTest = CanvasTest;

TEST_F(ShapesTest, LookAsTheyAlwaysDid)
{
    std::ifstream file(TARVEX_TESTS "/kits/interface/drawing/shapes.txt");
    for (std::string title, line; std::getline(file, title);) {
        std::vector<std::string> lines;
        std::string picture;
        while (std::getline(file, line) && !line.empty())
            line.size() == 40 && line.find(' ') == line.npos ? void(picture += line + "\n")
                                                             : lines.push_back(line);
        SCOPED_TRACE(title);
        const auto draw = [&](BView& v) {
            for (const std::string& one : lines)
                DrawLine(v, one);
        };
        EXPECT_EQ(title[0] == 's' || title[0] == 'b' ? Drawn(draw) : picture, picture);
        for (int corner = 0; corner < (title[0] == 'b' ? 4 : title[0] == 'f' ? 1 : 0); corner++)
            EXPECT_EQ(Written(draw, corner), picture) << corner;
    }
}
