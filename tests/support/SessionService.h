// Services of a desktop, on a session bus of the test's own, that take whatever they are asked for.
#pragma once

#include "tests/support/Log.h"
#include "tests/support/OwnBus.h"

#include <atomic>
#include <string>
#include <thread>

class SessionService {
public:
    // Known by these names.
    explicit SessionService(const std::vector<const char*>& names)
    {
        dbus_bus_add_match(*fBus, "type='signal',member='NameOwnerChanged'", nullptr);
        for (const char* name : names)
            fBus.Serve(name);
        fThread = std::thread([this] { Serve(); });
    }
    ~SessionService()
    {
        fEnds = true;
        fThread.join();
    }
    SessionService(const SessionService&) = delete;
    SessionService& operator=(const SessionService&) = delete;

    // "Method(text, 1, [key, value])" for each call, and "gone" for the end of each caller.
    Log log;
    std::string unknown; // a method that it does not have; set before the first call

private:
    void Serve()
    {
        while (!fEnds && dbus_connection_read_write(*fBus, 20)) {
            while (DBusMessage* message = dbus_connection_pop_message(*fBus)) {
                Handle(message);
                dbus_message_unref(message);
            }
        }
    }
    void Handle(DBusMessage* message)
    {
        const char *name = "", *before = "", *after = "";
        if (dbus_message_is_signal(message, DBUS_INTERFACE_DBUS, "NameOwnerChanged")) {
            dbus_message_get_args(message, nullptr, DBUS_TYPE_STRING, &name, DBUS_TYPE_STRING,
                &before, DBUS_TYPE_STRING, &after, DBUS_TYPE_INVALID);
            if (!*after && fCallers.find(name + std::string(";")) != fCallers.npos)
                log.Add("gone");
            return;
        }
        if (dbus_message_get_type(message) != DBUS_MESSAGE_TYPE_METHOD_CALL)
            return;
        fCallers += dbus_message_get_sender(message) + std::string(";");
        DBusMessageIter arguments;
        dbus_message_iter_init(message, &arguments);
        log.Add(dbus_message_get_member(message) + ("(" + Texts(arguments)) + ")");
        DBusMessage* reply = dbus_message_get_member(message) == unknown
            ? dbus_message_new_error(message, DBUS_ERROR_UNKNOWN_METHOD, "unknown")
            : dbus_message_new_method_return(message);
        dbus_connection_send(*fBus, reply, nullptr);
        dbus_connection_flush(*fBus);
        dbus_message_unref(reply);
    }
    static std::string Texts(DBusMessageIter& all)
    {
        std::string texts;
        for (; int type = dbus_message_iter_get_arg_type(&all); dbus_message_iter_next(&all)) {
            texts += texts.empty() ? "" : ", ";
            DBusBasicValue value = {};
            if (dbus_type_is_basic(type)) {
                dbus_message_iter_get_basic(&all, &value);
                texts += type == DBUS_TYPE_STRING ? value.str : std::to_string(value.i32);
                continue;
            }
            DBusMessageIter inside;
            dbus_message_iter_recurse(&all, &inside);
            texts += "[" + Texts(inside) + "]";
        }
        return texts;
    }

    const OwnBus fBus { "DBUS_SESSION_BUS_ADDRESS" };
    std::string fCallers; // each with a ';' behind it
    std::atomic<bool> fEnds = false;
    std::thread fThread;
};
