// SPDX-License-Identifier: MIT
// Turns SDL's events into the program's.
#include "platform/sdl/input.h"

#include "platform/sdl/display_connection.h"
#include "platform/sdl/host_commands.h"
#include "platform/sdl/keyboard.h"
#include "platform/sdl/pointer.h"
#include "platform/sdl/sdl_window.h"
#include "platform/sdl/x11_keyboard.h"
#include "platform/window/windowed_host.h"

#include <SDL.h>
#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace host {

namespace {

/// A click this soon after the window got the focus or a requester was closed is ignored: it is probably the
/// click that did so, or the second half of a double click.
constexpr Uint32 stray_click_milliseconds = 500;

/// When the window got the focus or a requester was closed, in milliseconds of SDL's clock; nothing before
/// the first time. Written with the focus events and by ignore_what_is_held.
std::optional<Uint32> attention_began;

/// Whether the window has lost the focus. False at the start, so that clicks also work without a window
/// manager, where no focus events arrive. Written with the focus events.
bool has_lost_focus = false;

/// Whether the last click was ignored. If so, later clicks of the same double click are ignored as well.
/// Written with each click.
bool last_click_was_stray = false;

/// The modifier keys that are down. Written with each key.
Uint16 modifiers = KMOD_NONE;

/// Whether the text that SDL reports next is ignored: its key was handled already or is no command to the
/// viewer. Written with each key.
bool ignores_text = false;

WORD as_word(Sint32 amount) {
    constexpr Sint32 lowest = std::numeric_limits<WORD>::min();
    constexpr Sint32 highest = std::numeric_limits<WORD>::max();
    return static_cast<WORD>(std::clamp(amount, lowest, highest));
}

void take_key(const SDL_KeyboardEvent &event, std::deque<IntuiMessage> &messages,
              std::vector<HostCommand> &commands) {
    modifiers = event.keysym.mod;
    ignores_text = true;
    if (is_held_key()) {
        return;
    }
    if (is_full_screen_key(event)) {
        toggle_full_screen();
    } else if (is_quit_key(event)) {
        request_quit();
    } else if (const auto command = host_command(event)) {
        commands.push_back(*command);
    } else if (const auto message = key_message(event)) {
        messages.push_back(*message);
    } else {
        ignores_text = (modifiers & desktop_modifiers) != 0;
    }
}

void take_motion(const SDL_MouseMotionEvent &event, std::deque<IntuiMessage> &messages) {
    if (is_pointer_held()) {
        IntuiMessage moved{};
        moved.Class = IDCMP_MOUSEMOVE;
        moved.MouseX = as_word(event.xrel);
        moved.MouseY = as_word(event.yrel);
        messages.push_back(moved);
    }
}

/// Whether a click is not meant as a command to the viewer.
bool is_stray_click(const SDL_MouseButtonEvent &event) {
    const bool is_tap = event.which == SDL_TOUCH_MOUSEID;
    const bool is_early = attention_began && event.timestamp - *attention_began < stray_click_milliseconds;
    const bool continues_stray = event.clicks > 1 && last_click_was_stray;
    return is_tap || has_lost_focus || is_early || continues_stray || (modifiers & desktop_modifiers) != 0;
}

void take_button(const SDL_MouseButtonEvent &event, std::deque<IntuiMessage> &messages) {
    last_click_was_stray = is_stray_click(event);
    if (last_click_was_stray) {
        return;
    }
    IntuiMessage click{};
    click.Class = IDCMP_MOUSEBUTTONS;
    if (event.button == SDL_BUTTON_LEFT) {
        click.Code = SELECTDOWN;
        messages.push_back(click);
    } else if (event.button == SDL_BUTTON_RIGHT) {
        click.Code = MENUDOWN;
        messages.push_back(click);
    }
}

/// Handles an event of the window itself.
void take_window_event(const SDL_WindowEvent &event) {
    switch (event.event) {
    case SDL_WINDOWEVENT_FOCUS_GAINED:
        has_lost_focus = false;
        attention_began = event.timestamp;
        ignore_held_keys();
        break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
        has_lost_focus = true;
        break;
    case SDL_WINDOWEVENT_CLOSE:
        request_quit();
        break;
    default:
        break;
    }
}

/// Takes the next event; false if there is none. A lost display makes the program quit.
bool poll_event(SDL_Event &event) {
    if (is_display_lost()) {
        request_quit();
        return false;
    }
    return SDL_PollEvent(&event) != 0;
}

} // namespace

void take_input(std::deque<IntuiMessage> &messages) {
    std::vector<HostCommand> commands;
    std::string dropped;
    SDL_Event event;
    while (poll_event(event)) {
        switch (event.type) {
        case SDL_SYSWMEVENT:
            note_x11_event(*event.syswm.msg);
            break;
        case SDL_KEYDOWN:
            take_key(event.key, messages, commands);
            break;
        case SDL_KEYUP:
            modifiers = event.key.keysym.mod;
            break;
        case SDL_TEXTINPUT:
            if (!ignores_text) {
                take_text(event.text.text, messages);
            }
            break;
        case SDL_MOUSEMOTION:
            take_motion(event.motion, messages);
            break;
        case SDL_MOUSEBUTTONDOWN:
            take_button(event.button, messages);
            break;
        case SDL_DROPFILE:
            // The first of several.
            dropped = dropped.empty() ? event.drop.file : dropped;
            SDL_free(event.drop.file);
            break;
        case SDL_WINDOWEVENT:
            take_window_event(event.window);
            break;
        case SDL_QUIT:
            request_quit();
            break;
        default:
            break;
        }
    }
    // While Alt or the logo key is down the pointer is free, because the window manager needs it for its
    // menus and to move windows.
    take_or_free_pointer((modifiers & (KMOD_LALT | KMOD_GUI)) == 0);
    // Not while events are taken: a window that opens takes its own.
    for (const HostCommand command : commands) {
        carry_out(command);
    }
    if (!dropped.empty()) {
        open_object(dropped);
    }
}

bool drop_input() {
    bool is_focused = false;
    SDL_Event event;
    while (SDL_WasInit(SDL_INIT_VIDEO) != 0 && poll_event(event)) {
        switch (event.type) {
        case SDL_SYSWMEVENT:
            note_x11_event(*event.syswm.msg);
            break;
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            modifiers = event.key.keysym.mod;
            break;
        case SDL_DROPFILE:
            SDL_free(event.drop.file);
            break;
        case SDL_WINDOWEVENT:
            take_window_event(event.window);
            if (event.window.event == SDL_WINDOWEVENT_EXPOSED) {
                present_again();
            }
            is_focused = is_focused || event.window.event == SDL_WINDOWEVENT_FOCUS_GAINED;
            break;
        case SDL_QUIT:
            request_quit();
            break;
        default:
            break;
        }
    }
    return is_focused;
}

void ignore_what_is_held() {
    attention_began = SDL_GetTicks();
    last_click_was_stray = true;
    ignore_held_keys();
}

} // namespace host
