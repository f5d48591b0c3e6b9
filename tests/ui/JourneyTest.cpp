// From the start to the mail: the program, the system's own tools and a real mail agent.
#include "results/Results.h"
#include "results/ResultsFile.h"
#include "tests/kits/kernel/PciTree.h"
#include "tests/support/OwnBus.h"
#include "tests/support/Rows.h"
#include "tests/ui/Program.h"

namespace {

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
    const std::string setup =
        "export PATH=\"/mnt:$PATH\" XDG_DATA_HOME=/mnt/data TMPDIR=/tmp && mount --bind "
        + tree / "sys/bus/pci/devices" + " /sys/bus/pci/devices && mount --bind " + folder.Path()
        + " /mnt";
};

} // namespace

TEST_F(JourneyTest, LeadsFromTheTestsToTheMailPastEveryFailureAndOverwritesNothingOfOthers)
{
    const std::string without =
        "without() { mount -t tmpfs none /opt && mkdir /opt/new /opt/work && mount -t overlay "
        "-o lowerdir=/usr/bin,upperdir=/opt/new,workdir=/opt/work none /usr/bin && rm /usr/bin/$1; "
        "}; ";
    std::filesystem::create_directory(folder / "place");
    WriteFile(folder / "sendmail", "#!/bin/sh\ncat > /mnt/mail\n");
    std::filesystem::permissions(folder / "sendmail", std::filesystem::perms::all);
    Program program({}, getenv("DISPLAY"), setup);
    ASSERT_TRUE(program.AskForRun() && program.In("Warning", "", { "Return" }));
    const std::string unpack = "unzip -p /mnt/place/mine.zip | tar xO -C / ";
    for (const Row& row : RowsOf("ui/Saves.txt", 4)) {
        const std::string &cause = row[0], &left = row[1], &errors = row[2], &kept = row[3];
        SCOPED_TRACE(cause);
        const size_t told = program.Errors().size();
        ASSERT_TRUE(program.Inside("mount -t tmpfs none /tmp && mount -t tmpfs none /mnt/place"));
        if (!program.Inside(without + cause)) {
            EXPECT_NE(geteuid(), 0);
            continue;
        }
        ASSERT_TRUE(program.Save("/mnt/place/mine", "A card"));
        ASSERT_TRUE(kept != "/mnt/place/mine.zip" || program.In("Replace", "", { "alt+y" }));
        ASSERT_TRUE(cause != "without zip" || program.In("Information", "", { "Return" }));
        const bool isSaved = left != "nothing";
        ASSERT_TRUE(!isSaved || program.Send("a box", "E-mail"));
        const std::string letter =
            "*Date: *Subject: Tarvex results\nTo: support@tarvex.example\n*Results for : a box.*="
            + std::string(left == "zip" ? "mine.zip" : "mine") + "\n*";
        const bool isMailed = isSaved && errors.find("not sent") == errors.npos;
        EXPECT_SOON(program.Errors().find(errors, told) != errors.npos
            && isMailed == LibString(ReadFile(folder / "mail").c_str()).IsWildCard(letter.c_str()))
            << program.Errors() << ReadFile(folder / "mail");
        const std::string said = std::regex_replace(
            program.Errors().substr(told), std::regex("(sh|/usr/bin/cp): .*\n"), "");
        EXPECT_TRUE(said.ends_with(errors.empty() ? " found <A card>\n" : errors)) << said;
        std::filesystem::remove(folder / "mail");
        const std::string mine = program.Read("/mnt/place/mine");
        EXPECT_EQ(mine == "none", left == "nothing" || left == "zip");
        EXPECT_EQ(mine.starts_with("1.0\n"), left == "plain");
        EXPECT_EQ(mine.starts_with("tmp/results/"), left == "tar");
        EXPECT_EQ(program.Read("/mnt/place/mine.zip").starts_with("PK"), left == "zip");
        EXPECT_TRUE(kept.empty() || program.Read(kept) == "precious\n");
        if (left == "zip") {
            EXPECT_TRUE(program.Inside(unpack + "tmp/results/unknown_devices >/mnt/devices"));
            EXPECT_EQ(ReadFile(folder / "devices"),
                "pci class = <3>, type = <Display>\nVendor id <0x8086>, Device id <0x0ABC>, "
                "Vendor <Intel,Intel Corporation>, Device <A card>\n\n");
            EXPECT_TRUE(program.Inside(unpack + "tmp/results/mine >/mnt/results"));
            ResultList saved;
            EXPECT_TRUE(ReadResultsFile((folder / "results").c_str(), saved));
            EXPECT_EQ(saved.First()->Size(), 3);
        }
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
        const auto isFar = [&] {
            return when < kWithOneProcessorOff || ReadFile(kOnline) != online;
        };
        EXPECT_TRUE(screen::WaitFor(isFar, 120)) << "a pass of all processors takes its time";
        program.End(when == kKilledWithOneOff ? SIGKILL : SIGTERM);
        EXPECT_EQ(program.Status(30), when == kKilledWithOneOff ? -1 : 0) << when;
        EXPECT_SOON(ReadFile(kOnline) == online);
    }
}
