#include "foundation/LibPath.h"

#include "foundation/LibFiles.h"
#include "foundation/LibNode.h"
#include "foundation/LibTools.h"
#include "tests/foundation/ScratchFolder.h"
#include "tests/support/Test.h"

#include <Message.h>

namespace fs = std::filesystem;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

TEST(LibPath, TheFirstExistingFileOfASearchListIsFound)
{
    const ScratchFolder folder;
    for (const char* name : { "a", "b c" })
        EXPECT_TRUE(Libmkdir(name) && LibSymLink("/", (std::string(name) + "/tool").c_str()));
    const char* rows[][2] = { { "%/a:%/b c", "a/tool" }, { "%/none:%/b c:%/a", "b c/tool" },
        { "%/b c", "b c/tool" }, { "::%/none:", "" }, { "%/none:a", "a/tool" }, { "", "" } };
    for (const auto& [pattern, expected] : rows) {
        std::string list = pattern;
        while (list.find('%') != list.npos)
            list.replace(list.find('%'), 1, folder.Path());
        setenv("TARVEX_LIST", list.c_str(), 1);
        BPath found;
        EXPECT_EQ(LibFindEnvFile("TARVEX_LIST", "tool", found), *expected != '\0') << list;
        EXPECT_EQ(found.Path() ? found.Path() : folder / "", folder / expected) << list;
    }
}

TEST(LibPath, EntriesAndPathsLeadToEachOther)
{
    const ScratchFolder folder;
    entry_ref ref;
    LibString text;
    BPath path;
    char leaf[B_FILE_NAME_LENGTH];
    EXPECT_TRUE(Libmkdir("one/two") && !Libmkdir("one"));
    EXPECT_TRUE(LibGetEntryRef("one/file", ref) && !LibGetEntryRef("none/file", ref));
    EXPECT_TRUE(LibGetFullPath(ref, text) && Text(text) == folder / "one/file");
    EXPECT_TRUE(
        LibGetPath(LibGetParentRef(ref), "two", path) && path == (folder / "one/two").c_str());
    EXPECT_TRUE(LibGetChildName("one/file", leaf) && leaf == std::string("file"));

    BMessage reply;
    const entry_ref directory = LibGetParentRef(ref);
    reply.AddRef("directory", &directory);
    reply.AddString("name", "a name");
    EXPECT_TRUE(LibGetFilePath(&reply, path) && path == (folder / "one/a name").c_str());
}

TEST(LibPath, SizesCountWhatIsInFoldersAndLinksOnlyThemselves)
{
    const ScratchFolder folder;
    fs::create_directories("tree/branch");
    WriteFile("tree/a", "12345");
    WriteFile("tree/branch/b", "123");
    fs::create_symlink("..", "tree/branch/up"); // a link is as long as what it says
    EXPECT_TRUE(LibNode("tree/branch/b").WriteStringAttr("note", "ten bytes"));
    EXPECT_EQ(LibEntrySize("tree", false), 10);
    EXPECT_EQ(LibEntrySize("tree", true), 20);
}

TEST(LibFileInfo, ACopyHasTheTypeAndDescriptionsNameTheKind)
{
    const ScratchFolder folder;
    WriteFile("file", "text");
    EXPECT_TRUE(Libmkdir("folder") && LibSymLink("file", "link"));
    EXPECT_TRUE(
        LibSetMimeType("file", "text/x-special") && !LibSetFileType("missing", "text/plain"));
    EXPECT_TRUE(LibCopy("file", "copy") && LibCopy("file", "folder"));
    EXPECT_EQ(TypeOf("copy") + TypeOf("folder/file"), "text/x-specialtext/x-special");
    EXPECT_EQ(TypeOf("folder", true) + TypeOf("link", true), "FolderSymbolic Link");
    EXPECT_EQ(TypeOf("/usr/bin/zip", true) + TypeOf("copy", true), "Be ApplicationUnknown");
    EXPECT_EQ(TypeOf("missing", true), "(none)");
    EXPECT_TRUE(Libmimeset("copy") && Libmimeset("folder"));
    EXPECT_EQ(TypeOf("copy") + TypeOf("folder/file"), "text/plaintext/plain");
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
    CaptureStderr();
    EXPECT_FALSE(LibTrash("missing") || LibTrash("missing", false));
    EXPECT_EQ(GetCapturedStderr(), "Not moved to the trash <" + folder / "missing" + ">\n");
}

TEST(LibByteCount, TurnsIntoTextAndBack)
{
    const auto text = [](uint32 bytes, int decimals) {
        LibString result;
        LibBytesToString(bytes, result, decimals);
        return Text(result);
    };
    EXPECT_EQ(text(1024, 0) + text(1'048'576, 0) + text(1'572'864, 1), "1024 bytes1024 KB1.5 MB");
    const std::pair<const char*, uint32> rows[] = { { "2 KB", 2048 }, { "1.5 MB", 1'572'864 },
        { "0.0015 KB", 1 }, { "5 bytes", 0 }, { "2", 0 }, { "-1 KB", 0 },
        { "9999999 MB", UINT32_MAX } };
    for (const auto& [number, bytes] : rows)
        EXPECT_EQ(LibStringToBytes(number), bytes) << number;
}
