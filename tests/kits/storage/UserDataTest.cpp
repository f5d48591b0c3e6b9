#include "TestHome.h"
#include "tests/support/Rows.h"
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
    WriteFile(elsewhere / "kept", "planted");
    setenv("ELSEWHERE", elsewhere.Path().c_str(), 1);
    setenv("FOLDER", folder.c_str(), 1);
    for (const Row& row : RowsOf("kits/storage/data/others-data.txt", 3)) {
        SCOPED_TRACE(row[1]);
        if (row[0] == "root" && geteuid() != 0)
            continue;
        Prepare(folder);
        Shell(elsewhere, row[1]);
        std::string why;
        EXPECT_EQ(ReadUserData("kept", 99, &why), std::nullopt);
        EXPECT_EQ(why, row[2]);
        EXPECT_FALSE(WriteUserData("kept", "new"));
        EXPECT_EQ(ReadFile(elsewhere / "kept"), "planted");
    }
    Prepare(folder);
    Shell(elsewhere, "chmod 664 $FOLDER/kept"); // as some umasks have it
    EXPECT_EQ(ReadUserData("kept", 99), "text");
    std::filesystem::remove_all(folder);
}

} // namespace
