#include "StoreAccess.h"
#include "TestHome.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <Directory.h>
#include <TypeConstants.h>

namespace {

std::string Attribute(const std::string& path, const char* name)
{
    attr_info info;
    const BNode node(path.c_str());
    if (node.InitCheck() == B_ENTRY_NOT_FOUND)
        return "no file";
    if (const status_t error = node.GetAttrInfo(name, &info); error != B_OK)
        return error == B_ENTRY_NOT_FOUND ? "none" : "error";
    std::string value(static_cast<size_t>(info.size), '?');
    EXPECT_EQ(node.ReadAttr(name, B_ANY_TYPE, 0, value.data(), value.size()), info.size);
    return value;
}

ssize_t SetAttribute(const std::string& path, const char* name, const std::string& value)
{
    return BNode(path.c_str()).WriteAttr(name, B_RAW_TYPE, 0, value.data(), value.size());
}

TEST(Attribute, AWriteReplacesAtZeroAndExtendsElsewhere)
{
    const std::string path = TestHome() / "file";
    WriteFile(path, "contents");
    BNode node(path.c_str());
    for (const Row& row : RowsOf("kits/storage/data/attribute-writes.txt", 4)) {
        const auto type = static_cast<type_code>(std::stoul(row[2]));
        const ssize_t written =
            node.WriteAttr("a", type, std::stol(row[0]), row[1].data(), row[1].size());
        EXPECT_EQ(written, row[1].size());
        EXPECT_EQ(Attribute(path, "a"), row[3]);
        attr_info info;
        EXPECT_EQ(node.GetAttrInfo("a", &info), B_OK);
        EXPECT_EQ(info.type, type);
    }
    char part[4] = "???";
    EXPECT_EQ(node.ReadAttr("a", B_STRING_TYPE, 3, part, 3), 2);
    EXPECT_STREQ(part, "rt?");
    EXPECT_EQ(ReadFile(path), "contents");
}

TEST(Attribute, BelongsToTheFileAndNotToTheNextOneAtItsPath)
{
    for (const Row& row : RowsOf("kits/storage/data/fates.txt", 5)) {
        SCOPED_TRACE(row[1] + " " + row[2]);
        const TempFolder folder;
        for (const char* name : { "a", "b" }) {
            WriteFile(folder / name, name);
            chmod((folder / name).c_str(), static_cast<mode_t>(std::stoi(row[0], nullptr, 8)));
            EXPECT_GT(SetAttribute(folder / name, "x", *name == 'a' ? "mine" : "other"), 0);
        }
        Shell(folder, row[1] == "remove one name" ? "ln a c" : "true");
        BEntry entry((folder / "a").c_str());
        EXPECT_EQ(row[1] == "rename"           ? entry.Rename("b", true)
                : row[1].starts_with("remove") ? entry.Remove()
                                               : B_OK,
            B_OK);
        Shell(folder, row[2]);
        EXPECT_EQ(Attribute(folder / "a", "x"), row[3]);
        EXPECT_EQ(SetAttribute(folder / "a", "x", "new") > 0, row[3] != "no file");
        EXPECT_EQ(Attribute(folder / "b", "x"), row[4]);
    }
}

// What the store holds for a question.
std::string InStore(const std::string& question)
{
    return Sql(TestHome() / "data/tarvex/attributes.sqlite", "SELECT " + question);
}

TEST(Attribute, GoesFromTheStoreWithItsFileAndAlongWithItsFolder)
{
    const TempFolder in;
    Shell(in, "mkdir folder 'folder!' && touch folder/x 'folder!/x' file"); // "!" sorts before "/"
    Shell(in, "mkdir empty; ln file other");
    for (const char* name : { "empty", "file", "other" }) {
        EXPECT_EQ(SetAttribute(in / name, "doomed", "x"), 1);
        EXPECT_EQ(BEntry((in / name).c_str()).Remove(), B_OK);
        EXPECT_EQ(InStore("count(*) FROM attributes WHERE name = CAST('doomed' AS BLOB)"),
            *name == 'f' ? "1 " : "0 "); // it has another name
    }
    for (const std::string folder : { "folder", "folder!" })
        EXPECT_GT(SetAttribute(in / (folder + "/x"), "a", folder), 0);
    BEntry entry((in / "folder").c_str());
    EXPECT_EQ(entry.Rename("folder!"), B_FILE_EXISTS);
    EXPECT_EQ(entry.Rename("moved"), B_OK);
    EXPECT_EQ(InStore("1 FROM files WHERE path = CAST('" + in / "moved/x" + "' AS BLOB)"), "1 ");
    Shell(in, "mkdir folder && touch folder/x");
    EXPECT_EQ(Attribute(in / "folder/x", "a"), "none");
    EXPECT_EQ(SetAttribute(in / "folder/x", "a", "new"), 3);
    EXPECT_EQ(Attribute(in / "moved/x", "a"), "folder");
    EXPECT_EQ(Attribute(in / "folder!/x", "a"), "folder!");
}

} // namespace
