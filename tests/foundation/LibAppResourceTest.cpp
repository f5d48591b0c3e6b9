#include "foundation/LibAppResource.h"

#include "foundation/LibAppInfo.h"
#include "foundation/LibTools.h"
#include "tests/foundation/ScratchFolder.h"
#include "tests/support/Test.h"

#include <AppFileInfo.h>
#include <Application.h>
#include <Bitmap.h>
#include <FindDirectory.h>
#include <Message.h>
#include <Path.h>
#include <TypeConstants.h>

namespace fs = std::filesystem;

namespace {

constexpr uint32 kNewFile = B_READ_WRITE | B_CREATE_FILE;

// Without an application there is no file of its own.
struct AppFile : testing::Test {
    const ScratchFolder fFolder;
    BApplication fApplication { "application/x-vnd.Test-resources" };
};

} // namespace

TEST(LibAppResource, PackedFilesComeBackWithTheirType)
{
    const ScratchFolder folder;
    std::string large;
    for (int i = 0; i < 20'000; i++)
        large += static_cast<char>(i * 7919 >> 3);
    WriteFile("large one.bin", large);
    WriteFile("odd\nname", "some words\n");
    fs::create_directory("tree");
    WriteFile("tree/leaf", "text");
    LibAppResource resources("file.rsrc", kNewFile);
    const auto add = [&](const char* path, int32 id, const char* name) {
        return resources.AddEntry((folder / path).c_str(), id, name, 0);
    };
    const auto extract = [&](int32 id, const char* path, bool unzip = true) {
        return resources.ExtractEntry(id, (folder / path).c_str(), unzip);
    };
    EXPECT_TRUE(add("tree", 7, "old") && add("large one.bin", 7, nullptr));
    EXPECT_TRUE(add("odd\nname", 8, "odd\nname") && add("tree", 9, "tree"));
    testing::internal::CaptureStderr();
    EXPECT_FALSE(add("missing", 7, "missing"));
    BPath archive;
    find_directory(B_COMMON_TEMP_DIRECTORY, &archive);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        std::string(archive.Path()) + "/zip_resource_file.zip failed\n");

    EXPECT_TRUE(extract(7, "out.bin") && extract(8, "out") && extract(9, "out tree"));
    EXPECT_EQ(ReadFile(folder / "out.bin"), large);
    EXPECT_EQ(ReadFile(folder / "out") + ReadFile(folder / "out tree/leaf"), "some words\ntext");
    EXPECT_EQ(fs::current_path(), folder.Path()) << "left in a folder that goes";
    EXPECT_TRUE(extract(7, "out.zip", false) && extract(11, "none"));
    EXPECT_FALSE(fs::exists(folder / "none") || extract(7, "no folder/out"));
    EXPECT_EQ(TypeOf(folder / "out") + TypeOf(folder / "out.zip"), "text/plainapplication/zip");
}

TEST(LibAppResource, WhatADamagedArchiveHoldsReplacesNothing)
{
    const ScratchFolder folder;
    WriteFile("file", "text");
    LibAppResource resources("file.rsrc", kNewFile);
    EXPECT_TRUE(resources.AddEntry((folder / "file").c_str(), 7, nullptr, 0));
    size_t size = 0;
    const void* data = resources.LoadResource(B_RAW_TYPE, 7, &size);
    const std::string archive(static_cast<const char*>(data), size);
    const auto at = static_cast<off_t>(archive.find("text"));
    EXPECT_EQ(resources.WriteResource(B_RAW_TYPE, 7, "TEXT", at, 4), B_OK);
    EXPECT_FALSE(resources.ExtractEntry(7, (folder / "file").c_str(), true));
    EXPECT_EQ(ReadFile(folder / "file"), "text");
}

TEST(LibAppResource, ValuesAreFoundAndCopiedByTypeAndId)
{
    const ScratchFolder folder;
    const float sides[] = { 1, 2, 3, 4.5f };
    const int32 number = -5;
    LibAppResource source("source", kNewFile);
    source.AddResource(B_STRING_TYPE, 1, "text", 4, "no end mark");
    source.AddResource(B_INT32_TYPE, 1, &number, 4);
    source.AddResource(B_BOOL_TYPE, 1, "\2", 1);
    source.AddResource(B_RGB_COLOR_TYPE, 1, "\1\2\3\4", 4);
    source.AddResource(B_RECT_TYPE, 1, sides, sizeof(sides));
    LibAppResource target("target", kNewFile);
    target.AddResource(B_STRING_TYPE, 1, "other", 5, "other");
    source.AddResource(B_INT8_TYPE, 1, "\3", 1);
    for (const type_code type : { B_STRING_TYPE, B_INT32_TYPE, B_BOOL_TYPE, B_INT8_TYPE,
             B_RGB_COLOR_TYPE, B_RECT_TYPE, B_RAW_TYPE })
        EXPECT_TRUE(source.CopyResource(1, type, target));

    char text[8] = "before";
    int32 found = 0;
    int8 small = 0;
    bool flag = false;
    rgb_color color {};
    BRect rect;
    EXPECT_FALSE(LibFindStringResource(target, 2, text) || LibFindStringResource(target, 1, nullptr)
        || LibFindLongResource(target, 2, found) || LibFindShortResource(target, 2, small)
        || LibFindBoolResource(target, 2, flag) || LibFindRGBResource(target, 2, color)
        || LibFindRectResource(target, 2, rect) || target.FindString(2));
    EXPECT_TRUE(text == std::string("before") && found + small + flag + color.red == 0);
    EXPECT_TRUE(LibFindStringResource(target, 1, text) && text == std::string("text"));
    EXPECT_TRUE(LibFindLongResource(target, 1, found) && LibFindShortResource(target, 1, small));
    EXPECT_TRUE(LibFindBoolResource(target, 1, flag) && flag && found == -5 && small == 3);
    EXPECT_TRUE(LibFindRGBResource(target, 1, color) && color == (rgb_color { 1, 2, 3, 4 }));
    EXPECT_TRUE(LibFindRectResource(target, 1, rect) && rect == BRect(1, 2, 3, 4.5f));
    EXPECT_STREQ(std::unique_ptr<char[]>(target.FindString(1)).get(), "text");
    EXPECT_TRUE(target.HasResource(B_STRING_TYPE, "no end mark"));
    EXPECT_TRUE(target.CopyResource(1, B_STRING_TYPE, target)); // the same object
    EXPECT_TRUE(LibFindStringResource(target, 1, text) && !target.HasResource(B_RAW_TYPE, 1));
    target.AddResource(B_INT32_TYPE, 1, "abc", 3);
    EXPECT_FALSE(LibFindLongResource(target, 1, found)); // of another size
}

TEST_F(AppFile, KeepsStringsAndBitmapsFromOneStartToTheNext)
{
    BBitmap bitmap(BRect(0, 0, 7, 3), B_RGB32);
    memset(bitmap.Bits(), 0x5a, static_cast<size_t>(bitmap.BitsLength()));
    BMessage archive;
    bitmap.Archive(&archive);
    std::string flat(static_cast<size_t>(archive.FlattenedSize()), '\0');
    archive.Flatten(flat.data(), archive.FlattenedSize());
    {
        qResources resources(B_READ_WRITE);
        resources.AddResource('BBMP', 4, flat.data(), flat.size(), "picture");
        resources.AddResource('BBMP', 5, "no bitmap", 9, "damaged");
        resources.SetString("greeting", "hello");
        resources.SetString("farewell", "bye");
        resources.SetString("greeting", "good day");
        resources.SetString("greeting", nullptr);
        resources.SetString(nullptr, "nobody");
        EXPECT_TRUE(resources.HasString("farewell") && !resources.HasString("none"));
        EXPECT_EQ(resources.GetNextId('BBMP'), 4);
    }
    qResources resources(B_READ_ONLY);
    EXPECT_EQ(Text(resources.GetString("greeting")) + Text(resources.GetString("farewell"))
            + Text(resources.GetString("none")),
        "good daybye");
    const std::unique_ptr<BBitmap> read(resources.GetBitmap("picture"));
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(memcmp(read->Bits(), bitmap.Bits(), static_cast<size_t>(bitmap.BitsLength())), 0);
    EXPECT_FALSE(resources.GetBitmap("damaged") || resources.GetBitmap("none"));
}

TEST_F(AppFile, SaysWhatTheApplicationIs)
{
    const auto recorded = [](uint32 minor, uint32 variety, uint32 internal) {
        const std::string tooLong(500, 'x');
        EXPECT_TRUE(LibSetAppVersion(1, 20, minor, tooLong.c_str(), nullptr, variety, internal));
        return Text(LibGetAppVersion());
    };
    EXPECT_EQ(recorded(3, 2, 4) + recorded(3, 5, 0), "1.20.3 Beta 41.20.3");
    EXPECT_EQ(recorded(0, 0, 0) + recorded(0, 4, 9), "1.20.0 Dev1.20.0 Gold 9");
    EXPECT_EQ(Text(LibGetAppVersion("none")), "");
    entry_ref self, text;
    char signature[B_MIME_TYPE_LENGTH] = "before";
    BFile file;
    WriteFile("file", "text");
    EXPECT_TRUE(get_ref_for_path("file", &text) == B_OK && !LibGetAppSignature(text, signature));
    EXPECT_STREQ(signature, "");
    EXPECT_EQ(get_ref_for_path(fs::read_symlink("/proc/self/exe").c_str(), &self), B_OK);
    EXPECT_FALSE(LibGetAppSignature(self, signature));
    EXPECT_TRUE(LibOpenAppFile(nullptr, B_READ_WRITE, file));
    EXPECT_EQ(BAppFileInfo(&file).SetSignature("application/x-vnd.Test"), B_OK);
    EXPECT_TRUE(LibGetAppSignature(self, signature));
    EXPECT_STREQ(signature, "application/x-vnd.Test");
    LibStringList types;
    EXPECT_EQ(LibGetAppSupportedTypes(types), 0);
    EXPECT_TRUE(
        types.Add("text/plain") && types.Add("text/x-results") && LibSetAppSupportedTypes(types));
    EXPECT_EQ(LibGetAppSupportedTypes(types), 4);
}
