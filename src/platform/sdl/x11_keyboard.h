// SPDX-License-Identifier: MIT
// What SDL does not report about the keyboard of an X display. On other displays a key that was pressed in
// another window never reaches this one, so there no key counts as held.
#pragma once

#include <SDL_events.h>
#include <optional>

namespace host {

/// Makes SDL pass on the X server's own events for note_x11_event.
void watch_x11_keyboard();

/// Takes an event of the X server. Must be given all of them, in order. SDL reports each one just before its
/// own event for it.
void note_x11_event(const SDL_SysWMmsg &event);

/// From now on, keys that are down are ignored until they are released. The X server reports which keys are
/// down right after it gives the window the focus.
void ignore_held_keys();

/// Whether the key that SDL reports now was down before and must be ignored.
bool is_held_key();

/// Whether the layout in use for the key that SDL reports now has Latin letters; nothing outside X. SDL
/// itself does not notice when the user switches between layouts.
std::optional<bool> has_latin_letters_on_x11();

} // namespace host
