#include "tests/support/Rows.h"
#include "tests/support/Test.h"
#include "toolkit/LibWindow.h"

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
        const std::map<std::string, int32> rules { { "cascade", kCascade }, { "centred", kCentred },
            { "beside", kBesideMain }, { "unknown", 17 } };
        const size_t blank = row[0].find(' ');
        const BPoint corner = row[0] == "over"
            ? placement.Over(window, placement.others.at(0))
            : placement.Place(
                window, rules.at(row[0].substr(0, blank)), std::stoi(row[0].substr(blank)));
        std::ostringstream place;
        place << corner.x << ' ' << corner.y;
        EXPECT_EQ(place.str(), row[4]) << testing::PrintToString(row);
    }
}
