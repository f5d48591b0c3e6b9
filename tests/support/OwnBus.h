// A message bus of the test's own, gone with the object.
#pragma once

#include "tests/support/Test.h"

#include <dbus/dbus.h>

class OwnBus {
public:
    // In place of the user's or of the system's: DBUS_SESSION_BUS_ADDRESS or the other variable.
    explicit OwnBus(const char* name) : fName(name)
    {
        FILE* daemon = popen("dbus-daemon --session --fork --print-address=1 --print-pid=1", "r");
        char address[512] = "";
        EXPECT_EQ(fscanf(daemon, "%511s %d", address, &fDaemon), 2) << "no dbus-daemon";
        pclose(daemon);
        setenv(fName, address, 1);
        fConnection = dbus_connection_open_private(address, nullptr);
        if (!fConnection || !dbus_bus_register(fConnection, nullptr))
            abort();
        dbus_connection_set_exit_on_disconnect(fConnection, false);
    }
    ~OwnBus()
    {
        dbus_connection_close(fConnection);
        dbus_connection_unref(fConnection);
        kill(fDaemon, SIGTERM);
        unsetenv(fName);
    }
    OwnBus(const OwnBus&) = delete;
    OwnBus& operator=(const OwnBus&) = delete;

    DBusConnection* operator*() const { return fConnection; }
    // Becomes known by the name.
    void Serve(const char* name) const { dbus_bus_request_name(fConnection, name, 0, nullptr); }

private:
    const char* const fName;
    pid_t fDaemon = 0;
    DBusConnection* fConnection = nullptr;
};
