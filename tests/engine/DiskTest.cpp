#include "engine/Disk.h"

#include "tests/support/Test.h"

namespace fs = std::filesystem;

namespace {

class DiskTest : public testing::Test {
protected:
    std::set<std::string> Names() const
    {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(fFolder.Path()))
            names.insert(entry.path().filename());
        return names;
    }

    const TempFolder fFolder;
};

// What may lie where a test is about to make its file.
TEST_F(DiskTest, NothingThatIsPlantedIsFollowedOrWaitedFor)
{
    const std::string kept = fFolder / "kept", path = fFolder / "file.0";
    const std::function<void()> plants[] = {
        [&] { fs::create_symlink(kept, path); },
        [&] { fs::create_symlink(fFolder / "none", path); },
        [&] { fs::create_hard_link(kept, path); },
        [&] { mkfifo(path.c_str(), 0600); },
        [&] { WriteFile(path, "x"); },
    };
    for (const auto& plant : plants) {
        WriteFile(kept, "precious");
        plant();
        FileLife life;
        life.SetPathPrefix((fFolder / "file").c_str());
        life.Create();
        EXPECT_TRUE(life.failures == 0 && fs::is_regular_file(fs::symlink_status(path)));
        life.Remove();
        EXPECT_EQ(life.failures, 0);
        plant();
        {
            BlockFile file(path.c_str());
            EXPECT_FALSE(file.Open("rb")) << "what it did not write itself";
            ASSERT_TRUE(file.Open("wb"));
            EXPECT_TRUE(file.Write(2) && file.Close() && file.Open("rb") && file.Read(2));
            EXPECT_FALSE(file.Read(1));
            EXPECT_EQ(file.error, 0);
        }
        EXPECT_EQ(ReadFile(kept), "precious");
        EXPECT_EQ(Names(), std::set<std::string>({ "kept" }));
    }
    fs::create_directory(path);
    FileLife life;
    life.SetPathPrefix((fFolder / "file").c_str());
    life.Create();
    EXPECT_EQ(life.failures, 1);
    BlockFile file(path.c_str());
    EXPECT_FALSE(file.Open("wb") || file.error == 0);
}

} // namespace
