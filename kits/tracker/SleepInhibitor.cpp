#include "SleepInhibitor.h"

#include "Desktop.h"
#include "KillGuard.h"

#include <chrono>
#include <cstdlib>
#include <unistd.h>

namespace {

constexpr char kService[] = "org.freedesktop.login1";
constexpr char kObject[] = "/org/freedesktop/login1";
constexpr char kInterface[] = "org.freedesktop.login1.Manager";

using Clock = std::chrono::steady_clock;

// Null if there is none before the end. Not by the library's own waiting call: that one begins with
// writing what it has to send, for ever if nobody reads.
BusMessage Answer(DBusConnection* connection, const BusMessage& call, Clock::time_point end)
{
    BusMessage answer(nullptr, dbus_message_unref);
    DBusPendingCall* pending = nullptr;
    if (!call || !dbus_connection_send_with_reply(connection, call.get(), &pending, -1) || !pending)
        return answer;
    for (bool isOpen = true; isOpen && !dbus_pending_call_get_completed(pending);) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left <= 0)
            break;
        isOpen = dbus_connection_read_write_dispatch(connection, static_cast<int>(left));
    }
    if (dbus_pending_call_get_completed(pending))
        answer.reset(dbus_pending_call_steal_reply(pending));
    else
        dbus_pending_call_cancel(pending);
    dbus_pending_call_unref(pending);
    if (answer && dbus_message_get_type(answer.get()) == DBUS_MESSAGE_TYPE_ERROR)
        answer.reset();
    return answer;
}

// Not by the library's own call, which waits for a bus that hangs for 25 seconds.
BusConnection ConnectToSystem(Clock::time_point end)
{
    const char* address = getenv("DBUS_SYSTEM_BUS_ADDRESS");
    BusConnection connection(dbus_connection_open_private(
        address ? address : "unix:path=/run/dbus/system_bus_socket", nullptr));
    if (!connection)
        return connection;
    dbus_connection_set_exit_on_disconnect(connection.get(), false);
    const BusMessage hello(dbus_message_new_method_call(
                               DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, "Hello"),
        dbus_message_unref);
    if (!Answer(connection.get(), hello, end))
        connection.reset();
    return connection;
}

// The file that holds it, -1 if it is not granted.
int Inhibit(DBusConnection* connection, const char* what, const char* why, Clock::time_point end)
{
    const BusMessage call(
        dbus_message_new_method_call(kService, kObject, kInterface, "Inhibit"), dbus_message_unref);
    const char* who = "Tarvex";
    const char* mode = "block";
    if (!call
        || !dbus_message_append_args(call.get(), DBUS_TYPE_STRING, &what, DBUS_TYPE_STRING, &who,
            DBUS_TYPE_STRING, &why, DBUS_TYPE_STRING, &mode, DBUS_TYPE_INVALID))
        return -1;
    dbus_message_set_auto_start(call.get(), false);
    const BusMessage reply = Answer(connection, call, end);
    int file = -1;
    if (reply)
        dbus_message_get_args(reply.get(), nullptr, DBUS_TYPE_UNIX_FD, &file, DBUS_TYPE_INVALID);
    return file;
}

} // namespace

BSleepInhibitor::BSleepInhibitor(const std::string& why, int mostMillis)
{
    const KillGuard guard;
    const auto end = Clock::now() + std::chrono::milliseconds(mostMillis);
    const BusConnection connection = ConnectToSystem(end);
    if (!connection || !dbus_validate_utf8(why.c_str(), nullptr))
        return;
    for (const char* what : { "sleep:idle", "idle" }) {
        fFile = Inhibit(connection.get(), what, why.c_str(), end);
        if (fFile < 0)
            continue;
        fHeld = what;
        return;
    }
}

BSleepInhibitor::~BSleepInhibitor()
{
    const KillGuard guard;
    if (fFile >= 0)
        close(fFile);
}
