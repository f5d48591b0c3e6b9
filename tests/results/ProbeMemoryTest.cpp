#include "results/ProbeMemory.h"

#include "foundation/PlainText.h"
#include "tests/foundation/LocaleGuard.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

namespace {

constexpr double kNone = std::numeric_limits<double>::infinity();

TEST(ProbeMemory, TheBestIsKeptAndForgottenUnlessItIsConfirmed)
{
    const std::string other = "2e-04 999 B 2 | x\n";
    for (const Row& row : RowsOf("results/data/probes", 4)) {
        SCOPED_TRACE(row[0]);
        const int day = std::stoi(row[1]);
        const double seconds = std::stod(row[0]);
        const LocaleGuard german("de_DE.UTF-8");
        const std::string after = probes::Merge("1e-04 1000 A\n" + other, "A", seconds, day);
        EXPECT_EQ(after, row[2] + (day < 1090 ? other : ""));
        EXPECT_EQ(LibShortestText(probes::Find(after, "A", day + 90)), row[3]);
        EXPECT_EQ(probes::Find(after, "B 2", day), kNone);
    }
}

TEST(ProbeMemory, DamageIsLeftOut)
{
    const std::string damaged =
        "\n7e-05\n7e-05 1000\n7e-05 1000 \nnan 1000 A\n-1 1000 A\n0 1000 A\n"
        "7e-05 word A\n7e-05 99999999999 A\n1e-400 1000 A\n7e-05 1003 A\n7e-05 910 A\n"
        "0.0002 1000 A\n0.0001 1002 A\n0.0003 1000 A\n7e-05 1000 \n"
        "1e-06 911 C\n1 1000 D\n9e-07 1000 E\n1.1 1000 E\n7e-05 1000";
    EXPECT_EQ(probes::Find(damaged, "A", 1001), 0.0001);
    EXPECT_EQ(probes::Merge(damaged, "B", 0.0002, 1001),
        "1e-04 1002 A\n1e-06 911 C\n1 1000 D\n2e-04 1001 B\n");
}

TEST(ProbeMemory, StaysInTheUsersData)
{
    const std::string folder = DataHome() / "tarvex";
    MachineDetails details;
    EXPECT_EQ(ProbeKey(details, {}), "");
    details.processorModel = "Model\n1";
    details.processors.resize(2);
    details.processors[1].upperLimit = 3000000000;
    const std::string key = ProbeKey(details, { "1.2.6", "GNU 12.2.0", "" });
    EXPECT_EQ(key, "Model 1 | 3000000000 Hz | 1.2.6 | GNU 12.2.0");

    const auto kept = [](const std::string& of) {
        const Probe probe = KeptProbe(of);
        return std::pair(probe.core, probe.clock);
    };
    const std::pair none(kNone, kNone);
    EXPECT_EQ(kept(key), none);
    KeepProbe("", { 0.0001, 0.0001 });
    KeepProbe(key, { 0.0001, 0.0003 });
    KeepProbe("another", { 0.0002, 0.0002 });
    KeepProbe(key, { 0.0003, 0.0002 });
    KeepProbe(key, kUnknownBest);
    EXPECT_EQ(kept(key), std::pair(0.0001, 0.0002));
    EXPECT_EQ(kept("another"), std::pair(0.0002, 0.0002));
    EXPECT_EQ(kept(""), none);

    WriteFile(folder + "/sustained-probes", std::string(1 << 20, 'x'));
    EXPECT_EQ(kept(key), none);
    KeepProbe(key, { 0.0001, 0.0001 }); // anew
    EXPECT_EQ(kept(key), std::pair(0.0001, 0.0001));
    std::filesystem::remove(folder + "/sustained-probes");
    std::filesystem::create_directory(folder + "/sustained-probes");
    KeepProbe(key, { 0.0001, 0.0001 }); // cannot, and says nothing
    EXPECT_EQ(kept(key), none);
    std::filesystem::remove(folder + "/sustained-probes");
}
} // namespace
