// tarvex-run as its users run it.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <thread>

namespace fs = std::filesystem;

namespace {

std::string Contents(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

// Once no program that ended in the middle of a run has processors to give back any more.
std::string OnlineProcessors()
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (
        system("pgrep -x tarvex-lease >/dev/null") == 0 && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    return Contents("/sys/devices/system/cpu/online");
}

bool Fits(const std::string& text, const std::string& expression)
{
    return std::regex_match(text, std::regex(expression));
}

// Whatever happens to a run, the processors are as they were afterwards.
class TarvexRun : public testing::Test {
protected:
    ~TarvexRun() override
    {
        EXPECT_EQ(Contents("/sys/devices/system/cpu/online"), fOnline);
        fs::remove_all(fFolder);
    }

    // Runs the program by a shell, with another command in front, and returns its exit status.
    int Run(const std::string& arguments, const std::string& wrapper = "")
    {
        const std::string command = "cd " + fFolder + " && exec " + wrapper
            + " " TARVEX_BUILD "/tarvex-run " + arguments + " >out 2>err";
        const int status = system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string Output() const { return Contents(fFolder + "/out"); }
    std::string Errors() const { return Contents(fFolder + "/err"); }
    std::string File() const { return Contents(fFolder + "/file"); }

    char fName[32] = "/tmp/tarvex-run-XXXXXX";
    const std::string fFolder = mkdtemp(fName);
    const std::string fOnline = OnlineProcessors();
};

TEST_F(TarvexRun, RefusesWithOneLineAndStatusTwoAndRunsNothing)
{
    const char* rows[][2] = {
        { "", "tarvex-run: <--groups> is missing: which tests to run, see --help\n" },
        { "--groups sieve,nonsense --output file", "tarvex-run: unknown test group <nonsense>\n" },
        { "--groups sieve --output /proc/new",
            "tarvex-run: cannot write </proc/new>: No such file or directory\n" },
    };
    for (const auto& [arguments, errors] : rows) {
        EXPECT_EQ(Run(arguments), 2);
        EXPECT_EQ(Errors(), errors);
        EXPECT_EQ(Output(), "");
    }
    EXPECT_FALSE(fs::exists(fFolder + "/file"));
    EXPECT_EQ(Run("--version"), 0);
    EXPECT_TRUE(Fits(Output(), "tarvex-run \\d+\\.\\d+\\.\\d+\n")) << Output();
    EXPECT_EQ(Run("--help"), 0);
    EXPECT_EQ(Output().find("Usage: tarvex-run --groups G[,G...]|all --output FILE\n"), 0u);
}

TEST_F(TarvexRun, ShowsAndWritesEveryRateOfEveryProcessorCountWhateverTheLocale)
{
    EXPECT_EQ(
        Run("--groups sieve,ackerman,memory,strings --output file", "env LC_ALL=de_DE.UTF-8"), 0);
    EXPECT_EQ(Errors(), "");

    std::smatch parts;
    const std::string file = File();
    const std::regex start("1\\.0\n(\\d+)\n(.*\\((\\d)-.*)\n");
    ASSERT_TRUE(std::regex_match(file, parts, start)) << file;
    EXPECT_EQ(parts[1], std::to_string(parts[2].length()));
    const std::string count = parts[3];
    std::string shown, rates;
    for (int cpu = std::stoi(count); cpu > 0; cpu--) {
        for (const char* group : { "Strings", "Memory", "Ackerman", "Sieve" })
            shown += "Testing " + std::string(group) + " \\(cpu " + std::to_string(cpu) + "/"
                + count + "\\)\n";
        rates += " +\\d+\\.\\d";
    }
    const std::string times = "(?:\\d+\\.\\d{6}[,;]){" + count + "}";
    EXPECT_TRUE(Fits(parts[2],
        "[^\t]*\t(?:-?\\d+:[^\t]*\t)*100:126/" + times + "101:126/" + times + "200:195/" + times
            + "400:6000/" + times + "700:[1-9]\\d*/(?:[45]\\.\\d{6}[,;]){" + count + "}"))
        << file;
    EXPECT_TRUE(Fits(Output(),
        shown + "Test .*\nStrings Copy +MegaChars/sec" + rates + "\nStrings Compare +MegaChars/sec"
            + rates + "\nMemory +MB/sec" + rates + "\nAckerman +IPS" + rates + "\nSieve +IPS"
            + rates + "\n"))
        << Output();
}

TEST_F(TarvexRun, OnOneProcessorMakesOnePassAndShowsItsRatesEvenIfTheyCannotBeWritten)
{
    // A full device of our own: root's program could replace that of the system by a file.
    std::string full = fFolder + "/full";
    mknod(full.c_str(), S_IFCHR | 0600, makedev(1, 7));
    if (!std::ofstream(full, std::ios::in))
        full = "/dev/full";
    EXPECT_EQ(Run("--groups ackerman --output " + full, "taskset -c 0"), 1);
    EXPECT_EQ(Errors(), "Error writing <" + full + ">\n");
    EXPECT_TRUE(Fits(Output(),
        "Testing Ackerman \\(cpu 1/1\\)\nTest +Units +1 CPU\nAckerman +IPS +\\d+\\.\\d\n"))
        << Output();
    EXPECT_TRUE(fs::is_character_file(full)); // not replaced by a file
}

TEST_F(TarvexRun, IsEndedBySignalsWithItsProcessorsOnAndNoFileWritten)
{
    // A pass takes five seconds: where there are several, some processor is off by then.
    const std::string seconds = std::thread::hardware_concurrency() > 1 ? "8" : "2";
    for (const auto& [signal, status] : { std::pair("INT", 130), std::pair("TERM", 143) }) {
        const std::string wrapper =
            "timeout --preserve-status -s " + std::string(signal) + " " + seconds;
        EXPECT_EQ(Run("--groups sieve --output file", wrapper), status);
        EXPECT_EQ(Contents("/sys/devices/system/cpu/online"), fOnline);
        EXPECT_EQ(Output().find("\nTest "), std::string::npos) << Output();
        EXPECT_FALSE(fs::exists(fFolder + "/file"));
        EXPECT_EQ(Errors(), "");
    }
}

} // namespace
