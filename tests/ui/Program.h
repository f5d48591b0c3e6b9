#pragma once

#include "tests/support/ScreenDriver.h"
#include "tests/support/Test.h"

#include <sys/wait.h>

// A running Tarvex; killed, if need be, at the end. Its user has a keyboard, and a screen reader
// where there is a session bus.
class Program {
public:
    // With a shell command for setup it has mounts of its own, which the command may make first.
    explicit Program(std::vector<std::string> command, const char* display = getenv("DISPLAY"),
        const std::string& setup = "")
    {
        command.insert(command.begin(), TARVEX_BUILD "/tarvex");
        if (!setup.empty()) {
            const std::string start = setup + " && exec \"$0\" \"$@\"";
            command.insert(command.begin(), { "unshare", MountOption(), "sh", "-c", start });
        }
        std::vector<char*> argv;
        for (std::string& argument : command)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        id = fork();
        if (id != 0)
            return;
        if (!freopen(errorPath.c_str(), "w", stderr))
            _exit(126);
        setenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1", 1);
        display ? setenv("DISPLAY", display, 1) : unsetenv("DISPLAY");
        execvp(argv[0], argv.data());
        _exit(127);
    }
    ~Program()
    {
        if (!ended)
            kill(id, SIGKILL), waitpid(id, nullptr, 0);
        std::filesystem::remove(errorPath);
    }
    // Whether the setup works: not every user may mount.
    static bool CanMount(const std::string& setup)
    {
        return Succeeds(std::string("unshare ") + MountOption() + " sh -c '" + setup + "'");
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
        return Succeeds("grep -qsx " + name + " /proc/" + std::to_string(id) + "/task/*/comm");
    }

    // Runs a shell command, without ', with the program's mounts; whether it succeeds.
    bool Inside(const std::string& command) const
    {
        const char* user = geteuid() == 0 ? "" : " -U --preserve-credentials";
        return Succeeds("nsenter -m -t " + std::to_string(id) + user + " sh -c '" + command + "'");
    }
    // The file as the program sees it.
    std::string Read(const std::string& path) const
    {
        return ReadFile("/proc/" + std::to_string(id) + "/root" + path);
    }

    // Types into the program's window of that title, once it has the keyboard, and then the keys.
    bool In(const std::string& title, const std::string& text, std::vector<std::string> keys) const
    {
        if (!screen::WaitFor([&] { return IsActive(title); }, 60))
            return false;
        if (!text.empty())
            screen::Type(text);
        for (const std::string& key : keys)
            screen::Key(key);
        return true;
    }

    // Presses a control of a window, once an entry there holds what was typed. It is found as a
    // screen reader does, on a session bus that was there before the program.
    static bool Press(const std::string& role, const std::string& name, const std::string& window,
        const std::string& typed = "")
    {
        return Succeeds("timeout 100 /usr/bin/python3 " TARVEX_TESTS "/support/accessible.py '"
            + role + "' '^" + name + "\\n' '" + window + "' '" + typed + "'");
    }
    // Types what the machine is called into the question how the results are to be sent, and
    // answers.
    bool Send(const std::string& machine, const std::string& button) const
    {
        return In("alert", machine, {}) && Press("push button", button, "alert", machine);
    }

    // Asks for the tests of strings and memory, up to the warning before the run.
    bool AskForRun() const
    {
        return In("Tarvex", "", {}) && Press("check box", "Strings", "Tarvex")
            && Press("check box", "Memory", "Tarvex")
            && screen::WaitFor(
                [this] {
                    screen::Key("ctrl+t"); // nothing happens until the program has seen the ticks
                    return screen::WaitFor([this] { return IsActive("Warning"); }, 2);
                },
                60);
    }
    // From the results to the question how they are to be sent.
    bool Save(const std::string& path, const std::string& device) const
    {
        return In("Results", "", {}) && Press("push button", "Save...", "Results")
            && In("tarvex", "", { "y" })
            // Twice: the first may come while the form is being framed.
            && In("Unknown Devices", "", { "ctrl+a", "ctrl+a" })
            && In("Unknown Devices", device, { "alt+F4" }) && In("Save As", path, { "Return" });
    }

private:
    bool IsActive(const std::string& title) const
    {
        // Not as the window manager says, which does so before the keys go there.
        return Succeeds("test \"$(xdotool getwindowfocus getwindowpid getwindowname 2>/dev/null)\""
                        " = '"
            + std::to_string(id) + "\n" + title + "'");
    }
    static const char* MountOption() { return geteuid() == 0 ? "-m" : "-rm"; }
    static bool Succeeds(const std::string& command) { return system(command.c_str()) == 0; }

    const std::string errorPath = testing::TempDir() + "tarvex-errors-" + std::to_string(getpid());
    pid_t id = 0;
    bool ended = false;
};
