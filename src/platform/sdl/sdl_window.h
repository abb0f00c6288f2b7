// SPDX-License-Identifier: MIT
// The viewer's window as SDL knows it, for what is tied to it.
#pragma once

struct SDL_Window;

namespace host {

/// The window, also while it is hidden; null while it is closed.
SDL_Window *picture_window();

/// From full screen to a window, or back.
void toggle_full_screen();

/// Shows the last picture once more, where the window has been uncovered.
void present_again();

/// Shows the window's title; while the pointer is held, it also says how to free the pointer.
void show_title(bool pointer_is_held);

} // namespace host
