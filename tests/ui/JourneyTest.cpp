// From the start to the mail: the program, the system's own tools and a real mail agent.
#include "results/Results.h"
#include "results/ResultsFile.h"
#include "tests/kits/kernel/PciTree.h"
#include "tests/support/OwnBus.h"
#include "tests/ui/Program.h"

namespace {

// See MailSink.py.
class MailSink {
public:
    explicit MailSink(const std::string& folder)
        : fOutput(popen(
            ("/usr/bin/python3 '" TARVEX_TESTS "/ui/MailSink.py' '" + folder + "'").c_str(), "r"))
    {
        Line();
    }
    ~MailSink() { pclose(fOutput); }

    std::string Line()
    {
        char line[1000] = "";
        return fgets(line, sizeof line, fOutput) ? line : "none\n";
    }

private:
    FILE* const fOutput;
};

class JourneyTest : public testing::Test {
protected:
    void SetUp() override
    {
        AddPciFunction(tree, "0000:00:02.0", PciConfig(0x8086, 0x0abc, 0x030000));
        if (!Program::CanMount(setup))
            GTEST_SKIP() << "no right to mounts of a program's own";
    }

    const OwnBus bus { "DBUS_SESSION_BUS_ADDRESS" };
    const MachineTree tree {};
    const TempFolder folder; // the program's /mnt
    const std::string setup = "export PATH=\"/mnt:$PATH\" XDG_DATA_HOME=/mnt/data && mount --bind "
        + tree / "sys/bus/pci/devices" + " /sys/bus/pci/devices && mount --bind " + folder.Path()
        + " /mnt";
};

} // namespace

TEST_F(JourneyTest, LeadsFromAllTestsToTheMailWithWhatWasMeasured)
{
    MailSink sink(folder.Path());
    Program program({}, getenv("DISPLAY"), setup);
    ASSERT_TRUE(program.AskForRun() && program.In("Warning", "", { "Return" }));
    ASSERT_TRUE(program.In("Results", "", {}));
    ASSERT_TRUE(Program::Press("push button", "Compare...", "Results"));
    ASSERT_TRUE(program.In("Tarvex Comparisons", "", { "alt+F4" }));
    // By "Save" nothing is mailed; the second time the package may take the place of the first.
    ASSERT_TRUE(program.Save("/mnt/My results", "A card"));
    ASSERT_TRUE(program.Send("a box", "Save"));
    const std::string package = ReadFile(folder / "My results.zip");
    ASSERT_TRUE(program.Save("/mnt/My results", "My own card"));
    ASSERT_TRUE(program.In("Replace", "", { "Return" }) && program.In("Save As", "", {}));
    EXPECT_EQ(ReadFile(folder / "My results.zip"), package);
    screen::Key("Return");
    ASSERT_TRUE(program.In("Replace", "", { "alt+y" }));
    ASSERT_TRUE(program.Send("a beige box", "E-mail"));
    EXPECT_EQ(sink.Line(), "RCPT TO:<support@tarvex.example>\n");
    EXPECT_EQ(sink.Line(),
        "support@tarvex.example Tarvex results me@tarvex.example True "
        "['Results for : a beige box.'] My results.zip attachment\n");
    EXPECT_TRUE(program.In("Results", "", { "Escape" }) && program.In("Tarvex", "", { "ctrl+q" }));
    EXPECT_EQ(program.Status(30), 0) << program.Errors();

    EXPECT_EQ(ReadFile(folder / "enclosure"), ReadFile(folder / "My results.zip"));
    EXPECT_FALSE(std::filesystem::exists(folder / "My results"));
    const std::string unpack =
        "cd '" + folder.Path() + "' && unzip -q enclosure && tar xf 'My results'";
    ASSERT_EQ(system(unpack.c_str()), 0);
    EXPECT_EQ(ReadFile(folder / "tmp/results/unknown_devices"),
        "pci class = <3>, type = <Display>\nVendor id <0x8086>, Device id <0x0ABC>, "
        "Vendor <Intel,Intel Corporation>, Device <My own card>\n\n");
    ResultList saved;
    ASSERT_TRUE(ReadResultsFile((folder / "tmp/results/My results").c_str(), saved));
    Results& run = *saved.First();
    std::string tests;
    for (const Metric* metric = run.First(); metric; metric = run.Next())
        tests += std::string(metric->description) + "\n";
    EXPECT_EQ(tests, "Strings Copy\nStrings Compare\nMemory\n");
    float second = -1, first = 0; // what the program measured, as the comparison said
    const std::string errors = program.Errors();
    sscanf(errors.substr(errors.find("time 2")).c_str(), "time 2: %f 1: %f", &second, &first);
    EXPECT_GT(first, 0);
    EXPECT_NEAR(run.Time(0), first, 0.002);
    EXPECT_NEAR(run.Time(1), second, 0.002);
}

TEST_F(JourneyTest, GoesOnPastEveryFailureAndOverwritesNothingOfOthers)
{
    const std::string inTheWay = "</tmp/results> is in the way\n";
    const std::string noArchive = "/Tarvex.tar>\n";
    const auto without = [](const std::string& tool) {
        return "mount -t tmpfs none /opt && mkdir /opt/new /opt/work && mount -t overlay none "
               "-o lowerdir=/usr/bin,upperdir=/opt/new,workdir=/opt/work /usr/bin && rm /usr/bin/"
            + tool;
    };
    enum Left { kNothing, kPlain, kTar, kZip };
    const struct {
        std::string cause; // with an empty /tmp and an empty place to save, /mnt/place
        Left left; // there
        std::string errors;
        std::string kept {};
    } rows[] = {
        { without("zip"), kTar, "" },
        { without("tar"), kPlain, noArchive },
        { "mount -t tmpfs -o ro none /mnt/place", kNothing,
            "Error writing </mnt/place/mine>: Read-only file system\n" },
        { "mount -t tmpfs -o size=4k none /mnt/place", kPlain,
            "Error writing </mnt/place/mine>: No space left on device\n" },
        { "mount -t tmpfs -o size=4k none /tmp", kPlain, noArchive },
        { "echo precious > /tmp/results", kZip, inTheWay, "/tmp/results" },
        { "mkdir /tmp/results && echo precious > /tmp/results/x", kZip, inTheWay,
            "/tmp/results/x" },
        { "mkdir /tmp/results && touch /tmp/results/unknown_devices", kZip, "" }, // a leftover
        { "mkdir /tmp/results && chown 1:1 /tmp/results", kZip, inTheWay },
        { "echo precious > /mnt/x && ln -s /mnt/x /tmp/results", kZip, inTheWay, "/mnt/x" },
        { "mkdir /mnt/d && ln -s /mnt/d /tmp/results && echo precious > /mnt/x && "
          "ln -s /mnt/x /tmp/Tarvex.tar",
            kZip, inTheWay, "/mnt/x" },
        { "echo precious > /mnt/place/mine.zip && chown 1:1 /mnt/place/mine.zip", kPlain,
            "</mnt/place/mine.zip> is in the way\n", "/mnt/place/mine.zip" },
        { "mount -t tmpfs none /usr/sbin && rm /mnt/sendmail && " + without("xdg-email"), kZip,
            "The mail with </mnt/place/mine.zip> was not sent\n" },
    };
    std::filesystem::create_directory(folder / "place");
    WriteFile(folder / "sendmail", "#!/bin/sh\ncat > /mnt/mail\n");
    std::filesystem::permissions(folder / "sendmail", std::filesystem::perms::all);
    Program program({}, getenv("DISPLAY"), setup);
    ASSERT_TRUE(program.AskForRun() && program.In("Warning", "", { "Return" }));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.cause);
        const size_t told = program.Errors().size();
        ASSERT_TRUE(program.Inside("mount -t tmpfs none /tmp && mount -t tmpfs none /mnt/place"));
        if (!program.Inside(row.cause)) {
            EXPECT_NE(geteuid(), 0);
            continue;
        }
        ASSERT_TRUE(program.Save("/mnt/place/mine", "A card"));
        ASSERT_TRUE(row.kept != "/mnt/place/mine.zip" || program.In("Replace", "", { "alt+y" }));
        ASSERT_TRUE(row.left != kTar || program.In("Information", "", { "Return" }));
        const bool isSaved = row.left != kNothing;
        ASSERT_TRUE(!isSaved || program.Send("a box", "E-mail"));
        const std::string enclosed = row.left == kZip ? "=mine.zip\n" : "=mine\n";
        const bool isMailed = isSaved && row.errors.find("not sent") == row.errors.npos;
        EXPECT_SOON(program.Errors().find(row.errors, told) != row.errors.npos
            && isMailed == (ReadFile(folder / "mail").find(enclosed) != enclosed.npos))
            << program.Errors();
        std::filesystem::remove(folder / "mail");
        const std::string mine = program.Read("/mnt/place/mine");
        EXPECT_EQ(mine == "none", row.left == kNothing || row.left == kZip);
        EXPECT_EQ(mine.starts_with("1.0\n"), row.left == kPlain);
        EXPECT_EQ(mine.starts_with("tmp/results/"), row.left == kTar);
        EXPECT_EQ(program.Read("/mnt/place/mine.zip").starts_with("PK"), row.left == kZip);
        EXPECT_TRUE(row.kept.empty() || program.Read(row.kept) == "precious\n");
        program.Inside("umount -l /usr/bin 2>&-");
    }
}

TEST(Program, QuitsAtAnyTimeOfARunAndGivesProcessorsBack)
{
    constexpr char kOnline[] = "/sys/devices/system/cpu/online";
    const OwnBus bus("DBUS_SESSION_BUS_ADDRESS");
    const std::string online = ReadFile(kOnline);
    const bool canSwitch = geteuid() == 0 && online != "0\n";
    enum { kAtTheWarning, kInTheFirstPass, kWithOneProcessorOff, kKilledWithOneOff };
    for (int when = kAtTheWarning; when <= (canSwitch ? kKilledWithOneOff : 1); when++) {
        Program program({});
        ASSERT_TRUE(program.AskForRun());
        if (when != kAtTheWarning) {
            screen::Key("Return");
            ASSERT_SOON(program.HasThread("benchmark"));
        }
        EXPECT_SOON(when < kWithOneProcessorOff || ReadFile(kOnline) != online);
        program.End(when == kKilledWithOneOff ? SIGKILL : SIGTERM);
        EXPECT_EQ(program.Status(5), when == kKilledWithOneOff ? -1 : 0) << when;
        EXPECT_SOON(ReadFile(kOnline) == online);
    }
}
