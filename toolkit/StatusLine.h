// A line of a window that says what has happened.
#pragma once

#include <StringView.h>

#include <string>

class StatusLine : public BStringView {
public:
    StatusLine(BRect frame, const char* name, uint32 resizeMode);

    // Shows text as far as there is room. What must be left out goes from its middle, as both ends
    // say more: "Saved: /home/an...results.zip (2 files, 3 KB)". Its tool tip is the whole text,
    // where it was shortened, and in lines of their own more.
    void Say(const std::string& text, const std::string& more = "");
    // The whole text.
    [[nodiscard]] const std::string& Said() const { return said; }

    void FrameResized(float width, float height) override;

private:
    void Fit();

    std::string said;
    std::string more;
};

// The text without as many characters of its middle as make it at most width pixels wide, "..." in
// their place; in UTF-8, none of whose characters is cut. width is that of StringWidth().
[[nodiscard]] std::string LibShortened(const BFont& font, const std::string& text, float width);
