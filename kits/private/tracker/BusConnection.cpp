#include "Desktop.h"

#include <cstdlib>
#include <sys/stat.h>

namespace {

BusConnection Connect(const std::string& address, BusClock::time_point end)
{
    BusConnection connection(
        address.empty() ? nullptr : dbus_connection_open_private(address.c_str(), nullptr));
    if (!connection)
        return connection;
    const BusMessage hello =
        MakeBusCall(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, "Hello");
    return AnswerTo(connection.get(), hello, end) ? std::move(connection) : BusConnection();
}

std::string Variable(const char* name)
{
    const char* value = getenv(name);
    return value ? value : "";
}

// Where session managers have it when they do not say so.
std::string UsualSession()
{
    const std::string path = Variable("XDG_RUNTIME_DIR") + "/bus";
    struct stat info = {};
    return stat(path.c_str(), &info) == 0 && S_ISSOCK(info.st_mode) ? "unix:path=" + path : "";
}

} // namespace

BusConnection ConnectToSystem(BusClock::time_point end)
{
    const std::string address = Variable("DBUS_SYSTEM_BUS_ADDRESS");
    return Connect(address.empty() ? "unix:path=/run/dbus/system_bus_socket" : address, end);
}

BusConnection ConnectToSession(BusClock::time_point end)
{
    const std::string address = Variable("DBUS_SESSION_BUS_ADDRESS");
    return Connect(address.empty() ? UsualSession() : address, end);
}

BusMessage MakeBusCall(
    const char* service, const char* object, const char* interface, const char* method)
{
    return { dbus_message_new_method_call(service, object, interface, method), dbus_message_unref };
}

BusMessage AnswerTo(DBusConnection* connection, const BusMessage& call, BusClock::time_point end)
{
    // Not by the library's own waiting call, which begins with writing what it has to send, for
    // ever if nobody reads.
    BusMessage answer(nullptr, dbus_message_unref);
    DBusPendingCall* pending = nullptr;
    if (!call || !dbus_connection_send_with_reply(connection, call.get(), &pending, -1) || !pending)
        return answer;
    for (bool isOpen = true; isOpen && !dbus_pending_call_get_completed(pending);) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(end - BusClock::now()).count();
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
