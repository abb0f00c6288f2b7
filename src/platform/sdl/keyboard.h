// SPDX-License-Identifier: MIT
// What the keys of a desktop mean to the program.
#pragma once

#include "platform/intuition.h"

#include <SDL_events.h>
#include <deque>
#include <optional>

namespace host {

/// Modifier keys with which a key or a mouse button is a command of the desktop and not of the viewer.
constexpr Uint16 desktop_modifiers = KMOD_CTRL | KMOD_ALT | KMOD_GUI | KMOD_MODE;

/// Whether the key switches between full screen and window: F11 or Alt+Enter, but not their repetitions.
bool is_full_screen_key(const SDL_KeyboardEvent &event);

/// Whether the key is Ctrl+Q, which quits like everywhere on a desktop.
bool is_quit_key(const SDL_KeyboardEvent &event);

/// The message of a key that sends no text, or whose text is of no use: the cursor keys, also those of the
/// keypad without NumLock; Esc; and letters on a layout that has no Latin ones, which are taken as the
/// letters at the same places of the US layout. All other keys come as text.
std::optional<IntuiMessage> key_message(const SDL_KeyboardEvent &event);

/// Appends the characters of a text in UTF-8 that the system's 8-bit character set knows, one message each.
void take_text(const char *text, std::deque<IntuiMessage> &messages);

} // namespace host
