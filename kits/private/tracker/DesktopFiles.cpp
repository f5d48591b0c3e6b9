#include "DesktopFiles.h"

#include "BusConnection.h"
#include "TextCoding.h"

namespace {

constexpr char kService[] = "org.freedesktop.FileManager1";
constexpr char kObject[] = "/org/freedesktop/FileManager1";
constexpr int kTimeoutMillis = 5000; // a program that ends does not wait longer

// A connection of its own for each request: file managers come and go with the session.
BusConnection Connect()
{
    DBusConnection* connection = dbus_bus_get_private(DBUS_BUS_SESSION, nullptr);
    if (connection)
        dbus_connection_set_exit_on_disconnect(connection, false);
    return BusConnection(connection);
}

BusMessage MakeCall(const char* method, const std::vector<std::string>& paths)
{
    BusMessage call(
        dbus_message_new_method_call(kService, kObject, kService, method), dbus_message_unref);
    std::vector<std::string> uris;
    for (const std::string& path : paths)
        uris.push_back("file://" + PercentEncoded(path));
    std::vector<const char*> texts;
    for (const std::string& uri : uris)
        texts.push_back(uri.c_str());
    const char** first = texts.data();
    const char* startupId = "";
    if (call
        && !dbus_message_append_args(call.get(), DBUS_TYPE_ARRAY, DBUS_TYPE_STRING, &first,
            int(texts.size()), DBUS_TYPE_STRING, &startupId, DBUS_TYPE_INVALID))
        call.reset();
    return call;
}

} // namespace

bool CallFileManager(const char* method, const std::vector<std::string>& paths)
{
    const BusConnection connection = Connect();
    const BusMessage call = MakeCall(method, paths);
    if (!connection || !call)
        return false;
    DBusError error = DBUS_ERROR_INIT;
    const BusMessage reply(dbus_connection_send_with_reply_and_block(
                               connection.get(), call.get(), kTimeoutMillis, &error),
        dbus_message_unref);
    // It may well be busy with what was asked: to open the entry elsewhere too would be wrong.
    const bool taken = reply || dbus_error_has_name(&error, DBUS_ERROR_NO_REPLY)
        || dbus_error_has_name(&error, DBUS_ERROR_TIMEOUT);
    dbus_error_free(&error);
    return taken;
}
