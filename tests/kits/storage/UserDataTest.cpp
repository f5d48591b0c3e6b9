#include "TestHome.h"
#include "tests/support/Test.h"

#include <UserData.h>

namespace {

// Sets everything back to a folder of the user's own with a file "kept".
void Prepare(const std::string& folder)
{
    std::filesystem::remove_all(folder);
    ASSERT_TRUE(WriteUserData("kept", "text"));
}

TEST(UserData, IsWrittenIntoAFolderOfTheUsersAloneAndReadAgain)
{
    const std::string folder = TestHome() / "data/tarvex";
    std::filesystem::remove_all(folder);
    std::string why = "before";
    EXPECT_EQ(ReadUserData("kept", 9, &why), std::nullopt);
    EXPECT_EQ(why, "") << "there is none";
    Prepare(folder);
    EXPECT_EQ(ReadUserData("none", 9, &why), std::nullopt);
    EXPECT_EQ(why, "");
    struct stat status = {};
    ASSERT_EQ(stat(folder.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    EXPECT_EQ(ReadUserData("kept", 4), "text");
    EXPECT_EQ(ReadUserData("kept", 3, &why), std::nullopt);
    EXPECT_EQ(why, "it has more than 3 bytes");
    EXPECT_EQ(ReadUserData("kept", 4, &why), "text");
    EXPECT_EQ(why, "");
    EXPECT_TRUE(WriteUserData("kept", ""));
    EXPECT_EQ(ReadUserData("kept", 4), "");
}

TEST(UserData, OfOthersIsNeitherReadNorReplaced)
{
    const TempFolder elsewhere;
    const std::string folder = TestHome() / "data/tarvex";
    const std::string kept = folder + "/kept";
    WriteFile(elsewhere / "kept", "planted");
    const struct {
        const char* name;
        std::string commands;
        bool needsRoot;
    } rows[] = {
        { "link", "ln -sf " + (elsewhere / "kept") + " " + kept, false },
        { "fifo", "rm " + kept + " && mkfifo " + kept, false },
        { "folder", "rm " + kept + " && mkdir " + kept, false },
        { "file that others write", "chmod 755 " + folder + " && chmod 666 " + kept, false },
        { "folder that others write", "chmod 1777 " + folder, false },
        { "link to a folder", "rm -r " + folder + " && ln -s " + elsewhere.Path() + " " + folder,
            false },
        { "another's file", "chown 65534 " + kept, true },
        { "another's folder", "chown 65534 " + folder, true },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        if (row.needsRoot && geteuid() != 0)
            continue;
        Prepare(folder);
        Shell(elsewhere, row.commands);
        std::string why;
        const bool isOfFolder = std::string(row.name).find("folder ") != std::string::npos
            || row.name == std::string("another's folder");
        EXPECT_EQ(ReadUserData("kept", 99, &why), std::nullopt);
        EXPECT_EQ(why,
            row.name == std::string("link to a folder") ? "Not a directory"
                : isOfFolder                            ? "its folder is not safe from others"
                                                        : "it is no file of yours alone");
        EXPECT_FALSE(WriteUserData("kept", "new"));
        EXPECT_EQ(ReadFile(elsewhere / "kept"), "planted");
    }
    Prepare(folder);
    Shell(elsewhere, "chmod 664 " + kept); // as some umasks have it
    EXPECT_EQ(ReadUserData("kept", 99), "text");
    std::filesystem::remove_all(folder);
}

} // namespace
