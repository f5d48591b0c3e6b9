#include "TestHome.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <Directory.h>
#include <FindDirectory.h>
#include <Path.h>

#include <pwd.h>

namespace fs = std::filesystem;

namespace {

std::string TextOf(const BPath& path)
{
    return path.Path() ? path.Path() : "none";
}

TEST(Path, IsTakenAsGivenOrNormalizedWhereItMustBe)
{
    const TempFolder folder;
    Shell(folder, "mkdir -p dir/sub && ln -s dir way");
    const auto filled = [&](const std::string& text) {
        return text[0] == '@' ? folder.Path() + text.substr(1) : text;
    };
    for (const Row& row : RowsOf("kits/storage/data/paths.txt", 4)) {
        BPath path("/before");
        const status_t status = path.SetTo(filled(row[0]).c_str(),
            row[1] == "null" ? nullptr : row[1].c_str(), row[2] == "normalized");
        EXPECT_EQ(status == B_BAD_VALUE       ? "bad value"
                : status == B_ENTRY_NOT_FOUND ? "not found"
                                              : TextOf(path),
            filled(row[3]))
            << row[0] << " " << row[1];
        EXPECT_TRUE(path.InitCheck() == status && (status == B_OK || path == BPath()));
    }
    BPath relative("some_file");
    EXPECT_EQ(TextOf(relative), fs::current_path() / "some_file");
    EXPECT_TRUE(relative == "./some_file");
    EXPECT_EQ(relative.Append(relative.Leaf()), B_OK); // its own text
    EXPECT_EQ(TextOf(relative), fs::current_path() / "some_file/some_file");
    const BDirectory none;
    EXPECT_TRUE(relative.SetTo(&none) == B_NO_INIT && relative == BPath());
}

TEST(FindDirectory, EveryConstantHasAPlaceAndTheUsersFollowTheXdgFolders)
{
    BPath path;
    int count = 0;
    for (int which = -1; which < 5000; which++) {
        const status_t status = find_directory(static_cast<directory_which>(which), &path);
        EXPECT_TRUE(status == B_OK ? TextOf(path)[0] == '/' : status == B_BAD_VALUE) << which;
        count += status == B_OK;
    }
    EXPECT_EQ(count, 51);
    const auto of = [&](directory_which which) {
        EXPECT_EQ(find_directory(which, &path), B_OK);
        return TextOf(path);
    };
    EXPECT_EQ(of(B_BEOS_BIN_DIRECTORY), "/usr/bin");
    EXPECT_EQ(of(B_USER_SETTINGS_DIRECTORY), TestHome() / "config");
    EXPECT_EQ(of(B_DESKTOP_DIRECTORY), TestHome() / "Desktop");
    EXPECT_EQ(find_directory(B_USER_BOOT_DIRECTORY, &path, true), B_OK);
    EXPECT_TRUE(fs::is_directory(TestHome() / "config/autostart"));
    WriteFile(TestHome() / "config/user-dirs.dirs",
        "# XDG_DESKTOP_DIR=\"/no\"\nXDG_DESKTOP_DIR=\"rel\"\nXDG_DESKTOP_DIR=\"$HOME/My \\$ "
        "Desk/\"\n");
    EXPECT_EQ(of(B_DESKTOP_DIRECTORY), TestHome() / "My $ Desk");
    EXPECT_EQ(of(B_TRASH_DIRECTORY), TestHome() / "data/Trash/files");
    for (const char* variable : { "XDG_CONFIG_HOME", "XDG_DATA_HOME" })
        setenv(variable, "relative", 1); // counts as not set
    EXPECT_EQ(of(B_USER_SETTINGS_DIRECTORY), TestHome() / ".config");
    EXPECT_EQ(of(B_TRASH_DIRECTORY), TestHome() / ".local/share/Trash/files");
    unsetenv("HOME"); // as a service may find it
    EXPECT_EQ(of(B_USER_DIRECTORY), getpwuid(getuid())->pw_dir);
    setenv("HOME", TestHome().Path().c_str(), 1);
    setenv("XDG_CONFIG_HOME", (TestHome() / "config").c_str(), 1);
    setenv("XDG_DATA_HOME", (TestHome() / "data").c_str(), 1);
}

} // namespace
