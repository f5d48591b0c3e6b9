#include "console/OutputFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

class OutputFileTest : public testing::Test {
protected:
    OutputFileTest() { std::ofstream(fFolder + "/old") << "old text"; }
    ~OutputFileTest() override { fs::remove_all(fFolder); }

    std::string OldFile() const
    {
        std::string text;
        std::ifstream file(fFolder + "/old");
        std::getline(file, text);
        return text;
    }
    long CountFiles() const
    {
        return std::distance(fs::directory_iterator(fFolder), fs::directory_iterator());
    }

    char fName[32] = "/tmp/output-file-XXXXXX";
    const std::string fFolder = mkdtemp(fName);
    Results fResults { false };
};

TEST_F(OutputFileTest, CheckNamesTheFileAndTheReasonAndChangesNothing)
{
    const std::string rows[][2] = {
        { fFolder, "Is a directory" },
        { fFolder + "/missing/file", "No such file or directory" },
        { fFolder + "/old/file", "Not a directory" },
        { fFolder + "/" + std::string(300, 'x'), "File name too long" },
    };
    for (const auto& [path, reason] : rows)
        EXPECT_EQ(OutputFile(path).Check(), "cannot write <" + path + ">: " + reason);
    EXPECT_EQ(OutputFile(fFolder + "/old").Check(), "");
    EXPECT_EQ(OutputFile(fFolder + "/new").Check(), "");
    EXPECT_EQ(OldFile(), "old text");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(OutputFileTest, WriteReplacesAFileAndKeepsItsPermissionsAndLinks)
{
    const auto ownerOnly = fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(fFolder + "/old", ownerOnly);
    fs::create_symlink("old", fFolder + "/link");
    EXPECT_TRUE(OutputFile(fFolder + "/link").Write(fResults));
    EXPECT_TRUE(fs::is_symlink(fFolder + "/link"));
    EXPECT_EQ(OldFile(), "1.0");
    EXPECT_EQ(fs::status(fFolder + "/old").permissions(), ownerOnly);
    EXPECT_EQ(CountFiles(), 2);
}

} // namespace
