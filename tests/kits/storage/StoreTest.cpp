#include "FileDescriptor.h"
#include "StoreAccess.h"
#include "TestHome.h"
#include "tests/support/Child.h"
#include "tests/support/Rows.h"

#include <fcntl.h>
#include <sys/statfs.h>
#include <sys/sysmacros.h>

namespace fs = std::filesystem;

namespace {

TEST(Store, TwoProgramsThatWriteAtOnceLoseNothing)
{
    const TempFolder folder;
    constexpr int kWrites = 300;
    const auto valueOf = [](int i) { return std::string(5000, 'x') + std::to_string(i); };
    const auto writeAs = [&](char program) {
        Store store(folder / "store");
        for (int i = 0; i < kWrites; i++)
            if (Write(store, program + std::to_string(i), valueOf(i)) < 5000)
                return 1;
        return 0;
    };
    const pid_t other = StartChild([&] { return writeAs('a'); });
    EXPECT_EQ(InChild([&] { return writeAs('b'); }), 0);
    EXPECT_EQ(EndOf(other), 0);
    Store store(folder / "store");
    for (const char program : { 'a', 'b' })
        for (int i = 0; i < kWrites; i++)
            ASSERT_EQ(Read(store, program + std::to_string(i)), valueOf(i));
}

std::string ReadFor(Store& store, const NodeIdentity& file)
{
    char value[9] = "";
    return store.ReadAttribute(file, "a", 0, value, 8) < 0 ? "none" : value;
}

TEST(Store, TellsFilesApartByDeviceInodeAndBirthAndKnowsAProgramThatTookItsOwnPlace)
{
    const TempFolder folder;
    Store store(folder / "store");
    const NodeIdentity file { "/nowhere/a", 17, 4711, 1, false, 5, 5 };
    const NodeIdentity program { "/nowhere/p", 18, 4711, 1, true, 5, 5 };
    for (const NodeIdentity& known : { file, program })
        ASSERT_EQ(store.WriteAttribute(known, "a", 'RAWT', 0, "mine"), 4);
    for (const Row& row : RowsOf("kits/storage/data/known-files.txt", 7)) {
        const auto number = [&](size_t i) { return std::stoul(row[i]); };
        EXPECT_EQ(ReadFor(store,
                      { row[1], number(2), std::stol(row[3]), 1, row[4] == "yes", std::stol(row[5]),
                          number(5) }),
            row[6])
            << row[0];
    }
    // The number of an inode belongs to the later file; of one born at no time nothing follows.
    for (const auto& [birth, left] :
        { std::pair(0, "mine mine other "), { 4713, "mine other " } }) {
        const NodeIdentity next { "/nowhere/n", 17, birth, 1, false, 5, 5 };
        EXPECT_EQ(store.WriteAttribute(next, "a", 'RAWT', 0, "other"), 5);
        store.Close();
        EXPECT_EQ(Sql(folder / "store", "SELECT data FROM attributes ORDER BY data"), left);
    }
    // Another name of a file is the file, but not where the same disk is there twice.
    NodeIdentity real;
    WriteFile(folder / "real", "");
    ASSERT_EQ(IdentifyNode(AT_FDCWD, folder / "real", &real), B_OK);
    EXPECT_EQ(store.WriteAttribute(real, "a", 'RAWT', 0, "its"), 3);
    real.path = "/nowhere/real";
    EXPECT_EQ(ReadFor(store, real), "its");
    real.mount++;
    EXPECT_EQ(ReadFor(store, real), "none");
}

TEST(Store, IdentifiesWhatANameOrADescriptorStandsForAndOpensNothing)
{
    const TempFolder folder;
    Shell(folder, "echo text > file; ln file other; mkfifo pipe; ln -s file link; mkdir sub");
    const FileDescriptor directory(open(folder.Path().c_str(), O_PATH));
    NodeIdentity node;
    const auto identify = [&](int base, const std::string& name) {
        EXPECT_EQ(IdentifyNode(base, name, &node), B_OK);
        return std::tuple(
            node.path, node.inode, node.birth, node.links, node.isProgram, node.device, node.mount);
    };
    struct statfs system = {};
    ASSERT_EQ(fstatfs(directory.Get(), &system), 0);
    int64 device = 0;
    memcpy(&device, &system.f_fsid, sizeof device);
    for (const std::string name : { "file", "other", "pipe", "link", "sub", "." }) {
        struct statx info = {};
        ASSERT_EQ(statx(directory.Get(), name.c_str(), AT_SYMLINK_NOFOLLOW,
                      STATX_BTIME | STATX_BASIC_STATS, &info),
            0);
        const std::string path = name == "." ? folder.Path() : folder / name;
        const uint64 mount = makedev(info.stx_dev_major, info.stx_dev_minor);
        const int64 birth = info.stx_btime.tv_sec * 1'000'000'000 + info.stx_btime.tv_nsec;
        device = device == 0 ? static_cast<int64>(mount) : device;
        const auto all =
            std::tuple(path, info.stx_ino, birth, info.stx_nlink, false, device, mount);
        const FileDescriptor itself(openat(directory.Get(), name.c_str(), O_PATH | O_NOFOLLOW));
        EXPECT_EQ(identify(directory.Get(), name), all);
        EXPECT_EQ(identify(AT_FDCWD, path), all);
        EXPECT_EQ(identify(itself.Get(), ""), all);
        EXPECT_TRUE(DeviceOf(path) == device && DeviceOf(path + "/none/x") == device);
    }
    EXPECT_EQ(IdentifyNode(directory.Get(), "none", &node), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(IdentifyNode(-1, "", &node), B_FILE_ERROR);
    EXPECT_TRUE((identify(AT_FDCWD, fs::read_symlink("/proc/self/exe")), node.isProgram));
}

TEST(Store, IsMadeByTheFirstWriteAndMadeAnewWhereItWasRemoved)
{
    const TempFolder folder;
    const std::string path = folder / "tarvex/store";
    Store store(path);
    testing::internal::CaptureStderr();
    EXPECT_EQ(Read(store, "a"), std::to_string(B_ENTRY_NOT_FOUND));
    EXPECT_EQ(store.RemoveAttribute(kFile, "a"), B_ENTRY_NOT_FOUND);
    EXPECT_FALSE(fs::exists(folder / "tarvex"));
    for (const char* value : { "one", "two" }) {
        EXPECT_EQ(Write(store, value, value), 3);
        EXPECT_EQ(Read(store, value), value);
        fs::remove_all(folder / "tarvex");
        EXPECT_EQ(Read(store, value), std::to_string(B_ENTRY_NOT_FOUND));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Store, ForgetsFilesThatHaveBeenGoneForLongAndLaterThoseOfADiskThatIsAway)
{
    const TempFolder folder;
    const std::string path = folder / "store";
    Store store(path);
    for (const char* name : { "there", "gone", "moved", "back" }) {
        WriteFile(folder / name, name);
        NodeIdentity file;
        ASSERT_EQ(IdentifyNode(AT_FDCWD, folder / name, &file), B_OK);
        ASSERT_GT(store.WriteAttribute(file, "a", 'RAWT', 0, name), 0);
    }
    ASSERT_EQ(
        store.WriteAttribute({ "/nowhere/a", 17, 4711, 1, false, 5, 5 }, "a", 'RAWT', 0, "away"),
        4);
    Shell(folder, "rm gone; mv moved elsewhere; mv back for-a-while");
    const std::pair<int, const char*> rows[] = { { 0, "away back gone moved there " },
        { 29, "away back gone moved there " }, { 31, "away back moved there " },
        { 366, "back moved there " } };
    for (const auto& [days, left] : rows) {
        store.Close();
        EXPECT_EQ(store.RemoveAttribute(kFile, "none"), B_ENTRY_NOT_FOUND); // opens it
        if (days == 0) {
            NodeIdentity moved;
            ASSERT_EQ(IdentifyNode(AT_FDCWD, folder / "elsewhere", &moved), B_OK);
            EXPECT_EQ(ReadFor(store, moved), "moved");
            Shell(folder, "mv for-a-while back");
        }
        store.Close();
        Sql(path,
            "UPDATE files SET replaced = unixepoch() - 86400 * " + std::to_string(days)
                + " WHERE replaced IS NOT NULL");
        EXPECT_EQ(store.RemoveAttribute(kFile, "none"), B_ENTRY_NOT_FOUND);
        store.Close();
        EXPECT_EQ(Sql(path, "SELECT data FROM attributes ORDER BY data"), left) << days;
    }
}

} // namespace
