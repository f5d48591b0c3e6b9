#include "toolkit/LibColorChooser.h"

#include "tests/support/Log.h"
#include "tests/support/ScreenDriver.h"
#include "tests/support/Test.h"
#include "tests/support/WithLock.h"

#include <Application.h>
#include <Message.h>

namespace {

class Target : public BLooper {
public:
    void MessageReceived(BMessage* message) override
    {
        if (message->what == 'ColC')
            log.Add("closing");
    }
    Log log;
};

} // namespace

TEST(LibColorChooser, OffersThe216ColoursOfWhichKeysAndClicksPickOne)
{
    const BApplication app("application/x-vnd.Quorvane.ColorTest");
    auto* target = new Target;
    target->Run();
    auto* chooser = new LibColorChooser(target, "Color", { 107, 99, 2, 255 });
    chooser->Show();
    ASSERT_TRUE(screen::BecomesActive("Color"));
    // Red grows from block to block, green downwards and blue to the right in each.
    EXPECT_TRUE(screen::ShowsTree("Color", "toolkit/Color"));
    const BPoint corner = screen::Find("swatches").frame.LeftTop();
    const std::vector<uint32> pixels = screen::PixelsIn(screen::Find("swatches").frame);
    const auto pixel = [&](int column, int row, int inside) {
        return pixels[(row * 18 + inside) * 324 + column * 18 + inside];
    };
    for (int i = 0; i < 216; i++) {
        const int column = i % 18, row = i / 18, red = column / 6 + row / 6 * 3;
        EXPECT_EQ(pixel(column, row, 9), red * 0x330000 + row % 6 * 0x3300 + column % 6 * 0x33)
            << i;
    }
    EXPECT_EQ(pixel(12, 2, 0), 0) << "the cursor: black,";
    EXPECT_EQ(pixel(12, 2, 1), 0xffffff) << "white,";
    EXPECT_EQ(pixel(12, 2, 2), 0x666600) << "then the swatch";
    const struct {
        const char* key;
        int times;
        const char* said;
    } rows[] = {
        { "Left", 1, "Red 51, green 102, blue 255\n" },
        { "Up", 3, "Red 51, green 0, blue 255\n" }, // beyond an edge it stays
        { "Left", 12, "Red 0, green 0, blue 0\n" },
        { "Down", 12, "Red 153, green 255, blue 0\n" },
        { "Right", 18, "Red 255, green 255, blue 255\n" },
        { "Up", 1, "Red 255, green 204, blue 255\n" },
    };
    for (const auto& row : rows) {
        for (int i = 0; i < row.times; i++)
            screen::Key(row.key);
        EXPECT_SOON(screen::Lines("swatches") == row.said) << screen::Lines("swatches");
    }
    const auto picked = [&] {
        const rgb_color color = WithLock(chooser, [&] { return chooser->Color(); });
        return color.red << 16 | color.green << 8 | color.blue;
    };
    EXPECT_EQ(picked(), 0x6b6302);
    screen::Key("Escape");
    EXPECT_EQ(target->log.WaitFor(1), Entries(1, "closing"));
    EXPECT_EQ(picked(), 0x6b6302);
    screen::Key("Return");
    EXPECT_EQ(target->log.WaitFor(2), Entries(2, "closing"));
    EXPECT_EQ(picked(), 0xffccff);
    screen::ClickAt(corner + BPoint(17 * 18 + 17, 11 * 18 + 17));
    EXPECT_EQ(target->log.WaitFor(3), Entries(3, "closing"));
    EXPECT_EQ(picked(), 0xffffff);
    ASSERT_TRUE(chooser->Lock());
    chooser->Quit();
}
