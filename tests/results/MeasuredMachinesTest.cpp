#include "results/MeasuredMachines.h"

#include "results/RunFile.h"
#include "tests/foundation/ZoneGuard.h"
#include "tests/results/MadeArchive.h"
#include "tests/results/MadeRuns.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <fcntl.h>

namespace {

namespace fs = std::filesystem;

const std::string kOne = MadeResults("One (1-x)", "700:1/1.0;");
const std::string kTwo = MadeResults("Two (1-x)", "700:1/2.0;");

class MeasuredMachines : public testing::Test {
protected:
    // "description of file;" for each machine, or the line that says why not.
    std::string Told(const std::vector<std::string>& names) const
    {
        std::vector<std::string> paths;
        for (const std::string& name : names)
            paths.push_back(fFolder / name);
        const auto read = ReadMachines(paths);
        std::string told;
        if (const auto* line = std::get_if<std::string>(&read))
            told = *line;
        else
            for (const MeasuredMachine& machine : std::get<std::vector<MeasuredMachine>>(read))
                told += machine.record.machine + " of " + machine.path + ";";
        return std::regex_replace(told, std::regex(fFolder.Path() + "/"), "");
    }

    const TempFolder fFolder;
};

TEST_F(MeasuredMachines, OfAFolderAreThoseOfAllFilesInItThatAreMeant)
{
    fs::create_directories(fFolder / "all/below/deep");
    fs::create_directories(fFolder / "all/.hidden");
    WriteFile(fFolder / "all/below/deep/b", kTwo);
    WriteFile(fFolder / "all/a.results", kOne);
    WriteFile(fFolder / "all/notes", "measured on Monday");
    WriteFile(fFolder / "all/other", "{ \"name\": 1 }");
    WriteFile(fFolder / "all/.hidden/c", kTwo);
    WriteFile(fFolder / "all/.d", kTwo);
    WriteFile(fFolder / "outside", kTwo);
    fs::create_symlink(fFolder / "outside", fFolder / "all/link");
    fs::create_directory_symlink(fFolder.Path(), fFolder / "all/up");
    mkfifo((fFolder / "all/pipe.json").c_str(), 0600);
    EXPECT_EQ(Told({ "all" }), "One (1-x) of all/a.results;Two (1-x) of all/below/deep/b;");
    EXPECT_EQ(Told({ "all/link" }), "Two (1-x) of all/link;") << "what is named is followed";
    const ZoneGuard west("UTC+5");
    WriteFile(fFolder / "all/z.zip", MadeArchive(Packing::kZip, { { "r", kOne } }));
    WriteFile(fFolder / "all/run.json", RunAsJson(MadeRun("Ran")));
    const timespec times[] = { { 0, 0 }, { 86400, 0 } };
    EXPECT_EQ(utimensat(AT_FDCWD, (fFolder / "all/a.results").c_str(), times, 0), 0);
    std::string dates;
    const auto read = ReadMachines({ fFolder / "all" });
    for (const MeasuredMachine& machine : std::get<0>(read))
        dates += machine.file + " " + machine.date.substr(0, 19) + "|";
    EXPECT_TRUE(dates.starts_with("a.results 1970-01-01T19:00:00|b 2")) << dates;
    EXPECT_TRUE(dates.ends_with("|run.json 2026-11-21T14:03:05|r 2023-11-14T17:13:20|")) << dates;
    // A job that was killed leaves an empty one: it is not to be missed.
    WriteFile(fFolder / "all/below/job.json", "");
    EXPECT_EQ(Told({ "all" }),
        "<all/below/job.json> is neither a results file nor JSON of a run, nor an archive of them");
}

TEST_F(MeasuredMachines, AreAllOrNoneAndTheFirstBadFileIsNamed)
{
    fs::create_directory(fFolder / "empty");
    WriteFile(fFolder / "bad.json", "{ \"schema\": 7 }");
    WriteFile(fFolder / "text", "old text");
    WriteFile(fFolder / "eight", MadeResults("PC", "700:1/1,2,3,4,5,6,7,8,9;"));
    const std::string up = MadeArchive(Packing::kZip, { { "../up", "1" } });
    WriteFile(fFolder / "up.zip", up);
    WriteFile(fFolder / "outer.zip", MadeArchive(Packing::kZip, { { "up.zip", up } }));
    const std::string outer = MadeArchive(Packing::kTar, { { "up.zip", up }, { "r", kOne } });
    WriteFile(fFolder / "deep", MadeArchive(Packing::kTarGz, { { "outer.tar", outer } }));
    WriteFile(fFolder / "large", std::string((32 << 20) + 1, ' '));
    fs::create_symlink("/proc/self/mem", fFolder / "mem"); // cannot be read at its start
    for (int i = 0; i < 60; i++)
        WriteFile(fFolder / std::to_string(i), kOne);
    for (const auto& [name, line] : ReadRows("results/data/unreadable")) {
        EXPECT_EQ(Told({ name }), line);
        std::vector<std::string> many; // so that several threads read
        for (int i = 0; i < 60; i++)
            many.push_back(i == 50               ? name
                    : i == 55 && name != "empty" ? "text"
                                                 : std::to_string(i));
        EXPECT_EQ(Told(many), line);
    }
}

TEST_F(MeasuredMachines, HaveNamesThatTellThemApart)
{
    std::vector<MeasuredMachine> machines;
    std::string wanted, names;
    for (const Row& row : RowsOf("results/data/names", 5)) {
        machines.push_back(
            { MadeRun(row[0]), row[2], row[2].substr(row[2].rfind('/') + 1), row[3], "" });
        machines.back().record.label = row[1];
        wanted += row[4] + "|";
    }
    NameMachines(machines);
    for (const MeasuredMachine& each : machines)
        names += each.name + "|";
    EXPECT_EQ(names, wanted);
}

} // namespace
