#include "tests/support/SessionService.h"
#include "tests/support/Test.h"

#include <Notification.h>
#include <SleepInhibitor.h>

#include <poll.h>

constexpr int kLongMillis = 20000;
constexpr char kSystemBus[] = "DBUS_SYSTEM_BUS_ADDRESS";

TEST(SleepInhibitor, HoldsWhatIsGrantedUntilItEnds)
{
    const std::string ask = "?/org/freedesktop/login1 org.freedesktop.login1.Manager.Inhibit(";
    for (const std::string granted : { "sleep:idle", "idle", "" }) {
        SCOPED_TRACE(granted);
        // It grants by a pipe, open for as long as that is held.
        int ends[2] = { -1, -1 };
        SessionService manager(
            { "org.freedesktop.login1" },
            [&](DBusMessage* call) {
                const char* what = "";
                dbus_message_get_args(call, nullptr, DBUS_TYPE_STRING, &what, DBUS_TYPE_INVALID);
                if (what != granted)
                    return dbus_message_new_error(call, DBUS_ERROR_ACCESS_DENIED, "denied");
                EXPECT_EQ(pipe(ends), 0);
                DBusMessage* reply = dbus_message_new_method_return(call);
                dbus_message_append_args(reply, DBUS_TYPE_UNIX_FD, &ends[1], DBUS_TYPE_INVALID);
                close(ends[1]);
                return reply;
            },
            kSystemBus);
        const auto isGivenBack = [&ends](int mostMillis) {
            pollfd file { ends[0], POLLIN, 0 };
            return poll(&file, 1, mostMillis) == 1;
        };
        {
            const BSleepInhibitor inhibitor("a test", kLongMillis);
            EXPECT_EQ(inhibitor.Held(), granted);
            EXPECT_FALSE(isGivenBack(0));
        }
        EXPECT_TRUE(granted.empty() || isGivenBack(kLongMillis));
        Entries entries = manager.log.Now();
        std::erase(entries, "gone");
        Entries asked { ask + "sleep:idle, Tarvex, a test, block)" };
        if (granted != "sleep:idle")
            asked.push_back(ask + "idle, Tarvex, a test, block)");
        EXPECT_EQ(entries, asked);
        close(ends[0]);
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
