#include "foundation/LibFiles.h"
#include "tests/foundation/ScratchFolder.h"
#include "tests/support/OwnBus.h"
#include "tests/support/Test.h"
#include "tests/support/WaitUntil.h"

#include <Entry.h>
#include <Message.h>
#include <Messenger.h>

namespace {

// On a session bus of the test's own, a desktop's file manager that lacks ShowFolders.
class Desktop {
public:
    void StartFileManager() const { fBus.Serve("org.freedesktop.FileManager1"); }
    // Answers the next call and describes it: "ShowItems file:///a file:///b".
    std::string NextCall()
    {
        DBusMessage* call = nullptr;
        while (!call || dbus_message_get_type(call) != DBUS_MESSAGE_TYPE_METHOD_CALL) {
            if (!(call = dbus_connection_pop_message(*fBus)))
                dbus_connection_read_write(*fBus, -1);
        }
        char** uris = nullptr;
        int count = 0;
        const char* startupId = nullptr;
        std::string text = dbus_message_get_member(call);
        dbus_message_get_args(call, nullptr, DBUS_TYPE_ARRAY, DBUS_TYPE_STRING, &uris, &count,
            DBUS_TYPE_STRING, &startupId, DBUS_TYPE_INVALID);
        DBusMessage* reply = text != "ShowFolders"
            ? dbus_message_new_method_return(call)
            : dbus_message_new_error(call, DBUS_ERROR_UNKNOWN_METHOD, "unknown");
        for (int i = 0; i < count; i++)
            text += std::string(" ") + uris[i];
        dbus_connection_send(*fBus, reply, nullptr);
        dbus_connection_flush(*fBus);
        dbus_free_string_array(uris);
        dbus_message_unref(reply);
        dbus_message_unref(call);
        return text;
    }

private:
    const OwnBus fBus { "DBUS_SESSION_BUS_ADDRESS" };
};

} // namespace

TEST(LibTracker, AsksTheDesktopsFileManagerAndElseTheOpener)
{
    const ScratchFolder folder;
    Desktop desktop;
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
    EXPECT_TRUE(LibOpenEntry(file) && opens(file) && LibInfoEntry(file) && opens("folder"));
    EXPECT_FALSE(LibOpenEntry("no folder/file"));

    desktop.StartFileManager();
    EXPECT_TRUE(LibOpenEntry(file) && desktop.NextCall() == "ShowItems " + uri);
    EXPECT_TRUE(LibInfoEntry(file) && desktop.NextCall() == "ShowItemProperties " + uri);
    const std::string folders = "ShowFolders file://" + folder / "folder";
    EXPECT_TRUE(LibOpenEntry("folder") && desktop.NextCall() == folders && opens("folder"));

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
