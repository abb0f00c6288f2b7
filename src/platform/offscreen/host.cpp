// SPDX-License-Identifier: MIT
// The offscreen host: its set-up, its passes, and the calls that it refuses.
#include "platform/offscreen/host.h"

#include "platform/key_codes.h"
#include "platform/offscreen/state.h"
#include "platform/shared/hooks.h"

#include <cstdio>
#include <cstdlib>

namespace offscreen {

State state;

volatile std::sig_atomic_t quit_requested = 0;

namespace {

/// Delivers the visible picture, if the current pass has not done so yet.
void deliver_picture() {
    if (!state.picture_due) {
        return;
    }
    state.picture_due = false;
    if (state.setup.on_picture && !host::state.screens.empty()) {
        const host::MemoryScreen &screen = *host::state.screens.back();
        const BitMap &bitmap = *screen.shown;
        state.setup.on_picture(
            {state.pass, bitmap.width, bitmap.height, bitmap.pixels, screen.colours.colours});
    }
}

std::optional<IntuiMessage> next_event() {
    deliver_picture();
    std::deque<Event> &events = state.setup.events;
    if (!events.empty() && events.front().pass <= state.pass) {
        const IntuiMessage message = events.front().message;
        events.pop_front();
        return message;
    }
    const int last_pass = state.setup.last_pass;
    const bool is_last_pass = (last_pass > 0 && state.pass == last_pass) || quit_requested != 0;
    if (!is_last_pass || state.is_escape_sent) {
        return std::nullopt;
    }
    state.is_escape_sent = true;
    return host::event_message(IDCMP_VANILLAKEY, escape_character);
}

void begin_pass(const UBYTE *pixels, int width, int height) {
    if (state.is_escape_sent) {
        // A program that ignores Esc would run forever.
        std::fputs("zelvo: the program goes on after Esc\n", stderr);
        std::abort();
    }
    ++state.pass;
    state.picture_due = true;
    if (state.setup.on_frame) {
        const std::size_t bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        state.setup.on_frame({state.pass, width, height, std::span(pixels, bytes),
                              host::state.screens.back()->colours.colours});
    }
}

/// Counts a call that can be refused, and decides by its name, by its number among the calls of that name, by
/// its first argument, or by its number among all calls.
bool is_refused(const std::string &call, const std::string &argument) {
    const int point = ++state.refusable_points;
    const int count = ++state.call_counts[call];
    const std::set<std::string> &refused = state.setup.refused;
    return point == state.setup.refused_point || refused.contains(call) ||
           refused.contains(call + "#" + std::to_string(count)) || refused.contains(call + ":" + argument);
}

ScreenModeRequester initial_mode() {
    const ModeAnswer &mode = state.setup.default_mode;
    return {mode.mode_id, mode.width, mode.height};
}

template <typename T>
void list_held(std::vector<std::string> &list, const host::Held<T> &held_objects, const char *kind) {
    list.insert(list.end(), held_objects.size(), kind);
}

} // namespace

void set_up(Setup setup) {
    state = State{};
    quit_requested = 0;
    state.setup = std::move(setup);
    host::state = host::State{};
    host::state.command_line = state.setup.command_line;
    host::state.records_calls = state.setup.records_calls;
}

int current_pass() {
    return state.pass;
}

void request_quit() {
    quit_requested = 1;
}

const std::vector<std::string> &calls() {
    return host::state.calls;
}

std::vector<std::string> held() {
    std::vector<std::string> list;
    for (const auto &library : host::state.libraries) {
        list.push_back("library " + library->name);
    }
    list_held(list, host::state.arguments, "arguments");
    list_held(list, host::state.screens, "screen");
    list_held(list, host::state.buffers, "screen buffer");
    list_held(list, host::state.windows, "window");
    for (const auto &requester : host::state.requesters) {
        list.push_back(requester->type == ASL_FileRequest ? "file requester" : "screen-mode requester");
    }
    list.insert(list.end(), host::state.messages.size(), "message");
    return list;
}

int refusable_points() {
    return state.refusable_points;
}

} // namespace offscreen

const host::Hooks host::hooks{
    .next_event = offscreen::next_event,
    .ask_for_file = offscreen::answer_file_requester,
    .ask_for_mode = offscreen::answer_mode_requester,
    .initial_mode = offscreen::initial_mode,
    .frame_written = offscreen::begin_pass,
    .is_refused = offscreen::is_refused,
};
