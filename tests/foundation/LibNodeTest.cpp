#include "foundation/LibNode.h"

#include "tests/foundation/ScratchFolder.h"
#include "tests/support/Test.h"

#include <FindDirectory.h>
#include <Message.h>
#include <Path.h>

namespace fs = std::filesystem;

TEST(LibNode, AttributesOfEveryKindComeBack)
{
    const ScratchFolder folder;
    WriteFile("file", "");
    BMessage message('mesg');
    message.AddString("results", "a record");
    LibNode node("file");
    EXPECT_TRUE(node.WriteStringAttr("text", "some text") && node.WriteInt32Attr("number", -7));
    EXPECT_TRUE(node.WriteBoolAttr("flag", true) && node.WriteMessageAttr("message", message));
    EXPECT_TRUE(node.WriteBoolAttr("no flag", false));
    EXPECT_EQ(node.WriteAttr("odd flag", B_BOOL_TYPE, 0, "\2", 1), 1);
    EXPECT_EQ(node.WriteAttr("long", B_INT32_TYPE, 0, "abcde", 5), 5);
    LibNode none("none");
    EXPECT_FALSE(node.WriteStringAttr("null", nullptr) || none.WriteStringAttr("n", "")
        || none.WriteInt32Attr("n", 1) || none.WriteBoolAttr("n", true)
        || none.WriteMessageAttr("n", message));

    const BEntry entry("file");
    const LibNode same(&entry);
    LibString text("before");
    int32 number = 5;
    bool flag = false;
    BMessage read('befo');
    // What is not there, of another size or no message leaves the value alone.
    EXPECT_FALSE(same.ReadStringAttr("none", text) || same.ReadInt32Attr("flag", number));
    EXPECT_FALSE(same.ReadInt32Attr("long", number) || same.ReadBoolAttr("none", flag));
    EXPECT_FALSE(same.ReadMessageAttr("text", read) || same.ReadMessageAttr("none", read));
    EXPECT_TRUE(Text(text) == "before" && number == 5 && !flag && read.what == 'befo');
    EXPECT_TRUE(same.ReadStringAttr("text", text) && Text(text) == "some text");
    EXPECT_TRUE(same.ReadInt32Attr("number", number) && number == -7);
    EXPECT_TRUE(same.ReadBoolAttr("odd flag", flag) && flag);
    EXPECT_TRUE(same.ReadBoolAttr("no flag", flag) && !flag);
    EXPECT_TRUE(same.ReadBoolAttr("flag", flag) && flag);
    EXPECT_TRUE(same.ReadMessageAttr("message", read) && read.what == 'mesg');
    EXPECT_TRUE(read.HasString("results"));
}

TEST(LibNode, AFolderGoesIntoAnAttributeAndComesOutElsewhere)
{
    const ScratchFolder folder;
    const std::string leaf(100'000, 'x');
    fs::create_directories("a tree/branch");
    WriteFile("a tree/branch/leaf", leaf);
    WriteFile("carrier", "");
    LibNode carrier("carrier");
    testing::internal::CaptureStderr();
    EXPECT_TRUE(carrier.CompressFile("tree", "a tree") && !carrier.CompressFile("tree", "missing"));
    EXPECT_FALSE(carrier.CompressFile("tree", nullptr));
    const std::string said = testing::internal::GetCapturedStderr();
    BPath temporary;
    EXPECT_EQ(find_directory(B_COMMON_TEMP_DIRECTORY, &temporary), B_OK);
    EXPECT_TRUE(said.starts_with("zipped to " + std::string(temporary.Path()) + "/zip")) << said;
    EXPECT_EQ(said.substr(said.find('\n')),
        "\nLibNode::CompressFile: missing does not exist\n"
        "LibNode::CompressFile:  does not exist\n");

    const std::string out = folder / "new/out";
    EXPECT_TRUE(carrier.UncompressFile("tree", out.c_str()));
    for (const bool replaces : { false, true }) {
        WriteFile(out + "/a tree/branch/leaf", "changed");
        EXPECT_TRUE(replaces || carrier.UncompressFile("tree", out.c_str(), false));
        EXPECT_EQ(ReadFile(out + "/a tree/branch/leaf"), "changed");
        fs::remove_all(replaces ? out + "/a tree" : folder / "none");
        EXPECT_TRUE(carrier.UncompressFile("tree", out.c_str(), replaces));
    }
    EXPECT_EQ(ReadFile(out + "/a tree/branch/leaf"), leaf);
    EXPECT_TRUE(carrier.WriteStringAttr("text", "no archive"));
    EXPECT_FALSE(carrier.UncompressFile("none", "out") || carrier.UncompressFile("text", "out"));
    EXPECT_TRUE(fs::is_empty(temporary.Path()) && !fs::exists("out"));
}
