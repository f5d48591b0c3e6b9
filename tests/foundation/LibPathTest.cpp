#include "foundation/LibPath.h"

#include "foundation/LibFiles.h"
#include "foundation/LibNode.h"
#include "foundation/LibTools.h"
#include "tests/foundation/ScratchFolder.h"
#include "tests/foundation/ZoneGuard.h"
#include "tests/support/Rows.h"
#include "tests/support/SessionService.h"
#include "tests/support/Test.h"

#include <Message.h>

#include <fcntl.h>

namespace fs = std::filesystem;

TEST(LibPath, TheFirstExistingFileOfASearchListIsFound)
{
    const ScratchFolder folder;
    for (const char* name : { "a", "b c" })
        EXPECT_TRUE(Libmkdir(name) && LibSymLink("/", (std::string(name) + "/tool").c_str()));
    for (const Row& row : RowsOf("foundation/data/searched-folders.txt", 2)) {
        const std::string list = std::regex_replace(row[0], std::regex("%"), folder.Path());
        setenv("TARVEX_LIST", list.c_str(), 1);
        BPath found;
        EXPECT_EQ(LibFindEnvFile("TARVEX_LIST", "tool", found), !row[1].empty()) << list;
        EXPECT_EQ(found.Path() ? found.Path() : folder / "", folder / row[1]) << list;
    }
}

TEST(LibPath, EntriesAndPathsLeadToEachOther)
{
    const ScratchFolder folder;
    setenv("XDG_CONFIG_HOME", (folder / "settings").c_str(), 1);
    EXPECT_TRUE(Libmkdir("one/two") && !Libmkdir("one") && !Libmkdir("one/two/"));
    entry_ref file;
    EXPECT_TRUE(LibGetEntryRef("one/file", file) && !LibGetEntryRef("none/file", file));
    const entry_ref one = LibGetParentRef(file), none;
    BMessage reply, half;
    reply.AddRef("directory", &one);
    half.AddRef("directory", &one);
    reply.AddString("name", "a name");
    // What the call sets a path, or a text, to; what was in it before if it refuses.
    const auto text = [](const std::function<bool(LibString&)>& call) {
        LibString found("before");
        const std::string refused = call(found) ? "" : "refused ";
        return refused + Text(found);
    };
    const auto path = [&text](const std::function<bool(BPath&)>& call) {
        BPath found("/before");
        const bool isSet = call(found);
        return text([&](LibString& t) { return t = found.Path(), isSet; });
    };
    const std::pair<std::string, std::string> rows[] = {
        { path([&](BPath& p) { return LibGetFullPath(file, p); }), folder / "one/file" },
        { path([&](BPath& p) { return LibGetFullPath(none, p); }), "refused /before" },
        { path([&](BPath& p) { return LibGetPath(one, "two", p); }), folder / "one/two" },
        { path([&](BPath& p) { return LibGetPath(one, nullptr, p); }), "refused /before" },
        { path([&](BPath& p) { return LibGetPath(one, "/two", p); }), "refused /before" },
        { path([&](BPath& p) { return LibGetFilePath(&reply, p); }), folder / "one/a name" },
        { path([&](BPath& p) { return LibGetFilePath(&half, p); }), "refused /before" },
        { path([&](BPath& p) { return LibGetFilePath(nullptr, p); }), "refused /before" },
        { path([](BPath& p) { return LibFindSystemTool("cp", p); }), "/usr/bin/cp" },
        { path([](BPath& p) { return LibFindSystemTool("none", p); }), "refused /before" },
        { path(LibGetWorkingDirectory), folder.Path() },
        { text([&](LibString& t) { return LibGetFullPath(file, t); }), folder / "one/file" },
        { text([&](LibString& t) { return LibGetFullPath(none, t); }), "refused before" },
        { text([](LibString& t) { return LibGetParentPath("one/file", t); }), folder / "one" },
        { text([](LibString& t) { return LibGetParentPath("/", t); }), "refused before" },
        { text([](LibString& t) { return LibGetSettingsPath(t); }), folder / "settings" },
    };
    for (const auto& [found, expected] : rows)
        EXPECT_EQ(found, expected);
    char leaf[B_FILE_NAME_LENGTH] = "leaf";
    EXPECT_FALSE(LibGetChildName(std::string("/" + std::string(256, 'n')).c_str(), leaf));
    EXPECT_TRUE(LibGetSettingsPath(leaf, 0) && leaf == std::string("leaf"));
    EXPECT_TRUE(LibGetChildName("one/file", leaf) && leaf == std::string("file"));
    EXPECT_TRUE(LibGetSettingsPath(leaf, 6) && leaf == folder.Path().substr(0, 5));
    EXPECT_TRUE(LibChangeDirectory("one") && LibExists("../one") && !LibExists(nullptr));
    EXPECT_FALSE(LibChangeDirectory("file") || LibChangeDirectory(nullptr));
}

TEST(LibPath, StandardDirectoriesHaveNamesThatLeadBackToThem)
{
    std::set<std::string> names;
    for (int which = -1; which < 5000; which++) {
        LibString name("none");
        directory_which back {};
        const bool isNamed = LibGetStdDirName(static_cast<directory_which>(which), name);
        EXPECT_TRUE(LibGetStdDirName(name, back) ? back == which : !isNamed) << which;
        names.insert(Text(name));
    }
    EXPECT_EQ(names.size(), 51u + 1); // and "none"
    EXPECT_TRUE(LibStdDirNameExists("BeOS Bin") && !LibStdDirNameExists("bin"));
    EXPECT_FALSE(LibStdDirNameExists(nullptr));
}

TEST(LibPath, SizesCountWhatIsInFoldersAndLinksOnlyThemselves)
{
    const ScratchFolder folder;
    fs::create_directories("tree/branch");
    WriteFile("tree/a", "12345");
    WriteFile("tree/branch/b", "123");
    fs::create_symlink("..", "tree/branch/up"); // a link is as long as what it says
    LibNode node("tree/branch/b");
    EXPECT_TRUE(node.WriteStringAttr("note", "ten bytes") && node.WriteBoolAttr("flag", true));
    EXPECT_EQ(LibEntrySize("tree", false), 10);
    EXPECT_EQ(LibEntrySize("tree", true), 21);
    EXPECT_EQ(LibEntrySize("none", true), 0);
}

TEST(LibFileInfo, TypesAreSetGuessedCopiedAndDescribed)
{
    const ScratchFolder folder;
    WriteFile("file", "text");
    EXPECT_TRUE(Libmkdir("folder/deep") && LibSymLink("file", "link"));
    EXPECT_TRUE(
        LibSetMimeType("file", "text/x-special") && !LibSetFileType("missing", "text/plain"));
    EXPECT_TRUE(LibCopy("file", "copy") && LibCopy("file", "folder/deep"));
    const auto types = [](bool describe) {
        std::string all;
        for (const char* path :
            { "copy", "folder/deep/file", "folder", "link", "/usr/bin/zip", "missing" })
            all += TypeOf(path, describe) + " ";
        return all;
    };
    const std::string others = "application/x-vnd.Be-directory application/x-vnd.Be-symlink "
                               "application/x-vnd.Be-elfexecutable (none) ";
    EXPECT_EQ(types(false), "text/x-special text/x-special " + others);
    EXPECT_EQ(types(true), "Unknown Unknown Folder Symbolic Link Be Application (none) ");
    EXPECT_TRUE(Libmimeset("copy") && Libmimeset("folder") && !Libmimeset("missing"));
    EXPECT_EQ(types(false), "text/plain text/plain " + others);
}

TEST(LibFileInfo, MomentsAreThoseOfTheFileHereOrInUtc)
{
    const ScratchFolder folder;
    const ZoneGuard zone("NST3:30");
    WriteFile("file", "text");
    const timespec times[] = { { 1'000'000'000, 0 }, { 986'050'800, 0 } }; // of access, of change
    EXPECT_EQ(utimensat(AT_FDCWD, "file", times, 0), 0);
    entry_ref ref;
    EXPECT_TRUE(LibGetEntryRef("file", ref));
    const auto moment = [](const LibDateTime& shown) {
        LibString iso;
        shown.GetIso8601(iso, 0);
        return Text(iso);
    };
    const BEntry entry("file"), missing("missing");
    EXPECT_EQ(moment(LibAccessedDate(entry)), "20010908T221640");
    EXPECT_EQ(moment(LibAccessedDate(entry, false)), "20010909T014640");
    EXPECT_EQ(moment(LibLastModifiedDate(entry)), "20010331T113000");
    EXPECT_EQ(moment(LibLastModifiedDate("file", false)), "20010331T150000");
    const int64 old = time(nullptr) - (LibCreationDate("file", false) - LibDateTime(1, 1, 1970));
    EXPECT_TRUE(old >= 0 && old < 1000) << old;
    EXPECT_EQ(LibCreationDate("file", false) - LibCreationDate(ref), 12600);
    EXPECT_TRUE(LibGetEntryRef("missing", ref));
    EXPECT_EQ(ErrorsOf([&] {
        for (const LibDateTime& none : { LibCreationDate(ref), LibCreationDate("missing"),
                 LibLastModifiedDate("missing"), LibAccessedDate(missing) })
            EXPECT_EQ(moment(none), "00000T000000");
    }),
        "LibCreationDate: Unable to set entry\nLibCreationDate: Unable to set entry <missing>\n"
        "LibLastModifiedDate: Unable to set entry <missing>\n");
}

TEST(LibTracker, AsksTheFileManager)
{
    const ScratchFolder folder;
    SessionService manager({ "org.freedesktop.FileManager1" });
    const char* file = "a b%\xff";
    WriteFile(file, "");
    EXPECT_TRUE(LibOpenEntry(file) && LibInfoEntry(file));
    EXPECT_FALSE(LibOpenEntry("no folder/file"));
    const std::string manner = "/org/freedesktop/FileManager1 org.freedesktop.FileManager1.Show";
    const std::string uri = "([file://" + folder / "a%20b%25%FF" + "], )";
    EXPECT_TRUE(manager.log.WaitFor(manner + "ItemProperties" + uri));
    Entries calls = manager.log.Now();
    std::erase(calls, "gone");
    EXPECT_EQ(calls, (Entries { manner + "Items" + uri, manner + "ItemProperties" + uri }));
}

TEST(LibTrash, NewNamesAreFreeAndARecordKeepsTheWayBack)
{
    const ScratchFolder folder;
    const std::string trash = DataHome() / "Trash/";
    for (const char* text : { "first", "second" }) {
        WriteFile("100% \xc3\xa4\n.txt", text);
        EXPECT_TRUE(LibTrash("100% \xc3\xa4\n.txt"));
    }
    EXPECT_EQ(ReadFile(trash + "files/100% \xc3\xa4\n.txt copy"), "first");
    EXPECT_EQ(ReadFile(trash + "files/100% \xc3\xa4\n.txt copy 1"), "second");
    WriteFile(trash + "files/odd copy", "without a record");
    WriteFile(trash + "info/odd copy 1.trashinfo", "without a file");
    WriteFile("odd", "third");
    EXPECT_TRUE(LibTrash("odd") && ReadFile(trash + "files/odd copy 2") == "third");
    const std::string record = ReadFile(trash + "info/100% \xc3\xa4\n.txt copy.trashinfo");
    const std::string start =
        "[Trash Info]\nPath=" + folder.Path() + "/100%25%20%C3%A4%0A.txt\nDeletionDate=";
    EXPECT_EQ(record.substr(0, start.size()), start);
    struct tm moment = {};
    EXPECT_STREQ(strptime(record.substr(start.size()).c_str(), "%Y-%m-%dT%H:%M:%S", &moment), "\n");

    EXPECT_TRUE(!LibDuplicate("none") && Libmkdir("tree/leaf"));
    EXPECT_TRUE(LibDuplicate("tree") && LibDuplicate("tree"));
    EXPECT_TRUE(LibExists("tree copy/leaf") && LibExists("tree copy 1/leaf"));
    EXPECT_EQ(ErrorsOf([&] { EXPECT_FALSE(LibTrash("missing") || LibTrash("missing", false)); }),
        "Not moved to the trash <" + folder / "missing" + ">\n");
}

TEST(LibByteCount, TurnsIntoTextAndBack)
{
    const auto text = [](uint32 bytes, int decimals) {
        LibString result;
        LibBytesToString(bytes, result, decimals);
        return Text(result);
    };
    EXPECT_EQ(text(1024, 0) + text(1025, 2) + text(1'048'576, 0) + text(1'048'577, 3),
        "1024 bytes1.00 KB1024 KB1.000 MB");
    for (const Row& row : RowsOf("foundation/data/bytes.txt", 2))
        EXPECT_EQ(std::to_string(LibStringToBytes(row[0].c_str())), row[1]) << row[0];
    EXPECT_EQ(
        ErrorsOf([&] { EXPECT_EQ(LibStringToBytes("x KB") + LibStringToBytes(nullptr), 0u); }),
        "LibConvertBytes <x> not a float\n");
}
