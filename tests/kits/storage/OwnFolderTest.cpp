// The common temporary directory. Each case is a process of its own: it gets a folder of its own.
#include "TestHome.h"
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
            EXPECT_EQ(InChild([&] { return Ask(base.Path()) == folder; }), 0) << "a fork's is its";
            fs::remove_all(folder);
            fs::create_directory_symlink(kept.Path(), folder); // what took its place is no folder
            const std::string again = Ask(base.Path());
            EXPECT_NE(again, folder);
            umask(022);
            std::string deep = again;
            for (int level = 0; level < 101; level++)
                deep += "/a";
            fs::create_directories(deep);
            for (int i = 0; i < 500; i++) // more than one look at a folder brings
                WriteFile(again + "/a/file" + std::to_string(i), "text");
            fs::create_directory_symlink(kept.Path(), again + "/a/link");
            fs::remove(folder);
            return testing::Test::HasFailure() ? 1 : raise(number);
        });
        EXPECT_EQ(end, -number);
        // The fork's own is left, as it ends without a word to the kit.
        EXPECT_EQ(base.Names().size(), number == SIGKILL ? 2u : 1u);
        EXPECT_EQ(ReadFile(kept / "file"), "kept");
    }
}

TEST(OwnFolder, OfADeadProcessGoesWithTheNextStartAndNothingElseDoes)
{
    const TempFolder base, kept;
    WriteFile(kept / "file", "kept");
    const pid_t alive = StartChild([&] { return Ask(base.Path()).empty() + pause(); });
    EXPECT_TRUE(WaitUntil([&] { return !base.Names().empty(); }));
    const std::string others = ".tarvex-temp-00000000000000";
    Shell(base, "ln -s " + kept.Path() + " " + others + "01; echo text > " + others + "02");
    Shell(base, "mkdir -m 755 " + others + "03; mkdir -m 700 " + others + "04 " + others + "0x");
    if (chown((base / (others + "04")).c_str(), 1, 1)
        != 0) // another user's, as far as there is one
        fs::remove(base / (others + "04"));
    const std::set<std::string> before = base.Names();
    EXPECT_EQ(InChild([&] {
        fs::create_directory_symlink(kept.Path(), Ask(base.Path()) + "/link");
        return raise(SIGKILL);
    }),
        -SIGKILL);
    EXPECT_EQ(base.Names().size(), before.size() + 1);
    const std::string start = "TMPDIR=" + base.Path() + " "
        + fs::read_symlink("/proc/self/exe").string() + " --gtest_list_tests >/dev/null";
    EXPECT_EQ(system(start.c_str()), 0);
    EXPECT_EQ(base.Names(), before);
    EXPECT_EQ(ReadFile(kept / "file"), "kept");
    kill(alive, SIGKILL);
    EndOf(alive);
}

TEST(OwnFolder, IsMadeNowhereElseWhereItCannotBeMade)
{
    const TempFolder folder;
    WriteFile(folder / "file", "");
    Shell(folder, "mkdir -m 777 open; mkdir theirs");
    const bool isRoot = chown((folder / "theirs").c_str(), 1, 1) == 0;
    const char* const unsafe = "others may replace what lies there";
    const std::tuple<std::string, status_t, const char*> rows[] = {
        { "none", B_ENTRY_NOT_FOUND, "No such file or directory" },
        { "file", B_NOT_A_DIRECTORY, "Not a directory" }, { "open", B_NOT_ALLOWED, unsafe },
        { isRoot ? "theirs" : "open", B_NOT_ALLOWED, unsafe }
    };
    for (const auto& [name, error, why] : rows) {
        const std::string base = folder / name;
        EXPECT_EQ(ErrorsOfChild([&, status = error] {
            const fs::path path = Ask(base, status);
            EXPECT_EQ(path.parent_path(), base);
            EXPECT_FALSE(fs::exists(path) || fs::exists(Ask(base, status))); // told once
        }),
            "No temporary folder below <" + base + ">: " + why + "\n");
    }
    EXPECT_EQ(InChild([] { return Ask("relative").starts_with("/tmp/") ? raise(SIGTERM) : 1; }),
        -SIGTERM);
}

} // namespace
