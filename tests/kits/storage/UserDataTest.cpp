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
    const auto read = [](const char* name, size_t most) {
        std::string why = "before";
        return ReadUserData(name, most, &why).value_or("none: ") + why;
    };
    EXPECT_EQ(read("kept", 9), "none: ");
    Prepare(folder);
    EXPECT_EQ(read("none", 9), "none: ");
    EXPECT_EQ(Said(TestHome(), "stat -c %a data/tarvex"), "700 ");
    EXPECT_EQ(read("kept", 4), "text");
    EXPECT_EQ(read("kept", 3), "none: it has more than 3 bytes");
    EXPECT_TRUE(WriteUserData("kept", "") && ReadUserData("kept", 4) == "");
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
