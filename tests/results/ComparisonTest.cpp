#include "results/Comparison.h"

#include "foundation/LibNode.h"
#include "tests/results/ComparedRun.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

namespace {

// Machines are kept with this file, whose attributes lie in the same folder.
LibNode Program()
{
    WriteFile(DataHome() / "program", "");
    return LibNode((DataHome() / "program").c_str());
}

// With the run and the other machine given twice.
void Fill(Comparison& comparison)
{
    Results run(true);
    FillRun(run);
    EXPECT_TRUE(comparison.SetRun(run));
    const std::string path = MachineFile(DataHome());
    EXPECT_EQ(comparison.Load({ path.c_str(), "/none", path.c_str() }).Text(),
        "2 machines added; none cannot be read: No such file or directory");
}

std::string Names(const Comparison& comparison)
{
    std::string names;
    for (const Results& machine : comparison.machines)
        names += std::string(machine.description.operator const char*()) + "; ";
    return names;
}

} // namespace

TEST(ChartScale, IsTheNextStepAboveTheGreatestValue)
{
    const std::tuple<double, float, int32> rows[] = {
        { 0, 10, 10 },
        { 5, 10, 10 },
        { 9.6, 20, 10 },
        { 10, 20, 10 },
        { 99, 100, 10 },
        { 100, 110, 10 },
        { 347, 350, 10 },
        { 350, 360, 10 },
        { 999.5, 1100, 100 },
        { 12345, 13000, 1000 },
        { 1e12, 2e9f, 100000000 },
        { INFINITY, 2e9f, 100000000 },
    };
    for (const auto& [greatest, maxScale, step] : rows) {
        const ChartScale scale = ChartScale::For(greatest);
        EXPECT_EQ(scale.maxScale, maxScale) << greatest;
        EXPECT_EQ(scale.step, step) << greatest;
        EXPECT_EQ(scale.XFor(0, 320, 700), 320);
        EXPECT_EQ(scale.XFor(double(maxScale) / 2, 320, 700), 510);
        EXPECT_EQ(scale.XFor(double(maxScale), 320, 700), 700);
    }
}

TEST(Comparison, ATestIsChosenOnceForMachinesThatComeLaterAndForTheTable)
{
    Comparison comparison;
    comparison.ChooseTest("Sieve");
    Fill(comparison);
    Fill(comparison); // the run takes the other's place
    const std::string table = DataHome() / "table";
    EXPECT_EQ(comparison.WriteTable(table.c_str()), "");
    const std::string own = "This (2-x)\t400.0\t100.0\t\t50.0\t\n";
    const std::string other = "Other (1-y)\t\t200.0\t\n";
    EXPECT_EQ(ReadFile(table),
        "\tSieve\t\tMemory\t\t\n\t(IPS)\t\t()\t\t\n\t2 cpu\t1 cpu\t2 cpu\t1 cpu\t\n" + own + own
            + other + other + other + other);
    for (const Results& machine : comparison.machines)
        EXPECT_STREQ(machine.Current()->description, "Sieve");
    EXPECT_EQ(comparison.scale.maxScale, 410);
    comparison.byRatio = true;
    comparison.selected = comparison.NextToSelected(true);
    comparison.UpdateScale();
    EXPECT_EQ(comparison.scale.maxScale, 210) << "percent of the other machine";
}

TEST(Comparison, KeepsWhatWasStoredWhateverBecameOfTheStore)
{
    LibNode program = Program();
    Comparison first;
    first.ReadStore(program);
    Fill(first);
    first.WriteStore(program);
    const std::string store = DataHome() / "tarvex/attributes.sqlite";
    std::filesystem::rename(store, store + ".away");
    std::filesystem::create_directory(store);
    Comparison second;
    second.ReadStore(program);
    EXPECT_EQ(Names(second), "");
    std::filesystem::remove(store);
    std::filesystem::rename(store + ".away", store);
    Fill(second);
    second.WriteStore(program);
    Comparison third;
    third.ReadStore(program);
    EXPECT_EQ(Names(third), "Other (1-y); Other (1-y); Other (1-y); Other (1-y); ");

    program.WriteStringAttr("qv:benchmark", "no machines");
    Comparison fourth;
    fourth.ReadStore(program);
    Fill(fourth);
    fourth.WriteStore(program);
    LibString damaged;
    EXPECT_TRUE(program.ReadStringAttr("qv:benchmark damaged", damaged));
    EXPECT_STREQ(damaged, "no machines");
}
