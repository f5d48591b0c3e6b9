#include "WholeFile.h"

#include "TestHome.h"
#include "tests/support/Child.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <fcntl.h>
#include <sys/sysmacros.h>
#include <sys/xattr.h>

namespace {

// Why the text could not be written there; empty: it was.
std::string Put(const std::string& path, const std::string& text = "new")
{
    WholeFile file(path.c_str());
    if (file.Stream())
        fwrite(text.data(), 1, text.size(), file.Stream());
    return file.Commit() ? "" : file.Error();
}

// Everything in the folder, links with what they point to, and the text of f.
std::string Contents(const TempFolder& folder)
{
    return Said(folder, "find . -mindepth 1 -printf '%P%l\\n' | sort; cat f");
}

TEST(WholeFile, TakesThePlaceOfAFileThroughLinksWithItsOwnerAndMode)
{
    const std::string owner = std::to_string(geteuid()) + " " + std::to_string(getegid());
    for (const Row& row : RowsOf("kits/storage/data/whole-files.txt", 5)) {
        if (row[0] == "root" && geteuid() != 0)
            continue;
        SCOPED_TRACE(row[1]);
        const TempFolder folder;
        Shell(folder, row[1]);
        const mode_t before = umask(027);
        EXPECT_EQ(WholeFile::WhyNot((folder / row[2]).c_str()) + Put(folder / row[2]), "");
        umask(before);
        const std::string rights = row[3] + (row[0] == "root" ? "" : " " + owner);
        EXPECT_EQ(Said(folder, "stat -c '%a %u %g' f"), rights + " ");
        EXPECT_EQ(Contents(folder), row[4]);
    }
}

TEST(WholeFile, KeepsWhatAPersonHasPutOnTheFile)
{
    const TempFolder folder;
    const std::string path = folder / "f";
    WriteFile(path, "old");
    if (setxattr(path.c_str(), "user.note", "text", 4, 0) != 0)
        GTEST_SKIP() << "No attributes here";
    char value[8] = "";
    EXPECT_EQ(Put(path), "");
    EXPECT_EQ(getxattr(path.c_str(), "user.note", value, sizeof value), 4);
    EXPECT_STREQ(value, "text");
    // Its owner may write, user 1 and its group read; and what the folder has for new files is not
    // for one that has no list.
    const uint16 none = 0xffff; // a version, then of each its kind, rights and number
    const uint16 list[] = { 2, 0, 1, 6, none, none, 2, 4, 1, 0, 4, 4, none, none, 16, 4, none, none,
        32, 0, none, none };
    uint16 kept[std::size(list)] = {};
    const char *const name = "system.posix_acl_access", *const ofNew = "system.posix_acl_default";
    if (setxattr(path.c_str(), name, list, sizeof list, 0) != 0
        || setxattr(folder.Path().c_str(), ofNew, list, sizeof list, 0) != 0)
        GTEST_SKIP() << "No access lists here";
    EXPECT_EQ(Put(path), "");
    EXPECT_EQ(getxattr(path.c_str(), name, kept, sizeof kept), sizeof list);
    EXPECT_EQ(memcmp(&kept, list, sizeof list), 0);
    EXPECT_EQ(removexattr(path.c_str(), name), 0);
    EXPECT_EQ(Put(path), "");
    EXPECT_EQ(getxattr(path.c_str(), name, nullptr, 0), -1);
    EXPECT_EQ(Said(folder, "stat -c %a f"), "640 ");
}

TEST(WholeFile, SaysWhyItCannotBeWrittenAndLeavesAllAsItWas)
{
    for (const Row& row : RowsOf("kits/storage/data/refused-files.txt", 4)) {
        if (row[0] == "root" && geteuid() != 0)
            continue;
        SCOPED_TRACE(row[1]);
        const TempFolder folder;
        Shell(folder, "chmod 777 . && " + row[1]);
        const std::string before = Contents(folder);
        EXPECT_EQ(ErrorsOfChild([&] {
            EXPECT_TRUE(BecomeOrdinaryUser());
            EXPECT_EQ(WholeFile::WhyNot((folder / row[2]).c_str()), row[3]);
            EXPECT_EQ(Put(folder / row[2]), row[3]);
        }),
            "");
        EXPECT_EQ(Contents(folder), before);
    }
}

TEST(WholeFile, LeavesNothingWhenTheDiskIsFullOrTheProgramKilled)
{
    const TempFolder folder;
    WriteFile(folder / "f", "old");
    const auto killed = [&] {
        const WholeFile file((folder / "f").c_str());
        fputs("new", file.Stream());
        fflush(file.Stream());
        return raise(SIGKILL);
    };
    EXPECT_EQ(InChild(killed), -SIGKILL);
    EXPECT_EQ(Contents(folder), "f old");
    if (!CanMount())
        GTEST_SKIP() << "No disk can be mounted here";
    EXPECT_EQ(ErrorsOfChild([&] {
        EXPECT_TRUE(TakeOwnMounts());
        EXPECT_EQ(mount("", folder.Path().c_str(), "tmpfs", 0, "size=64k"), 0);
        WriteFile(folder / "f", "old");
        EXPECT_EQ(Put(folder / "f", std::string(65'000, 'x')), strerror(ENOSPC));
        EXPECT_EQ(Contents(folder), "f old");
    }),
        "");
}

TEST(WholeFile, WritesToPipesDevicesAndStandardOutputAsTheyAre)
{
    const TempFolder folder;
    Shell(folder, "mkfifo p");
    const pid_t reader = StartChild([&] { return ReadFile(folder / "p") == "new" ? 0 : 1; });
    EXPECT_EQ(WholeFile::WhyNot((folder / "p").c_str()), ""); // waits for no reader
    EXPECT_EQ(Put(""), strerror(ENOENT));
    WholeFile pipe((folder / "p").c_str());
    EXPECT_TRUE(fputs("new", pipe.Stream()) >= 0 && pipe.Commit() && !pipe.Commit());
    EXPECT_EQ(EndOf(reader), 0) << "closed already";
    EXPECT_EQ(Said(folder, "stat -c %F p"), "fifo ");

    const auto printing = [&] {
        const int file = open((folder / "f").c_str(), O_WRONLY | O_CREAT, 0600);
        if (file < 0 || dup2(file, 1) != 1)
            return 1;
        printf("first ");
        const std::string error = Put("/dev/stdout");
        printf(" last%s", error.c_str());
        return fflush(stdout);
    };
    EXPECT_EQ(InChild(printing), 0);
    EXPECT_EQ(ReadFile(folder / "f"), "first new last");
    EXPECT_TRUE(mknod((folder / "full").c_str(), S_IFCHR | 0600, makedev(1, 7)) != 0
        || Put(folder / "full") == strerror(ENOSPC));
}

} // namespace
