// SPDX-License-Identifier: MIT
// Where a window is on the desktop, so that the next one opens there too.
#pragma once

#include "platform/window/picture_placement.h"

#include <SDL_video.h>
#include <optional>

namespace host {

/// A display, and where a window is on it.
struct WindowPlace {
    int display = 0;
    /// How much the frame adds to the window's width and height, in pixels.
    Extent frame{0, 0};
    /// The top left corner of the window's frame, in pixels of the desktop; nothing if the window is full
    /// screen or maximised, since its place is then not the user's choice.
    std::optional<SDL_Point> corner;
};

/// The largest picture that fits a window with a title bar on this display.
Extent room_for_window(int display);

/// The place of an open window.
WindowPlace place_of(SDL_Window *window, bool is_full_screen);

/// The corner at which a window of this extent opens: the remembered corner, moved so that the window fits
/// the display, or SDL's value for the display's centre if no corner is remembered.
SDL_Point opening_corner(const WindowPlace &place, Extent window);

} // namespace host
