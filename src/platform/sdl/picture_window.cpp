// SPDX-License-Identifier: MIT
// The viewer's window: its size and place, full screen, and its life between screens.
#include "platform/window/picture_window.h"

#include "platform/sdl/display_connection.h"
#include "platform/sdl/input.h"
#include "platform/sdl/picture_drawing.h"
#include "platform/sdl/pointer.h"
#include "platform/sdl/sdl_window.h"
#include "platform/sdl/window_icon.h"
#include "platform/sdl/window_state.h"
#include "platform/sdl/x11_display.h"
#include "platform/window/pacing.h"

#include <SDL.h>
#include <algorithm>
#include <glib.h>
#include <string>
#include <utility>

namespace host {

namespace {

/// Assumed if the display does not report its rate.
constexpr double usual_refresh_rate = 60.0;

/// The smallest window that the mouse can still grab.
constexpr Extent smallest_window{128, 96};

/// What the title says while the pointer is held.
constexpr const char *pointer_hint = "   <Alt> frees the pointer.";

/// How long the title says something else.
constexpr Uint64 brief_message_milliseconds = 5000;

/// How long a pass takes while the window cannot be seen.
constexpr int hidden_pass_milliseconds = 250;

/// The window; null while it is closed.
SDL_Window *window = nullptr;

/// Whether the window belongs to an open screen, not only kept from the last one for the next. Written when a
/// screen opens and closes.
bool is_open = false;

/// Whether the window must become full screen again after a requester. Written by make_room_for_requester and
/// return_from_requester.
bool is_full_screen_due = false;

/// Size of the pictures that the window shows, in pixels.
Extent picture{1, 1};

/// The window's title while the pointer is free.
std::string plain_title;

/// What the title says instead for a while, and until when on SDL's clock; empty if nothing. Written by
/// show_brief_message and present_picture.
std::string brief_message;
Uint64 brief_message_end = 0;

/// Where the last window was; the next one opens there. Written when a window is closed.
WindowPlace last_place;

/// Whether the window was maximised before the user made it full screen. Written by toggle_full_screen.
bool was_maximised = false;

/// Whether the renderer was asked to wait for the refresh.
bool presenting_waits = false;

bool is_paced() {
    return SDL_GetHintBoolean(SDL_HINT_RENDER_VSYNC, SDL_TRUE) == SDL_TRUE;
}

double refresh_rate() {
    SDL_DisplayMode mode{};
    const int display = SDL_GetWindowDisplayIndex(window);
    const bool is_known = display >= 0 && SDL_GetCurrentDisplayMode(display, &mode) == 0;
    return is_known && mode.refresh_rate > 0 ? mode.refresh_rate : usual_refresh_rate;
}

bool is_visible() {
    return (SDL_GetWindowFlags(window) & (SDL_WINDOW_HIDDEN | SDL_WINDOW_MINIMIZED)) == 0;
}

/// Whether SDL made the window full screen, or the window manager reported to SDL that it did.
bool is_sdl_full_screen() {
    return (SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN_DESKTOP) != 0;
}

bool is_full_screen() {
    return is_sdl_full_screen() || is_x11_full_screen(window);
}

/// Whether the window is kept from one screen to the next and never hidden. This is so on Wayland, where SDL
/// has two faults when it hides or destroys a window:
///
/// - SDL 2.26 removes neither the frame that libdecor draws nor the toplevel below it (2.32 does). A hidden
///   full-screen window still covers the display, and the compositor's next event for a destroyed window
///   uses freed memory.
/// - SDL does not forget a destroyed window that had the keyboard. A key that was held goes on repeating, and
///   the repetition uses freed memory.
///
/// So only the end of the program destroys the window; no event is handled after it.
bool keeps_window() {
    const char *driver = SDL_GetCurrentVideoDriver();
    return driver != nullptr && std::string(driver) == "wayland";
}

/// The size at which a window opens in this mode.
Extent opening_extent(const DisplayMode &mode) {
    const Extent wanted = window_extent(picture, mode.factor, room_for_window(last_place.display));
    return {std::max(wanted.width, smallest_window.width), std::max(wanted.height, smallest_window.height)};
}

/// A new window, still hidden, because some drivers create the window again when the renderer is made. Null
/// if SDL refuses it.
SDL_Window *make_hidden_window(const DisplayMode &mode) {
    const std::optional<WindowState> &inherited = inherited_window;
    last_place = inherited ? inherited->place : last_place;
    const Extent extent = inherited && inherited->extent ? *inherited->extent : opening_extent(mode);
    const SDL_Point corner = opening_corner(last_place, extent);
    const bool is_full_screen = inherited ? inherited->is_full_screen : mode.is_full_screen;
    const bool is_maximised = inherited && inherited->is_maximised;
    return SDL_CreateWindow(plain_title.c_str(), corner.x, corner.y, extent.width, extent.height,
                            SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI |
                                (is_full_screen ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0) |
                                (is_maximised ? SDL_WINDOW_MAXIMIZED : 0));
}

void destroy_window() {
    destroy_renderer();
    SDL_DestroyWindow(window);
    window = nullptr;
}

/// Makes the window and its renderer. A graphics processor may refuse the picture's size, and an X server may
/// refuse OpenGL. The picture is then drawn by the software renderer, in a new window, because the refusal
/// may have made the first one unusable.
bool make_window(const DisplayMode &mode) {
    const X11ErrorTrap trap;
    window = make_hidden_window(mode);
    if (window == nullptr) {
        return complain("no window");
    }
    if (make_renderer(window, picture, 0) && !X11ErrorTrap::has_caught_error()) {
        return true;
    }
    destroy_window();
    window = make_hidden_window(mode);
    if (window != nullptr && make_renderer(window, picture, SDL_RENDERER_SOFTWARE)) {
        return true;
    }
    complain("no picture of this size");
    destroy_window();
    return false;
}

/// Whether the desktop scales the window by a fraction. SDL 2.26 violates the Wayland protocol when it makes
/// such a window larger: for a moment it asks the compositor for more of the old picture than there is.
bool is_scaled_by_fraction() {
    Extent extent{1, 1};
    SDL_GetWindowSize(window, &extent.width, &extent.height);
    return output_extent().width % std::max(extent.width, 1) != 0;
}

/// Prepares the window of the last screen for the next one.
bool take_kept_window(const DisplayMode &mode) {
    if (!change_picture_size(window, picture)) {
        return complain("no picture of this size");
    }
    SDL_SetWindowTitle(window, plain_title.c_str());
    // When a requester closes, the compositor sends the window the focus and its old size. Handle that before
    // the new size is set, or the old one comes back.
    if (!is_display_lost()) {
        SDL_PumpEvents();
    }
    if (!mode.is_full_screen && !is_scaled_by_fraction()) {
        const Extent extent = opening_extent(mode);
        SDL_SetWindowSize(window, extent.width, extent.height);
    }
    SDL_SetWindowFullscreen(window, mode.is_full_screen ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0);
    return true;
}

} // namespace

bool open_picture_window(Extent picture_extent, const DisplayMode &mode, const std::string &title) {
    if (!connect_display()) {
        return false;
    }
    picture = picture_extent;
    brief_message.clear();
    // File names may be any bytes; a display takes only UTF-8.
    char *valid_title = g_utf8_make_valid(title.c_str(), -1);
    plain_title = valid_title;
    g_free(valid_title);
    is_open = window == nullptr ? make_window(mode) : take_kept_window(mode);
    if (!is_open) {
        return false;
    }
    inherited_window.reset();
    presenting_waits = wait_in_presenting(is_paced());
    SDL_SetWindowMinimumSize(window, smallest_window.width, smallest_window.height);
    SDL_StartTextInput();
    give_icon(window);
    SDL_ShowWindow(window);
    show_black();
    return true;
}

void close_picture_window() {
    if (!is_open) {
        return;
    }
    is_open = false;
    free_pointer();
    closed_window = state_of(window, is_full_screen());
    if (keeps_window()) {
        SDL_SetWindowFullscreen(window, 0);
        return;
    }
    last_place = closed_window->place;
    destroy_window();
    // The window disappears now, not when events are next polled.
    SDL_PumpEvents();
}

void disconnect_display() {
    if (SDL_WasInit(SDL_INIT_VIDEO) != 0) {
        destroy_window();
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        SDL_Quit();
    }
}

void present_picture(const BitMap &bitmap, const Palette &palette) {
    if (!is_open) {
        return;
    }
    if (is_display_lost()) {
        return;
    }
    if (!brief_message.empty() && SDL_GetTicks64() > brief_message_end) {
        brief_message.clear();
        show_text_over_picture("");
        show_title();
    }
    if (!is_visible()) {
        SDL_WaitEventTimeout(nullptr, hidden_pass_milliseconds);
        return;
    }
    fill_picture(bitmap, palette);
    show_picture();
    if (is_paced()) {
        wait_for_refresh(refresh_rate(), presenting_waits);
    }
}

void wait_for_display() {
    if (is_open && is_paced()) {
        wait_for_refresh(refresh_rate(), false);
    }
}

void present_again() {
    if (window != nullptr && is_visible()) {
        show_picture();
    }
}

void toggle_full_screen() {
    if (!is_open) {
        return;
    }
    if (!is_full_screen()) {
        was_maximised = (SDL_GetWindowFlags(window) & SDL_WINDOW_MAXIMIZED) != 0;
        SDL_SetWindowFullscreen(window, SDL_WINDOW_FULLSCREEN_DESKTOP);
    } else if (is_sdl_full_screen()) {
        SDL_SetWindowFullscreen(window, 0);
        // SDL forgets that the window was maximised.
        if (was_maximised) {
            SDL_MaximizeWindow(window);
        }
    } else {
        leave_x11_full_screen(window);
    }
}

SDL_Window *picture_window() {
    return window;
}

void show_title() {
    if (window == nullptr) {
        return;
    }
    const std::string title = is_pointer_held() ? plain_title + pointer_hint : plain_title;
    SDL_SetWindowTitle(window, brief_message.empty() ? title.c_str() : brief_message.c_str());
}

void show_brief_message(const std::string &text) {
    brief_message = text;
    brief_message_end = SDL_GetTicks64() + brief_message_milliseconds;
    show_text_over_picture(is_full_screen() ? text : "");
    show_title();
}

void make_room_for_requester() {
    if (!is_open) {
        return;
    }
    free_pointer();
    if (is_full_screen() && keeps_window()) {
        is_full_screen_due = true;
        SDL_SetWindowFullscreen(window, 0);
    } else if (is_full_screen()) {
        SDL_HideWindow(window);
    }
}

void return_from_requester() {
    ignore_what_is_held();
    if (!is_open) {
        return;
    }
    if (std::exchange(is_full_screen_due, false)) {
        SDL_SetWindowFullscreen(window, SDL_WINDOW_FULLSCREEN_DESKTOP);
    }
    SDL_ShowWindow(window);
    SDL_RaiseWindow(window);
}

} // namespace host
