#include "foundation/LibFiles.h"
#include "tests/foundation/ScratchFolder.h"
#include "tests/support/SessionService.h"
#include "tests/support/Test.h"
#include "tests/support/WaitUntil.h"

#include <Entry.h>
#include <Message.h>
#include <Messenger.h>

TEST(LibTracker, AsksTheDesktopsFileManagerAndElseTheOpener)
{
    const ScratchFolder folder;
    auto manager = std::make_unique<SessionService>(
        std::vector<const char*> { "org.freedesktop.FileManager1" });
    manager->unknown = "ShowFolders";
    const char* file = "folder/a b%\xff";
    const std::string uri = "file://" + folder / "folder/a%20b%25%FF";
    std::filesystem::create_directory("folder");
    WriteFile(file, "");
    WriteFile("xdg-open", "#!/bin/sh\nprintf '%s\\n' \"$1\" >>" + folder / "opened" + "\n");
    std::filesystem::permissions("xdg-open", std::filesystem::perms::owner_all);
    setenv("PATH", (folder.Path() + ":" + getenv("PATH")).c_str(), 1);
    std::string opened;
    const auto opens = [&](const std::string& path) {
        opened += folder / path + "\n";
        return WaitUntil([&] { return ReadFile(folder / "opened") == opened; });
    };
    EXPECT_TRUE(LibOpenEntry(file) && LibInfoEntry(file));
    EXPECT_TRUE(manager->log.WaitFor("ShowItemProperties([" + uri + "], )"));
    EXPECT_TRUE(LibOpenEntry("folder") && opens("folder"));
    Entries calls = manager->log.Now();
    std::erase(calls, "gone");
    EXPECT_EQ(calls,
        (Entries { "ShowItems([" + uri + "], )", "ShowItemProperties([" + uri + "], )",
            "ShowFolders([file://" + folder / "folder" + "], )" }));
    manager.reset(); // and its bus
    EXPECT_TRUE(LibOpenEntry(file) && opens(file) && LibInfoEntry(file) && opens("folder"));
    EXPECT_FALSE(LibOpenEntry("no folder/file"));

    BMessage request('Tinf');
    BMessage reply;
    entry_ref ref;
    int32 error = B_OK;
    EXPECT_EQ(get_ref_for_path("folder/missing", &ref), B_OK);
    request.AddRef("refs", &ref);
    EXPECT_EQ(BMessenger("application/x-vnd.be-trak").SendMessage(&request, &reply), B_OK);
    EXPECT_TRUE(reply.FindInt32("error", &error) == B_OK && error == B_ERROR);
    EXPECT_FALSE(BMessenger("application/x-vnd.Be-none").IsValid());
}
