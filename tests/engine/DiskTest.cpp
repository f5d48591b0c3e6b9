#include "engine/Disk.h"

#include "tests/support/Child.h"
#include "tests/support/Test.h"

#include <cerrno>
#include <climits>
#include <sys/resource.h>

namespace fs = std::filesystem;

namespace {

class DiskTest : public testing::Test {
protected:
    const TempFolder fFolder;
};

// What may lie where a test is about to make its file.
TEST_F(DiskTest, NothingThatIsPlantedIsFollowedOrWaitedFor)
{
    const std::string kept = fFolder / "kept", path = fFolder / "file.0";
    const size_t open = TempFolder::NamesIn("/proc/self/fd").size();
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
            EXPECT_TRUE(!file.Open("rb") && file.error == ENOENT) << "what it did not write itself";
            ASSERT_TRUE(file.Open("wb"));
            EXPECT_TRUE(file.Write(2) && file.Close() && file.Open("rb") && file.Read(2));
            EXPECT_FALSE(file.Read(1));
            EXPECT_EQ(file.error, 0);
        }
        EXPECT_EQ(ReadFile(kept), "precious");
        EXPECT_EQ(fFolder.Names(), std::set<std::string>({ "kept" }));
    }
    EXPECT_EQ(TempFolder::NamesIn("/proc/self/fd").size(), open);
    fs::create_directory(path);
    BlockFile file(path.c_str());
    EXPECT_FALSE(file.Open("wb"));
    EXPECT_EQ(file.error, EEXIST);
}

TEST_F(DiskTest, WhatCannotBeDoneIsPassedOverAndTheFirstErrorTold)
{
    for (const char* folder : { "file.3", "file.6" })
        fs::create_directory(fFolder / folder);
    FileLife life;
    life.SetPathPrefix((fFolder / "file").c_str());
    life.SetIndexRange(5, 4);
    EXPECT_EQ(life.Create() * 10 + life.failures, 0);
    life.SetIndexRange(2, 5);
    EXPECT_EQ(life.Create() * 10 + life.failures, 1);
    EXPECT_EQ(life.error, EISDIR);
    EXPECT_EQ(fFolder.Names(),
        std::set<std::string>({ "file.2", "file.3", "file.4", "file.5", "file.6" }));
    fs::remove(fFolder / "file.2");
    EXPECT_EQ(life.Remove() * 10 + life.failures, 2);
    EXPECT_EQ(life.error, ENOENT);
    EXPECT_EQ(fFolder.Names(), std::set<std::string>({ "file.3", "file.6" }));
    EXPECT_EQ(InChild([&] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit two { 2 * BlockFile::kBlockSize, 2 * BlockFile::kBlockSize };
        setrlimit(RLIMIT_FSIZE, &two);
        BlockFile file((fFolder / "file").c_str());
        if (!file.Open("wb") || !file.Write(1) || file.Write(3) || file.error != EFBIG)
            return 1;
        return !file.Close() && file.error == EFBIG && file.Open("rb") && file.Read(2) ? 0 : 2;
    }),
        0);
}

TEST_F(DiskTest, CanBeEndedInTheMiddleOfWhatWouldTakeHours)
{
    const std::string path = fFolder / "file";
    BlockFile file(path.c_str());
    ASSERT_TRUE(file.Open("wb") && file.Close() && file.Open("rb"));
    FileLife life;
    life.SetPathPrefix((path + "/none").c_str());
    life.SetIndexRange(0, INT32_MAX);
    struct Work {
        std::function<void()> run;
        std::atomic<bool> hasBegun = false;
    } works[] = { { [&] { file.Read(LONG_MAX); } }, { [&] { life.Remove(); } } };
    for (Work& work : works) {
        const auto begin = [](void* self) -> int32 {
            static_cast<Work*>(self)->hasBegun = true;
            static_cast<Work*>(self)->run();
            return 0;
        };
        const thread_id thread = spawn_thread(begin, "work", 10, &work);
        EXPECT_EQ(resume_thread(thread), B_OK);
        while (!work.hasBegun)
            snooze(1000);
        EXPECT_EQ(kill_thread(thread), B_OK);
    }
}

} // namespace
