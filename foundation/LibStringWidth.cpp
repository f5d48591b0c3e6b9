// Apart from other changes of a text, as a font is behind it.
#include "foundation/LibString.h"

#include <Font.h>
#include <Rect.h>

#include <algorithm>

void LibString::Truncate(const BFont& font, const int& width, BRect& rect)
{
    const auto widthOf = [&font](
                             const char* text) { return static_cast<int>(font.StringWidth(text)); };
    LibString kept(View().data());
    rect.left = 0;
    rect.right = 0;
    if (kept.View().empty() || widthOf(kept) < width) {
        rect.right = widthOf(kept);
        return;
    }
    size_t length = kept.View().size();
    length -= std::min<size_t>(length, 2);
    for (;; length--) {
        kept.CutAt(length);
        *this = kept;
        Concat("...");
        if (length == 0 || widthOf(*this) < width)
            break;
    }
    if (length > 0)
        rect.right = widthOf(kept);
}
