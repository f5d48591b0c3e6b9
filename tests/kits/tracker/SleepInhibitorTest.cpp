#include "tests/support/SessionService.h"
#include "tests/support/Test.h"

#include <Notification.h>
#include <SleepInhibitor.h>

namespace {

constexpr int kLongMillis = 20000;

// A login manager on a bus of the test's own that grants what it is told to. Answers so many calls.
class LoginManager {
public:
    LoginManager(std::string granted, int calls) : fGranted(std::move(granted))
    {
        EXPECT_EQ(pipe(fPipe), 0);
        fBus.Serve("org.freedesktop.login1");
        fThread = std::thread([this, calls] { Serve(calls); });
    }
    ~LoginManager()
    {
        fThread.join();
        close(fPipe[0]);
    }
    LoginManager(const LoginManager&) = delete;
    LoginManager& operator=(const LoginManager&) = delete;

    // Whether nobody holds what was granted any more; waits for it if that is asked for.
    bool IsGivenBack(bool wait)
    {
        fd_set files;
        FD_ZERO(&files);
        FD_SET(fPipe[0], &files);
        timeval noTime = {}, longTime = { 20, 0 };
        return select(fPipe[0] + 1, &files, nullptr, nullptr, wait ? &longTime : &noTime) == 1;
    }
    void WaitForLastCall()
    {
        fThread.join(), fThread = std::thread([] {});
    }
    const std::string& Asked() const { return fAsked; }

private:
    void Serve(int calls)
    {
        while (calls > 0 && dbus_connection_read_write(*fBus, -1)) {
            while (DBusMessage* call = dbus_connection_pop_message(*fBus)) {
                calls -=
                    dbus_message_is_method_call(call, "org.freedesktop.login1.Manager", "Inhibit");
                Answer(call);
                dbus_message_unref(call);
            }
        }
        close(fPipe[1]);
    }
    void Answer(DBusMessage* call)
    {
        const char *what = "", *who = "", *why = "", *mode = "";
        if (!dbus_message_get_args(call, nullptr, DBUS_TYPE_STRING, &what, DBUS_TYPE_STRING, &who,
                DBUS_TYPE_STRING, &why, DBUS_TYPE_STRING, &mode, DBUS_TYPE_INVALID))
            return;
        fAsked += std::string(what) + "," + why + "," + mode + ";";
        DBusMessage* reply = what == fGranted
            ? dbus_message_new_method_return(call)
            : dbus_message_new_error(call, DBUS_ERROR_ACCESS_DENIED, "denied");
        if (what == fGranted)
            dbus_message_append_args(reply, DBUS_TYPE_UNIX_FD, &fPipe[1], DBUS_TYPE_INVALID);
        dbus_connection_send(*fBus, reply, nullptr);
        dbus_connection_flush(*fBus);
        dbus_message_unref(reply);
    }

    const OwnBus fBus { "DBUS_SYSTEM_BUS_ADDRESS" };
    const std::string fGranted;
    std::string fAsked;
    int fPipe[2] = { -1, -1 };
    std::thread fThread;
};

} // namespace

TEST(SleepInhibitor, HoldsWhatIsGrantedUntilItEnds)
{
    const std::tuple<const char*, int, const char*> rows[] = {
        { "sleep:idle", 1, "sleep:idle,a test,block;" },
        { "idle", 2, "sleep:idle,a test,block;idle,a test,block;" },
    };
    for (const auto& [granted, calls, asked] : rows) {
        SCOPED_TRACE(granted);
        LoginManager manager(granted, calls);
        {
            const BSleepInhibitor inhibitor("a test", kLongMillis);
            EXPECT_EQ(inhibitor.Held(), granted);
            manager.WaitForLastCall();
            EXPECT_EQ(manager.Asked(), asked);
            EXPECT_FALSE(manager.IsGivenBack(false));
        }
        EXPECT_TRUE(manager.IsGivenBack(true));
    }
}

TEST(SleepInhibitor, HoldsNothingWhereNobodyGrantsIt)
{
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
    EXPECT_EQ(BSleepInhibitor("a test", kLongMillis).Held(), "");
    {
        LoginManager manager("nothing", 2);
        EXPECT_EQ(BSleepInhibitor("a test", kLongMillis).Held(), "");
    }
    const OwnBus bus("DBUS_SYSTEM_BUS_ADDRESS");
    bus.Serve("org.freedesktop.login1");
    EXPECT_EQ(BSleepInhibitor("a test", 100).Held(), "") << "it does not answer";
}

TEST(SleepInhibitor, HoldsTheScreenByThePortalOrElseByTheScreenSaver)
{
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
    const char* const portal = "org.freedesktop.portal.Desktop";
    const char* const screenSaver = "org.freedesktop.ScreenSaver";
    const std::tuple<std::vector<const char*>, std::string, std::string> rows[] = {
        { { portal, screenSaver }, portal, "Inhibit(12, [[reason, [a test]]])" },
        { { screenSaver }, screenSaver, "Inhibit(Tarvex, a test)" },
        { { "com.example.Other" }, "", "" },
    };
    for (const auto& [names, holder, asked] : rows) {
        SessionService session(names);
        {
            const BSleepInhibitor inhibitor("a test", kLongMillis);
            EXPECT_EQ(inhibitor.ScreenHeldBy(), holder);
            EXPECT_EQ(inhibitor.Held(), "");
            EXPECT_EQ(session.log.Now(), asked.empty() ? Entries() : Entries { asked });
        }
        EXPECT_TRUE(asked.empty() || session.log.WaitFor("gone"));
    }
}

TEST(Notification, TellsWhatIsNoMarkupAndFailsWithoutADesktop)
{
    {
        SessionService session({ "org.freedesktop.Notifications" });
        EXPECT_FALSE(NotifyAbsentUser("\xff", "", kLongMillis));
        EXPECT_TRUE(NotifyAbsentUser("Ended", "1 < 2 & more", kLongMillis));
        EXPECT_EQ(session.log.WaitFor(1).front(), // "gone" may follow
            "Notify(Tarvex, 0, tarvex, Ended, 1 &lt; 2 &amp; more, [], [], -1)");
    }
    EXPECT_FALSE(NotifyAbsentUser("Ended", "", kLongMillis));
}
