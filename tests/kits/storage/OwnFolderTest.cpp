// The common temporary directory. Each case is a process of its own: it gets a folder of its own.
#include "tests/support/Child.h"
#include "tests/support/Test.h"
#include "tests/support/WaitUntil.h"

#include <Directory.h>
#include <FindDirectory.h>
#include <Path.h>

namespace fs = std::filesystem;

namespace {

std::string Ask(const std::string& base, status_t expected = B_OK)
{
    BPath path;
    BPath unchanged("/before");
    setenv("TMPDIR", base.c_str(), 1);
    EXPECT_EQ(find_directory(B_COMMON_TEMP_DIRECTORY, &unchanged, true), expected) << base;
    EXPECT_EQ(find_directory(B_COMMON_TEMP_DIRECTORY, &path), B_OK);
    EXPECT_STREQ(unchanged.Path(), expected == B_OK ? path.Path() : "/before");
    return path.Path();
}

// The names below base, one a line.
std::string Names(const std::string& base)
{
    std::string names;
    for (const auto& entry : fs::directory_iterator(base))
        names += entry.path().filename().string() + "\n";
    return names;
}

TEST(OwnFolder, IsClosedToOthersAndGoesAtEveryEndOfTheProcessButAKill)
{
    const TempFolder kept;
    WriteFile(kept / "file", "kept");
    for (const int number : { SIGTERM, SIGABRT, SIGQUIT, SIGKILL }) {
        const TempFolder base;
        const int end = InChild([&] {
            umask(0277);
            signal(number, SIG_DFL); // a shell that runs us in the background has some ignored
            const std::string folder = Ask(base.Path());
            EXPECT_EQ(fs::path(folder).parent_path(), base.Path());
            EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
            EXPECT_EQ(Ask("/elsewhere"), folder);
            umask(022);
            fs::create_directories(folder + "/a/b");
            WriteFile(folder + "/a/b/c", "text");
            fs::create_directory_symlink(kept.Path(), folder + "/a/link");
            EXPECT_EQ(InChild([&] { return Ask(base.Path()) == folder; }), 0) << "a fork's is its";
            fs::remove_all(folder);
            fs::create_directory_symlink(kept.Path(), folder); // what took its place is no folder
            const std::string again = Ask(base.Path());
            EXPECT_NE(again, folder);
            fs::create_directories(again + "/a/b");
            fs::create_directory_symlink(kept.Path(), again + "/a/link");
            fs::remove(folder);
            return testing::Test::HasFailure() ? 1 : raise(number);
        });
        EXPECT_EQ(end, -number);
        // The fork's own is left, as it ends without a word to the kit.
        const std::string names = Names(base.Path());
        EXPECT_EQ(std::count(names.begin(), names.end(), '\n'), number == SIGKILL ? 2 : 1) << names;
        EXPECT_EQ(ReadFile(kept / "file"), "kept");
    }
}

TEST(OwnFolder, OfADeadProcessGoesWithTheNextStartAndNothingElseDoes)
{
    const TempFolder base, kept;
    WriteFile(kept / "file", "kept");
    const pid_t alive = StartChild([&] { return Ask(base.Path()).empty() + pause(); });
    EXPECT_TRUE(WaitUntil([&] { return Names(base.Path()) != ""; }));
    const std::string others = ".tarvex-temp-00000000000000";
    fs::create_directory_symlink(kept.Path(), base / (others + "01"));
    WriteFile(base / (others + "02"), "text");
    mkdir((base / (others + "03")).c_str(), 0755);
    mkdir((base / (others + "04")).c_str(), 0700);
    mkdir((base / (others + "0x")).c_str(), 0700);
    const bool isRoot = chown((base / (others + "04")).c_str(), 1, 1) == 0;
    const std::string before = Names(base.Path());
    EXPECT_EQ(InChild([&] {
        fs::create_directory_symlink(kept.Path(), Ask(base.Path()) + "/link");
        return raise(SIGKILL);
    }),
        -SIGKILL);
    EXPECT_NE(Names(base.Path()), before);
    if (!isRoot)
        fs::remove(base / (others + "04"));
    const std::string start = "TMPDIR=" + base.Path() + " "
        + fs::read_symlink("/proc/self/exe").string() + " --gtest_list_tests >/dev/null";
    EXPECT_EQ(system(start.c_str()), 0);
    for (const char* end : { "01", "02", "03", "04", "0x" })
        EXPECT_EQ(fs::exists(base / (others + end)), isRoot || end != std::string("04")) << end;
    const std::string after = Names(base.Path());
    EXPECT_EQ(std::count(after.begin(), after.end(), '\n'), isRoot ? 6 : 5) << after;
    EXPECT_EQ(ReadFile(kept / "file"), "kept");
    kill(alive, SIGKILL);
    EndOf(alive);
}

TEST(OwnFolder, IsMadeNowhereElseWhereItCannotBeMade)
{
    const TempFolder folder;
    WriteFile(folder / "file", "");
    fs::create_directory(folder / "open");
    fs::permissions(folder / "open", fs::perms::all);
    fs::create_directory(folder / "theirs");
    const std::map<std::string, status_t> errors = { { "none", B_ENTRY_NOT_FOUND },
        { "file", B_NOT_A_DIRECTORY }, { "open", B_NOT_ALLOWED }, { "theirs", B_NOT_ALLOWED } };
    for (const auto& [name, error] : errors) {
        const std::string base = folder / name;
        if (name == "theirs" && chown(base.c_str(), 1, 1) != 0)
            continue;
        testing::internal::CaptureStderr();
        EXPECT_EQ(InChild([&, status = error] {
            const fs::path path = Ask(base, status);
            EXPECT_EQ(path.parent_path(), base);
            EXPECT_FALSE(fs::exists(path));
            return testing::Test::HasFailure() ? 1 : 0;
        }),
            0);
        const char* why = error == B_NOT_ALLOWED ? "others may replace what lies there"
            : name == "none"                     ? "No such file or directory"
                                                 : "Not a directory";
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "No temporary folder below <" + base + ">: " + why + "\n");
    }
    EXPECT_EQ(InChild([] { return Ask("relative").starts_with("/tmp/") ? raise(SIGTERM) : 1; }),
        -SIGTERM);
}

} // namespace
