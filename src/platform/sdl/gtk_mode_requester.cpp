// SPDX-License-Identifier: MIT
// The dialog that asks for a display mode and a size.
#include "platform/sdl/gtk_loop.h"

#include "platform/shared/screen_size.h"

#include <algorithm>
#include <array>

namespace desktop {

namespace {

/// The sizes to choose from: the common ones of the viewer's first home and of later displays.
struct Size {
    int width;
    int height;
};
constexpr std::array<Size, 12> usual_sizes{{
    {320, 200},
    {320, 240},
    {320, 256},
    {640, 400},
    {640, 480},
    {640, 512},
    {800, 600},
    {1024, 768},
    {1280, 720},
    {1280, 1024},
    {1920, 1080},
    {2560, 1440},
}};

/// The first entry of the sizes' list stands for any size that is not in it.
constexpr int other_size = 0;

/// The dialog's parts that hold what the user chose.
struct ModeDialog {
    GtkWidget *dialog;
    GtkComboBoxText *mode;
    GtkComboBoxText *size;
    GtkSpinButton *width;
    GtkSpinButton *height;
};

int index_of_size(int width, int height) {
    const auto found = std::ranges::find_if(usual_sizes, [width, height](const Size &size) {
        return size.width == width && size.height == height;
    });
    return found == usual_sizes.end() ? other_size : static_cast<int>(found - usual_sizes.begin()) + 1;
}

void take_usual_size(GtkComboBox *combo_box, ModeDialog *dialog) {
    const int index = gtk_combo_box_get_active(combo_box);
    if (index > other_size) {
        const Size size = usual_sizes[static_cast<std::size_t>(index - 1)];
        gtk_spin_button_set_value(dialog->width, size.width);
        gtk_spin_button_set_value(dialog->height, size.height);
    }
}

/// Shows the usual size that was typed, or that it is another one.
void name_typed_size(GtkSpinButton *, ModeDialog *dialog) {
    const int width = gtk_spin_button_get_value_as_int(dialog->width);
    const int height = gtk_spin_button_get_value_as_int(dialog->height);
    auto *combo_box = GTK_COMBO_BOX(dialog->size);
    g_signal_handlers_block_by_func(combo_box, reinterpret_cast<gpointer>(take_usual_size), dialog);
    gtk_combo_box_set_active(combo_box, index_of_size(width, height));
    g_signal_handlers_unblock_by_func(combo_box, reinterpret_cast<gpointer>(take_usual_size), dialog);
}

/// A row of the dialog; Alt and the label's underlined letter lead to the field.
void add_row(GtkGrid *grid, int row, const char *label_text, GtkWidget *field) {
    GtkWidget *label = gtk_label_new_with_mnemonic(label_text);
    gtk_label_set_mnemonic_widget(GTK_LABEL(label), field);
    gtk_label_set_xalign(GTK_LABEL(label), 0.0F);
    gtk_widget_set_hexpand(field, TRUE);
    gtk_grid_attach(grid, label, 0, row, 1, 1);
    gtk_grid_attach(grid, field, 1, row, 1, 1);
}

GtkWidget *make_side_field(int value) {
    GtkWidget *field = gtk_spin_button_new_with_range(host::smallest_side, host::largest_side, 1);
    gtk_spin_button_set_numeric(GTK_SPIN_BUTTON(field), TRUE);
    gtk_spin_button_set_value(GTK_SPIN_BUTTON(field), value);
    gtk_entry_set_activates_default(GTK_ENTRY(field), TRUE);
    return field;
}

GtkWidget *make_mode_field(const std::vector<ModeName> &modes, std::uint32_t initial) {
    GtkWidget *field = gtk_combo_box_text_new();
    for (const ModeName &mode : modes) {
        gtk_combo_box_text_append(GTK_COMBO_BOX_TEXT(field), std::to_string(mode.id).c_str(),
                                  mode.name.c_str());
    }
    gtk_combo_box_set_active_id(GTK_COMBO_BOX(field), std::to_string(initial).c_str());
    return field;
}

GtkWidget *make_size_field(const ModeQuestion &initial) {
    GtkWidget *field = gtk_combo_box_text_new();
    gtk_combo_box_text_append_text(GTK_COMBO_BOX_TEXT(field), "Other");
    for (const Size &size : usual_sizes) {
        const std::string text = std::to_string(size.width) + " \u00D7 " + std::to_string(size.height);
        gtk_combo_box_text_append_text(GTK_COMBO_BOX_TEXT(field), text.c_str());
    }
    gtk_combo_box_set_active(GTK_COMBO_BOX(field), index_of_size(initial.width, initial.height));
    return field;
}

void fill(ModeDialog &parts, const std::vector<ModeName> &modes, const ModeQuestion &initial) {
    GtkWidget *mode = make_mode_field(modes, initial.mode_id);
    GtkWidget *size = make_size_field(initial);
    GtkWidget *width = make_side_field(initial.width);
    GtkWidget *height = make_side_field(initial.height);
    parts.mode = GTK_COMBO_BOX_TEXT(mode);
    parts.size = GTK_COMBO_BOX_TEXT(size);
    parts.width = GTK_SPIN_BUTTON(width);
    parts.height = GTK_SPIN_BUTTON(height);

    GtkWidget *grid = gtk_grid_new();
    gtk_grid_set_row_spacing(GTK_GRID(grid), 8);
    gtk_grid_set_column_spacing(GTK_GRID(grid), 16);
    gtk_container_set_border_width(GTK_CONTAINER(grid), 12);
    add_row(GTK_GRID(grid), 0, "_Display", mode);
    add_row(GTK_GRID(grid), 1, "_Size", size);
    add_row(GTK_GRID(grid), 2, "_Width", width);
    add_row(GTK_GRID(grid), 3, "_Height", height);
    gtk_container_add(GTK_CONTAINER(gtk_dialog_get_content_area(GTK_DIALOG(parts.dialog))), grid);

    g_signal_connect(size, "changed", G_CALLBACK(take_usual_size), &parts);
    g_signal_connect(width, "value-changed", G_CALLBACK(name_typed_size), &parts);
    g_signal_connect(height, "value-changed", G_CALLBACK(name_typed_size), &parts);
}

/// What the fields hold, also what was typed last and not yet left with Tab.
ModeQuestion contents(const ModeDialog &parts) {
    gtk_spin_button_update(parts.width);
    gtk_spin_button_update(parts.height);
    const char *mode_id = gtk_combo_box_get_active_id(GTK_COMBO_BOX(parts.mode));
    return {mode_id != nullptr ? static_cast<std::uint32_t>(std::stoul(mode_id)) : 0U,
            gtk_spin_button_get_value_as_int(parts.width), gtk_spin_button_get_value_as_int(parts.height)};
}

} // namespace

std::optional<ModeQuestion> ask_for_mode(const std::vector<ModeName> &modes, const ModeQuestion &initial,
                                         const WhileOpen &while_open) {
    ModeDialog parts{};
    parts.dialog = gtk_dialog_new_with_buttons("Zelvo: screen mode", nullptr, GTK_DIALOG_MODAL, "_Cancel",
                                               GTK_RESPONSE_CANCEL, "_OK", GTK_RESPONSE_ACCEPT, nullptr);
    gtk_dialog_set_default_response(GTK_DIALOG(parts.dialog), GTK_RESPONSE_ACCEPT);
    // Enter alone takes what is there.
    gtk_widget_grab_focus(gtk_dialog_get_widget_for_response(GTK_DIALOG(parts.dialog), GTK_RESPONSE_ACCEPT));
    gtk_window_set_position(GTK_WINDOW(parts.dialog), GTK_WIN_POS_CENTER);
    gtk_window_set_resizable(GTK_WINDOW(parts.dialog), FALSE);
    gtk_container_set_border_width(GTK_CONTAINER(parts.dialog), 8);
    fill(parts, modes, initial);
    gtk_widget_show_all(parts.dialog);
    gtk_window_present(GTK_WINDOW(parts.dialog));
    const bool is_confirmed = wait_for_response(parts.dialog, while_open) == GTK_RESPONSE_ACCEPT;
    const std::optional<ModeQuestion> chosen = is_confirmed ? std::optional(contents(parts)) : std::nullopt;
    gtk_widget_destroy(parts.dialog);
    settle();
    return chosen;
}

} // namespace desktop
