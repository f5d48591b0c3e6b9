#include "results/Comparison.h"

#include "foundation/LibNode.h"
#include "results/ChartText.h"
#include "results/RunFile.h"
#include "tests/results/ComparedRun.h"
#include "tests/results/MadeArchive.h"
#include "tests/results/MadeRuns.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

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

std::string Names(Comparison& comparison)
{
    std::string names;
    for (const Results* machine : comparison.InOrder())
        names += std::string(machine->description) + "; ";
    return names;
}

} // namespace

TEST(ChartScale, IsTheNextStepAboveTheGreatestValue)
{
    for (const Row& row : RowsOf("results/data/scales", 3)) {
        const ChartScale scale = ChartScale::For(std::stod(row[0]));
        EXPECT_EQ(scale.maxScale, std::stof(row[1])) << row[0];
        EXPECT_EQ(scale.step, std::stoi(row[2])) << row[0];
        EXPECT_EQ(scale.XFor(0, 320, 700), 320);
        EXPECT_EQ(scale.XFor(double(scale.maxScale) / 2, 320, 700), 510);
        EXPECT_EQ(scale.XFor(double(scale.maxScale), 320, 700), 700);
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
    Results faster(true);
    FillRun(faster);
    faster.First()->NbrCycles(4000);
    EXPECT_TRUE(comparison.SetRun(faster));
    EXPECT_EQ(comparison.scale.maxScale, 110) << "of itself";
}

TEST(Comparison, OpensResultsPackagesRunsAndFoldersButEachMachineOnce)
{
    const TempFolder folder;
    const auto file = [&](const std::string& name, const std::string& contents) {
        WriteFile(folder / name, contents);
        return folder / name;
    };
    const std::string saved = MadeResults("Saved (2-x)", "700:400/1.0,4.0;");
    const std::string tar =
        MadeArchive(Packing::kTar, { { "results/unknown", "a card" }, { "results/r", saved } });
    RunRecord run = MadeRun("Ran (3-x)"); // at two of its three counts
    run.details.processorModel = "Model";
    run.details.memory = 3ULL << 29;
    run.details.kernelRelease = "6.1";
    AddTimes(run, *FindTestType(700), 3, 0.5, 400, 1);
    AddTimes(run, *FindTestType(700), 1, 4, 800, 1);
    RunRecord odd = MadeRun("2\tO (9-x)"); // all that a record cannot hold
    AddTimes(odd, *FindTestType(700), 8, 1, 4e9, 1);
    AddTimes(odd, *FindTestType(700), 9, 1, 4e9, 1);
    AddTimes(odd, *FindTestType(200), 9, 1, 195, 1);
    odd.At(*FindTestType(101), 7).undone = "no memory";
    AddTimes(odd, *FindTestType(100), 7, 1, 126, 1);
    odd.series.back().undone = "no memory";
    AddTimes(odd, *FindTestType(601), 1, 2.5, 0, 1);
    std::filesystem::create_directory(folder / "fleet");
    file("fleet/.hidden", MadeResults("Hidden (1-x)", ""));
    file("fleet/a", MadeResults("Fleet (1-x)", "700:9/1.0;"));
    file("fleet/b.txt", "notes");
    std::filesystem::create_symlink("/proc/self/mem", folder / "mem"); // fails to be read
    const std::string blank(33 << 20, ' ');
    const std::string zip = MadeArchive(Packing::kZip, { { "r.tar", tar } });
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);

    Comparison comparison;
    comparison.ChooseTest("Sieve");
    const LoadOutcome outcome = comparison.Open({ file("r.zip", zip), file("r", saved),
        file("run.json", RunAsJson(run)), folder / "fleet", file("odd.json", RunAsJson(odd)),
        file("none.json", RunAsJson(MadeRun("2 O"))),
        file("out.zip", MadeArchive(Packing::kZip, { { "../r", saved } })), folder / "pipe",
        file("notes.txt", "1.0\n"), "/none", folder / "mem", file("new.json", "{ \"schema\": 7 }"),
        file("large", "{" + blank), file("vast", MadeResults("Vast (1-x)", "700:9/1.0;") + blank),
        file("deep.zip", MadeArchive(Packing::kZip, { { "r.zip", zip } })),
        file("long.json", RunAsJson(MadeRun(std::string(kRecordSize - 1, 'x')))) });
    std::string told = outcome.Text() + "\n";
    for (const std::string& each : outcome.refused)
        told += each + "\n";
    char record[kRecordSize];
    for (const Results* machine : comparison.InOrder()) {
        EXPECT_TRUE(machine->Write(record));
        told += std::string(record) + "\n" + machine->origin + machine->trueName + "\n";
    }
    told += MachineAsText(comparison, *comparison.InOrder()[1]) + "\n";
    for (const int shown : { 3, 4 })
        told += ResultsAsText(*comparison.InOrder()[shown]);
    EXPECT_EQ(std::regex_replace(told, std::regex(folder.Path() + "/"), ""),
        ReadFile(TARVEX_TESTS "/results/data/opened"));
    EXPECT_EQ(comparison.Open({ folder / "r" }).Text(), "0 machines added, 1 was there already");
    WriteFile(folder / "s", saved + saved.substr(4) + MadeResults("New (1-x)", "").substr(4));
    EXPECT_EQ(comparison.Open({ folder / "s" }).Text(), "1 machine added, 2 were there already");
}

TEST(Comparison, ForgetsAndRestoresInEveryOrder)
{
    const TempFolder folder;
    Comparison comparison;
    comparison.ChooseTest("Sieve");
    Fill(comparison);
    WriteFile(folder / "more",
        MadeResults("Älter (1-)", "700:900/1.0;") + MadeResults("a (1-)", "").substr(4));
    ASSERT_EQ(comparison.Open({ folder / "more" }).added, 2);
    const auto shown = [&](ChartOrder order) {
        comparison.order = order;
        return Names(comparison);
    };
    const std::string added = "This (2-x); Other (1-y); Other (1-y); Älter (1-); a (1-); ";
    EXPECT_EQ(shown(ChartOrder::kAsAdded), added);
    EXPECT_EQ(
        shown(ChartOrder::kByRate), "Älter (1-); This (2-x); Other (1-y); Other (1-y); a (1-); ");
    const std::string byName = "a (1-); Other (1-y); Other (1-y); This (2-x); Älter (1-); ";
    comparison.InOrder()[1]->expanded = true; // This
    const std::vector<float> tops = comparison.RowBottoms();
    EXPECT_EQ(shown(ChartOrder::kByName), byName);
    EXPECT_NE(comparison.RowBottoms(), tops);
    EXPECT_EQ(comparison.NextToSelected(false), comparison.InOrder()[2]);

    comparison.selected = comparison.InOrder()[1];
    EXPECT_EQ(ComparisonAsText(comparison), ReadFile(TARVEX_TESTS "/results/data/comparison"));
    EXPECT_TRUE(
        MachineAsText(comparison, *comparison.InOrder()[3])
            .starts_with("This (2-x)\n2 CPU: 400.0 IPS, 4.00 times one processor, 200.0 percent "
                         "of the selection\n1 CPU: 100.0 IPS, 50.0 percent"));
    EXPECT_EQ(comparison.Forget(*comparison.selected), 1);
    EXPECT_EQ(comparison.selected, comparison.machines.First()) << "the run";
    EXPECT_EQ(comparison.Forget(*comparison.selected), 0) << "which is not forgotten";
    EXPECT_EQ(comparison.ForgetOthers(*comparison.InOrder()[0]), 2);
    EXPECT_EQ(comparison.scale.maxScale, 410);
    EXPECT_EQ(shown(ChartOrder::kAsAdded), "This (2-x); a (1-); ");
    EXPECT_EQ(comparison.Restore() + comparison.Restore() * 10 + comparison.Restore() * 100, 12);
    EXPECT_EQ(shown(ChartOrder::kAsAdded), added);
    EXPECT_EQ(comparison.scale.maxScale, 910);
    EXPECT_EQ(comparison.selected, comparison.InOrder()[1]);
    EXPECT_EQ(comparison.InOrder()[3]->origin, folder / "more");
    comparison.ChooseTest("Memory");
    EXPECT_EQ(comparison.scale.maxScale, 60);

    Comparison seconds;
    seconds.ChooseTest("Ten Sequential Whetstones");
    WriteFile(folder / "more",
        MadeResults("Slow (1-)", "601:0/3.0;") + MadeResults("None (1-)", "601:0/0.0;").substr(4)
            + MadeResults("Fast (1-)", "601:0/1.0;").substr(4));
    EXPECT_EQ(seconds.Open({ folder / "more" }).added, 3);
    seconds.order = ChartOrder::kByRate;
    EXPECT_EQ(Names(seconds), "Fast (1-); Slow (1-); None (1-); ");
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
    third.ChooseTest("Sieve");
    third.ReadStore(program);
    EXPECT_EQ(third.scale.maxScale, 210);
    EXPECT_EQ(Names(third), "Other (1-y); Other (1-y); Other (1-y); Other (1-y); ");

    program.WriteStringAttr("qv:benchmark", "no machines");
    Comparison fourth;
    fourth.ReadStore(program);
    Fill(fourth);
    EXPECT_TRUE(fourth.WriteStore(program) && fourth.WriteStore(program));
    EXPECT_EQ(Names(fourth), "This (2-x); Other (1-y); Other (1-y); ") << "nothing twice";
    LibString damaged;
    EXPECT_TRUE(program.ReadStringAttr("qv:benchmark damaged", damaged));
    EXPECT_STREQ(damaged, "no machines");
}
