// SPDX-License-Identifier: MIT
// Window managers place a window by its frame, SDL by the area inside it.
#include "platform/sdl/window_place.h"

#include <algorithm>

namespace host {

namespace {

/// About how much of the display's height a window's frame takes, in pixels.
constexpr int usual_frame_height = 40;

/// Moves a part of this length into a range and returns where it begins; the range's start if the part is
/// longer.
int fit_in(int wanted, int length, int range_start, int range_length) {
    return std::max(std::min(wanted, range_start + range_length - length), range_start);
}

} // namespace

Extent room_for_window(int display) {
    SDL_Rect bounds{0, 0, 1, 1};
    SDL_GetDisplayUsableBounds(display, &bounds);
    return {std::max(bounds.w, 1), std::max(bounds.h - usual_frame_height, 1)};
}

WindowPlace place_of(SDL_Window *window, bool is_full_screen) {
    WindowPlace place;
    place.display = std::max(SDL_GetWindowDisplayIndex(window), 0);
    if (!is_full_screen && (SDL_GetWindowFlags(window) & SDL_WINDOW_MAXIMIZED) == 0) {
        SDL_Point inside{0, 0};
        int top = 0;
        int left = 0;
        int bottom = 0;
        int right = 0;
        SDL_GetWindowPosition(window, &inside.x, &inside.y);
        SDL_GetWindowBordersSize(window, &top, &left, &bottom, &right);
        place.corner = SDL_Point{inside.x - left, inside.y - top};
        place.frame = {left + right, top + bottom};
    }
    return place;
}

SDL_Point opening_corner(const WindowPlace &place, Extent window) {
    const int display = place.display < SDL_GetNumVideoDisplays() ? place.display : 0;
    SDL_Rect bounds{0, 0, 1, 1};
    if (!place.corner || SDL_GetDisplayUsableBounds(display, &bounds) != 0) {
        const auto centre = static_cast<int>(SDL_WINDOWPOS_CENTERED_DISPLAY(static_cast<unsigned>(display)));
        return {centre, centre};
    }
    return {fit_in(place.corner->x, window.width + place.frame.width, bounds.x, bounds.w),
            fit_in(place.corner->y, window.height + place.frame.height, bounds.y, bounds.h)};
}

} // namespace host
