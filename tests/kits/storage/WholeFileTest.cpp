#include "WholeFile.h"

#include "TestHome.h"
#include "tests/support/Child.h"
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
    const struct {
        const char* before;
        const char* path;
        std::string rights;
        const char* contents;
        bool isRoots = false;
    } rows[] = {
        { "true", "f", "640 " + owner, "f new" },
        { "echo old > f; chmod 4604 f", "f", "4604 " + owner, "f new" },
        { "echo old > f; chown 1:2 f; chmod 606 f", "f", "606 1 2", "f new", true },
        { "echo old > f; chmod 644 f; ln -s f l", "l", "644 " + owner, "f lf new" },
        { "ln -s m l; ln -s f m", "l", "640 " + owner, "f lm mf new" },
        { "mkdir -m 1777 d; ln -s ../f d/l", "d/l", "640 " + owner, "d d/l../f f new" },
    };
    for (const auto& row : rows) {
        if (row.isRoots && geteuid() != 0)
            continue;
        SCOPED_TRACE(row.before);
        const TempFolder folder;
        Shell(folder, row.before);
        const mode_t before = umask(027);
        EXPECT_EQ(WholeFile::WhyNot((folder / row.path).c_str()) + Put(folder / row.path), "");
        umask(before);
        EXPECT_EQ(Said(folder, "stat -c '%a %u %g' f"), row.rights + " ");
        EXPECT_EQ(Contents(folder), row.contents);
    }
}

TEST(WholeFile, SaysWhyItCannotBeWrittenAndLeavesAllAsItWas)
{
    const std::string link = "echo old > f; mkdir -m 1777 d; chown 1 d; ln -s ../f d/l; ";
    const struct {
        std::string before;
        const char* path;
        int error;
        bool isRoots = false;
    } rows[] = {
        { "echo old > f; mkdir d", "d", EISDIR },
        { "echo old > f; ln -s l l", "l", ELOOP },
        { "echo old > f", "none/f", ENOENT },
        { "echo old > f", "f/none", ENOTDIR },
        { "echo old > f; chmod 444 f", "f", EACCES },
        { "echo old > f; chmod 555 .", "f", EACCES },
        { "echo old > f; chmod 777 . f; chown 1 f", "f", 0, true },
        { link + "chown -h 2 d/l", "d/l", EACCES, true }, // planted by user 2 in user 1's folder
        { "echo old > f; mkdir -m 1777 d; mkfifo -m 666 d/p; chown 2 d/p", "d/p", EACCES, true },
    };
    for (const auto& row : rows) {
        if (row.isRoots && geteuid() != 0)
            continue;
        SCOPED_TRACE(row.before);
        const TempFolder folder;
        Shell(folder, "chmod 777 . && " + row.before);
        const std::string before = Contents(folder);
        const std::string expected =
            row.error != 0 ? strerror(row.error) : "its owner or group could not be kept";
        const auto asUser = [&] {
            EXPECT_TRUE(BecomeOrdinaryUser());
            EXPECT_EQ(WholeFile::WhyNot((folder / row.path).c_str()), expected);
            EXPECT_EQ(Put(folder / row.path), expected);
            return HasFailure() ? 1 : 0;
        };
        EXPECT_EQ(InChild(asUser), 0);
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
    const auto full = [&] {
        EXPECT_TRUE(TakeOwnMounts());
        EXPECT_EQ(mount("", folder.Path().c_str(), "tmpfs", 0, "size=64k"), 0);
        WriteFile(folder / "f", "old");
        EXPECT_EQ(Put(folder / "f", std::string(65'000, 'x')), strerror(ENOSPC));
        EXPECT_EQ(Contents(folder), "f old");
        return HasFailure() ? 1 : 0;
    };
    EXPECT_EQ(InChild(full), 0);
}

TEST(WholeFile, WritesToPipesDevicesAndStandardOutputAsTheyAre)
{
    const TempFolder folder;
    Shell(folder, "mkfifo p");
    const pid_t reader = StartChild([&] { return ReadFile(folder / "p") == "new" ? 0 : 1; });
    EXPECT_EQ(WholeFile::WhyNot((folder / "p").c_str()), ""); // waits for no reader
    EXPECT_EQ(Put(folder / "p"), "");
    EXPECT_EQ(EndOf(reader), 0);
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
    if (mknod((folder / "full").c_str(), S_IFCHR | 0600, makedev(1, 7)) == 0) {
        EXPECT_EQ(Put(folder / "full"), strerror(ENOSPC));
    }
}

} // namespace
