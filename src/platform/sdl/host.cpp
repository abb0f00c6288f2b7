// SPDX-License-Identifier: MIT
// The desktop host's set-up and the turn of a pass.
#include "platform/sdl/host.h"

#include "platform/sdl/input.h"
#include "platform/sdl/keyboard.h"
#include "platform/sdl/picture_window.h"
#include "platform/sdl/requesters.h"
#include "platform/sdl/state.h"

namespace desktop {

State state;

volatile std::sig_atomic_t quit_requested = 0;

void set_up(Setup setup) {
    state.setup = std::move(setup);
}

void request_quit() {
    quit_requested = 1;
}

Order order_to_requester() {
    const bool is_viewer_focused = drop_input();
    if (quit_requested != 0) {
        return Order::cancel;
    }
    return is_viewer_focused ? Order::come_forward : Order::wait;
}

void finish_pass() {
    if (state.picture_due) {
        state.picture_due = false;
        present_picture(*state.screen->shown, state.screen->colours.colours);
        take_input(state.waiting);
        serve_toolkit();
        if (quit_requested != 0 && !state.escape_sent) {
            state.escape_sent = true;
            state.waiting.push_back(character_message(escape_character));
        }
    }
}

} // namespace desktop
