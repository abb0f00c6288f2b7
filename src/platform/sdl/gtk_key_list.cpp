// SPDX-License-Identifier: MIT
// The toolkit's own window for keys.
#include "platform/sdl/gtk_loop.h"
#include "platform/sdl/key_list.h"
#include "platform/sdl/requester_parent.h"

#include <algorithm>
#include <array>
#include <span>

namespace host {

namespace {

/// A row of the list: keys as the toolkit writes them, or in plain words where it has no signs for them.
struct Key {
    const char *keys;
    const char *meaning;
};

/// What the mouse does has no sign, and begins with its name.
constexpr const char *no_keys = nullptr;

constexpr std::array mouse{
    Key{no_keys, "Mouse: tilts the object, or turns the light"},
    Key{no_keys, "Right button: next render mode"},
    Key{no_keys, "Left button: quit"},
};

constexpr std::array object_keys{
    Key{"Right Left", "Spin faster, slower"},
    Key{"r", "Stop the spin"},
    Key{"e", "Dots effect"},
    Key{"i", "Flip the polygons"},
    Key{"d", "Both sides of every polygon"},
    Key{"l", "The mouse turns the light"},
    Key{"t", "Choose another texture"},
};

constexpr std::array settings_keys{
    Key{"s w", "Save, load for this session"},
    Key{"<Shift>s <Shift>w", "Save, load for good"},
    Key{"<Shift>r", "Back to the defaults"},
};

constexpr std::array picture_keys{
    Key{"b", "How a frame begins"},
    Key{"p", "Dots over the faces"},
    Key{"Up Down", "Brighter, darker dots"},
    Key{"1...3", "Less red, green, blue"},
    Key{"4...6", "More red, green, blue"},
    Key{"0", "Gamma back to 1"},
    Key{"f", "Frame rate"},
    Key{"c", "Pixel conversion"},
};

constexpr std::array window_keys{
    Key{"F1", "This list"},
    Key{"<Ctrl>o", "Open another object"},
    Key{"Page_Down Page_Up", "Next, previous object of the folder"},
    Key{"F12", "Save the picture"},
    Key{"F11 <Alt>Return", "Full screen and back"},
    Key{"m", "Choose another screen mode"},
    Key{"Alt_L", "Held: frees the pointer"},
    Key{"Escape q x <Ctrl>q", "Quit"},
};

GtkWidget *make_row(const Key &key) {
    auto *row =
        static_cast<GtkWidget *>(g_object_new(GTK_TYPE_SHORTCUTS_SHORTCUT, "title", key.meaning, nullptr));
    if (key.keys != no_keys) {
        g_object_set(row, "accelerator", key.keys, nullptr);
    }
    return row;
}

void add_group(GtkContainer *section, const char *title, std::span<const Key> keys) {
    auto *group = static_cast<GtkWidget *>(g_object_new(GTK_TYPE_SHORTCUTS_GROUP, "title", title, nullptr));
    for (const Key &key : keys) {
        gtk_container_add(GTK_CONTAINER(group), make_row(key));
    }
    gtk_container_add(section, group);
}

/// As many as fit the display, so that a large one shows all keys on one page.
unsigned rows_of_a_column() {
    constexpr int row_height = 48;
    GdkRectangle area{0, 0, 1, 1};
    gdk_monitor_get_workarea(gdk_display_get_monitor(gdk_display_get_default(), 0), &area);
    return static_cast<unsigned>(std::max(area.height / row_height, 1));
}

GtkWidget *make_list() {
    auto *list = static_cast<GtkWidget *>(g_object_new(GTK_TYPE_SHORTCUTS_WINDOW, "modal", TRUE, nullptr));
    auto *section = static_cast<GtkWidget *>(g_object_new(GTK_TYPE_SHORTCUTS_SECTION, "section-name", "keys",
                                                          "max-height", rows_of_a_column(), nullptr));
    add_group(GTK_CONTAINER(section), "Mouse", mouse);
    add_group(GTK_CONTAINER(section), "Object", object_keys);
    add_group(GTK_CONTAINER(section), "Settings", settings_keys);
    add_group(GTK_CONTAINER(section), "Picture", picture_keys);
    add_group(GTK_CONTAINER(section), "Window", window_keys);
    gtk_container_add(GTK_CONTAINER(list), section);
    gtk_widget_show_all(section);
    // Otherwise an empty search is shown.
    g_object_set(list, "section-name", "keys", nullptr);
    return list;
}

} // namespace

void show_key_list(const WhileOpen &while_open) {
    GtkWidget *list = make_list();
    gtk_window_set_title(GTK_WINDOW(list), "Zelvo: keys");
    gtk_window_set_position(GTK_WINDOW(list), GTK_WIN_POS_CENTER);
    put_above_viewer(GTK_WINDOW(list));
    gtk_window_present(GTK_WINDOW(list));
    wait_until_closed(GTK_WINDOW(list), while_open);
    gtk_widget_destroy(list);
    settle();
}

} // namespace host
