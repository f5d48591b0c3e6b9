#include "foundation/LibFiles.h"
#include "tests/foundation/ScratchFolder.h"
#include "tests/support/SessionService.h"
#include "tests/support/Test.h"

TEST(LibTracker, AsksTheFileManager)
{
    const ScratchFolder folder;
    SessionService manager({ "org.freedesktop.FileManager1" });
    const char* file = "a b%\xff";
    WriteFile(file, "");
    EXPECT_TRUE(LibOpenEntry(file) && LibInfoEntry(file));
    EXPECT_FALSE(LibOpenEntry("no folder/file"));
    const std::string manner = "/org/freedesktop/FileManager1 org.freedesktop.FileManager1.Show";
    const std::string uri = "([file://" + folder / "a%20b%25%FF" + "], )";
    EXPECT_TRUE(manager.log.WaitFor(manner + "ItemProperties" + uri));
    Entries calls = manager.log.Now();
    std::erase(calls, "gone");
    EXPECT_EQ(calls, (Entries { manner + "Items" + uri, manner + "ItemProperties" + uri }));
}
