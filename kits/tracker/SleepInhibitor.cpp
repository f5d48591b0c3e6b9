#include "SleepInhibitor.h"

#include "Desktop.h"
#include "KillGuard.h"

#include <unistd.h>

namespace {

constexpr char kProgram[] = "Tarvex";

// The file that holds it, -1 if it is not granted.
int Inhibit(DBusConnection* connection, const char* what, const char* why, BusClock::time_point end)
{
    const BusMessage call = MakeBusCall("org.freedesktop.login1", "/org/freedesktop/login1",
        "org.freedesktop.login1.Manager", "Inhibit");
    const char* who = kProgram;
    const char* mode = "block";
    if (!call
        || !dbus_message_append_args(call.get(), DBUS_TYPE_STRING, &what, DBUS_TYPE_STRING, &who,
            DBUS_TYPE_STRING, &why, DBUS_TYPE_STRING, &mode, DBUS_TYPE_INVALID))
        return -1;
    dbus_message_set_auto_start(call.get(), false);
    const BusMessage reply = AnswerTo(connection, call, end);
    int file = -1;
    if (reply)
        dbus_message_get_args(reply.get(), nullptr, DBUS_TYPE_UNIX_FD, &file, DBUS_TYPE_INVALID);
    return file;
}

constexpr char kPortal[] = "org.freedesktop.portal.Desktop";
constexpr char kScreenSaver[] = "org.freedesktop.ScreenSaver";

// Appends { "reason": why }.
bool AppendReason(DBusMessage* call, const char* why)
{
    DBusMessageIter all, options, option, value;
    const char* key = "reason";
    dbus_message_iter_init_append(call, &all);
    return dbus_message_iter_open_container(&all, DBUS_TYPE_ARRAY, "{sv}", &options)
        && dbus_message_iter_open_container(&options, DBUS_TYPE_DICT_ENTRY, nullptr, &option)
        && dbus_message_iter_append_basic(&option, DBUS_TYPE_STRING, &key)
        && dbus_message_iter_open_container(&option, DBUS_TYPE_VARIANT, "s", &value)
        && dbus_message_iter_append_basic(&value, DBUS_TYPE_STRING, &why)
        && dbus_message_iter_close_container(&option, &value)
        && dbus_message_iter_close_container(&options, &option)
        && dbus_message_iter_close_container(&all, &options);
}

BusMessage PortalCall(const char* why)
{
    BusMessage call = MakeBusCall(
        kPortal, "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Inhibit", "Inhibit");
    const char* window = "";
    const dbus_uint32_t sleepAndIdle = 4 | 8;
    if (!call
        || !dbus_message_append_args(call.get(), DBUS_TYPE_STRING, &window, DBUS_TYPE_UINT32,
            &sleepAndIdle, DBUS_TYPE_INVALID)
        || !AppendReason(call.get(), why))
        call.reset();
    return call;
}

BusMessage ScreenSaverCall(const char* why)
{
    BusMessage call =
        MakeBusCall(kScreenSaver, "/org/freedesktop/ScreenSaver", kScreenSaver, "Inhibit");
    const char* who = kProgram;
    if (!call
        || !dbus_message_append_args(
            call.get(), DBUS_TYPE_STRING, &who, DBUS_TYPE_STRING, &why, DBUS_TYPE_INVALID))
        call.reset();
    return call;
}

// The name of who holds the screen saver off for as long as the connection is open; "": nobody.
// None is started for it: what is to hold it off is there already.
std::string HoldScreen(DBusConnection* connection, const char* why, BusClock::time_point end)
{
    for (const auto& call : { PortalCall(why), ScreenSaverCall(why) }) {
        if (call)
            dbus_message_set_auto_start(call.get(), false);
        if (AnswerTo(connection, call, end))
            return dbus_message_get_destination(call.get());
    }
    return "";
}

} // namespace

BSleepInhibitor::BSleepInhibitor(const std::string& why, int mostMillis)
{
    const KillGuard guard;
    if (!dbus_validate_utf8(why.c_str(), nullptr))
        return;
    const auto end = BusClock::now() + std::chrono::milliseconds(mostMillis);
    if (const BusConnection system = ConnectToSystem(end)) {
        for (const char* what : { "sleep:idle", "idle" }) {
            fFile = Inhibit(system.get(), what, why.c_str(), end);
            if (fFile < 0)
                continue;
            fHeld = what;
            break;
        }
    }
    fSession = ConnectToSession(end);
    if (fSession)
        fScreenHeldBy = HoldScreen(fSession.get(), why.c_str(), end);
}

BSleepInhibitor::~BSleepInhibitor()
{
    const KillGuard guard;
    if (fFile >= 0)
        close(fFile);
    fSession.reset();
}
