#include "server/WindowHints.h"

#include "InterfaceDefs.h"

#include <QGuiApplication>
#include <QtGui/qguiapplication_platform.h>
#include <QWidget>

#include <bit>
#include <cstdlib>
#include <cstring>
#include <xcb/xcb.h>

namespace {

// The hints of Motif, which window managers still follow.
struct MotifHints {
    uint32 flags;
    uint32 functions;
    uint32 decorations;
    int32 inputMode;
    uint32 status;
};

constexpr uint32 kHasFunctions = 1;
// Without bit 0, which would make the others mean what the user may not do.
constexpr struct {
    uint32 flag;
    uint32 function;
} kFunctions[] = {
    { B_NOT_RESIZABLE, 1 << 1 },
    { B_NOT_MOVABLE, 1 << 2 },
    { B_NOT_MINIMIZABLE, 1 << 3 },
    { B_NOT_ZOOMABLE, 1 << 4 },
    { B_NOT_CLOSABLE, 1 << 5 },
};

// Qt's own: what is set here must come after what Qt has set, not before.
xcb_connection_t* Connection()
{
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t Atom(xcb_connection_t* connection, const char* name)
{
    const auto cookie =
        xcb_intern_atom(connection, false, static_cast<uint16_t>(strlen(name)), name);
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(connection, cookie, nullptr);
    const xcb_atom_t atom = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    free(reply);
    return atom;
}

} // namespace

void SetWindowFunctions(QWidget& window, uint32 flags)
{
    xcb_connection_t* connection = Connection();
    if (!connection)
        return;
    const xcb_window_t id = static_cast<xcb_window_t>(window.winId());
    const xcb_atom_t atom = Atom(connection, "_MOTIF_WM_HINTS");
    // Qt has set the decorations there, which stay.
    MotifHints hints {};
    xcb_get_property_reply_t* old = xcb_get_property_reply(connection,
        xcb_get_property(connection, false, id, atom, atom, 0, sizeof hints / 4), nullptr);
    if (old && xcb_get_property_value_length(old) == sizeof hints)
        memcpy(&hints, xcb_get_property_value(old), sizeof hints);
    free(old);
    hints.flags |= kHasFunctions;
    hints.functions = 0;
    for (const auto& row : kFunctions) {
        if (!(flags & row.flag))
            hints.functions |= row.function;
    }
    xcb_change_property(
        connection, XCB_PROP_MODE_REPLACE, id, atom, atom, 32, sizeof hints / 4, &hints);
}

void SetWindowWorkspace(QWidget& window, uint32 workspaces)
{
    xcb_connection_t* connection = Connection();
    if (!connection || workspaces == B_CURRENT_WORKSPACE)
        return;
    const xcb_window_t id = static_cast<xcb_window_t>(window.winId());
    const xcb_atom_t atom = Atom(connection, "_NET_WM_DESKTOP");
    const uint32 desktop = workspaces == B_ALL_WORKSPACES
        ? 0xffffffff
        : static_cast<uint32>(std::countr_zero(workspaces));
    // The property for a window yet to be shown, the message for one that is.
    xcb_change_property(
        connection, XCB_PROP_MODE_REPLACE, id, atom, XCB_ATOM_CARDINAL, 32, 1, &desktop);
    xcb_client_message_event_t event {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = id;
    event.type = atom;
    event.data.data32[0] = desktop;
    event.data.data32[1] = 1; // asked for by the program
    // Whoever has asked for both of these events of the root is the window manager.
    xcb_send_event(connection, false,
        xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root,
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
        reinterpret_cast<const char*>(&event));
    xcb_flush(connection);
}
