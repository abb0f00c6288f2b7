// SPDX-License-Identifier: MIT
// The dialog that asks for a display mode and a size.
#include "platform/sdl/gtk_loop.h"
#include "platform/sdl/gtk_words.h"
#include "platform/sdl/requester_parent.h"
#include "platform/sdl/typed_size.h"
#include "platform/shared/screen_size.h"

#include <algorithm>
#include <array>

namespace host {

namespace {

/// The sizes in the list: common ones of the Amiga and of later displays.
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

/// The first entry of the list means every size that is not in it.
constexpr int other_size = 0;

/// The dialog with its fields, and the line of text that comments on them.
struct ModeDialog {
    GtkWidget *dialog;
    GtkComboBoxText *mode;
    GtkComboBoxText *size;
    GtkEntry *width;
    GtkEntry *height;
    GtkLabel *notice;
};

int index_of_size(int width, int height) {
    const auto found = std::ranges::find_if(usual_sizes, [width, height](const Size &size) {
        return size.width == width && size.height == height;
    });
    return found == usual_sizes.end() ? other_size : static_cast<int>(found - usual_sizes.begin()) + 1;
}

void set_side(GtkEntry *field, int side) {
    gtk_entry_set_text(field, std::to_string(side).c_str());
}

void take_usual_size(GtkComboBox *combo_box, ModeDialog *dialog) {
    const int index = gtk_combo_box_get_active(combo_box);
    if (index > other_size) {
        const Size size = usual_sizes[static_cast<std::size_t>(index - 1)];
        set_side(dialog->width, size.width);
        set_side(dialog->height, size.height);
    }
}

/// Selects the list entry that matches the typed size.
void name_typed_size(ModeDialog *dialog, int index) {
    auto *combo_box = GTK_COMBO_BOX(dialog->size);
    g_signal_handlers_block_by_func(combo_box, reinterpret_cast<gpointer>(take_usual_size), dialog);
    gtk_combo_box_set_active(combo_box, index);
    g_signal_handlers_unblock_by_func(combo_box, reinterpret_cast<gpointer>(take_usual_size), dialog);
}

void mark(GtkEntry *field, const char *style_class, bool is_marked) {
    GtkStyleContext *style = gtk_widget_get_style_context(GTK_WIDGET(field));
    if (is_marked) {
        gtk_style_context_add_class(style, style_class);
    } else {
        gtk_style_context_remove_class(style, style_class);
    }
}

std::string memory_notice(std::uint64_t needed) {
    char *amount = g_format_size(needed);
    std::string notice = toolkit_words("Not enough free memory") + ": " + amount;
    g_free(amount);
    return notice;
}

std::string side_notice() {
    return "Width and height are whole numbers from " + std::to_string(smallest_side) + " to " +
           std::to_string(largest_side) + ".";
}

/// Checks the size as the user types it. A size that no screen can have cannot be confirmed. A size too large
/// for the machine's memory is only marked, because the machine may have more memory than it reports.
void check_typed_size(GtkEditable *, ModeDialog *dialog) {
    const std::optional<int> width = side_of_text(gtk_entry_get_text(dialog->width));
    const std::optional<int> height = side_of_text(gtk_entry_get_text(dialog->height));
    const bool is_size = width && height;
    const std::uint64_t needed = is_size ? memory_of_screen(*width, *height) : 0;
    const bool is_too_large = needed > memory_of_machine();
    mark(dialog->width, GTK_STYLE_CLASS_ERROR, !width);
    mark(dialog->height, GTK_STYLE_CLASS_ERROR, !height);
    mark(dialog->width, GTK_STYLE_CLASS_WARNING, is_too_large);
    mark(dialog->height, GTK_STYLE_CLASS_WARNING, is_too_large);
    name_typed_size(dialog, is_size ? index_of_size(*width, *height) : other_size);
    const std::string notice = !is_size ? side_notice() : is_too_large ? memory_notice(needed) : "";
    gtk_label_set_text(dialog->notice, notice.c_str());
    gtk_dialog_set_response_sensitive(GTK_DIALOG(dialog->dialog), GTK_RESPONSE_ACCEPT, is_size);
}

/// Adds a row with a label and a field. Alt and the label's underlined letter give the field the focus.
void add_row(GtkGrid *grid, int row, const std::string &label_text, GtkWidget *field) {
    GtkWidget *label = gtk_label_new_with_mnemonic(label_text.c_str());
    gtk_label_set_mnemonic_widget(GTK_LABEL(label), field);
    gtk_label_set_xalign(GTK_LABEL(label), 0.0F);
    gtk_widget_set_hexpand(field, TRUE);
    gtk_grid_attach(grid, label, 0, row, 1, 1);
    gtk_grid_attach(grid, field, 1, row, 1, 1);
}

GtkWidget *make_side_field(int value) {
    GtkWidget *field = gtk_entry_new();
    set_side(GTK_ENTRY(field), value);
    gtk_entry_set_input_purpose(GTK_ENTRY(field), GTK_INPUT_PURPOSE_DIGITS);
    gtk_entry_set_activates_default(GTK_ENTRY(field), TRUE);
    return field;
}

/// An empty line for a notice about the fields, so that the dialog keeps its size when the notice appears.
GtkWidget *make_notice() {
    GtkWidget *notice = gtk_label_new(nullptr);
    gtk_label_set_xalign(GTK_LABEL(notice), 0.0F);
    gtk_label_set_width_chars(GTK_LABEL(notice), static_cast<int>(side_notice().size()));
    return notice;
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
    gtk_combo_box_text_append_text(GTK_COMBO_BOX_TEXT(field), toolkit_words("Custom size", "Other").c_str());
    for (const Size &size : usual_sizes) {
        gtk_combo_box_text_append_text(GTK_COMBO_BOX_TEXT(field),
                                       size_words(size.width, size.height).c_str());
    }
    gtk_combo_box_set_active(GTK_COMBO_BOX(field), index_of_size(initial.width, initial.height));
    return field;
}

void fill(ModeDialog &parts, const std::vector<ModeName> &modes, const ModeQuestion &initial) {
    GtkWidget *mode = make_mode_field(modes, initial.mode_id);
    GtkWidget *size = make_size_field(initial);
    GtkWidget *width = make_side_field(initial.width);
    GtkWidget *height = make_side_field(initial.height);
    GtkWidget *notice = make_notice();
    parts.mode = GTK_COMBO_BOX_TEXT(mode);
    parts.size = GTK_COMBO_BOX_TEXT(size);
    parts.width = GTK_ENTRY(width);
    parts.height = GTK_ENTRY(height);
    parts.notice = GTK_LABEL(notice);

    GtkWidget *grid = gtk_grid_new();
    gtk_grid_set_row_spacing(GTK_GRID(grid), 8);
    gtk_grid_set_column_spacing(GTK_GRID(grid), 16);
    gtk_container_set_border_width(GTK_CONTAINER(grid), 12);
    add_row(GTK_GRID(grid), 0, label_words("Mode", "_Display"), mode);
    add_row(GTK_GRID(grid), 1, label_words("Size", "_Size"), size);
    add_row(GTK_GRID(grid), 2, label_words("_Width:", "_Width"), width);
    add_row(GTK_GRID(grid), 3, label_words("_Height:", "_Height"), height);
    gtk_grid_attach(GTK_GRID(grid), notice, 0, 4, 2, 1);
    gtk_container_add(GTK_CONTAINER(gtk_dialog_get_content_area(GTK_DIALOG(parts.dialog))), grid);

    g_signal_connect(size, "changed", G_CALLBACK(take_usual_size), &parts);
    g_signal_connect(width, "changed", G_CALLBACK(check_typed_size), &parts);
    g_signal_connect(height, "changed", G_CALLBACK(check_typed_size), &parts);
    check_typed_size(nullptr, &parts);
}

/// The mode and size in the fields; nothing if they hold no valid size.
std::optional<ModeQuestion> contents(const ModeDialog &parts) {
    const std::optional<int> width = side_of_text(gtk_entry_get_text(parts.width));
    const std::optional<int> height = side_of_text(gtk_entry_get_text(parts.height));
    const char *mode_id = gtk_combo_box_get_active_id(GTK_COMBO_BOX(parts.mode));
    if (!width || !height || mode_id == nullptr) {
        return std::nullopt;
    }
    return ModeQuestion{static_cast<std::uint32_t>(std::stoul(mode_id)), *width, *height};
}

} // namespace

std::optional<ModeQuestion> ask_for_mode(const std::vector<ModeName> &modes, const ModeQuestion &initial,
                                         const WhileOpen &while_open) {
    ModeDialog parts{};
    parts.dialog = gtk_dialog_new_with_buttons("Zelvo: screen mode", nullptr, GTK_DIALOG_MODAL,
                                               toolkit_words("_Cancel").c_str(), GTK_RESPONSE_CANCEL,
                                               toolkit_words("_OK").c_str(), GTK_RESPONSE_ACCEPT, nullptr);
    gtk_dialog_set_default_response(GTK_DIALOG(parts.dialog), GTK_RESPONSE_ACCEPT);
    // Pressing Enter at once confirms the initial values.
    gtk_widget_grab_focus(gtk_dialog_get_widget_for_response(GTK_DIALOG(parts.dialog), GTK_RESPONSE_ACCEPT));
    gtk_window_set_position(GTK_WINDOW(parts.dialog), GTK_WIN_POS_CENTER);
    gtk_window_set_resizable(GTK_WINDOW(parts.dialog), FALSE);
    gtk_container_set_border_width(GTK_CONTAINER(parts.dialog), 8);
    fill(parts, modes, initial);
    put_above_viewer(GTK_WINDOW(parts.dialog));
    gtk_widget_show_all(parts.dialog);
    gtk_window_present(GTK_WINDOW(parts.dialog));
    const bool is_confirmed = wait_for_response(parts.dialog, while_open) == GTK_RESPONSE_ACCEPT;
    const std::optional<ModeQuestion> chosen = is_confirmed ? contents(parts) : std::nullopt;
    gtk_widget_destroy(parts.dialog);
    settle();
    return chosen;
}

} // namespace host
