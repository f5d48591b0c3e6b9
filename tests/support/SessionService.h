// Services of a desktop, on a bus of the test's own, that take whatever they are asked for, or what
// the test lets them take.
#pragma once

#include "tests/support/Log.h"
#include "tests/support/OwnBus.h"

#include <atomic>
#include <functional>
#include <string>
#include <thread>

class SessionService {
public:
    // Makes the reply to a call that has been logged.
    using Answer = std::function<DBusMessage*(DBusMessage*)>;

    // Known by these names, on the user's bus or, by its variable, on the system's.
    explicit SessionService(const std::vector<const char*>& names,
        Answer answer = dbus_message_new_method_return,
        const char* bus = "DBUS_SESSION_BUS_ADDRESS")
        : fBus(bus), fAnswer(std::move(answer))
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

    // "/object interface.Method(text, 1, [key, value])" for each call, behind a "?" where it would
    // not start the service; and "gone" for the end of each caller.
    Log log;

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
        log.Add((dbus_message_get_auto_start(message) ? "" : "?")
            + std::string(dbus_message_get_path(message)) + " "
            + dbus_message_get_interface(message) + "." + dbus_message_get_member(message) + "("
            + Texts(arguments) + ")");
        DBusMessage* reply = fAnswer(message);
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

    const OwnBus fBus;
    const Answer fAnswer;
    std::string fCallers; // each with a ';' behind it
    std::atomic<bool> fEnds = false;
    std::thread fThread;
};
