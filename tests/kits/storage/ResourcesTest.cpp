#include "TestHome.h"
#include "tests/support/Test.h"

#include <Resources.h>
#include <TypeConstants.h>

namespace {

std::string DataOf(BResources& resources, type_code type, int32 id)
{
    size_t size = 0;
    const void* data = resources.LoadResource(type, id, &size);
    return data ? std::string(static_cast<const char*>(data), size) : "none";
}

TEST(Resources, ChangesAreKeptTogetherWhenTheObjectEnds)
{
    const std::string path = TestHome() / "resource file";
    BFile file(path.c_str(), B_READ_WRITE | B_CREATE_FILE);
    BResources before(&file);
    {
        BResources resources(&file);
        EXPECT_EQ(resources.AddResource(B_RAW_TYPE, 7, "1234", 4, "archive"), B_OK);
        EXPECT_EQ(resources.WriteResource(B_RAW_TYPE, 7, "5678", 4, 4), B_OK);
        EXPECT_EQ(resources.AddResource(B_STRING_TYPE, 7, "text", 5, "title"), B_OK);
        EXPECT_EQ(BResources(&file).HasResource(B_RAW_TYPE, 7), false); // nothing kept yet
    }
    EXPECT_FALSE(before.HasResource(B_RAW_TYPE, 7));
    EXPECT_EQ(before.AddResource(B_RAW_TYPE, 9, "nine", 4, "nine"), B_OK);
    EXPECT_EQ(before.AddResource(B_RAW_TYPE, 10, "ten", 3), B_OK);
    EXPECT_EQ(before.Sync(), B_OK); // and takes nothing away that it does not know
    EXPECT_EQ(BResources(&file).RemoveResource(B_RAW_TYPE, 10), B_OK);

    const BFile readable(path.c_str(), B_READ_ONLY);
    BResources resources(&readable);
    EXPECT_EQ(DataOf(resources, B_RAW_TYPE, 7), "12345678");
    EXPECT_EQ(DataOf(resources, B_STRING_TYPE, 7), std::string("text\0", 5));
    EXPECT_EQ(DataOf(resources, B_RAW_TYPE, 10), "none");
    EXPECT_EQ(resources.AddResource(B_RAW_TYPE, 1, "x", 1), B_NOT_ALLOWED);
    int32 id = 0;
    const char* name = nullptr;
    size_t size = 0;
    EXPECT_TRUE(resources.GetResourceInfo(B_STRING_TYPE, 7, &name, &size));
    EXPECT_STREQ(name, "title");
    EXPECT_TRUE(resources.GetResourceInfo(B_RAW_TYPE, "archive", &id, &size));
    EXPECT_EQ(id * 100 + int32(size), 708);
}

} // namespace
