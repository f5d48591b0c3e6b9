#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>

#include <Entry.h>

namespace fs = std::filesystem;

TEST(Entry, AReferenceLeadsBackToTheFileByWhateverPathItWasMade)
{
    char pattern[] = "/tmp/tarvex_entry.XXXXXX";
    const fs::path root = fs::canonical(mkdtemp(pattern));
    fs::create_directories(root / "dir/inner");
    fs::create_directory_symlink(root / "dir", root / "link");
    const struct {
        std::string path;
        status_t status;
        std::string target; // below root
    } rows[] = {
        { "/dir/file", B_OK, "/dir/file" }, // need not exist
        { "/dir/inner//", B_OK, "/dir/inner" },
        { "/link/file", B_OK, "/dir/file" },
        { "/link", B_OK, "/link" }, // itself, not what it points to
        { "/dir/inner/..", B_OK, "/dir" },
        { "/none/file", B_ENTRY_NOT_FOUND, "" },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        entry_ref found;
        EXPECT_EQ(get_ref_for_path((root.string() + row.path).c_str(), &found), row.status);
        EXPECT_EQ(PathOfRef(found), row.target.empty() ? "" : root.string() + row.target);
    }
    entry_ref ref;
    EXPECT_EQ(get_ref_for_path("/", &ref), B_OK);
    EXPECT_EQ(PathOfRef(ref), "/");
    EXPECT_EQ(get_ref_for_path("", &ref), B_BAD_VALUE);
    EXPECT_EQ(get_ref_for_path("some_file", &ref), B_OK);
    EXPECT_EQ(PathOfRef(ref), fs::current_path() / "some_file");
    fs::remove_all(root);
}

TEST(Entry, TwoReferencesAreEqualIfDirectoryAndNameAre)
{
    const entry_ref ref(1, 2, "a");
    for (const entry_ref& other : { entry_ref(1, 2, "b"), entry_ref(1, 2, nullptr),
             entry_ref(1, 3, "a"), entry_ref(2, 2, "a") })
        EXPECT_FALSE(ref == other);
    EXPECT_TRUE(ref == entry_ref(1, 2, "a"));
    EXPECT_TRUE(entry_ref() == entry_ref());
}
