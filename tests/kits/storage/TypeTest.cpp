#include "ReleaseVersion.h"
#include "TestHome.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <AppFileInfo.h>
#include <File.h>
#include <Message.h>
#include <Mime.h>

namespace fs = std::filesystem;

namespace {

std::string TypeOf(const std::string& path)
{
    BNode node(path.c_str());
    char type[B_MIME_TYPE_LENGTH] = "unset";
    EXPECT_EQ(BNodeInfo(&node).GetType(type), B_OK);
    return type;
}

TEST(Type, AFileThatHasNoneIsWhatItsKindNameAndContentsSay)
{
    const TempFolder folder;
    Shell(folder,
        "mkdir folder.txt; ln -s /bin/sh link.txt; touch notes.txt $(printf '\\377').zip;"
        "echo '1.0\n12\nrecord' > Tarvex.results; echo '#!/bin/sh' > script;"
        "printf '\\211PNG\\r\\n\\032\\n' > picture; printf '\\001\\002\\376\\377\\200' > junk");
    fs::copy_file("/proc/self/exe", folder / "program.txt");
    for (const Row& row : RowsOf("kits/storage/data/types.txt", 2))
        EXPECT_EQ(TypeOf(folder / row[0]), row[1]);

    BNode node((folder / "junk").c_str());
    BNodeInfo info(&node);
    EXPECT_EQ(info.SetType("text/plain"), B_OK);
    EXPECT_EQ(TypeOf(folder / "junk"), "text/plain");
    EXPECT_EQ(info.SetType(std::string(240, 't').c_str()), B_BAD_VALUE);
    EXPECT_EQ(info.SetType(nullptr), B_OK);
    EXPECT_EQ(TypeOf(folder / "junk"), "application/octet-stream");
    char type[B_MIME_TYPE_LENGTH] = "before";
    BNode none;
    BMimeType guessed;
    entry_ref ref, missing;
    EXPECT_EQ(get_ref_for_path((folder / "picture").c_str(), &ref), B_OK);
    EXPECT_EQ(get_ref_for_path((folder / "missing").c_str(), &missing), B_OK);
    EXPECT_TRUE(info.GetType(nullptr) == B_BAD_VALUE && info.SetType(nullptr) == B_OK
        && BNodeInfo(&none).GetType(type) == B_NO_INIT && BNodeInfo().SetType("x") == B_NO_INIT
        && BNodeInfo().SetTo(nullptr) == B_BAD_VALUE && info.SetTo(&node) == B_OK
        && BMimeType::GuessMimeType(nullptr, &guessed) == B_BAD_VALUE
        && BMimeType::GuessMimeType(&ref, nullptr) == B_BAD_VALUE
        && BMimeType::GuessMimeType(&missing, &guessed) == B_ENTRY_NOT_FOUND);
    EXPECT_TRUE(!guessed.Type() && BMimeType::GuessMimeType(&ref, &guessed) == B_OK);
    EXPECT_STREQ(guessed.Type(), "image/png");
    EXPECT_TRUE(guessed.SetTo("a b") == B_BAD_VALUE && !guessed.Type());
    EXPECT_TRUE(BMimeType::IsValid(std::string(239, 't').c_str()) && BMimeType::IsValid("text"));
    for (const char* bad : { "", "/plain", "text/", "text/pl ain", "te<xt", "text/plain/x" })
        EXPECT_FALSE(BMimeType::IsValid(bad)) << bad;
}

constexpr version_kind kApp = B_APP_VERSION_KIND, kSystem = B_SYSTEM_VERSION_KIND;

TEST(AppFileInfo, KeepsSignatureVersionsAndTypesWithTheFile)
{
    const std::string path = TestHome() / "application";
    BFile file(path.c_str(), B_READ_WRITE | B_CREATE_FILE);
    char signature[B_MIME_TYPE_LENGTH];
    version_info version = { 1, 2, 3, 2, 4, "short", "long" };
    version_info found = {};
    BMessage types;
    {
        BAppFileInfo info(&file);
        EXPECT_EQ(info.GetSignature(signature), B_ENTRY_NOT_FOUND);
        types.AddString("types", "image/png");
        EXPECT_TRUE(info.SetSignature("application/x-vnd.test") == B_OK
            && info.SetSupportedTypes(&types) == B_OK
            && info.SetVersionInfo(&version, kApp) == B_OK);
        EXPECT_EQ(info.GetVersionInfo(&found, kSystem), B_ENTRY_NOT_FOUND);
        memset(version.short_info, 'x', sizeof version.short_info);
        EXPECT_EQ(info.SetVersionInfo(&version, kApp), B_BAD_VALUE);
    }
    BFile again(path.c_str(), B_READ_ONLY);
    const BAppFileInfo info(&again);
    EXPECT_EQ(info.GetSignature(signature), B_OK);
    EXPECT_STREQ(signature, "application/x-vnd.test");
    types.MakeEmpty();
    EXPECT_TRUE(info.GetSupportedTypes(&types) == B_OK && types.HasString("types"));
    EXPECT_EQ(info.GetVersionInfo(&found, kApp), B_OK);
    EXPECT_EQ(found.minor * 100 + found.variety * 10 + found.internal, 324u);
    EXPECT_STREQ(found.long_info, "long");
    version.short_info[0] = '\0';
    EXPECT_EQ(BAppFileInfo(&again).SetVersionInfo(&version, kSystem), B_OK);
    version.minor = 9;
    EXPECT_EQ(BAppFileInfo(&again).SetVersionInfo(&version, kApp), B_OK);
    EXPECT_EQ(info.GetVersionInfo(&found, kSystem), B_OK);
    EXPECT_EQ(found.minor, 3u) << "the other kind stays";
    const auto bad = static_cast<version_kind>(2), worse = static_cast<version_kind>(-1);
    BAppFileInfo nobody(nullptr);
    ExpectAll(B_NO_INIT,
        { nobody.GetSignature(signature), nobody.SetSignature("x"),
            nobody.GetVersionInfo(&found, kApp), nobody.SetVersionInfo(&version, kApp) });
    ExpectAll(B_BAD_VALUE,
        { info.GetSignature(nullptr), nobody.SetVersionInfo(&version, bad),
            nobody.SetVersionInfo(&version, worse), info.GetVersionInfo(&found, bad),
            info.GetVersionInfo(&found, worse), info.GetVersionInfo(nullptr, kApp) });
    memset(version.long_info, 'x', sizeof version.long_info); // it never ends
    EXPECT_EQ(
        again.WriteAttr("BEOS:APP_VERSION", 'APPV', 0, &version, sizeof version), sizeof version);
    EXPECT_EQ(info.GetVersionInfo(&found, kApp), B_BAD_TYPE);
    for (int i = 0; i < 2; i++) // also if there is none any more
        EXPECT_EQ(BAppFileInfo(&again).SetVersionInfo(nullptr, kApp), B_OK);
    EXPECT_EQ(info.GetVersionInfo(&found, kApp), B_ENTRY_NOT_FOUND);
    for (const char* name : { "BEOS:APP_VERSION", "BEOS:FILE_TYPES" })
        EXPECT_EQ(again.WriteAttr(name, B_RAW_TYPE, 0, "damaged", 7), 7);
    EXPECT_EQ(info.GetVersionInfo(&found, kApp), B_BAD_TYPE);
    EXPECT_EQ(info.GetSupportedTypes(&types), B_BAD_TYPE);
    EXPECT_EQ(again.WriteAttr("BEOS:FILE_TYPES", B_RAW_TYPE, 0, "", 0), 0);
    EXPECT_EQ(info.GetSupportedTypes(&types), B_BAD_TYPE);
}

TEST(AppFileInfo, TheSystemsVersionIsThatOfTheDistribution)
{
    for (const Row& row : RowsOf("kits/storage/data/releases.txt", 4)) {
        const version_info info = VersionOfRelease(row[0]);
        const std::string number = std::to_string(info.major) + "." + std::to_string(info.middle)
            + "." + std::to_string(info.minor);
        EXPECT_EQ((Row { row[0], info.short_info, info.long_info, number }), row);
        EXPECT_EQ(info.variety * 10 + info.internal, 50u);
    }
    EXPECT_EQ(strlen(VersionOfRelease("PRETTY_NAME=" + std::string(999, 'x')).short_info), 63u);
    BFile file("/system/Tracker", B_READ_ONLY); // needs a release file, as every system has one
    version_info info = {};
    EXPECT_EQ(BAppFileInfo(&file).GetVersionInfo(&info, kApp), B_OK);
    EXPECT_STRNE(info.short_info, "");
}

} // namespace
