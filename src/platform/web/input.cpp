// SPDX-License-Identifier: MIT
// The user's input, which the page reports when it arrives.
#include "platform/window/input.h"

#include "platform/shared/held_messages.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

/// What the user did since the last pass. Written by the functions that the page calls.
std::deque<IntuiMessage> arrived;

WORD as_word(int amount) {
    return static_cast<WORD>(
        std::clamp<int>(amount, std::numeric_limits<WORD>::min(), std::numeric_limits<WORD>::max()));
}

} // namespace

extern "C" {

/// Called by the page: a character of the 8-bit set, or Esc.
void web_character(int character) {
    arrived.push_back(host::event_message(IDCMP_VANILLAKEY, static_cast<UWORD>(character)));
}

/// Called by the page: a cursor key, by its raw code.
void web_raw_key(int code) {
    arrived.push_back(host::event_message(IDCMP_RAWKEY, static_cast<UWORD>(code)));
}

/// Called by the page: the left or the right button of the mouse went down.
void web_button(bool is_right) {
    arrived.push_back(host::event_message(IDCMP_MOUSEBUTTONS, is_right ? MENUDOWN : SELECTDOWN));
}

/// Called by the page: the mouse or a finger moved.
void web_move(int dx, int dy) {
    IntuiMessage moved = host::event_message(IDCMP_MOUSEMOVE, 0);
    moved.MouseX = as_word(dx);
    moved.MouseY = as_word(dy);
    arrived.push_back(moved);
}
}

namespace host {

void take_input(std::deque<IntuiMessage> &messages) {
    messages.insert(messages.end(), arrived.begin(), arrived.end());
    arrived.clear();
}

bool drop_input() {
    arrived.clear();
    return false;
}

} // namespace host
