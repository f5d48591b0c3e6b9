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
using BusConnection = std::unique_ptr<DBusConnection, CloseConnection>; // a private one
using BusMessage = std::unique_ptr<DBusMessage, decltype(&dbus_message_unref)>;
