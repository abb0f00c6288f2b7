// SPDX-License-Identifier: MIT
// Captures the pointer only when no other program is using it.
#include "platform/sdl/pointer.h"

#include "platform/sdl/sdl_window.h"
#include "platform/sdl/x11_display.h"

#include <SDL.h>

namespace host {

namespace {

bool has_focus(SDL_Window *window) {
    return window != nullptr && (SDL_GetWindowFlags(window) & SDL_WINDOW_INPUT_FOCUS) != 0;
}

bool can_be_taken(SDL_Window *window) {
    return SDL_GetMouseFocus() == window && SDL_GetMouseState(nullptr, nullptr) == 0 &&
           is_x11_pointer_free(window);
}

/// Frees the pointer when the window loses the focus. Otherwise SDL would capture it again as soon as the
/// focus returns, and block if another program has grabbed it by then.
int free_with_focus(void *, SDL_Event *event) {
    if (event->type == SDL_WINDOWEVENT && event->window.event == SDL_WINDOWEVENT_FOCUS_LOST) {
        free_pointer();
    }
    return 0;
}

} // namespace

void watch_focus() {
    SDL_AddEventWatch(free_with_focus, nullptr);
}

void take_or_free_pointer(bool is_wanted) {
    SDL_Window *window = picture_window();
    if (!is_wanted || !has_focus(window)) {
        free_pointer();
    } else if (!is_pointer_held() && can_be_taken(window)) {
        SDL_SetRelativeMouseMode(SDL_TRUE);
        SDL_ShowCursor(SDL_DISABLE);
        show_title();
    }
}

void free_pointer() {
    if (is_pointer_held()) {
        SDL_SetRelativeMouseMode(SDL_FALSE);
        SDL_ShowCursor(SDL_ENABLE);
        show_title();
    }
}

bool is_pointer_held() {
    return SDL_GetRelativeMouseMode() == SDL_TRUE;
}

} // namespace host
