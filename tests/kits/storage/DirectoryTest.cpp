#include "TestHome.h"
#include "tests/support/Child.h"
#include "tests/support/Rows.h"
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
    BEntry entry;
    const std::multiset<std::string> all = { folder / "sub", folder / "file", folder / "link" };
    for (int pass = 0; pass < 2; pass++) {
        std::multiset<std::string> found;
        while (directory.GetNextEntry(&entry) == B_OK)
            found.insert(PathOf(entry));
        EXPECT_EQ(found, all);
        EXPECT_EQ(directory.CountEntries(), 3);
        EXPECT_EQ(directory.Rewind(), B_OK);
    }
    entry_ref ref;
    EXPECT_EQ(directory.GetNextRef(&ref), B_OK);
    EXPECT_TRUE(all.count(PathOf(BEntry(&ref))) == 1 && directory.GetEntry(&entry) == B_OK);
    EXPECT_EQ(PathOf(entry), folder.Path());
    EXPECT_EQ(BPath(&directory, "file"), BPath((folder / "file").c_str()));
    EXPECT_EQ(create_directory((folder / "x/y//z/").c_str(), 0775), B_OK);
    EXPECT_TRUE(BEntry((folder / "x/y/z").c_str()).IsDirectory());
    EXPECT_EQ(create_directory((folder / "file/y").c_str(), 0775), B_NOT_A_DIRECTORY);
    EXPECT_EQ(directory.SetTo((folder / "sub").c_str()), B_OK); // in the middle of the first one
    EXPECT_EQ(directory.GetNextEntry(&entry), B_OK);
    EXPECT_EQ(PathOf(entry), folder / "sub/deep");
    EXPECT_EQ(directory.GetNextEntry(&entry), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(InChild([&] {
        return chdir(folder.Path().c_str()) == 0 && create_directory("a/b", 0711) == B_OK ? 0 : 1;
    }),
        0);
    EXPECT_EQ(Said(folder, "stat -c %a a a/b"), "711 711 ");
}

TEST(Entry, StandsForANameWhetherThereIsAFileOrNot)
{
    const TempFolder folder;
    Shell(folder, "mkdir sub && touch file && ln -s sub/../file link");
    Shell(folder, "ln -s none dangling && ln -s circle circle");
    for (const Row& row : RowsOf("kits/storage/data/entries.txt", 4)) {
        SCOPED_TRACE(row[0] + " " + row[1]);
        const BEntry entry((row[0].empty() ? "" : folder / row[0]).c_str(), row[1] == "followed");
        const bool isEntry = entry.InitCheck() == B_OK;
        const std::map<status_t, std::string> names = { { B_OK, PathOf(entry) },
            { B_LINK_LIMIT, "too many links" }, { B_NOT_A_DIRECTORY, "not a directory" },
            { B_BAD_VALUE, "bad value" }, { B_ENTRY_NOT_FOUND, "not found" } };
        EXPECT_EQ(names.at(entry.InitCheck()), isEntry ? folder / row[2] : row[2]);
        EXPECT_TRUE(isEntry || PathOf(entry) == "none");
        EXPECT_EQ(entry.Exists(), row[3] == "there");
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

TEST(Entry, CallsThatCannotBeAnsweredSayWhyAndLeaveAllAsItWas)
{
    const TempFolder folder;
    Shell(folder, "mkdir sub; echo text > file; ln file other");
    const std::string path = folder / "file";
    BEntry none, entry(path.c_str()), missing((folder / "missing").c_str());
    BNode noNode, node(&entry);
    BFile noFile, file(path.c_str(), B_READ_ONLY), program("/proc/self/exe", B_READ_WRITE);
    const bool mayWrite = access("/proc/self/exe", W_OK) == 0 || errno != EACCES;
    BDirectory noDirectory, directory(folder.Path().c_str());
    BPath path2("/before"), noPath;
    entry_ref ref;
    struct stat info = {};
    off_t size = 0;
    time_t moment = 0;
    char bytes[8] = "before";
    const char* noName = nullptr;
    const entry_ref* noRef = nullptr;
    const BEntry* noEntry = nullptr;
    ExpectAll(B_NO_INIT,
        { none.InitCheck(), none.GetStat(&info), none.GetRef(&ref), none.GetPath(&noPath),
            none.GetParent(&entry), none.Rename("x"), none.Remove(), noNode.GetStat(&info),
            noNode.GetNextAttrName(bytes), noNode.RemoveAttr("a"), noNode.GetOwner(&info.st_uid),
            noFile.Read(bytes, 1), noFile.Write(bytes, 1), noFile.Seek(0, SEEK_SET),
            noDirectory.GetEntry(&none), noDirectory.GetNextEntry(&none),
            noDirectory.GetNextRef(&ref), noDirectory.Rewind(), noDirectory.CountEntries(),
            noPath.GetParent(&path2), noPath.SetTo(&noDirectory), noNode.GetSize(&size),
            noNode.GetModificationTime(&moment), noNode.GetAttrInfo("a", nullptr),
            noNode.ReadAttr("a", 0, 0, bytes, 1), noNode.WriteAttr("a", 0, 0, bytes, 1) });
    ExpectAll(B_BAD_VALUE,
        { entry.GetStat(nullptr), entry.GetRef(nullptr), entry.GetPath(nullptr),
            entry.GetParent(nullptr), entry.Rename(""), entry.Rename(nullptr),
            get_ref_for_path("x", nullptr), get_ref_for_path("", &ref), node.GetStat(nullptr),
            BNode(noName).InitCheck(), BNode(noRef).InitCheck(), BNode(noEntry).InitCheck(),
            BNode(&none).InitCheck(), node.GetNextAttrName(nullptr), node.GetAttrInfo("a", nullptr),
            node.ReadAttr("a", 0, 0, nullptr, 1), node.ReadAttr("a", 0, -1, bytes, 1),
            node.WriteAttr("a", 0, 0, nullptr, 1), node.WriteAttr("a", 0, -1, bytes, 1),
            node.RemoveAttr(""), node.GetSize(nullptr), BFile(noName, 0).InitCheck(),
            noFile.SetTo(noRef, 0), noFile.SetTo(noEntry, 0), noFile.SetTo(&none, 0),
            file.Read(nullptr, 1), file.Write(nullptr, 1), file.Seek(0, 9), file.Seek(-1, SEEK_SET),
            BDirectory("").InitCheck(), directory.GetEntry(nullptr),
            directory.GetNextEntry(nullptr), directory.GetNextRef(nullptr),
            create_directory(nullptr, 0), create_directory("", 0), path2.GetParent(nullptr),
            noPath.Append("x"), noPath.SetTo(static_cast<BDirectory*>(nullptr)),
            noPath.SetTo(noRef), node.GetOwner(nullptr), node.GetAttrInfo(nullptr, nullptr) });
    ExpectAll(B_ENTRY_NOT_FOUND,
        { missing.GetStat(&info), BEntry("/").GetParent(&none), missing.Rename("x"),
            entry.Rename("none/x"), missing.Remove(), BNode(&missing).InitCheck(),
            node.RemoveAttr("a"), BPath("/").GetParent(&path2),
            node.RemoveAttr(std::string(255, 'n').c_str()) });
    ExpectAll(B_NAME_TOO_LONG,
        { BEntry((folder / std::string(256, 'n')).c_str()).InitCheck(),
            create_directory((folder / "none/\xff" + std::string(256, 'n')).c_str(), 0755),
            node.RemoveAttr(std::string(256, 'n').c_str()) });
    EXPECT_EQ(entry.Rename("other"), B_FILE_EXISTS);
    EXPECT_EQ(BEntry((folder / std::string(255, 'n')).c_str()).InitCheck(), B_OK);
    EXPECT_EQ(BDirectory(path.c_str()).InitCheck(), B_NOT_A_DIRECTORY);
    EXPECT_TRUE(program.IsWritable() && !noFile.IsWritable());
    EXPECT_EQ(program.Write("x", 1), mayWrite ? B_BUSY : B_PERMISSION_DENIED);
    EXPECT_EQ(program.SetTo((folder / "other").c_str(), B_WRITE_ONLY), B_OK);
    EXPECT_EQ(program.Write("text", 4), 4);
    program.Unset();
    ExpectAll(B_NO_INIT, { program.InitCheck(), program.Write("x", 1) });
    EXPECT_EQ(Said(folder, "ls; cat file"), "file none other sub text ");
    EXPECT_STREQ(path2.Path(), "/before");
    EXPECT_FALSE(noPath.Path() || noPath.Leaf() || noFile.InitCheck() == B_OK);
    EXPECT_EQ(entry.Remove(), B_OK);
    EXPECT_EQ(Said(folder, "ls"), "none other sub ");
}

TEST(Entry, ReferencesAreEqualByDirectoryAndName)
{
    const entry_ref ref(1, 2, "name"), nameless(1, 2, nullptr);
    entry_ref copy(ref), assigned;
    assigned = ref;
    assigned = *&assigned;
    EXPECT_TRUE(copy == ref && assigned == ref && copy.name != ref.name);
    for (const entry_ref& other : { entry_ref(2, 2, "name"), entry_ref(1, 3, "name"),
             entry_ref(1, 2, "nam"), nameless, entry_ref() })
        EXPECT_FALSE(ref == other);
    EXPECT_TRUE(nameless == entry_ref(1, 2, nullptr) && !(nameless == ref));
    EXPECT_TRUE(copy.set_name(nullptr) == B_OK && !copy.name);
}

TEST(File, OpensByItsModesAndMovesItsPosition)
{
    const TempFolder folder;
    const std::string path = folder / "file";
    const std::map<std::string, uint32> modes = { { "read", B_READ_ONLY },
        { "write", B_WRITE_ONLY }, { "both", B_READ_WRITE }, { "create", B_CREATE_FILE },
        { "erase", B_ERASE_FILE }, { "end", B_OPEN_AT_END }, { "new", B_FAIL_IF_EXISTS } };
    for (const Row& row : RowsOf("kits/storage/data/modes.txt", 4)) {
        SCOPED_TRACE(row[0]);
        Shell(folder, row[1] == "none" ? "rm -f file" : "printf " + row[1] + " > file");
        uint32 mode = 0;
        std::istringstream words(row[0]);
        for (std::string word; words >> word;)
            mode |= modes.at(word);
        BFile file(path.c_str(), mode);
        const status_t failure = row[2] == "exists" ? B_FILE_EXISTS : B_ENTRY_NOT_FOUND;
        EXPECT_EQ(file.InitCheck(), row[2] == "fine" ? status_t { B_OK } : failure);
        const bool isWritten = file.Write("ab", 2) == 2;
        EXPECT_EQ(isWritten, file.IsWritable());
        EXPECT_EQ(ReadFile(path), row[3]);
    }
    BFile file(path.c_str(), B_READ_WRITE | B_OPEN_AT_END); // "12345"
    BFile copy = file;
    char bytes[8] = "???????";
    EXPECT_EQ(file.Seek(-2, SEEK_END), 3);
    EXPECT_EQ(copy.Read(bytes, 7), 2);
    EXPECT_STREQ(bytes, "45?????");
    EXPECT_EQ(file.Seek(0, SEEK_CUR), 5) << "a copy shares the position";
    EXPECT_EQ(file.Seek(0, SEEK_SET), 0);
    Shell(folder, "mkfifo p; { printf ab; sleep .1; printf cd; } > p &"); // comes in pieces
    EXPECT_EQ(BFile((folder / "p").c_str(), B_READ_ONLY).Read(bytes, 7), 4);
    EXPECT_STREQ(bytes, "abcd???");
}

} // namespace
