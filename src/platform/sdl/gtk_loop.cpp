// SPDX-License-Identifier: MIT
// Starts GTK and runs its main loop.
#include "platform/sdl/gtk_loop.h"

#include <clocale>
#include <cstdio>

namespace desktop {

namespace {

constexpr guint while_open_milliseconds = 50;

/// An open requester's wait for its answer.
struct Wait {
    GMainLoop *loop;
    const WhileOpen *while_open;
    int response = GTK_RESPONSE_CANCEL;
};

void take_response(gpointer, int response, Wait *wait) {
    wait->response = response;
    g_main_loop_quit(wait->loop);
}

/// The close button and Esc are answers like any other. By default the toolkit destroys the dialog after such
/// an answer, while its contents are still needed.
gboolean stay_after_close(GtkWidget *, GdkEvent *, gpointer) {
    return TRUE;
}

gboolean look_around(gpointer data) {
    auto *wait = static_cast<Wait *>(data);
    if ((*wait->while_open)()) {
        g_main_loop_quit(wait->loop);
    }
    return G_SOURCE_CONTINUE;
}

bool start_toolkit() {
    // Numbers are written and read with a point whatever the user's locale; only the toolkit's own words come
    // in the user's language.
    gtk_disable_setlocale();
    std::setlocale(LC_MESSAGES, "");
    g_set_prgname("zelvo");
    if (gtk_init_check(nullptr, nullptr) == 0) {
        std::fputs("zelvo: no requester: the desktop's toolkit finds no display\n", stderr);
        return false;
    }
    return true;
}

} // namespace

bool can_show_requesters() {
    static const bool is_started = start_toolkit();
    return is_started;
}

int wait_for_response(gpointer requester, const WhileOpen &while_open) {
    Wait wait{g_main_loop_new(nullptr, FALSE), &while_open};
    const gulong handler = g_signal_connect(requester, "response", G_CALLBACK(take_response), &wait);
    if (GTK_IS_WINDOW(requester)) {
        g_signal_connect(requester, "delete-event", G_CALLBACK(stay_after_close), nullptr);
    }
    const guint timer = g_timeout_add(while_open_milliseconds, look_around, &wait);
    g_main_loop_run(wait.loop);
    g_source_remove(timer);
    g_signal_handler_disconnect(requester, handler);
    g_main_loop_unref(wait.loop);
    return wait.response;
}

void settle() {
    while (gtk_events_pending() != 0) {
        gtk_main_iteration();
    }
    gdk_display_sync(gdk_display_get_default());
}

} // namespace desktop
