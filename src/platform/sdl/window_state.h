// SPDX-License-Identifier: MIT
// How a window was when its run ended, for the window of the run that follows.
#pragma once

#include "platform/sdl/window_place.h"

#include <optional>
#include <string>

namespace host {

struct WindowState {
    WindowPlace place;
    /// What is inside the frame, in pixels of the desktop; nothing where the window had no size of its own,
    /// since it was full screen or maximised.
    std::optional<Extent> extent;
    bool is_full_screen = false;
    bool is_maximised = false;
};

/// The state of an open window.
WindowState state_of(SDL_Window *window, bool is_full_screen);

/// The state of the window that was closed last; nothing before that. Written when a window is closed.
extern std::optional<WindowState> closed_window;

/// The state that the first window of this run begins with, if it has one. Written by inherit_window, and
/// reset when that window is open.
extern std::optional<WindowState> inherited_window;

/// Takes the state that was left to this process out of its environment. What is no such state counts as
/// none.
void inherit_window();

} // namespace host
