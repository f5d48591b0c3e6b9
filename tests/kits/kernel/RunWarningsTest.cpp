#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <RunWarnings.h>

namespace {
// "id: text" of each, a line each.
std::string Lines(const std::vector<RunWarning>& warnings)
{
    std::string lines;
    for (const RunWarning& warning : warnings)
        lines += warning.id + ": " + warning.text + "\n";
    return lines;
}

std::vector<std::string> WordsOf(const std::string& text)
{
    std::istringstream words(text);
    return { std::istream_iterator<std::string>(words), {} };
}
} // namespace

TEST(RunWarnings, ADisplayThatAProgramDrawsIsToldByItsNameOutputsOrExtensions)
{
    for (const Row& row : RowsOf("kits/kernel/data/displays.txt", 4))
        EXPECT_EQ(
            SoftwareDrawing({ row[0], WordsOf(row[1]), WordsOf(row[2]) }).value_or(""), row[3])
            << row[0] << " " << row[1] << " " << row[2];
}

TEST(RunWarnings, OfSleepAndOfWhereARunWorksStandBehindTheOthers)
{
    EXPECT_EQ(Lines(WarningsBeforeRun({}, {}, {}, {})), "");
    RunSurroundings surroundings { 1, FileSystemDetails { "ext4", false },
        DisplayDetails { "The X.Org Foundation", { "DRI3" }, { "eDP-1" } } };
    MachineState before, after;
    before.asleep = 5'000'000;
    before.sleeps = 1, after.sleeps = 2; // which is told where the time is not
    const std::pair<bigtime_t, const char*> rows[] = { { 4'999'999, "once" }, { 5'100'000, "once" },
        { 5'100'001, "for 0.1 seconds" }, { 66'500'000, "for 61.5 seconds" } };
    for (const auto& [asleep, told] : rows) {
        after.asleep = asleep;
        const std::string line = "asleep: the machine slept " + std::string(told) + "\n";
        EXPECT_EQ(Lines(WarningsBeforeRun({}, before, after, surroundings)), line);
        EXPECT_EQ(Lines(WarningsOfRun({}, before, after, 1)), line);
        EXPECT_EQ(ChangeBetween(before, after).secondsAsleep,
            static_cast<double>(std::max<bigtime_t>(0, asleep - 5'000'000)) / 1e6);
    }
    surroundings.temporaryFolder = { "tmpfs", true };
    surroundings.display->vendor = "Xvfb";
    EXPECT_EQ(Lines(WarningsBeforeRun({}, before, after, surroundings)),
        "asleep: the machine slept for 61.5 seconds\n"
        "temporary-in-memory: the temporary directory lies in memory (tmpfs): "
        "the disk tests do not measure a disk\n"
        "software-display: software-drawn display (Xvfb): "
        "the graphics tests measure the processor, not a graphics card\n");
    before.asleep.reset();
    EXPECT_EQ(ChangeBetween(before, after).secondsAsleep, std::nullopt);
}
