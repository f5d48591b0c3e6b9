#include "Canvas.h"

#include "OS.h"

std::string Letters(const std::vector<uint32>& pixels, int width)
{
    static const std::map<uint32, char> sLetters = { { 0xffffff, '.' }, { 0, '#' },
        { 0xff0000, 'r' }, { 0x0000ff, 'b' }, { 0xff00ff, 'm' }, { 0x838383, 'g' },
        { 0x777477, 't' }, { 0x0ac8ff, 's' }, { 0xf53700, 'S' } };
    std::string letters;
    for (size_t i = 0; i < pixels.size(); i++) {
        const auto found = sLetters.find(pixels[i]);
        letters += found == sLetters.end() ? '+' : found->second;
        letters += (i + 1) % width == 0 ? "\n" : "";
    }
    return letters;
}

std::string All(char letter, int width, int height)
{
    std::string letters;
    while (height-- > 0)
        letters += std::string(width, letter) + '\n';
    return letters;
}

std::string Expected(const std::string& title)
{
    const std::string all = ReadFile(TARVEX_TESTS "/kits/interface/drawing/pictures.txt");
    const size_t begin = all.find(title + ":\n");
    const size_t end = all.find("\n\n", begin);
    return begin == all.npos ? "none" : all.substr(begin, end + 1 - begin).substr(title.size() + 2);
}

void CanvasView::Draw(BRect updateRect)
{
    draws++;
    if (onDraw)
        onDraw(updateRect);
}

void CanvasTest::SetUp()
{
    WindowTest::SetUp();
    fView = new CanvasView(BRect(3, 6, 42, 35), "canvas", B_FOLLOW_NONE, B_WILL_DRAW);
    BView* outer = new BView(BRect(7, 4, 199, 99), "outer", B_FOLLOW_NONE, 0);
    outer->AddChild(fView);
    fWindow->AddChild(outer);
    fWindow->Show();
    ASSERT_TRUE(ComesToShow());
    // The screen may yet ask for the new window to be drawn.
    for (int before = -1; before != fView->draws; snooze(50'000))
        before = fView->draws;
}

bool CanvasTest::ComesToShow()
{
    return Becomes([&] {
        fView->SetHighColor({ 255, 0, 255 });
        fView->FillRect(fView->Bounds());
        fView->Sync();
        return Shown() == All('m');
    });
}

std::string CanvasTest::Drawn(const std::function<void(BView& view)>& draw)
{
    return Locked([&] {
        fView->ScrollTo(B_ORIGIN);
        fView->SetDrawingMode(B_OP_COPY);
        fView->SetPenSize(1);
        fView->SetLowColor(white_color);
        fView->SetFont(be_plain_font);
        fView->SetHighColor(white_color);
        fView->FillRect(fView->Bounds());
        fView->SetHighColor(black_color);
        draw(*fView);
        fView->Sync();
        return Shown();
    });
}

std::string CanvasTest::Shown()
{
    const BRect bounds = fView->Bounds();
    return Letters(screen::PixelsIn(fView->ConvertToScreen(bounds)), bounds.IntegerWidth() + 1);
}
