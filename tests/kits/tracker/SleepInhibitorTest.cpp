#include "tests/support/SessionService.h"
#include "tests/support/Test.h"

#include <Notification.h>
#include <SleepInhibitor.h>

#include <poll.h>

namespace {

constexpr int kLongMillis = 20000;
constexpr char kSystemBus[] = "DBUS_SYSTEM_BUS_ADDRESS";

// A login manager that grants what it is told to: by a pipe, open for as long as that is held.
class LoginManager {
public:
    explicit LoginManager(const std::string& granted)
        : fService(
            { "org.freedesktop.login1" },
            [=, this](DBusMessage* call) { return Answer(call, granted); }, kSystemBus)
    {
    }
    ~LoginManager() { close(fPipe[0]); }
    LoginManager(const LoginManager&) = delete;
    LoginManager& operator=(const LoginManager&) = delete;

    // Whether nobody holds what was granted any more, after that time at the latest.
    bool IsGivenBack(int mostMillis)
    {
        pollfd file { fPipe[0], POLLIN, 0 };
        return poll(&file, 1, mostMillis) == 1;
    }
    Entries Asked()
    {
        Entries entries = fService.log.Now();
        std::erase(entries, "gone");
        return entries;
    }

private:
    DBusMessage* Answer(DBusMessage* call, const std::string& granted)
    {
        const char* what = "";
        dbus_message_get_args(call, nullptr, DBUS_TYPE_STRING, &what, DBUS_TYPE_INVALID);
        if (what != granted)
            return dbus_message_new_error(call, DBUS_ERROR_ACCESS_DENIED, "denied");
        EXPECT_EQ(pipe(fPipe), 0);
        DBusMessage* reply = dbus_message_new_method_return(call);
        dbus_message_append_args(reply, DBUS_TYPE_UNIX_FD, &fPipe[1], DBUS_TYPE_INVALID);
        close(fPipe[1]);
        return reply;
    }

    int fPipe[2] = { -1, -1 };
    SessionService fService;
};

} // namespace

TEST(SleepInhibitor, HoldsWhatIsGrantedUntilItEnds)
{
    const std::string ask = "?/org/freedesktop/login1 org.freedesktop.login1.Manager.Inhibit(";
    const Entries both { ask + "sleep:idle, Tarvex, a test, block)",
        ask + "idle, Tarvex, a test, block)" };
    const std::tuple<const char*, const char*, Entries> rows[] = {
        { "sleep:idle", "sleep:idle", { both[0] } },
        { "idle", "idle", both },
        { "nothing", "", both },
    };
    for (const auto& [granted, held, asked] : rows) {
        SCOPED_TRACE(granted);
        LoginManager manager(granted);
        {
            const BSleepInhibitor inhibitor("a test", kLongMillis);
            EXPECT_EQ(inhibitor.Held(), held);
            EXPECT_EQ(manager.Asked(), asked);
            EXPECT_FALSE(manager.IsGivenBack(0));
        }
        EXPECT_TRUE(!held[0] || manager.IsGivenBack(kLongMillis));
    }
}

TEST(SleepInhibitor, HoldsNothingWithoutAWordWhereNobodyGrantsIt)
{
    setenv(kSystemBus, "unix:path=/nonexistent/bus", 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(BSleepInhibitor("a test", kLongMillis).Held(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    const OwnBus bus(kSystemBus);
    bus.Serve("org.freedesktop.login1");
    EXPECT_EQ(BSleepInhibitor("a test", 100).Held(), "") << "it does not answer";
    EXPECT_EQ(BSleepInhibitor("\xff", kLongMillis).Held(), "") << "nor can it be asked so";
}

TEST(SleepInhibitor, HoldsTheScreenByThePortalOrElseByTheScreenSaver)
{
    setenv(kSystemBus, "unix:path=/nonexistent/bus", 1);
    const char* const portal = "org.freedesktop.portal.Desktop";
    const char* const screenSaver = "org.freedesktop.ScreenSaver";
    const std::tuple<std::vector<const char*>, std::string, Entries> rows[] = {
        { { portal, screenSaver }, portal,
            { "?/org/freedesktop/portal/desktop org.freedesktop.portal.Inhibit.Inhibit(12, "
              "[[reason, [a test]]])" } },
        { { screenSaver }, screenSaver,
            { "?/org/freedesktop/ScreenSaver org.freedesktop.ScreenSaver.Inhibit(Tarvex, a "
              "test)" } },
        { { "com.example.Other" }, "", {} },
    };
    const TempFolder runtime;
    setenv("XDG_RUNTIME_DIR", runtime.Path().c_str(), 1);
    for (const auto& [names, holder, asked] : rows) {
        SessionService session(names);
        const std::string address = getenv("DBUS_SESSION_BUS_ADDRESS");
        std::filesystem::remove(runtime / "bus");
        if (const size_t path = address.find("path="); path != address.npos) { // where it is usual
            std::filesystem::create_symlink(
                address.substr(path + 5, address.find(',') - path - 5), runtime / "bus");
            unsetenv("DBUS_SESSION_BUS_ADDRESS");
        }
        {
            const BSleepInhibitor inhibitor("a test", kLongMillis);
            EXPECT_EQ(inhibitor.ScreenHeldBy(), holder);
            EXPECT_EQ(inhibitor.Held(), "");
            EXPECT_EQ(session.log.Now(), asked);
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
            "/org/freedesktop/Notifications org.freedesktop.Notifications.Notify(Tarvex, 0, "
            "tarvex, Ended, 1 &lt; 2 &amp; more, [], [], -1)");
    }
    EXPECT_FALSE(NotifyAbsentUser("Ended", "", kLongMillis));
}
