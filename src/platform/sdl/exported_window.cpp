// SPDX-License-Identifier: MIT
// Uses the first version of the protocol, because GTK 3 cannot import names of the second.
#include "platform/sdl/exported_window.h"

#include <cstdint>
#include <xdg-foreign-unstable-v1-client-protocol.h>

namespace host {

namespace {

constexpr std::uint32_t protocol_version = 1;

void take_global(void *exporter, wl_registry *registry, std::uint32_t number, const char *interface,
                 std::uint32_t) {
    if (interface == std::string(zxdg_exporter_v1_interface.name)) {
        *static_cast<zxdg_exporter_v1 **>(exporter) = static_cast<zxdg_exporter_v1 *>(
            wl_registry_bind(registry, number, &zxdg_exporter_v1_interface, protocol_version));
    }
}

void ignore_lost_global(void *, wl_registry *, std::uint32_t) {}

void take_name(void *name, zxdg_exported_v1 *, const char *given) {
    *static_cast<std::string *>(name) = given;
}

/// The compositor's registry. Events for it, and for objects made with it, go to `queue`.
wl_registry *registry_for(wl_display *connection, wl_event_queue *queue) {
    void *wrapper = wl_proxy_create_wrapper(connection);
    wl_proxy_set_queue(static_cast<wl_proxy *>(wrapper), queue);
    wl_registry *registry = wl_display_get_registry(static_cast<wl_display *>(wrapper));
    wl_proxy_wrapper_destroy(wrapper);
    return registry;
}

/// Null where the compositor has none.
zxdg_exporter_v1 *find_exporter(wl_display *connection, wl_event_queue *queue) {
    static const wl_registry_listener listener{take_global, ignore_lost_global};
    zxdg_exporter_v1 *exporter = nullptr;
    wl_registry *registry = registry_for(connection, queue);
    wl_registry_add_listener(registry, &listener, &exporter);
    wl_display_roundtrip_queue(connection, queue);
    wl_registry_destroy(registry);
    return exporter;
}

} // namespace

ExportedWindow::ExportedWindow(wl_display *connection, wl_surface *surface)
    : queue(wl_display_create_queue(connection)), exporter(find_exporter(connection, queue)) {
    static const zxdg_exported_v1_listener listener{take_name};
    if (exporter != nullptr) {
        exported = zxdg_exporter_v1_export(exporter, surface);
        zxdg_exported_v1_add_listener(exported, &listener, &name);
        wl_display_roundtrip_queue(connection, queue);
    }
}

ExportedWindow::~ExportedWindow() {
    if (exporter != nullptr) {
        zxdg_exported_v1_destroy(exported);
        zxdg_exporter_v1_destroy(exporter);
    }
    wl_event_queue_destroy(queue);
}

} // namespace host
