// SPDX-License-Identifier: MIT
// The desktop's native file chooser; inside a sandbox, the portal's.
#include "platform/sdl/gtk_loop.h"
#include "platform/sdl/gtk_words.h"
#include "platform/sdl/requester_parent.h"

namespace host {

namespace {

/// A file chooser: either the toolkit's dialog or the native object through which the portal shows its own.
/// The other pointer is null.
struct Chooser {
    GtkDialog *dialog;
    GtkNativeDialog *native;
};

GtkFileChooser *contents(const Chooser &chooser) {
    return chooser.dialog != nullptr ? GTK_FILE_CHOOSER(chooser.dialog) : GTK_FILE_CHOOSER(chooser.native);
}

/// Inside a sandbox only the portal can see the user's files. If there is no portal, the native chooser shows
/// the toolkit's dialog.
bool is_in_sandbox() {
    const char *wish = g_getenv("GTK_USE_PORTAL");
    return (wish != nullptr && wish[0] == '1') || g_getenv("SNAP") != nullptr ||
           g_file_test("/.flatpak-info", G_FILE_TEST_EXISTS) != 0;
}

Chooser make_chooser(const std::string &title) {
    constexpr GtkFileChooserAction action = GTK_FILE_CHOOSER_ACTION_OPEN;
    if (is_in_sandbox()) {
        GtkFileChooserNative *native =
            gtk_file_chooser_native_new(title.c_str(), nullptr, action, nullptr, nullptr);
        return {nullptr, GTK_NATIVE_DIALOG(native)};
    }
    GtkWidget *dialog = gtk_file_chooser_dialog_new(
        title.c_str(), nullptr, action, toolkit_words("_Cancel").c_str(), GTK_RESPONSE_CANCEL,
        toolkit_words("_Open").c_str(), GTK_RESPONSE_ACCEPT, nullptr);
    gtk_dialog_set_default_response(GTK_DIALOG(dialog), GTK_RESPONSE_ACCEPT);
    gtk_window_set_modal(GTK_WINDOW(dialog), TRUE);
    put_above_viewer(GTK_WINDOW(dialog));
    return {GTK_DIALOG(dialog), nullptr};
}

/// Must be called again after each answer, because the portal closes its chooser.
void show(const Chooser &chooser) {
    if (chooser.dialog != nullptr) {
        gtk_window_present(GTK_WINDOW(chooser.dialog));
    } else {
        gtk_native_dialog_show(chooser.native);
    }
}

int wait_for_answer(const Chooser &chooser, const WhileOpen &while_open) {
    return chooser.dialog != nullptr ? wait_for_response(chooser.dialog, while_open)
                                     : wait_for_response(chooser.native, while_open);
}

void destroy(const Chooser &chooser) {
    if (chooser.dialog != nullptr) {
        gtk_widget_destroy(GTK_WIDGET(chooser.dialog));
    } else {
        gtk_native_dialog_destroy(chooser.native);
        g_object_unref(chooser.native);
    }
}

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

/// Shows above the chooser that a file cannot be opened, and why, until the user closes the message.
void refuse(const Chooser &chooser, const std::string &path, int error, const WhileOpen &while_open) {
    GtkWindow *parent = chooser.dialog != nullptr ? GTK_WINDOW(chooser.dialog) : nullptr;
    char *name = g_filename_display_basename(path.c_str());
    GtkWidget *message = gtk_message_dialog_new(parent, GTK_DIALOG_MODAL, GTK_MESSAGE_ERROR, GTK_BUTTONS_NONE,
                                                "%s", toolkit_words("Could not select file").c_str());
    gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(message), "%s\n%s", name,
                                             error_words(error).c_str());
    g_free(name);
    gtk_window_set_title(GTK_WINDOW(message), "Zelvo");
    gtk_dialog_add_button(GTK_DIALOG(message), toolkit_words("_OK").c_str(), GTK_RESPONSE_OK);
    gtk_dialog_set_default_response(GTK_DIALOG(message), GTK_RESPONSE_OK);
    if (parent == nullptr) {
        put_above_viewer(GTK_WINDOW(message));
    }
    gtk_window_present(GTK_WINDOW(message));
    wait_for_response(message, while_open);
    gtk_widget_destroy(message);
}

/// Shows the chooser until the user chooses a file that can be opened, or cancels.
std::optional<std::string> choose(const Chooser &chooser, const FileQuestion &question,
                                  const WhileOpen &while_open) {
    for (;;) {
        show(chooser);
        if (wait_for_answer(chooser, while_open) != GTK_RESPONSE_ACCEPT) {
            return std::nullopt;
        }
        std::optional<std::string> path = chosen_path(contents(chooser));
        if (!path) {
            continue;
        }
        const int error = question.error_of_opening(*path);
        if (error == 0) {
            return path;
        }
        refuse(chooser, *path, error, while_open);
    }
}

} // namespace

std::optional<std::string> ask_for_file(const FileQuestion &question, const WhileOpen &while_open) {
    const Chooser chooser = make_chooser(question.title);
    for (const FileFilter &filter : question.filters) {
        add_filter(contents(chooser), filter);
    }
    select_at_first(contents(chooser), question.initial_path);
    std::optional<std::string> path = choose(chooser, question, while_open);
    destroy(chooser);
    settle();
    return path;
}

} // namespace host
