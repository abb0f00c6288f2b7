// SPDX-License-Identifier: MIT
// The viewer's window as the window system's library knows it, for what is tied to it.
#pragma once

struct SDL_Window;

namespace desktop {

/// The picture's window while it is on the display; null while it is closed or hidden.
SDL_Window *shown_window();

} // namespace desktop
