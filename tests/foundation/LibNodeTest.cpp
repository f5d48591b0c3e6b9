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
    EXPECT_FALSE(node.WriteStringAttr("null", nullptr) || LibNode("none").WriteInt32Attr("n", 1));

    const BEntry entry("file");
    const LibNode same(&entry);
    LibString text;
    int32 number = 0;
    bool flag = false;
    BMessage read;
    EXPECT_TRUE(same.ReadStringAttr("text", text) && Text(text) == "some text");
    EXPECT_TRUE(same.ReadInt32Attr("number", number) && number == -7);
    EXPECT_TRUE(same.ReadBoolAttr("flag", flag) && flag);
    EXPECT_TRUE(same.ReadMessageAttr("message", read) && read.HasString("results"));
    // What is not there, of another size or no message leaves the value alone.
    EXPECT_FALSE(same.ReadStringAttr("none", text) || same.ReadInt32Attr("flag", number));
    EXPECT_FALSE(same.ReadInt32Attr("text", number) || same.ReadBoolAttr("none", flag));
    EXPECT_FALSE(same.ReadMessageAttr("text", read));
    EXPECT_TRUE(Text(text) == "some text" && number == -7 && flag && read.what == 'mesg');
}

TEST(LibNode, AFolderGoesIntoAnAttributeAndComesOutElsewhere)
{
    const ScratchFolder folder;
    fs::create_directories("a tree/branch");
    WriteFile("a tree/branch/leaf", std::string(100'000, 'x'));
    WriteFile("carrier", "");
    LibNode carrier("carrier");
    testing::internal::CaptureStderr();
    EXPECT_TRUE(carrier.CompressFile("tree", "a tree") && !carrier.CompressFile("tree", "missing"));
    const std::string said = testing::internal::GetCapturedStderr();
    BPath temporary;
    EXPECT_EQ(find_directory(B_COMMON_TEMP_DIRECTORY, &temporary), B_OK);
    EXPECT_TRUE(said.starts_with("zipped to " + std::string(temporary.Path()) + "/zip")) << said;
    EXPECT_EQ(said.substr(said.find('\n')), "\nLibNode::CompressFile: missing does not exist\n");

    const std::string out = folder / "new/out";
    EXPECT_TRUE(carrier.UncompressFile("tree", out.c_str()));
    EXPECT_EQ(ReadFile(out + "/a tree/branch/leaf"), std::string(100'000, 'x'));
    EXPECT_FALSE(carrier.UncompressFile("none", "out"));
}
