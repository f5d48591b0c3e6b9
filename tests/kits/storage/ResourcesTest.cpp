#include "TestHome.h"
#include "tests/support/Calls.h"
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
        size_t size = 0;
        EXPECT_EQ(resources.WriteResource(B_RAW_TYPE, 7, "5678", 4, 4), B_OK);
        EXPECT_TRUE(resources.GetResourceInfo(B_RAW_TYPE, 7, nullptr, &size) && size == 8);
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

TEST(Resources, CallsThatCannotBeAnsweredSayWhyAndLeaveAllAsItWas)
{
    const std::string path = TestHome() / "resources";
    const char* noName = nullptr;
    BFile file(path.c_str(), B_READ_WRITE | B_CREATE_FILE), none;
    const BFile readable(path.c_str(), B_READ_ONLY);
    BResources unset, resources(&file), reading(&readable);
    size_t size = 99;
    EXPECT_TRUE(unset.SetTo(nullptr) == B_OK && unset.SetTo(&none) == B_BAD_VALUE
        && unset.SetTo(&readable, true) == B_NOT_ALLOWED);
    const std::map<std::string, BResources*> objects = { { "none", &unset }, { "file", &resources },
        { "reading", &reading } };
    const Calls<BResources> calls = { { "add", Function(&BResources::AddResource) },
        { "write", Function(&BResources::WriteResource) },
        { "remove", Function(&BResources::RemoveResource) },
        { "sync", Function(&BResources::Sync) } };
    const std::map<std::string, status_t> statuses = { { "fine", B_OK }, { "not set", B_NO_INIT },
        { "bad value", B_BAD_VALUE }, { "not allowed", B_NOT_ALLOWED },
        { "not found", B_ENTRY_NOT_FOUND } };
    for (const Row& row : RowsOf("kits/storage/data/resources.txt", 3))
        EXPECT_EQ(
            calls.at(row[1])(*objects.at(row[0]), row), std::to_string(statuses.at(row.back())))
            << testing::PrintToString(row);
    EXPECT_EQ(reading.SetTo(&readable), B_OK);
    EXPECT_TRUE(reading.GetResourceInfo('a', 1, nullptr, &size) && size == 0);
    EXPECT_TRUE(reading.LoadResource('a', 1, nullptr)) << "empty, and there";
    EXPECT_TRUE(reading.GetResourceInfo('a', 3, nullptr, &size) && size == 5);
    EXPECT_EQ(DataOf(reading, 'a', 3), "1x345");
    EXPECT_TRUE(reading.LoadResource('a', "three", nullptr) && reading.HasResource('a', "three"));
    EXPECT_FALSE(reading.HasResource('b', "three") || reading.HasResource('a', 4)
        || reading.LoadResource('a', noName, &size) || reading.HasResource('a', "no"));
    EXPECT_EQ(BResources(&file, true).AddResource('b', 1, "new", 3), B_OK);
    BResources anew(&readable); // which the old ones are gone from
    EXPECT_EQ(DataOf(anew, 'b', 1) + DataOf(anew, 'a', 3), "newnone");
    EXPECT_EQ(DataOf(reading, 'a', 3), "1x345") << "as it was read";
    BResources clobbering(&file, true), other(&file);
    EXPECT_TRUE(clobbering.Sync() == B_OK && other.AddResource('c', 1, "other", 5) == B_OK
        && other.Sync() == B_OK && clobbering.AddResource('c', 2, "mine", 4) == B_OK
        && clobbering.Sync() == B_OK); // which removes all but once
    EXPECT_TRUE(clobbering.RemoveResource('c', 3) == B_ENTRY_NOT_FOUND
        && other.AddResource('c', 3, "x", 1) == B_OK && other.RemoveResource('c', 3) == B_OK
        && other.Sync() == B_OK && clobbering.AddResource('c', 3, "kept", 4) == B_OK
        && clobbering.Sync() == B_OK && other.Sync() == B_OK); // removes nothing twice
    BResources late(&readable), stale(&readable);
    EXPECT_TRUE(other.AddResource('c', 1, "another", 7) == B_OK && other.Sync() == B_OK
        && clobbering.Sync() == B_OK); // which it does not take back
    EXPECT_TRUE(stale.LoadResource('c', 1, &size) && size == 7);
    EXPECT_EQ(clobbering.AddResource('c', 2, "my", 2), B_OK);
    EXPECT_TRUE(other.AddResource('c', 2, "mine", 4) == B_OK && clobbering.Sync() == B_OK
        && other.Sync() == B_OK && clobbering.Sync() == B_OK);
    BResources left(&readable);
    EXPECT_EQ(
        DataOf(left, 'c', 1) + DataOf(left, 'c', 2) + DataOf(left, 'c', 3), "anotherminekept");
    std::filesystem::remove_all(TestHome() / "data/tarvex");
    EXPECT_FALSE(late.LoadResource('c', 1, &size));
}

} // namespace
