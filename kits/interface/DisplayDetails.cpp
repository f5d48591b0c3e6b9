#include "DisplayDetails.h"

#include "drawing/XcbReply.h"

#include <xcb/randr.h>
#include <xcb/xcb.h>

#include <memory>

namespace {

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

std::vector<std::string> ExtensionsOf(xcb_connection_t* connection)
{
    std::vector<std::string> names;
    const auto reply =
        MakeReply(xcb_list_extensions_reply(connection, xcb_list_extensions(connection), nullptr));
    if (!reply)
        return names;
    auto name = xcb_list_extensions_names_iterator(reply.get());
    for (; name.rem > 0; xcb_str_next(&name))
        names.emplace_back(
            xcb_str_name(name.data), static_cast<size_t>(xcb_str_name_length(name.data)));
    return names;
}

std::vector<std::string> OutputsOf(xcb_connection_t* connection)
{
    std::vector<std::string> names;
    const auto* extension = xcb_get_extension_data(connection, &xcb_randr_id);
    if (!extension || !extension->present)
        return names;
    // The server knows what a client understands from this alone.
    MakeReply(xcb_randr_query_version_reply(
        connection, xcb_randr_query_version(connection, 1, 3), nullptr));
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto resources = MakeReply(xcb_randr_get_screen_resources_current_reply(
        connection, xcb_randr_get_screen_resources_current(connection, root), nullptr));
    if (!resources)
        return names;
    const auto* outputs = xcb_randr_get_screen_resources_current_outputs(resources.get());
    for (int i = 0; i < xcb_randr_get_screen_resources_current_outputs_length(resources.get());
         i++) {
        const auto info = MakeReply(xcb_randr_get_output_info_reply(connection,
            xcb_randr_get_output_info(connection, outputs[i], XCB_CURRENT_TIME), nullptr));
        if (!info)
            continue;
        const auto* name =
            reinterpret_cast<const char*>(xcb_randr_get_output_info_name(info.get()));
        names.emplace_back(
            name, static_cast<size_t>(xcb_randr_get_output_info_name_length(info.get())));
    }
    return names;
}

} // namespace

std::optional<DisplayDetails> ReadDisplayDetails()
{
    const std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(connection.get()) != 0)
        return std::nullopt;
    const xcb_setup_t* setup = xcb_get_setup(connection.get());
    DisplayDetails details;
    details.vendor.assign(
        xcb_setup_vendor(setup), static_cast<size_t>(xcb_setup_vendor_length(setup)));
    details.extensions = ExtensionsOf(connection.get());
    details.outputs = OutputsOf(connection.get());
    return details;
}
