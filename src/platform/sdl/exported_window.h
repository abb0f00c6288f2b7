// SPDX-License-Identifier: MIT
// Gives a window of one Wayland connection a name that another connection can use. SDL and the toolkit each
// have a connection.
#pragma once

#include <string>
#include <wayland-client-core.h>

struct wl_surface;
struct zxdg_exported_v1;
struct zxdg_exporter_v1;

namespace host {

/// A window with a name that other connections to the compositor can use as long as this object exists.
class ExportedWindow {
public:
    /// Asks the compositor for the name and waits for it. The connection's other events stay in their queues.
    /// The surface must be a window that is shown, and both arguments must outlive this object.
    ExportedWindow(wl_display *connection, wl_surface *surface);
    ~ExportedWindow();
    ExportedWindow(const ExportedWindow &) = delete;
    ExportedWindow &operator=(const ExportedWindow &) = delete;

    /// Empty if the compositor gives windows no names.
    std::string name;

private:
    wl_event_queue *queue;
    /// Null, like `exported`, if the compositor gives no names.
    zxdg_exporter_v1 *exporter;
    zxdg_exported_v1 *exported = nullptr;
};

} // namespace host
