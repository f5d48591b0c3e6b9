#include "foundation/LibString.h"

#include <Font.h>
#include <Rect.h>

#include <gtest/gtest.h>

#include <string>

TEST(LibStringTruncate, KeepsTheLongestBeginningThatFitsWithItsDots)
{
    const BFont font;
    const auto widthOf = [&font](const std::string& text) {
        return static_cast<int>(font.StringWidth(text.c_str()));
    };
    const std::string whole("Graphics Rectangles Unflushed");
    if (widthOf(whole) == 0)
        GTEST_SKIP() << "No display: texts have no width";
    for (int width = 0; width <= widthOf(whole) + 1; width++) {
        SCOPED_TRACE(width);
        LibString text(whole.c_str());
        BRect rect;
        text.Truncate(font, width, rect);
        const std::string result(static_cast<const char*>(text));
        const std::string kept = result.substr(0, result.find("..."));
        EXPECT_EQ(rect.left, 0);
        EXPECT_EQ(rect.right, widthOf(kept));
        EXPECT_TRUE(whole.starts_with(kept));
        EXPECT_TRUE(widthOf(result) < width || kept.empty()); // dots alone are never cut
        EXPECT_EQ(result, width > widthOf(whole) ? whole : kept + "...");
        const std::string longer = whole.substr(0, kept.size() + 1);
        EXPECT_TRUE(kept.size() >= whole.size() - 2 || widthOf(longer + "...") >= width);
    }
}
