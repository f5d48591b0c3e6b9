#include "toolkit/StatusLine.h"

#include <Font.h>

#include <algorithm>

namespace {

constexpr float kFontSize = 10;

// Whether a character of UTF-8 begins there, or the text ends.
bool IsBoundary(const std::string& text, size_t index)
{
    return index >= text.size() || (text[index] & 0xc0) != 0x80;
}

// About kept bytes of text, half of them from its end.
std::string WithoutMiddle(const std::string& text, size_t kept)
{
    size_t head = kept - kept / 2;
    size_t tail = text.size() - kept / 2;
    while (!IsBoundary(text, head))
        head--;
    while (!IsBoundary(text, tail))
        tail++;
    return text.substr(0, head) + "..." + text.substr(tail);
}

} // namespace

std::string LibShortened(const BFont& font, const std::string& text, float width)
{
    if (font.StringWidth(text.c_str()) <= width)
        return text;
    // By halves: a path has thousands of letters at most, but each measuring asks the font.
    size_t fits = 0;
    for (size_t most = text.size(); fits + 1 < most;) {
        const size_t kept = (fits + most) / 2;
        (font.StringWidth(WithoutMiddle(text, kept).c_str()) <= width ? fits : most) = kept;
    }
    return WithoutMiddle(text, fits);
}

StatusLine::StatusLine(BRect frame, const char* name, uint32 resizeMode)
    : BStringView(frame, name, "", resizeMode, B_WILL_DRAW | B_FRAME_EVENTS)
{
    SetFontSize(kFontSize);
}

void StatusLine::Say(const std::string& text, const std::string& explanation)
{
    said = text;
    more = explanation;
    Fit();
}

void StatusLine::FrameResized(float width, float height)
{
    BStringView::FrameResized(width, height);
    Fit();
}

void StatusLine::Fit()
{
    BFont font;
    GetFont(&font);
    const std::string shown = LibShortened(font, said, Bounds().Width());
    SetText(shown.c_str());
    std::string tip = shown == said ? "" : said;
    if (!more.empty())
        tip += (tip.empty() ? "" : "\n") + more;
    SetToolTip(tip.c_str());
}
