#include "results/ArchiveFiles.h"

#include "tests/results/MadeArchive.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

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
    const std::map<std::string, unsigned> types { { "file", AE_IFREG }, { "folder", AE_IFDIR },
        { "link", AE_IFLNK }, { "device", AE_IFCHR } };
    for (const Row& row : RowsOf("results/data/archived", 4)) {
        const ArchivedEntry entry { row[0], row[1] == "file" ? "1" : "", types.at(row[1]), row[2] };
        EXPECT_EQ(Told(MadeArchive(Packing::kTar, { { "good", "1" }, entry })), row[3]);
        if (row[1] == "file" && row[2].empty()) {
            EXPECT_EQ(
                Told(MadeArchive(Packing::kZip, { entry })).substr(0, 30), row[3].substr(0, 30));
        }
    }
    EXPECT_EQ(Told(MadeArchive(Packing::kLockedZip, { { "a", "1" } })), "is encrypted");
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

} // namespace
