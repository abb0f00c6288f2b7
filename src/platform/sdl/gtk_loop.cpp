// SPDX-License-Identifier: MIT
// Starts GTK and runs its main loop.
#include "platform/sdl/gtk_loop.h"

#include "platform/sdl/requester_parent.h"
#include "platform/sdl/surroundings.h"
#include "platform/sdl/window_icon.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <vector>

namespace host {

namespace {

constexpr guint while_open_milliseconds = 50;

/// The most events that one pass handles, so that a pass stays short.
constexpr int events_per_pass = 32;

/// Whether the toolkit has a display. Written by can_show_requesters.
bool is_toolkit_started = false;

/// An open requester's wait for its answer.
struct Wait {
    GMainLoop *loop;
    gpointer requester;
    const WhileOpen *while_open;
    int response = GTK_RESPONSE_CANCEL;
};

void take_response(gpointer, int response, Wait *wait) {
    wait->response = response;
    g_main_loop_quit(wait->loop);
}

/// Keeps a dialog that was closed with its close button or with Esc. The toolkit would destroy it, but its
/// contents are still needed.
gboolean stay_after_close(GtkWidget *, GdkEvent *, gpointer) {
    return TRUE;
}

gboolean end_wait_and_stay(GtkWidget *, GdkEvent *, Wait *wait) {
    g_main_loop_quit(wait->loop);
    return TRUE;
}

gboolean poll_while_open(gpointer data) {
    auto *wait = static_cast<Wait *>(data);
    const Order order = (*wait->while_open)();
    if (order == Order::cancel) {
        g_main_loop_quit(wait->loop);
    } else if (order == Order::come_forward && GTK_IS_WINDOW(wait->requester)) {
        bring_forward(GTK_WINDOW(wait->requester));
    }
    return G_SOURCE_CONTINUE;
}

/// Whether the other end of a connection that this process reads from has closed it.
bool is_lost(const GPollFD &connection) {
    return (connection.events & G_IO_IN) != 0 && (connection.revents & (G_IO_HUP | G_IO_ERR)) != 0;
}

/// The state of all connections that the toolkit's main loop waits for, without waiting.
std::vector<GPollFD> poll_connections(GMainContext *context, int priority) {
    int timeout = 0;
    const int count = g_main_context_query(context, priority, &timeout, nullptr, 0);
    std::vector<GPollFD> connections(static_cast<std::size_t>(count));
    g_main_context_query(context, priority, &timeout, connections.data(), count);
    g_poll(connections.data(), static_cast<guint>(connections.size()), 0);
    return connections;
}

/// One turn of the toolkit's main loop; false if there was nothing to do. When the display is gone this does
/// nothing, because the toolkit would end the process; the window then ends the program in an orderly way.
bool turn_once(GMainContext *context) {
    int priority = 0;
    g_main_context_prepare(context, &priority);
    std::vector<GPollFD> connections = poll_connections(context, priority);
    if (std::ranges::any_of(connections, is_lost)) {
        return false;
    }
    const int count = static_cast<int>(connections.size());
    const bool is_ready = g_main_context_check(context, priority, connections.data(), count) != 0;
    if (is_ready) {
        g_main_context_dispatch(context);
    }
    return is_ready;
}

bool start_toolkit() {
    // Numbers have a decimal point in every locale; only messages are in the user's language.
    gtk_disable_setlocale();
    std::setlocale(LC_MESSAGES, "");
    g_set_prgname("zelvo");
    choose_the_viewers_display();
    prepare_for_toolkit();
    prepare_for_opengl();
    if (gtk_init_check(nullptr, nullptr) == 0) {
        std::fputs("zelvo: no requester: the desktop's toolkit finds no display\n", stderr);
        return false;
    }
    // Window lists sort by this name, which is also that of the viewer's window and in the desktop entry.
    gdk_set_program_class("zelvo");
    give_requesters_icon();
    return true;
}

} // namespace

bool can_show_requesters() {
    static const bool is_started = start_toolkit();
    is_toolkit_started = is_started;
    return is_started;
}

void serve_toolkit() {
    GMainContext *context = g_main_context_default();
    if (!is_toolkit_started || g_main_context_acquire(context) == 0) {
        return;
    }
    for (int count = 0; count < events_per_pass && turn_once(context); ++count) {
    }
    g_main_context_release(context);
}

int wait_for_response(gpointer requester, const WhileOpen &while_open) {
    Wait wait{g_main_loop_new(nullptr, FALSE), requester, &while_open};
    const gulong handler = g_signal_connect(requester, "response", G_CALLBACK(take_response), &wait);
    const gulong closing = GTK_IS_WINDOW(requester) ? g_signal_connect(requester, "delete-event",
                                                                       G_CALLBACK(stay_after_close), nullptr)
                                                    : 0;
    const guint timer = g_timeout_add(while_open_milliseconds, poll_while_open, &wait);
    g_main_loop_run(wait.loop);
    g_source_remove(timer);
    if (closing != 0) {
        g_signal_handler_disconnect(requester, closing);
    }
    g_signal_handler_disconnect(requester, handler);
    g_main_loop_unref(wait.loop);
    return wait.response;
}

void wait_until_closed(GtkWindow *window, const WhileOpen &while_open) {
    Wait wait{g_main_loop_new(nullptr, FALSE), window, &while_open};
    const gulong closing = g_signal_connect(window, "delete-event", G_CALLBACK(end_wait_and_stay), &wait);
    const guint timer = g_timeout_add(while_open_milliseconds, poll_while_open, &wait);
    g_main_loop_run(wait.loop);
    g_source_remove(timer);
    g_signal_handler_disconnect(window, closing);
    g_main_loop_unref(wait.loop);
}

void settle() {
    while (gtk_events_pending() != 0) {
        gtk_main_iteration();
    }
    gdk_display_sync(gdk_display_get_default());
}

} // namespace host
