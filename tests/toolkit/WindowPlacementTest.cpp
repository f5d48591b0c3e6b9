#include "tests/support/Rows.h"
#include "tests/support/Test.h"
#include "toolkit/LibWindow.h"

#include <sstream>

namespace {

// All rectangles of a text, each of four numbers.
std::vector<BRect> RectsOf(std::string text)
{
    std::replace(text.begin(), text.end(), ',', ' ');
    std::istringstream numbers(text);
    std::vector<BRect> rects;
    for (BRect rect; numbers >> rect.left >> rect.top >> rect.right >> rect.bottom;)
        rects.push_back(rect);
    return rects;
}

} // namespace

TEST(WindowPlacement, EachRuleHasItsPlace)
{
    for (const Row& row : RowsOf("toolkit/placements.txt", 5)) {
        const BRect window = RectsOf(row[2]).at(0);
        WindowPlacement placement { BRect(0, 0, 1023, 767), BRect(), RectsOf(row[3]) };
        for (const BRect mainWindow : RectsOf(row[1]))
            placement.mainWindow = mainWindow;
        const int32 nth = std::stoi(row[0].substr(row[0].rfind(' ')));
        const int32 rule = row[0].starts_with("cascade") ? kCascade
            : row[0].starts_with("centred")              ? kCentred
            : row[0].starts_with("beside")               ? kBesideMain
                                                         : 17;
        const BPoint corner = row[0].starts_with("over")
            ? placement.Over(window, placement.others.at(0))
            : placement.Place(window, rule, nth);
        std::ostringstream place;
        place << corner.x << ' ' << corner.y;
        EXPECT_EQ(place.str(), row[4]) << testing::PrintToString(row);
    }
}
