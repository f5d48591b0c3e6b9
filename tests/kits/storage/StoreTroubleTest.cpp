#include "StoreAccess.h"
#include "TestHome.h"
#include "tests/support/Child.h"
#include "tests/support/Rows.h"

namespace fs = std::filesystem;

namespace {

void MakeStore(const std::string& path)
{
    Store store(path);
    for (int i = 0; i < 5; i++)
        ASSERT_EQ(Write(store, std::to_string(i), std::string(20'000, 'x')), 20'000);
    ASSERT_EQ(Write(store, "kept", "value"), 5);
}

TEST(StoreTrouble, ADamagedStoreIsSetAsideWithALineAndTheNextWriteMakesANewOne)
{
    for (const Row& row : RowsOf("kits/storage/data/store-damages.txt", 3)) {
        SCOPED_TRACE(row[0]);
        const TempFolder folder;
        const std::string path = folder / "store";
        MakeStore(path);
        Shell(folder, row[1]);
        Sql(path, row[2]);
        const std::string before = ReadFile(path);
        testing::internal::CaptureStderr();
        Store store(path);
        EXPECT_NE(Read(store, "kept"), "value");
        EXPECT_EQ(Write(store, "later", "new"), 3);
        EXPECT_EQ(Read(store, "later"), "new");
        const std::string said = testing::internal::GetCapturedStderr();
        std::string aside;
        for (const auto& entry : fs::directory_iterator(folder.Path()))
            if (entry.path().filename().string().starts_with("store.damaged-"))
                aside = aside.empty() ? entry.path().string() : "more than one";
        EXPECT_EQ(ReadFile(aside), before);
        EXPECT_TRUE(said.starts_with("The attribute store <" + path + "> is damaged ("));
        EXPECT_TRUE(said.ends_with("has been set aside as <" + aside + ">\n")) << said;
    }
}

TEST(StoreTrouble, AnOlderStoreIsBroughtUpToDateAndALaterOneLeftAlone)
{
    const TempFolder folder;
    const std::string path = folder / "store";
    MakeStore(path);
    Sql(path,
        "DROP TABLE resources; ALTER TABLE files DROP COLUMN device; PRAGMA user_version = 1");
    {
        Store store(path);
        EXPECT_EQ(Read(store, "kept"), "value");
        ResourceChanges changes;
        changes.written.push_back({ 'CSTR', 3, "name", "data" });
        EXPECT_EQ(store.ChangeResources(kFile, changes), B_OK);
    }
    Sql(path, "PRAGMA user_version = 4");
    const std::string before = ReadFile(path);
    const auto use = [&] {
        Store store(path);
        EXPECT_EQ(Read(store, "kept"), std::to_string(B_UNSUPPORTED));
        EXPECT_EQ(Write(store, "kept", "lost"), B_UNSUPPORTED);
    };
    EXPECT_EQ(ErrorsOf(use),
        "Error using the attribute store <" + path
            + ">: it is of version 4, this program knows 3\n");
    EXPECT_EQ(ReadFile(path), before);
    const std::string nowhere = path + "/store";
    EXPECT_EQ(ErrorsOf([&] { EXPECT_LT(Write(*std::make_unique<Store>(nowhere), "a", "x"), 0); }),
        "Error using the attribute store <" + nowhere + ">: its folder cannot be made\n");
}

TEST(StoreTrouble, AStoreWithoutRightsToWriteIsReadAndAWriteSaysWhy)
{
    const TempFolder folder;
    const std::string path = folder / "a%20?#/store";
    MakeStore(path);
    Shell(folder, "chmod 444 a*/store && chmod 555 a* && chmod 755 .");
    const std::string said = ErrorsOfChild([&] {
        EXPECT_TRUE(BecomeOrdinaryUser());
        Store store(path);
        EXPECT_EQ(Read(store, "kept"), "value");
        EXPECT_LT(Write(store, "kept", "new"), 0);
        EXPECT_LT(Write(store, "kept", "told once"), 0);
    });
    EXPECT_TRUE(said.starts_with("Error using the attribute store <" + path + ">: ")) << said;
    EXPECT_EQ(said.find('\n'), said.size() - 1) << said;
    Shell(folder, "chmod 755 a*");
}

TEST(StoreTrouble, AFullDiskLosesNothingAndTheStoreWorksOnceThereIsRoom)
{
    const TempFolder folder;
    const std::string path = folder / "disk/tarvex/store";
    Shell(folder, "mkdir disk");
    if (!CanMount())
        GTEST_SKIP() << "No disk can be mounted here";
    const std::string said = ErrorsOfChild([&] {
        ASSERT_TRUE(TakeOwnMounts());
        ASSERT_EQ(mount("", (folder / "disk").c_str(), "tmpfs", 0, "size=1m,mode=777"), 0);
        Store store(path);
        EXPECT_EQ(Write(store, "kept", "value"), 5);
        EXPECT_EQ(Write(store, "kept", std::string(5'000'000, 'x')), B_DEVICE_FULL);
        EXPECT_EQ(Read(store, "kept"), "value");
        WriteFile(folder / "disk/filler", std::string(2'000'000, 'x'));
        EXPECT_EQ(Write(store, "kept", std::string(2'000'000, 'x')), B_DEVICE_FULL);
        Store other(path); // of another program
        EXPECT_EQ(Read(other, "kept"), "value");
        Shell(folder, "rm disk/filler");
        EXPECT_EQ(Write(store, "kept", "new"), 3);
        EXPECT_EQ(Read(other, "kept"), "new");
        EXPECT_EQ(Write(store, "kept", std::string(5'000'000, 'x')), B_DEVICE_FULL);
    });
    EXPECT_TRUE(said.ends_with("full\n")) << said;
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 2) << said; // again after what went well
}

} // namespace
