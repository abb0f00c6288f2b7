// SPDX-License-Identifier: MIT
// Writes a window's state as numbers into a variable of the environment, and reads it.
#include "platform/sdl/window_state.h"

#include "platform/sdl/host.h"

#include <array>
#include <cstdlib>
#include <sstream>

namespace host {

std::optional<WindowState> closed_window;
std::optional<WindowState> inherited_window;

namespace {

constexpr char variable[] = "ZELVO_WINDOW";

/// Stands for a corner or an extent that there is not.
constexpr int none = -1;

} // namespace

WindowState state_of(SDL_Window *window, bool is_full_screen) {
    WindowState window_state{place_of(window, is_full_screen),
                             {},
                             is_full_screen,
                             !is_full_screen && (SDL_GetWindowFlags(window) & SDL_WINDOW_MAXIMIZED) != 0};
    if (!is_full_screen && !window_state.is_maximised) {
        Extent extent{1, 1};
        SDL_GetWindowSize(window, &extent.width, &extent.height);
        window_state.extent = extent;
    }
    return window_state;
}

} // namespace host

void sdl::leave_window() {
    using namespace host;
    if (!closed_window) {
        return;
    }
    const WindowState &window_state = *closed_window;
    const SDL_Point corner = window_state.place.corner.value_or(SDL_Point{0, 0});
    const Extent extent = window_state.extent.value_or(Extent{none, none});
    std::ostringstream text;
    text << window_state.is_full_screen << ' ' << window_state.is_maximised << ' '
         << window_state.place.display << ' ' << window_state.place.corner.has_value() << ' ' << corner.x
         << ' ' << corner.y << ' ' << window_state.place.frame.width << ' ' << window_state.place.frame.height
         << ' ' << extent.width << ' ' << extent.height;
    // Read by inherit_window.
    setenv(variable, text.str().c_str(), 1);
}

namespace host {

void inherit_window() {
    const char *left = std::getenv(variable);
    std::istringstream text(left != nullptr ? left : "");
    WindowState window_state;
    bool has_corner = false;
    SDL_Point corner{};
    Extent extent{none, none};
    text >> window_state.is_full_screen >> window_state.is_maximised >> window_state.place.display >>
        has_corner >> corner.x >> corner.y >> window_state.place.frame.width >>
        window_state.place.frame.height >> extent.width >> extent.height;
    unsetenv(variable);
    if (!text) {
        return;
    }
    if (has_corner) {
        window_state.place.corner = corner;
    }
    if (extent.width > 0 && extent.height > 0) {
        window_state.extent = extent;
    }
    inherited_window = window_state;
}

} // namespace host
