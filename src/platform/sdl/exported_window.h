// SPDX-License-Identifier: MIT
// Gives a window of one Wayland connection a name that another connection can use. SDL and the toolkit have a
// connection each.
#pragma once

#include <string>
#include <wayland-client-core.h>

struct wl_surface;
struct zxdg_exported_v1;
struct zxdg_exporter_v1;

namespace host {

/// A window under a name that other connections to the compositor may use while this lives.
class ExportedWindow {
public:
    /// Asks the compositor for the name and waits for it. The connection's other events stay where they are.
    /// The surface has to be a window that is shown, and both arguments have to outlive this.
    ExportedWindow(wl_display *connection, wl_surface *surface);
    ~ExportedWindow();
    ExportedWindow(const ExportedWindow &) = delete;
    ExportedWindow &operator=(const ExportedWindow &) = delete;

    /// Empty where the compositor gives windows no names.
    std::string name;

private:
    wl_event_queue *queue;
    /// Null, as the next one, where the compositor gives no names.
    zxdg_exporter_v1 *exporter;
    zxdg_exported_v1 *exported = nullptr;
};

} // namespace host
