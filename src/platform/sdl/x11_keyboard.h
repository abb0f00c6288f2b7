// SPDX-License-Identifier: MIT
// What SDL does not report about the keyboard of an X display. On any other display the functions return the
// harmless answer: there, a key that was pressed in another window never reaches this one.
#pragma once

#include <SDL_events.h>
#include <optional>

namespace host {

/// Makes SDL pass on the X server's own events, which note_x11_event needs.
void watch_x11_keyboard();

/// Notes an event of the X server. Must see all of them, in order; SDL reports each one right before what it
/// makes of it.
void note_x11_event(const SDL_SysWMmsg &event);

/// From now on the keys that are down are ignored until they are released. The X server says which those are
/// right after it gives the window the focus.
void ignore_held_keys();

/// Whether the key that SDL reports now was already down before and must be ignored.
bool is_held_key();

/// Whether the layout in use for the key that SDL reports now has Latin letters; nothing outside X. SDL
/// itself does not notice when the user switches between layouts.
std::optional<bool> has_latin_letters_on_x11();

} // namespace host
