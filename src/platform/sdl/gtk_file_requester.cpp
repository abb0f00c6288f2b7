// SPDX-License-Identifier: MIT
// The desktop's own file chooser, which inside a sandbox is the portal's.
#include "platform/sdl/gtk_loop.h"

namespace desktop {

namespace {

void add_filter(GtkFileChooser *chooser, const FileFilter &filter) {
    GtkFileFilter *made = gtk_file_filter_new();
    gtk_file_filter_set_name(made, filter.name.c_str());
    for (const std::string &pattern : filter.patterns) {
        gtk_file_filter_add_pattern(made, pattern.c_str());
    }
    gtk_file_chooser_add_filter(chooser, made);
}

void select_at_first(GtkFileChooser *chooser, const std::string &path) {
    if (!path.empty()) {
        gtk_file_chooser_set_filename(chooser, path.c_str());
    } else {
        char *folder = g_get_current_dir();
        gtk_file_chooser_set_current_folder(chooser, folder);
        g_free(folder);
    }
}

std::optional<std::string> chosen_path(GtkFileChooser *chooser) {
    char *name = gtk_file_chooser_get_filename(chooser);
    std::optional<std::string> path = name != nullptr ? std::optional<std::string>(name) : std::nullopt;
    g_free(name);
    return path;
}

} // namespace

std::optional<std::string> ask_for_file(const FileQuestion &question, const WhileOpen &while_open) {
    GtkFileChooserNative *native = gtk_file_chooser_native_new(
        question.title.c_str(), nullptr, GTK_FILE_CHOOSER_ACTION_OPEN, nullptr, nullptr);
    GtkFileChooser *chooser = GTK_FILE_CHOOSER(native);
    for (const FileFilter &filter : question.filters) {
        add_filter(chooser, filter);
    }
    select_at_first(chooser, question.initial_path);
    gtk_native_dialog_show(GTK_NATIVE_DIALOG(native));
    const bool is_confirmed = wait_for_response(native, while_open) == GTK_RESPONSE_ACCEPT;
    std::optional<std::string> path = is_confirmed ? chosen_path(chooser) : std::nullopt;
    gtk_native_dialog_destroy(GTK_NATIVE_DIALOG(native));
    g_object_unref(native);
    settle();
    return path;
}

} // namespace desktop
