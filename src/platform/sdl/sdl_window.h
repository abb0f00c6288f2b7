// SPDX-License-Identifier: MIT
// The viewer's window as SDL knows it.
#pragma once

#include <string>

struct SDL_Window;

namespace host {

/// The window, also while it is hidden; null while it is closed.
SDL_Window *picture_window();

/// Switches between full screen and a window.
void toggle_full_screen();

/// Shows the last picture again after the window was uncovered.
void present_again();

/// Shows the window's title; while the pointer is held, it also says how to free the pointer.
void show_title();

/// Shows a text in UTF-8 in place of the title for five seconds, and over the picture where a full screen
/// hides the title.
void show_brief_message(const std::string &text);

} // namespace host
