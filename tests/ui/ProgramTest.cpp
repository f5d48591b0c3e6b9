// The program as users run it.
#include "tests/support/ScreenDriver.h"
#include "tests/support/TempFolder.h"

#include <OS.h>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr char kOnline[] = "/sys/devices/system/cpu/online";

// A running Tarvex; killed, if need be, at the end.
class Program {
public:
    explicit Program(std::vector<std::string> arguments, const char* display = getenv("DISPLAY"))
        : errorPath(testing::TempDir() + "tarvex-errors-" + std::to_string(getpid()))
    {
        const std::string path = TARVEX_BUILD "/tarvex";
        arguments.insert(arguments.begin(), path);
        std::vector<char*> argv;
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        id = fork();
        if (id != 0)
            return;
        if (!freopen(errorPath.c_str(), "w", stderr))
            _exit(126);
        display ? setenv("DISPLAY", display, 1) : unsetenv("DISPLAY");
        execv(path.c_str(), argv.data());
        _exit(127);
    }
    ~Program()
    {
        if (!ended)
            kill(id, SIGKILL), waitpid(id, nullptr, 0);
        std::filesystem::remove(errorPath);
    }

    void End(int signal) const { kill(id, signal); }

    // The exit status; -1 for a program that did not end within so many seconds, or by a signal.
    int Status(double seconds)
    {
        int status = 0;
        ended = screen::WaitFor([&] { return waitpid(id, &status, WNOHANG) == id; }, seconds);
        return ended && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    // What it wrote on standard error, without the lines of the desktop's libraries.
    std::string Errors() const
    {
        std::istringstream lines(ReadFile(errorPath));
        std::string own;
        for (std::string line; std::getline(lines, line);)
            own += line.starts_with("Q") ? "" : line + "\n";
        return own;
    }

    bool HasThread(const std::string& name) const
    {
        std::error_code error;
        const std::string tasks = "/proc/" + std::to_string(id) + "/task";
        for (const auto& task : std::filesystem::directory_iterator(tasks, error)) {
            if (ReadFile(task.path() / "comm") == name + "\n")
                return true;
        }
        return false;
    }

    bool WaitForWindow(const std::string& title) const
    {
        const std::string command = "xdotool search --onlyvisible --pid " + std::to_string(id)
            + " --name '^" + title + "$' >/dev/null 2>&1";
        return screen::WaitFor([&] { return system(command.c_str()) == 0; });
    }

    // Asks for the string and memory tests by the keyboard, up to the warning before the run.
    bool AskForRun() const
    {
        if (!WaitForWindow("Tarvex"))
            return false;
        for (const char* key : { "Tab", "space", "Tab", "space", "ctrl+t" }) {
            screen::Key(key);
            snooze(100000);
        }
        return WaitForWindow("Warning");
    }

private:
    std::string errorPath;
    pid_t id;
    bool ended = false;
};

} // namespace

TEST(Program, AnswersWithoutWindows)
{
    Program blind({}, nullptr);
    EXPECT_EQ(blind.Status(30), 1);
    EXPECT_EQ(blind.Errors(), "No display: <DISPLAY> is not set\n");
    if (!screen::IsThere())
        GTEST_SKIP() << "no display";
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
        ASSERT_TRUE(program.WaitForWindow("Tarvex"));
        snooze(200000); // until the window manager has given it the keyboard
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
