#include <gtest/gtest.h>

#include <SleepInhibitor.h>

#include <csignal>
#include <cstdio>
#include <dbus/dbus.h>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

constexpr int kLongMillis = 20000;

// A bus of the test's own in the place of the system's, and a login manager on it that grants what
// it is told to. Answers so many calls, then leaves the bus.
class LoginManager {
public:
    LoginManager(std::string granted, int calls) : fGranted(std::move(granted))
    {
        FILE* daemon = popen("dbus-daemon --session --fork --print-address=1 --print-pid=1", "r");
        char address[512] = "";
        EXPECT_EQ(fscanf(daemon, "%511s %d", address, &fDaemon), 2) << "no dbus-daemon";
        pclose(daemon);
        setenv("DBUS_SYSTEM_BUS_ADDRESS", address, 1);
        EXPECT_EQ(pipe(fPipe), 0);
        fConnection = dbus_connection_open_private(address, nullptr);
        if (!fConnection || !dbus_bus_register(fConnection, nullptr))
            abort();
        dbus_bus_request_name(fConnection, "org.freedesktop.login1", 0, nullptr);
        fThread = std::thread([this, calls] { Serve(calls); });
    }
    ~LoginManager()
    {
        fThread.join();
        close(fPipe[0]);
        kill(fDaemon, SIGTERM);
        unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
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
        while (calls > 0 && dbus_connection_read_write(fConnection, -1)) {
            while (DBusMessage* call = dbus_connection_pop_message(fConnection)) {
                calls -=
                    dbus_message_is_method_call(call, "org.freedesktop.login1.Manager", "Inhibit");
                Answer(call);
                dbus_message_unref(call);
            }
        }
        dbus_connection_close(fConnection);
        dbus_connection_unref(fConnection);
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
        dbus_connection_send(fConnection, reply, nullptr);
        dbus_connection_flush(fConnection);
        dbus_message_unref(reply);
    }

    const std::string fGranted;
    std::string fAsked;
    pid_t fDaemon = 0;
    int fPipe[2] = { -1, -1 };
    DBusConnection* fConnection = nullptr;
    std::thread fThread;
};

} // namespace

TEST(SleepInhibitor, HoldsWhatIsGrantedUntilItEnds)
{
    const struct {
        const char* granted;
        int calls;
        const char* asked;
    } rows[] = {
        { "sleep:idle", 1, "sleep:idle,a test,block;" },
        { "idle", 2, "sleep:idle,a test,block;idle,a test,block;" },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.granted);
        LoginManager manager(row.granted, row.calls);
        {
            const BSleepInhibitor inhibitor("a test", kLongMillis);
            EXPECT_EQ(inhibitor.Held(), row.granted);
            manager.WaitForLastCall();
            EXPECT_EQ(manager.Asked(), row.asked);
            EXPECT_FALSE(manager.IsGivenBack(false));
        }
        EXPECT_TRUE(manager.IsGivenBack(true));
    }
}

TEST(SleepInhibitor, HoldsNothingWhereNobodyGrantsIt)
{
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
    EXPECT_EQ(BSleepInhibitor("a test", kLongMillis).Held(), "");
    LoginManager manager("nothing", 2);
    EXPECT_EQ(BSleepInhibitor("a test", kLongMillis).Held(), "");
}
