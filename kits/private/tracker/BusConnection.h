// What is got from the library of the message buses, as objects.
#pragma once

#include <dbus/dbus.h>
#include <memory>

struct CloseConnection {
    void operator()(DBusConnection* connection) const
    {
        dbus_connection_close(connection);
        dbus_connection_unref(connection);
    }
};
typedef std::unique_ptr<DBusConnection, CloseConnection> BusConnection; // a private one
typedef std::unique_ptr<DBusMessage, decltype(&dbus_message_unref)> BusMessage;
