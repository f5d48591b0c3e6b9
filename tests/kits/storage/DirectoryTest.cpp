#include "TestHome.h"
#include "tests/support/Test.h"

#include <Directory.h>
#include <File.h>
#include <Path.h>

namespace {

std::string PathOf(const BEntry& entry)
{
    BPath path;
    entry.GetPath(&path);
    return path.Path() ? path.Path() : "none";
}

TEST(Directory, GivesEachEntryOnceAndIsMadeWithThoseOnTheWay)
{
    const TempFolder folder;
    Shell(folder, "mkdir -p sub/deep && echo text > file && ln -s sub link");
    BDirectory directory(folder.Path().c_str());
    const std::multiset<std::string> all = { folder / "sub", folder / "file", folder / "link" };
    for (int pass = 0; pass < 2; pass++) {
        std::multiset<std::string> found;
        for (BEntry entry; directory.GetNextEntry(&entry) == B_OK;)
            found.insert(PathOf(entry));
        EXPECT_EQ(found, all);
        EXPECT_EQ(directory.CountEntries(), 3);
        EXPECT_EQ(directory.Rewind(), B_OK);
    }
    EXPECT_EQ(create_directory((folder / "x/y//z/").c_str(), 0775), B_OK);
    EXPECT_TRUE(BEntry((folder / "x/y/z").c_str()).IsDirectory());
    EXPECT_EQ(create_directory((folder / "file/y").c_str(), 0775), B_NOT_A_DIRECTORY);
}

TEST(Entry, StandsForANameWhetherThereIsAFileOrNot)
{
    const TempFolder folder;
    Shell(folder, "mkdir sub && touch file && ln -s sub/../file link");
    Shell(folder, "ln -s none dangling && ln -s circle circle");
    const std::tuple<const char*, bool, status_t, const char*, bool> rows[] = {
        // Name, whether it is followed if it is a link; status, what it stands for, is it there.
        { "link", false, B_OK, "link", true },
        { "link", true, B_OK, "file", true },
        { "dangling", false, B_OK, "dangling", true },
        { "dangling", true, B_OK, "none", false },
        { "circle", true, B_LINK_LIMIT, "", false },
        { "file/new", false, B_NOT_A_DIRECTORY, "", false },
        { "", false, B_BAD_VALUE, "", false },
    };
    for (const auto& [name, traverse, status, result, exists] : rows) {
        SCOPED_TRACE(name);
        const BEntry entry(*name ? (folder / name).c_str() : "", traverse);
        EXPECT_EQ(entry.InitCheck(), status);
        EXPECT_EQ(PathOf(entry), status == B_OK ? folder / result : "none");
        EXPECT_EQ(entry.Exists(), exists);
    }
    BEntry entry((folder / "file").c_str());
    const BEntry same((folder / "sub/../file").c_str());
    EXPECT_EQ(PathOf(entry), PathOf(same));
    EXPECT_EQ(entry.Rename("sub/file"), B_OK);
    EXPECT_EQ(PathOf(entry), folder / "sub/file");
    EXPECT_FALSE(same.Exists());
    Shell(folder, "mv sub away"); // an entry goes with its folder
    EXPECT_EQ(PathOf(entry), folder / "away/file");
    BEntry parent;
    EXPECT_EQ(entry.GetParent(&parent), B_OK);
    EXPECT_EQ(parent.Remove(), B_DIRECTORY_NOT_EMPTY);
    EXPECT_EQ(entry.Remove(), B_OK);
    EXPECT_EQ(parent.Remove(), B_OK);
    EXPECT_EQ(PathOf(entry), "none"); // its folder has gone
}

TEST(File, OpensByItsModesAndMovesItsPosition)
{
    const TempFolder folder;
    const std::string path = folder / "file";
    const std::tuple<uint32, const char*, status_t, const char*> rows[] = {
        // Mode and contents before (NULL: no file); status, contents when "ab" has been written.
        { B_READ_ONLY, nullptr, B_ENTRY_NOT_FOUND, nullptr },
        { B_WRITE_ONLY | B_CREATE_FILE, nullptr, B_OK, "ab" },
        { B_READ_WRITE | B_CREATE_FILE, "12345", B_OK, "ab345" },
        { B_WRITE_ONLY | B_CREATE_FILE | B_ERASE_FILE, "12345", B_OK, "ab" },
        { B_READ_WRITE | B_OPEN_AT_END, "12345", B_OK, "12345ab" },
        { B_READ_WRITE | B_CREATE_FILE | B_FAIL_IF_EXISTS, "1", B_FILE_EXISTS, "1" },
        { B_READ_ONLY, "12345", B_OK, "12345" },
    };
    for (const auto& [mode, before, status, after] : rows) {
        SCOPED_TRACE(mode);
        Shell(folder, before ? std::string("printf ") + before + " > file" : "rm -f file");
        BFile file(path.c_str(), mode);
        EXPECT_EQ(file.InitCheck(), status);
        const bool isWritten = file.Write("ab", 2) == 2;
        EXPECT_EQ(isWritten, file.IsWritable());
        EXPECT_EQ(ReadFile(path), after ? after : "none");
    }
    BFile file(path.c_str(), B_READ_WRITE | B_OPEN_AT_END); // "12345"
    BFile copy = file;
    char bytes[8] = "???????";
    EXPECT_EQ(file.Seek(-2, SEEK_END), 3);
    EXPECT_EQ(copy.Read(bytes, 7), 2);
    EXPECT_STREQ(bytes, "45?????");
    EXPECT_EQ(file.Seek(0, SEEK_CUR), 5) << "a copy shares the position";
    EXPECT_EQ(BFile(folder.Path().c_str(), B_READ_ONLY).InitCheck(), B_IS_A_DIRECTORY);
}

} // namespace
