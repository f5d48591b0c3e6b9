// The program as users run it.
#include "tests/ui/Program.h"

#include <gtest/gtest.h>

namespace {

constexpr char kOnline[] = "/sys/devices/system/cpu/online";

} // namespace

TEST(Program, AnswersWithoutWindows)
{
    Program blind({}, nullptr);
    EXPECT_EQ(blind.Status(30), 1);
    EXPECT_EQ(blind.Errors(), "No display: <DISPLAY> is not set\n");
    if (!screen::IsThere())
        GTEST_SKIP() << "no display";
#ifndef __SANITIZE_THREAD__ // it has no place beside the stack
    // No stack of that size can be had, so no thread.
    const char* const limit = "ulimit -s 200000000000";
    if (Program::CanMount(limit)) {
        Program alone({}, getenv("DISPLAY"), limit);
        EXPECT_EQ(alone.Status(30), 1);
        EXPECT_NE(alone.Errors().find("Cannot start thread <display server>: "), std::string::npos)
            << alone.Errors();
    }
#endif
    Program help({ "-help", "a b.xml" });
    EXPECT_EQ(help.Status(30), 1);
    EXPECT_TRUE(help.Errors().ends_with("<a b.xml> is no help file\n")) << help.Errors();
}

TEST(Program, ReadsItsArgumentsAndQuitsWhenTold)
{
    if (!screen::IsThere())
        GTEST_SKIP() << "no display";
    const struct {
        std::vector<std::string> arguments;
        const char* key; // that ends it; none: a signal
        const char* errors;
    } rows[] = {
        { {}, "", "" },
        { { "-scmp" }, "ctrl+q", "Allowed to save comparisons\n" },
        { { "x", "-scmp" }, "alt+F4", "" },
        { { "-help" }, "", "Help file requred\n" },
    };
    for (const auto& row : rows) {
        Program program(row.arguments);
        ASSERT_TRUE(program.In("Tarvex", "", {}));
        // Window managers give a window without an icon one of 48 pixels.
        const char* const icon = "xprop -name Tarvex _NET_WM_ICON | grep -q '(128 x 128)'";
        EXPECT_TRUE(screen::WaitFor([=] { return system(icon) == 0; }));
        row.key[0] ? screen::Key(row.key) : program.End(SIGTERM);
        EXPECT_EQ(program.Status(30), 0) << row.key;
        EXPECT_EQ(program.Errors(), row.errors);
    }
}

TEST(Program, QuitsAtAnyTimeOfARunAndGivesProcessorsBack)
{
    if (!screen::IsThere())
        GTEST_SKIP() << "no display";
    const std::string online = ReadFile(kOnline);
    const bool canSwitch = geteuid() == 0 && online != "0\n";
    enum { kAtTheWarning, kInTheFirstPass, kWithOneProcessorOff, kKilledWithOneOff };
    for (int when = kAtTheWarning; when <= (canSwitch ? kKilledWithOneOff : 1); when++) {
        Program program({});
        ASSERT_TRUE(program.AskForRun());
        if (when != kAtTheWarning) {
            screen::Key("Return");
            ASSERT_TRUE(screen::WaitFor([&] { return program.HasThread("benchmark"); }));
        }
        EXPECT_TRUE(screen::WaitFor(
            [&] { return when < kWithOneProcessorOff || ReadFile(kOnline) != online; }));
        program.End(when == kKilledWithOneOff ? SIGKILL : SIGTERM);
        EXPECT_EQ(program.Status(5), when == kKilledWithOneOff ? -1 : 0) << when;
        EXPECT_TRUE(screen::WaitFor([&] { return ReadFile(kOnline) == online; }));
    }
}
