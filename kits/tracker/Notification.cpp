#include "Notification.h"

#include "Desktop.h"
#include "KillGuard.h"
#include "server/DisplayServer.h"

#include <QApplication>

namespace {

constexpr char kService[] = "org.freedesktop.Notifications";
constexpr char kObject[] = "/org/freedesktop/Notifications";

bool HasKeyboard()
{
    return display::Call([] { return QApplication::activeWindow() != nullptr; });
}

// The text may hold markup, and what looks like it is not ours.
std::string AsMarkup(const std::string& text)
{
    return QString::fromStdString(text).toHtmlEscaped().toStdString();
}

bool AppendEmpty(DBusMessageIter& all, const char* contents)
{
    DBusMessageIter none;
    return dbus_message_iter_open_container(&all, DBUS_TYPE_ARRAY, contents, &none)
        && dbus_message_iter_close_container(&all, &none);
}

BusMessage MakeCall(const std::string& title, const std::string& text)
{
    BusMessage call = MakeBusCall(kService, kObject, kService, "Notify");
    const char* program = "Tarvex";
    const dbus_uint32_t replaced = 0; // none
    const char* icon = "tarvex";
    const char* summary = title.c_str();
    const char* body = text.c_str();
    const dbus_int32_t asLongAsUsual = -1;
    DBusMessageIter all;
    if (!call
        || !dbus_message_append_args(call.get(), DBUS_TYPE_STRING, &program, DBUS_TYPE_UINT32,
            &replaced, DBUS_TYPE_STRING, &icon, DBUS_TYPE_STRING, &summary, DBUS_TYPE_STRING, &body,
            DBUS_TYPE_INVALID)) {
        call.reset();
        return call;
    }
    dbus_message_iter_init_append(call.get(), &all);
    const bool isWhole = AppendEmpty(all, "s") && AppendEmpty(all, "{sv}") // actions and hints
        && dbus_message_iter_append_basic(&all, DBUS_TYPE_INT32, &asLongAsUsual);
    if (!isWhole)
        call.reset();
    return call;
}

} // namespace

bool NotifyAbsentUser(const std::string& title, const std::string& text, int mostMillis)
{
    const KillGuard guard;
    const std::string body = AsMarkup(text); // which makes UTF-8 of whatever it is
    if (HasKeyboard() || !dbus_validate_utf8(title.c_str(), nullptr))
        return false;
    const auto end = BusClock::now() + std::chrono::milliseconds(mostMillis);
    const BusConnection session = ConnectToSession(end);
    return session && AnswerTo(session.get(), MakeCall(title, body), end);
}
