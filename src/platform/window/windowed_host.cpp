// SPDX-License-Identifier: MIT
// The hooks and the passes of a host with a window.
#include "platform/window/windowed_host.h"

#include "platform/key_codes.h"
#include "platform/lowlevel.h"
#include "platform/shared/hooks.h"
#include "platform/shared/real_clock.h"
#include "platform/shared/refused_screen.h"
#include "platform/window/display_modes.h"
#include "platform/window/input.h"
#include "platform/window/picture_window.h"
#include "platform/window/recording.h"
#include "platform/window/requester_answers.h"

#include <cstdio>
#include <deque>

namespace host {

std::string settings_path;

std::string object_path;

std::string next_object;

volatile std::sig_atomic_t quit_requested = 0;

namespace {

/// Events that the program has not taken yet. Written here and by take_input.
std::deque<IntuiMessage> waiting;

/// Whether a frame was written that the window does not show yet. Written here.
bool picture_due = false;

/// Whether the program was sent Esc on the current screen because the user asked to quit. Written here.
bool is_escape_sent = false;

/// Mode and size of the last screen, or the suggestion for the first start. Written when a screen opens.
ScreenModeRequester opened_screen{first_mode_id, 320, 256};

/// Shows the picture, waits for the refresh, and takes the user's input.
void finish_pass() {
    picture_due = false;
    const host::MemoryScreen &screen = *host::state.screens.back();
    present_picture(*screen.shown, screen.colours.colours);
    take_input(waiting);
    serve_toolkit();
    if (quit_requested != 0 && !is_escape_sent) {
        is_escape_sent = true;
        waiting.push_back(host::event_message(IDCMP_VANILLAKEY, escape_character));
    }
}

std::optional<IntuiMessage> next_event() {
    if (picture_due) {
        finish_pass();
    }
    if (waiting.empty()) {
        return std::nullopt;
    }
    const IntuiMessage event = waiting.front();
    waiting.pop_front();
    record_event(event);
    return event;
}

bool is_possible(const host::ScreenRequest &screen) {
    const bool is_mode = find_display_mode(static_cast<std::uint32_t>(screen.mode_id)) != nullptr;
    if (!is_mode) {
        host::report_unknown_mode(settings_path, screen.mode_id);
    }
    return !host::report_impossible_sides(settings_path, screen.width, screen.height) && is_mode;
}

/// The object's name comes first, since a task bar shows only the beginning.
std::string window_title(const std::string &screen_title) {
    const std::string object = object_path.substr(object_path.rfind('/') + 1);
    return (object.empty() ? "" : object + " - ") + "Zelvo   " + screen_title;
}

bool show_screen(const host::ScreenRequest &screen) {
    const auto mode_id = static_cast<std::uint32_t>(screen.mode_id);
    if (!open_picture_window({screen.width, screen.height}, *find_display_mode(mode_id),
                             window_title(screen.title))) {
        return false;
    }
    opened_screen = {mode_id, static_cast<ULONG>(screen.width), static_cast<ULONG>(screen.height)};
    return true;
}

void hide_screen() {
    close_picture_window();
    picture_due = false;
    is_escape_sent = false;
}

void take_frame(const UBYTE *pixels, int width, int height) {
    picture_due = true;
    record_frame({pixels, static_cast<std::size_t>(width) * static_cast<std::size_t>(height)}, width, height);
}

void report_no_memory(const char *what, int width, int height) {
    std::fprintf(stderr, "zelvo: no memory for %s of %d x %d\n", what, width, height);
}

} // namespace

void request_quit() {
    quit_requested = 1;
}

void request_next_run(const std::string &path) {
    next_object = path;
    request_quit();
}

ChosenScreen last_screen() {
    return {opened_screen.sm_DisplayID, static_cast<int>(opened_screen.sm_DisplayWidth),
            static_cast<int>(opened_screen.sm_DisplayHeight)};
}

Order order_to_requester() {
    const bool is_viewer_focused = drop_input();
    if (quit_requested != 0) {
        return Order::cancel;
    }
    return is_viewer_focused ? Order::come_forward : Order::wait;
}

} // namespace host

const host::Hooks host::hooks{
    .next_event = host::next_event,
    .ask_for_file = host::answer_file_requester,
    .ask_for_mode = host::answer_mode_requester,
    .initial_mode = [] { return host::opened_screen; },
    .can_show_requesters = host::can_show_requesters,
    .is_possible = host::is_possible,
    .show_screen = host::show_screen,
    .hide_screen = host::hide_screen,
    .drop_events = [] { host::waiting.clear(); },
    .frame_written = host::take_frame,
    .report_no_memory = host::report_no_memory,
    .disconnect =
        [] {
            host::end_recording();
            host::disconnect_display();
        },
};

void WaitTOF() {
    host::wait_for_display();
}

ULONG ElapsedTime(EClockVal *context) {
    return host::real_elapsed_time(*context);
}
