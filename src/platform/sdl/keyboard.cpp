// SPDX-License-Identifier: MIT
// Translates keys.
#include "platform/sdl/keyboard.h"

#include "platform/key_codes.h"
#include "platform/sdl/x11_keyboard.h"
#include "platform/shared/held_messages.h"

#include <SDL_keyboard.h>

namespace host {

namespace {

IntuiMessage character_message(UWORD character) {
    return event_message(IDCMP_VANILLAKEY, character);
}

bool is_letter(SDL_Scancode key) {
    return key >= SDL_SCANCODE_A && key <= SDL_SCANCODE_Z;
}

bool is_digit(SDL_Scancode key) {
    return key >= SDL_SCANCODE_1 && key <= SDL_SCANCODE_0;
}

/// Whether any letter key of the layout in use gives a letter from a to z.
bool has_latin_letters() {
    if (const std::optional<bool> known = has_latin_letters_on_x11()) {
        return *known;
    }
    for (int key = SDL_SCANCODE_A; key <= SDL_SCANCODE_Z; ++key) {
        const SDL_Keycode symbol = SDL_GetKeyFromScancode(static_cast<SDL_Scancode>(key));
        if (symbol >= SDLK_a && symbol <= SDLK_z) {
            return true;
        }
    }
    return false;
}

/// Whether the keypad sends the keys that are printed below its digits.
bool keypad_steers(const SDL_Keysym &key) {
    return (key.mod & (KMOD_NUM | KMOD_SHIFT)) == 0;
}

/// The raw code of a cursor key.
std::optional<UWORD> cursor_code(const SDL_Keysym &key) {
    switch (key.sym) {
    case SDLK_UP:
        return cursor_up;
    case SDLK_DOWN:
        return cursor_down;
    case SDLK_RIGHT:
        return cursor_right;
    case SDLK_LEFT:
        return cursor_left;
    case SDLK_KP_8:
        return keypad_steers(key) ? std::optional(cursor_up) : std::nullopt;
    case SDLK_KP_2:
        return keypad_steers(key) ? std::optional(cursor_down) : std::nullopt;
    case SDLK_KP_6:
        return keypad_steers(key) ? std::optional(cursor_right) : std::nullopt;
    case SDLK_KP_4:
        return keypad_steers(key) ? std::optional(cursor_left) : std::nullopt;
    default:
        return std::nullopt;
    }
}

/// Whether the key is a letter, in any layout, together with Ctrl alone.
bool is_letter_with_control(const SDL_Keysym &key, SDL_Keycode letter, SDL_Scancode place) {
    const bool is_letter = has_latin_letters() ? key.sym == letter : key.scancode == place;
    return is_letter && (key.mod & KMOD_CTRL) != 0 && (key.mod & (KMOD_ALT | KMOD_GUI)) == 0;
}

/// The character that a key has on the US layout; nothing for keys other than letters and digits.
std::optional<UWORD> character_by_place(const SDL_Keysym &key) {
    const bool is_shifted = (key.mod & KMOD_SHIFT) != 0;
    if (is_letter(key.scancode)) {
        const bool is_capital = is_shifted != ((key.mod & KMOD_CAPS) != 0);
        return static_cast<UWORD>((is_capital ? 'A' : 'a') + (key.scancode - SDL_SCANCODE_A));
    }
    // The row of digits begins with 1 and ends with 0.
    if (is_digit(key.scancode) && !is_shifted) {
        return static_cast<UWORD>('0' + (key.scancode - SDL_SCANCODE_1 + 1) % 10);
    }
    return std::nullopt;
}

} // namespace

bool is_full_screen_key(const SDL_KeyboardEvent &event) {
    const bool is_enter = event.keysym.sym == SDLK_RETURN || event.keysym.sym == SDLK_KP_ENTER;
    return event.repeat == 0 &&
           (event.keysym.sym == SDLK_F11 || (is_enter && (event.keysym.mod & KMOD_ALT) != 0));
}

bool is_quit_key(const SDL_KeyboardEvent &event) {
    return is_letter_with_control(event.keysym, SDLK_q, SDL_SCANCODE_Q);
}

std::optional<HostCommand> host_command(const SDL_KeyboardEvent &event) {
    const SDL_Keysym &key = event.keysym;
    if (event.repeat != 0) {
        return std::nullopt;
    }
    if (is_letter_with_control(key, SDLK_o, SDL_SCANCODE_O)) {
        return HostCommand::open_object;
    }
    if ((key.mod & desktop_modifiers) != 0) {
        return std::nullopt;
    }
    switch (key.sym) {
    case SDLK_F1:
        return HostCommand::show_keys;
    case SDLK_F12:
        return HostCommand::save_picture;
    case SDLK_PAGEDOWN:
        return HostCommand::open_next;
    case SDLK_PAGEUP:
        return HostCommand::open_previous;
    case SDLK_KP_3:
        return keypad_steers(key) ? std::optional(HostCommand::open_next) : std::nullopt;
    case SDLK_KP_9:
        return keypad_steers(key) ? std::optional(HostCommand::open_previous) : std::nullopt;
    default:
        return std::nullopt;
    }
}

std::optional<IntuiMessage> key_message(const SDL_KeyboardEvent &event) {
    if (const std::optional<UWORD> code = cursor_code(event.keysym)) {
        return event_message(IDCMP_RAWKEY, *code);
    }
    if (event.keysym.sym == SDLK_ESCAPE) {
        return character_message(escape_character);
    }
    if ((event.keysym.mod & desktop_modifiers) != 0 || has_latin_letters()) {
        return std::nullopt;
    }
    const std::optional<UWORD> character = character_by_place(event.keysym);
    return character ? std::optional(character_message(*character)) : std::nullopt;
}

void take_text(const char *text, std::deque<IntuiMessage> &messages) {
    for (const auto *at = reinterpret_cast<const unsigned char *>(text); *at != 0; ++at) {
        if (*at < 0x80) {
            messages.push_back(character_message(*at));
        } else if ((*at == 0xC2 || *at == 0xC3) && (at[1] & 0xC0) == 0x80) {
            messages.push_back(character_message(static_cast<UWORD>((*at & 3) << 6 | (at[1] & 0x3F))));
            ++at;
        }
    }
}

} // namespace host
