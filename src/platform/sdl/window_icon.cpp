// SPDX-License-Identifier: MIT
// Reads the installed icon. The desktop's own search would not find that of an installation in a folder of
// its own.
#include "platform/sdl/window_icon.h"

#include "platform/posix/folders.h"

#include <SDL.h>
#include <gtk/gtk.h>
#include <memory>
#include <string>

namespace host {

namespace {

struct Unreference {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using Icon = std::unique_ptr<GdkPixbuf, Unreference>;

/// The icon with this side, in red, green, blue and alpha of eight bits each; null if it is not installed.
/// Its kind is named, since finding it out from the system's database would take ten times as long as reading
/// it.
Icon read_icon(int side) {
    const std::string size = std::to_string(side);
    const std::string path = installed_data_path("../icons/hicolor/" + size + "x" + size + "/apps/zelvo.png");
    gchar *bytes = nullptr;
    gsize length = 0;
    if (g_file_get_contents(path.c_str(), &bytes, &length, nullptr) == 0) {
        return nullptr;
    }
    const std::unique_ptr<GdkPixbufLoader, Unreference> loader(
        gdk_pixbuf_loader_new_with_type("png", nullptr));
    const bool is_read =
        gdk_pixbuf_loader_write(loader.get(), reinterpret_cast<guchar *>(bytes), length, nullptr) != 0;
    g_free(bytes);
    const bool is_whole = gdk_pixbuf_loader_close(loader.get(), nullptr) != 0;
    GdkPixbuf *icon = gdk_pixbuf_loader_get_pixbuf(loader.get());
    if (!is_read || !is_whole || icon == nullptr || gdk_pixbuf_get_has_alpha(icon) == 0) {
        return nullptr;
    }
    g_object_ref(icon);
    return Icon(icon);
}

} // namespace

void give_icon(SDL_Window *window) {
    // Desktops make it smaller where they need to.
    const Icon icon = read_icon(128);
    if (icon == nullptr) {
        return;
    }
    SDL_Surface *surface = SDL_CreateRGBSurfaceWithFormatFrom(
        gdk_pixbuf_get_pixels(icon.get()), gdk_pixbuf_get_width(icon.get()),
        gdk_pixbuf_get_height(icon.get()), 32, gdk_pixbuf_get_rowstride(icon.get()), SDL_PIXELFORMAT_RGBA32);
    SDL_SetWindowIcon(window, surface);
    SDL_FreeSurface(surface);
}

void give_requesters_icon() {
    GList *icons = nullptr;
    for (const int side : {16, 24, 32, 48, 64, 128}) {
        if (Icon icon = read_icon(side)) {
            icons = g_list_prepend(icons, icon.release());
        }
    }
    gtk_window_set_default_icon_list(icons);
    g_list_free_full(icons, g_object_unref);
}

} // namespace host
