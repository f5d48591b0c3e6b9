#include "results/ArchiveFiles.h"

#include "tests/results/MadeArchive.h"
#include "tests/support/Test.h"

#include <OwnLibrary.h>

namespace {

// "path=contents;" of each file, or why there are none.
std::string Told(const std::string& bytes)
{
    EXPECT_TRUE(IsArchive(bytes));
    const auto read = FilesOfArchive(bytes);
    if (const auto* why = std::get_if<std::string>(&read))
        return *why;
    std::string told;
    for (const ArchivedFile& file : std::get<std::vector<ArchivedFile>>(read))
        told += file.path + "=" + file.contents + ";";
    return told;
}

TEST(ArchiveFiles, AreRefusedWhereTheArchiveIsNotToBeTrusted)
{
    const struct {
        ArchivedEntry entry;
        const char* why;
    } rows[] = {
        { { "../up", "1" }, "holds a path that leads out of it: <../up>" },
        { { "a\\..\\up", "1" }, "holds a path that leads out of it: <a\\..\\up>" },
        { { "/etc/one", "1" }, "holds a path that leads out of it: </etc/one>" },
        { { "a/..", "", AE_IFDIR, "" }, "holds a path that leads out of it: <a/../>" },
        { { "link", "", AE_IFLNK, "/etc/passwd" }, "holds a link or a device: <link>" },
        { { "link", "", AE_IFREG, "other" }, "holds a link or a device: <link>" },
        { { "device", "", AE_IFCHR, "" }, "holds a link or a device: <device>" },
    };
    for (const auto& [entry, why] : rows) {
        EXPECT_EQ(Told(MadeArchive(Packing::kTar, { { "good", "1" }, entry })), why);
        if (entry.type == AE_IFREG && entry.target.empty()) {
            EXPECT_EQ(Told(MadeArchive(Packing::kZip, { entry })).substr(0, 30),
                std::string(why).substr(0, 30));
        }
    }
    const std::string zip = MadeArchive(Packing::kZip, { { "one", std::string(9000, 'x') } });
    EXPECT_EQ(Told(zip.substr(0, 40)).substr(0, 20), "is a damaged archive");
}

TEST(ArchiveFiles, HaveTenMegabytesTogetherAtMost)
{
    const std::string half(kMostUnpacked / 2, 'x');
    for (const Packing packing : { Packing::kZip, Packing::kTarGz }) {
        EXPECT_EQ(Told(MadeArchive(packing, { { "a", half }, { "b", half + "x" } })),
            "has over 10 MB unpacked");
        EXPECT_EQ(
            Told(MadeArchive(packing, { { "a", half.substr(9000) } })).size(), half.size() - 8997);
    }
    // Headers alone, which compress to next to nothing.
    EXPECT_EQ(Told(MadeArchive(Packing::kTarGz,
                  std::vector<ArchivedEntry>(kMostUnpacked / 512 + 1, { "a/", "", AE_IFDIR, "" }))),
        "has over 10 MB unpacked");
}

TEST(OwnLibrary, ThatIsNotThereOrHasNoSuchFunctionIsToldOf)
{
    for (const char* library : { "none", "archive" }) {
        testing::internal::CaptureStderr();
        EXPECT_FALSE(find_own_function(library, "tarvex_nothing"));
        EXPECT_EQ(testing::internal::GetCapturedStderr().find("Cannot load <libtarvex-"), 0u);
    }
}

} // namespace
