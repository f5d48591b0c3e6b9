// The ways to the desktop's other programs: message buses, without waiting longer than one wants
// to, as the library's own calls wait for a bus or a program that hangs for 25 seconds, or for
// ever; and starting a program.
#pragma once

#include <dbus/dbus.h>

#include <chrono>
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

using BusClock = std::chrono::steady_clock;

// Null where there is no such bus, or it has not let this program in before the end.
[[nodiscard]] BusConnection ConnectToSystem(BusClock::time_point end);
// The user's session. Starts none where there is none.
[[nodiscard]] BusConnection ConnectToSession(BusClock::time_point end);

// A call of a program by its name on the bus, to which arguments may be appended. Null without
// memory.
[[nodiscard]] BusMessage MakeBusCall(
    const char* service, const char* object, const char* interface, const char* method);
// What it answers before the end; null if it does not, or answers that it cannot, or call is null.
[[nodiscard]] BusMessage AnswerTo(
    DBusConnection* connection, const BusMessage& call, BusClock::time_point end);
