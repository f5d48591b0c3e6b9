#include "FileManager.h"

#include "tests/support/SessionService.h"
#include "tests/support/Test.h"
#include "tests/support/WaitUntil.h"

#include <AppDefs.h>
#include <Entry.h>
#include <Message.h>

#include <regex>

TEST(FileManager, AsksTheDesktopOrElseOpensAndTellsOfWhatIsMissing)
{
    const TempFolder folder;
    std::filesystem::create_directories(folder / "in/tools");
    for (const char* file : { "a", "b" })
        WriteFile(folder / file, "");
    const std::string opener = folder / "in/tools/xdg-open", path = getenv("PATH");
    WriteFile(opener, "#!/bin/sh\necho \"$1\" >>\"${0%/in/*}/opened\"\n");
    chmod(opener.c_str(), 0755);
    enum Desktop { kNothing, kOpener, kManager };
    std::atomic<Desktop> desktop; // the last lacks ShowFolders
    SessionService service({ "org.freedesktop.FileManager1" }, [&](DBusMessage* call) {
        return desktop != kManager || dbus_message_has_member(call, "ShowFolders")
            ? dbus_message_new_error(call, DBUS_ERROR_UNKNOWN_METHOD, "unknown")
            : dbus_message_new_method_return(call);
    });
    const struct {
        uint32 what;
        std::vector<const char*> entries;
        Desktop desktop;
        int32 error;
        std::string told, called; // @: the folder
        std::set<std::string> opened {};
    } rows[] = {
        { B_REFS_RECEIVED, { "@/a", "@/in", "@/b" }, kManager, B_OK, "",
            "ShowFolders([file://@/in], );ShowItems([file://@/a, file://@/b], );", { "@/in" } },
        { B_REFS_RECEIVED, { "@/b", "@/in" }, kOpener, B_OK, "",
            "ShowFolders([file://@/in], );ShowItems([file://@/b], );", { "@/in", "@/b" } },
        { B_REFS_RECEIVED, { "@/b" }, kNothing, B_ERROR, "No program to open files with <@/b>\n",
            "ShowItems([file://@/b], );" },
        { B_REFS_RECEIVED, { "@/in" }, kNothing, B_ERROR, "No program to open files with <@/in>\n",
            "ShowFolders([file://@/in], );" },
        { B_REFS_RECEIVED, { "@/none" }, kManager, B_ERROR, "No file to show <@/none>\n", "" },
        { 'Tinf', { "@/none", "@/b" }, kManager, B_ERROR, "No file to show <@/none>\n",
            "ShowItemProperties([file://@/b], );" },
        { 'Tinf', { "@/in/tools", "/etc" }, kOpener, B_OK, "",
            "ShowItemProperties([file://@/in/tools, file:///etc], );", { "@/in", "/" } },
        { 'Tinf', {}, kOpener, B_OK, "", "" },
    };
    const auto whole = [&](const std::string& text) {
        return std::regex_replace(text, std::regex("@"), folder.Path());
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        desktop = row.desktop;
        const size_t before = service.log.Now().size();
        setenv("PATH", row.desktop == kNothing ? "" : (folder / "in/tools:" + path).c_str(), 1);
        BMessage request(row.what), reply;
        for (const char* entry : row.entries) {
            entry_ref ref;
            EXPECT_EQ(get_ref_for_path(whole(entry).c_str(), &ref), B_OK);
            request.AddRef("refs", &ref);
        }
        testing::internal::CaptureStderr();
        EXPECT_EQ(FileManagerMessenger().SendMessage(&request, &reply), B_OK);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), whole(row.told));
        setenv("PATH", path.c_str(), 1);
        int32 error = 1;
        EXPECT_TRUE(reply.what == B_REPLY && reply.FindInt32("error", &error) == B_OK);
        EXPECT_EQ(error, row.error);
        std::string called;
        const Entries log = service.log.Now();
        for (size_t i = before; i < log.size(); i++)
            called += log[i] == "gone" ? "" : log[i].substr(log[i].rfind("1.") + 2) + ";";
        EXPECT_EQ(called, whole(row.called));
        std::set<std::string> expected, opened; // in any order
        for (const std::string& entry : row.opened)
            expected.insert(whole(entry));
        EXPECT_TRUE(WaitUntil([&] {
            std::ifstream lines(folder / "opened");
            opened = { std::istream_iterator<std::string>(lines), {} };
            return opened == expected;
        })) << ReadFile(folder / "opened");
        std::filesystem::remove(folder / "opened");
    }
}
