// SPDX-License-Identifier: MIT
// What SDL does not report about an X display. On any other display the pointer counts as free and the window
// never as full screen.
#pragma once

#include <SDL_events.h>
#include <SDL_video.h>

namespace host {

/// Keeps refused X requests from ending the process, which the X library does by default. Only one trap may
/// exist at a time.
class X11ErrorTrap {
public:
    X11ErrorTrap();
    ~X11ErrorTrap();
    X11ErrorTrap(const X11ErrorTrap &) = delete;
    X11ErrorTrap &operator=(const X11ErrorTrap &) = delete;

    /// Whether a request was refused since the trap was made. Only requests that SDL has waited for are
    /// known.
    static bool has_caught_error();
};

/// Whether no mouse button is down and no other program has grabbed the pointer. Trying to capture a grabbed
/// pointer would block for seconds.
bool is_x11_pointer_free(SDL_Window *window);

/// Whether the window manager shows the window full screen, whoever asked for it.
bool is_x11_full_screen(SDL_Window *window);

/// Asks the window manager to end a full screen that SDL knows nothing of.
void leave_x11_full_screen(SDL_Window *window);

} // namespace host
