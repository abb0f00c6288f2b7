// SPDX-License-Identifier: MIT
// Turns SDL's events into the program's.
#include "platform/sdl/input.h"

#include "platform/sdl/host.h"
#include "platform/sdl/picture_window.h"

#include <SDL.h>
#include <algorithm>
#include <limits>
#include <optional>

namespace desktop {

namespace {

/// A click that brings the focus back to the window is over so many milliseconds after it; it is not a
/// command.
constexpr Uint32 focusing_click_milliseconds = 100;

/// Whether the window has lost the focus since it was opened. Written with the focus events.
bool has_lost_focus = false;

/// When the window got the focus back, by SDL's clock; nothing while it has it from the start. Written with
/// the focus events.
std::optional<Uint32> focused_again;

/// The modifier keys held with the key pressed last, whose text comes right behind it. Written with each key.
Uint16 modifiers = KMOD_NONE;

IntuiMessage message(ULONG event_class, UWORD code) {
    IntuiMessage result{};
    result.Class = event_class;
    result.Code = code;
    return result;
}

/// The cursor keys have no character; all other keys come as text.
std::optional<IntuiMessage> key_message(const SDL_Keysym &key) {
    switch (key.sym) {
    case SDLK_UP:
        return message(IDCMP_RAWKEY, 0x4C);
    case SDLK_DOWN:
        return message(IDCMP_RAWKEY, 0x4D);
    case SDLK_RIGHT:
        return message(IDCMP_RAWKEY, 0x4E);
    case SDLK_LEFT:
        return message(IDCMP_RAWKEY, 0x4F);
    case SDLK_ESCAPE:
        return character_message(escape_character);
    default:
        return std::nullopt;
    }
}

bool is_full_screen_key(const SDL_KeyboardEvent &event) {
    const bool is_enter = event.keysym.sym == SDLK_RETURN || event.keysym.sym == SDLK_KP_ENTER;
    return event.repeat == 0 &&
           (event.keysym.sym == SDLK_F11 || (is_enter && (event.keysym.mod & KMOD_ALT) != 0));
}

/// Appends the characters that the system's 8-bit character set knows, one message each.
void take_text(const char *text, std::deque<IntuiMessage> &messages) {
    // A key together with these is a command of the desktop, not of the viewer.
    if ((modifiers & (KMOD_CTRL | KMOD_LALT | KMOD_GUI)) != 0) {
        return;
    }
    for (const auto *at = reinterpret_cast<const unsigned char *>(text); *at != 0; ++at) {
        if (*at < 0x80) {
            messages.push_back(character_message(*at));
        } else if ((*at == 0xC2 || *at == 0xC3) && (at[1] & 0xC0) == 0x80) {
            messages.push_back(character_message(static_cast<UWORD>((*at & 3) << 6 | (at[1] & 0x3F))));
            ++at;
        }
    }
}

WORD as_word(Sint32 amount) {
    constexpr Sint32 lowest = std::numeric_limits<WORD>::min();
    constexpr Sint32 highest = std::numeric_limits<WORD>::max();
    return static_cast<WORD>(std::clamp(amount, lowest, highest));
}

void take_motion(const SDL_MouseMotionEvent &event, std::deque<IntuiMessage> &messages) {
    if (is_pointer_held()) {
        IntuiMessage moved = message(IDCMP_MOUSEMOVE, 0);
        moved.MouseX = as_word(event.xrel);
        moved.MouseY = as_word(event.yrel);
        messages.push_back(moved);
    }
}

void take_button(const SDL_MouseButtonEvent &event, std::deque<IntuiMessage> &messages) {
    if (focused_again && event.timestamp - *focused_again < focusing_click_milliseconds) {
        return;
    }
    if (event.button == SDL_BUTTON_LEFT) {
        messages.push_back(message(IDCMP_MOUSEBUTTONS, SELECTDOWN));
    } else if (event.button == SDL_BUTTON_RIGHT) {
        messages.push_back(message(IDCMP_MOUSEBUTTONS, MENUDOWN));
    }
}

void heed_window(const SDL_WindowEvent &event) {
    switch (event.event) {
    case SDL_WINDOWEVENT_FOCUS_GAINED:
        if (has_lost_focus) {
            focused_again = event.timestamp;
        }
        hold_pointer(true);
        break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
        has_lost_focus = true;
        hold_pointer(false);
        break;
    case SDL_WINDOWEVENT_CLOSE:
        request_quit();
        break;
    default:
        break;
    }
}

} // namespace

IntuiMessage character_message(UWORD character) {
    return message(IDCMP_VANILLAKEY, character);
}

void take_input(std::deque<IntuiMessage> &messages) {
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) {
        switch (event.type) {
        case SDL_KEYDOWN:
            modifiers = event.key.keysym.mod;
            if (is_full_screen_key(event.key)) {
                toggle_full_screen();
            } else if (const auto key = key_message(event.key.keysym)) {
                messages.push_back(*key);
            }
            break;
        case SDL_TEXTINPUT:
            take_text(event.text.text, messages);
            break;
        case SDL_MOUSEMOTION:
            take_motion(event.motion, messages);
            break;
        case SDL_MOUSEBUTTONDOWN:
            take_button(event.button, messages);
            break;
        case SDL_WINDOWEVENT:
            heed_window(event.window);
            break;
        case SDL_QUIT:
            request_quit();
            break;
        default:
            break;
        }
    }
}

void drop_input() {
    SDL_Event event;
    while (SDL_WasInit(SDL_INIT_VIDEO) != 0 && SDL_PollEvent(&event) != 0) {
        const bool is_close = event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_CLOSE;
        if (event.type == SDL_QUIT || is_close) {
            request_quit();
        } else if (event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_EXPOSED) {
            present_again();
        }
    }
}

} // namespace desktop
