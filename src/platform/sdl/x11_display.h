// SPDX-License-Identifier: MIT
// What SDL does not report about an X display. On any other display the functions return the harmless answer.
#pragma once

#include <SDL_events.h>
#include <SDL_video.h>

namespace host {

/// Keeps refused X requests from ending the process while it lives, which is what the X library does by
/// default. Only one trap may live at a time.
class X11ErrorTrap {
public:
    X11ErrorTrap();
    ~X11ErrorTrap();
    X11ErrorTrap(const X11ErrorTrap &) = delete;
    X11ErrorTrap &operator=(const X11ErrorTrap &) = delete;

    /// Whether a request was refused since the trap was made. Only what SDL has waited for is known.
    static bool has_caught_error();
};

/// Whether no mouse button is down and no other program has grabbed the pointer. Taking a pointer that
/// somebody else has would block for seconds.
bool is_x11_pointer_free(SDL_Window *window);

/// Whether the window manager shows the window full screen, no matter who asked it to.
bool is_x11_full_screen(SDL_Window *window);

/// Asks the window manager to end a full screen that it made by itself.
void leave_x11_full_screen(SDL_Window *window);

} // namespace host
