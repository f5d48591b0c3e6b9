#include "engine/FileLife.h"

#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <set>

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

TEST_F(DiskTest, FileLifeMakesAndRemovesItsRangeOnThreadsThatWaitToBeStarted)
{
    WriteFile(fFolder / "file.1", "of an earlier run");
    FileLife life;
    life.SetPathPrefix((fFolder / "file").c_str());
    life.SetIndexRange(-1, 1);
    for (const int mode : { 1, 2 }) {
        const std::set<std::string> before = Names();
        thread_info info {};
        ASSERT_EQ(get_thread_info(life.Go(mode), &info), B_OK);
        EXPECT_STREQ(info.name, mode == 1 ? "CreateThread" : "RemoveThread");
        EXPECT_EQ(info.priority, 100);
        EXPECT_EQ(info.state, B_THREAD_SUSPENDED);
        EXPECT_EQ(Names(), before);
        status_t value = -1;
        EXPECT_EQ(wait_for_thread(life.thread, &value), B_OK);
        EXPECT_EQ(Names(),
            mode == 1 ? std::set<std::string>({ "file.-1", "file.0", "file.1" })
                      : std::set<std::string>());
        EXPECT_TRUE(mode == 2 || fs::is_empty(fFolder / "file.1"));
    }
    FileLife().Go(FileLife::kCreate);
    EXPECT_EQ(find_thread("CreateThread"), B_NAME_NOT_FOUND) << "outlived its object";
}

} // namespace
