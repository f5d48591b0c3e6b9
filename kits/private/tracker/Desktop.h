// The ways to the desktop's other programs: a message bus, whose library's things are objects here,
// and starting one.
#pragma once

#include <dbus/dbus.h>

#include <memory>
#include <string>
#include <vector>

struct CloseConnection {
    void operator()(DBusConnection* connection) const
    {
        dbus_connection_close(connection);
        dbus_connection_unref(connection);
    }
};
using BusConnection = std::unique_ptr<DBusConnection, CloseConnection>; // a private one
using BusMessage = std::unique_ptr<DBusMessage, decltype(&dbus_message_unref)>;

// Starts the program command[0], found along PATH, with the rest as its arguments, and does not
// wait for it. False if there is no such program. From any thread.
bool StartProgram(const std::vector<std::string>& command);
