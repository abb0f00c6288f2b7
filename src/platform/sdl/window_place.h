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
    /// What the window's frame adds to its width and height, in pixels.
    Extent frame{0, 0};
    /// The top left corner of the window's frame, in pixels of the desktop; nothing where the window has no
    /// place of its own, since it is full screen or maximised.
    std::optional<SDL_Point> corner;
};

/// What a window with a title leaves of a display for its picture.
Extent room_for_window(int display);

/// The place of an open window.
WindowPlace place_of(SDL_Window *window, bool is_full_screen);

/// The corner at which a window of this extent opens: the one that is remembered, moved so far that the
/// window fits the display, or else SDL's value for the display's centre.
SDL_Point opening_corner(const WindowPlace &place, Extent window);

} // namespace host
