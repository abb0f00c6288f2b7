// SPDX-License-Identifier: MIT
// Sets the parent window in the way that each kind of display knows.
#include "platform/sdl/requester_parent.h"

#include "platform/sdl/sdl_window.h"

#include <SDL.h>
#include <SDL_syswm.h>
#include <cstdlib>
#include <memory>
#include <string>
#ifdef GDK_WINDOWING_X11
#include <gdk/gdkx.h>
#endif
#if defined(GDK_WINDOWING_WAYLAND) && defined(SDL_VIDEO_DRIVER_WAYLAND)
#include "platform/sdl/exported_window.h"

#include <gdk/gdkwayland.h>
#endif

namespace host {

namespace {

#if defined(GDK_WINDOWING_X11) && defined(SDL_VIDEO_DRIVER_X11)
/// Makes one window of an X server the dialog of another.
void set_parent(GdkWindow *requester, unsigned long viewer) {
    gdk_property_change(requester, gdk_atom_intern_static_string("WM_TRANSIENT_FOR"),
                        gdk_atom_intern_static_string("WINDOW"), 32, GDK_PROP_MODE_REPLACE,
                        reinterpret_cast<const guchar *>(&viewer), 1);
}
#endif

#if defined(GDK_WINDOWING_WAYLAND) && defined(SDL_VIDEO_DRIVER_WAYLAND)
void let_go(GtkWidget *, ExportedWindow *viewer) {
    delete viewer;
}

/// Makes a window of the toolkit's Wayland connection the dialog of a window of SDL's, if the compositor can
/// name windows across connections. The viewer's window keeps its name until the requester is destroyed.
void set_parent(GtkWindow *requester, const SDL_SysWMinfo &info) {
    auto viewer = std::make_unique<ExportedWindow>(info.info.wl.display, info.info.wl.surface);
    if (!viewer->name.empty()) {
        gdk_wayland_window_set_transient_for_exported(gtk_widget_get_window(GTK_WIDGET(requester)),
                                                      viewer->name.data());
        g_signal_connect(requester, "destroy", G_CALLBACK(let_go), viewer.release());
    }
}
#endif

/// Whether SDL's window is or will be on Wayland. If there is also an X server, SDL prefers that, unlike the
/// toolkit.
bool is_viewer_on_wayland() {
    const char *wish = SDL_GetHint(SDL_HINT_VIDEODRIVER);
    const char *driver = SDL_WasInit(SDL_INIT_VIDEO) != 0 ? SDL_GetCurrentVideoDriver() : wish;
    if (driver != nullptr) {
        return std::string(driver).starts_with("wayland");
    }
    return std::getenv("DISPLAY") == nullptr;
}

} // namespace

void choose_the_viewers_display() {
    gdk_set_allowed_backends(is_viewer_on_wayland() ? "wayland,*" : "x11,*");
}

void put_above_viewer(GtkWindow *requester) {
    SDL_Window *viewer = picture_window();
    if (viewer == nullptr || (SDL_GetWindowFlags(viewer) & SDL_WINDOW_HIDDEN) != 0) {
        return;
    }
    SDL_SysWMinfo info{};
    SDL_VERSION(&info.version);
    if (SDL_GetWindowWMInfo(viewer, &info) == SDL_FALSE) {
        return;
    }
    gtk_widget_realize(GTK_WIDGET(requester));
    GdkWindow *window = gtk_widget_get_window(GTK_WIDGET(requester));
#if defined(GDK_WINDOWING_X11) && defined(SDL_VIDEO_DRIVER_X11)
    if (info.subsystem == SDL_SYSWM_X11 && GDK_IS_X11_WINDOW(window)) {
        set_parent(window, info.info.x11.window);
    }
#endif
#if defined(GDK_WINDOWING_WAYLAND) && defined(SDL_VIDEO_DRIVER_WAYLAND)
    if (info.subsystem == SDL_SYSWM_WAYLAND && GDK_IS_WAYLAND_WINDOW(window)) {
        set_parent(requester, info);
    }
#endif
}

void bring_forward(GtkWindow *requester) {
    guint32 now = GDK_CURRENT_TIME;
#ifdef GDK_WINDOWING_X11
    GdkWindow *window = gtk_widget_get_window(GTK_WIDGET(requester));
    if (GDK_IS_X11_WINDOW(window)) {
        // The user went to the viewer just now. The toolkit knows only of input to its own windows; with the
        // time of that input, a window manager may think that the requester wants to steal the focus.
        now = gdk_x11_get_server_time(window);
    }
#endif
    gtk_window_present_with_time(requester, now);
}

} // namespace host
