// SPDX-License-Identifier: MIT
// A message with one button.
#include "platform/sdl/gtk_loop.h"
#include "platform/sdl/notice.h"
#include "platform/sdl/requester_parent.h"

namespace host {

void show_notice(const std::string &title, const std::string &text, const WhileOpen &while_open) {
    GtkWidget *dialog = gtk_message_dialog_new(nullptr, GTK_DIALOG_MODAL, GTK_MESSAGE_WARNING,
                                               GTK_BUTTONS_CLOSE, "%s", text.c_str());
    gtk_window_set_title(GTK_WINDOW(dialog), title.c_str());
    put_above_viewer(GTK_WINDOW(dialog));
    gtk_widget_show(dialog);
    wait_for_response(dialog, while_open);
    gtk_widget_destroy(dialog);
    settle();
}

} // namespace host
