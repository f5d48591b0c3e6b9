#include "FileManager.h"

#include "tests/support/Rows.h"
#include "tests/support/SessionService.h"
#include "tests/support/Test.h"
#include "tests/support/WaitUntil.h"

#include <AppDefs.h>
#include <Entry.h>
#include <Message.h>

TEST(FileManager, AsksTheDesktopOrElseOpensAndTellsOfWhatIsMissing)
{
    const TempFolder folder;
    std::filesystem::create_directories(folder / "in/tools");
    for (const char* file : { "a", "b" })
        WriteFile(folder / file, "");
    const std::string opener = folder / "in/tools/xdg-open", path = getenv("PATH");
    WriteFile(opener, "#!/bin/sh\necho \"$1\" >>\"${0%/in/*}/opened\"\n");
    chmod(opener.c_str(), 0755);
    std::atomic<const char*> refusal;
    SessionService service({ "org.freedesktop.FileManager1" }, [&](DBusMessage* call) {
        const bool isLacking = dbus_message_has_member(call, "ShowFolders");
        const char* error = isLacking ? DBUS_ERROR_UNKNOWN_METHOD : refusal.load();
        return error ? dbus_message_new_error(call, error, "")
                     : dbus_message_new_method_return(call);
    });
    const std::string bus = getenv("DBUS_SESSION_BUS_ADDRESS");
    const auto whole = [&](const std::string& text) {
        return std::regex_replace(text, std::regex("@"), folder.Path());
    };
    const auto words = [](std::istream&& text) { // in any order
        return std::set<std::string>(std::istream_iterator<std::string>(text), {});
    };
    for (Row row : RowsOf("kits/tracker/data/requests.txt", 7)) {
        SCOPED_TRACE(testing::PrintToString(row));
        std::transform(row.begin(), row.end(), row.begin(), whole);
        refusal = row[2] == "manager" ? nullptr
            : row[2] == "slow"        ? DBUS_ERROR_NO_REPLY
            : row[2] == "late"        ? DBUS_ERROR_TIMEOUT
                                      : DBUS_ERROR_UNKNOWN_METHOD;
        const char* const variable = "DBUS_SESSION_BUS_ADDRESS";
        setenv(variable, row[2] == "no bus" ? "unix:path=/nonexistent" : bus.c_str(), 1);
        const size_t before = service.log.Now().size();
        setenv("PATH", row[2] == "nothing" ? "" : (folder / "in/tools:" + path).c_str(), 1);
        BMessage request(row[0] == "open" ? B_REFS_RECEIVED : 'Tinf'), reply;
        std::istringstream entries(row[1]);
        for (std::string entry; entries >> entry;) {
            entry_ref ref;
            EXPECT_EQ(get_ref_for_path(entry.c_str(), &ref), B_OK);
            request.AddRef("refs", &ref);
        }
        testing::internal::CaptureStderr();
        EXPECT_EQ(FileManagerMessenger().SendMessage(&request, &reply), B_OK);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), row[4]);
        setenv("PATH", path.c_str(), 1);
        int32 error = 1;
        EXPECT_TRUE(reply.what == B_REPLY && reply.FindInt32("error", &error) == B_OK);
        EXPECT_EQ(error, row[3] == "done" ? status_t { B_OK } : B_ERROR);
        std::string called;
        const Entries log = service.log.Now();
        for (size_t i = before; i < log.size(); i++)
            called += log[i] == "gone" ? "" : log[i].substr(log[i].rfind("1.") + 2) + ";";
        EXPECT_EQ(called, row[5]);
        EXPECT_TRUE(WaitUntil([&] {
            return words(std::ifstream(folder / "opened")) == words(std::istringstream(row[6]));
        })) << ReadFile(folder / "opened");
        std::filesystem::remove(folder / "opened");
    }
}
