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
    BPath archive;
    find_directory(B_COMMON_TEMP_DIRECTORY, &archive, true);
    const std::string zip = std::string(archive.Path()) + "/zip_resource_file.zip";
    WriteFile(zip, "of a start that was broken off");
    EXPECT_TRUE(add("tree", 7, "old") && add("large one.bin", 7, nullptr));
    EXPECT_TRUE(add("odd\nname", 8, "odd\nname") && add("tree", 9, "tree"));
    EXPECT_EQ(ErrorsOf([&] { EXPECT_FALSE(add("missing", 7, "missing")); }), zip + " failed\n");
    EXPECT_FALSE(fs::exists(zip));

    EXPECT_TRUE(extract(7, "out.bin") && extract(8, "out") && extract(9, "out tree"));
    EXPECT_EQ(ReadFile(folder / "out.bin"), large);
    EXPECT_EQ(ReadFile(folder / "out") + ReadFile(folder / "out tree/leaf"), "some words\ntext");
    EXPECT_EQ(fs::current_path(), folder.Path()) << "left in a folder that goes";
    EXPECT_TRUE(extract(7, "out.zip", false) && extract(11, "none"));
    EXPECT_FALSE(fs::exists(folder / "none") || extract(7, "no folder/out"));
    EXPECT_EQ(TypeOf(folder / "out") + TypeOf(folder / "out.zip"), "text/plainapplication/zip");

    // What a damaged archive holds replaces nothing.
    size_t size = 0;
    const auto* data = static_cast<const char*>(resources.LoadResource(B_RAW_TYPE, 8, &size));
    const auto at = static_cast<off_t>(std::string(data, size).find("some words"));
    EXPECT_EQ(resources.WriteResource(B_RAW_TYPE, 8, "SOME", at, 4), B_OK);
    EXPECT_FALSE(extract(8, "out"));
    EXPECT_EQ(ReadFile(folder / "out"), "some words\n");
}

TEST(LibAppResource, ValuesAreFoundAndCopiedByTypeAndId)
{
    const ScratchFolder folder;
    const type_code types[] = { B_STRING_TYPE, B_INT32_TYPE, B_INT8_TYPE, B_BOOL_TYPE,
        B_RGB_COLOR_TYPE, B_RECT_TYPE, B_RAW_TYPE };
    LibAppResource source("source", kNewFile), target("target", kNewFile);
    target.AddResource(B_STRING_TYPE, 1, "other", 5, "other");
    const auto add = [&](int32 id, std::initializer_list<std::string> values) {
        for (size_t i = 0; i < values.size(); i++)
            source.AddResource(
                types[i], id, values.begin()[i].data(), values.begin()[i].size(), "n");
        for (const type_code type : types)
            EXPECT_TRUE(source.CopyResource(id, type, target));
    };
    const float sides[] = { 1, 2, 3, 4.5f };
    const std::string rect(reinterpret_cast<const char*>(sides), sizeof(sides));
    add(1, { "text", "\xfb\xff\xff\xff", "\3", "\2", "\1\2\3\4", rect });
    add(2, { std::string("te\0xt", 5), "long ", "ab", "ab", "long ", rect + "x" });
    add(3, { "", "abc", "", std::string(1, '\0'), "abc", rect.substr(1) });
    // What is found under an id, by all functions; "-" where there is none.
    const auto found = [&](LibAppResource& resources, int32 id) {
        char text[8] = "-";
        int32 number = 99;
        int8 byte = 99;
        bool flag = false;
        rgb_color color {};
        BRect place;
        std::ostringstream all;
        all << LibFindStringResource(resources, id, text) << text << ' '
            << LibFindLongResource(resources, id, number) << number << ' '
            << LibFindShortResource(resources, id, byte) << int { byte } << ' '
            << LibFindBoolResource(resources, id, flag) << flag << ' '
            << LibFindRGBResource(resources, id, color) << (color == rgb_color { 1, 2, 3, 4 })
            << ' ' << LibFindRectResource(resources, id, place) << (place == BRect(1, 2, 3, 4.5f));
        const std::unique_ptr<char[]> copy(resources.FindString(id));
        EXPECT_EQ(copy ? copy.get() : std::string("-"), text);
        return all.str();
    };
    EXPECT_EQ(found(target, 1), "1text 1-5 13 11 11 11");
    EXPECT_TRUE(target.HasResource(B_STRING_TYPE, "n") && !target.HasResource(B_RAW_TYPE, 1));
    EXPECT_TRUE(target.CopyResource(1, B_STRING_TYPE, target)); // the same object
    EXPECT_EQ(found(target, 1), found(source, 1));
    EXPECT_EQ(found(target, 2), "1te 099 099 00 00 00");
    EXPECT_EQ(found(target, 3), "1 099 099 10 00 00");
    EXPECT_EQ(found(target, 4), "0- 099 099 00 00 00");
    EXPECT_FALSE(LibFindStringResource(target, 1, nullptr));
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
    resources.Close();
    EXPECT_FALSE(resources.HasString("farewell"));
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
