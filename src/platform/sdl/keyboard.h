// SPDX-License-Identifier: MIT
// Translates keys of the desktop into the program's messages.
#pragma once

#include "platform/intuition.h"
#include "platform/sdl/host_commands.h"

#include <SDL_events.h>
#include <deque>
#include <optional>

namespace host {

/// Modifiers that make a key or a mouse button a command to the desktop, not to the viewer.
constexpr Uint16 desktop_modifiers = KMOD_CTRL | KMOD_ALT | KMOD_GUI | KMOD_MODE;

/// Whether the key switches between full screen and window: F11 or Alt+Enter, but not auto-repeated.
bool is_full_screen_key(const SDL_KeyboardEvent &event);

/// Whether the key is Ctrl+Q, which quits, as usual on a desktop.
bool is_quit_key(const SDL_KeyboardEvent &event);

/// What a key asks of the host instead of the program; nothing for other keys, and for the repetitions of
/// these.
std::optional<HostCommand> host_command(const SDL_KeyboardEvent &event);

/// The message of a key that sends no usable text: a cursor key (also on the keypad without NumLock), Esc,
/// and, on a layout without Latin letters, a letter or digit, which is read as on the US layout. All other
/// keys come as text.
std::optional<IntuiMessage> key_message(const SDL_KeyboardEvent &event);

/// Appends one message for each character of a UTF-8 text that is in the system's 8-bit character set.
void take_text(const char *text, std::deque<IntuiMessage> &messages);

} // namespace host
