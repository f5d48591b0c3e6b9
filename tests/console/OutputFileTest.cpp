#include "console/OutputFile.h"

#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

struct OutputFileTest : testing::Test {
    OutputFileTest() { WriteFile(fFolder / "old", "old text"); }

    long CountFiles() const
    {
        return std::distance(fs::directory_iterator(fFolder.Path()), fs::directory_iterator());
    }

    const TempFolder fFolder;
    Results fResults { false };
};

TEST_F(OutputFileTest, CheckNamesTheFileAndTheReasonAndChangesNothing)
{
    const std::string rows[][2] = {
        { fFolder.Path(), "Is a directory" },
        { fFolder / "missing/file", "No such file or directory" },
        { fFolder / "old/file", "Not a directory" },
        { fFolder / std::string(300, 'x'), "File name too long" },
    };
    for (const auto& [path, reason] : rows)
        EXPECT_EQ(OutputFile(path).Check(), "cannot write <" + path + ">: " + reason);
    EXPECT_EQ(OutputFile(fFolder / "old").Check(), "");
    EXPECT_EQ(OutputFile(fFolder / "new").Check(), "");
    EXPECT_EQ(ReadFile(fFolder / "old"), "old text");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(OutputFileTest, WriteReplacesAFileAndKeepsItsPermissionsAndLinks)
{
    const auto ownerOnly = fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(fFolder / "old", ownerOnly);
    fs::create_symlink("old", fFolder / "link");
    EXPECT_TRUE(OutputFile(fFolder / "link").Write(fResults));
    EXPECT_TRUE(fs::is_symlink(fFolder / "link"));
    EXPECT_EQ(ReadFile(fFolder / "old").substr(0, 4), "1.0\n");
    EXPECT_EQ(fs::status(fFolder / "old").permissions(), ownerOnly);
    EXPECT_EQ(CountFiles(), 2);
}

} // namespace
