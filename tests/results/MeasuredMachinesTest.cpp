#include "results/MeasuredMachines.h"

#include "results/RunFile.h"
#include "tests/results/MadeArchive.h"
#include "tests/results/MadeRuns.h"
#include "tests/support/Test.h"

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
        for (size_t at = 0; (at = told.find(fFolder.Path() + "/")) != told.npos;)
            told.erase(at, fFolder.Path().size() + 1);
        return told;
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
    for (int i = 0; i < 60; i++)
        WriteFile(fFolder / std::to_string(i), kOne);
    const std::string rows[][2] = {
        { "none", "cannot read <none>: No such file or directory" },
        { "empty", "<empty> holds no results" },
        { "text", "<text> is neither a results file nor JSON of a run, nor an archive of them" },
        { "bad.json", "<bad.json> is of a newer Tarvex: its schema is 7, this one reads 1" },
        { "eight", "<eight> has more than eight times for <Sieve>" },
        { "up.zip", "<up.zip> holds a path that leads out of it: <../up>" },
        { "outer.zip", "<outer.zip: up.zip> holds a path that leads out of it: <../up>" },
    };
    for (const auto& [name, line] : rows) {
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
    const auto machine = [](const char* description, const char* label, const std::string& path,
                             const char* date) {
        MeasuredMachine made { MadeRun(description), path, path.substr(path.rfind('/') + 1), date,
            "" };
        made.record.label = label;
        return made;
    };
    std::vector<MeasuredMachine> machines = {
        machine("Lone (1-x)", "label", "a/f", "1"),
        machine("PC", "left", "a/f", "1"),
        machine("PC", "right", "a/f", "1"),
        machine("PC", "both", "a/one", "1"),
        machine("PC", "both", "a/f", "2"),
        machine("PC", "", "b/f", "1"),
        machine("PC", "", "c/f", "1"),
        machine("PC", "", "c/f", "1"),
        machine("", "", "only", "1"),
    };
    NameMachines(machines);
    std::string names;
    for (const MeasuredMachine& each : machines)
        names += each.name + "|";
    EXPECT_EQ(names, "label|left|right|one|2|b/f|c/f #7|c/f #8|only|");
}

} // namespace
