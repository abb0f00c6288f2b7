// SPDX-License-Identifier: MIT
// Reads the X server's own key events.
#include "platform/sdl/x11_keyboard.h"

#include <SDL_syswm.h>
#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/keysym.h>
#include <array>
#include <bitset>

namespace host {

namespace {

constexpr std::size_t keycode_count = 256;

/// Keys that are ignored until they are released, by X keycode. Written with the X server's events.
std::bitset<keycode_count> held_keys;

/// Whether the server's next report of all keys is to fill `held_keys`. Written by ignore_held_keys and with
/// the report.
bool awaits_report = false;

/// Whether the key of the last key event is a held one, and whether its layout has Latin letters (nothing
/// before the first event). Written with each key event.
bool last_is_held = false;
std::optional<bool> last_has_latin_letters;

/// The keycodes of the three rows of letters, the same on every keyboard of an X server on Linux.
struct Row {
    KeyCode first;
    KeyCode last;
};
constexpr std::array<Row, 3> letter_rows{{{24, 33}, {38, 46}, {52, 58}}};

bool has_latin_letters(const XKeyEvent &key) {
    const unsigned group = XkbGroupForCoreState(key.state);
    for (const Row &row : letter_rows) {
        for (unsigned code = row.first; code <= row.last; ++code) {
            const KeySym symbol =
                XkbKeycodeToKeysym(key.display, static_cast<KeyCode>(code), static_cast<int>(group), 0);
            if (symbol >= XK_a && symbol <= XK_z) {
                return true;
            }
        }
    }
    return false;
}

void take_report(const XKeymapEvent &report) {
    for (std::size_t code = 0; code < keycode_count; ++code) {
        const auto byte = static_cast<unsigned char>(report.key_vector[code / 8]);
        held_keys[code] = (byte >> (code % 8) & 1) != 0;
    }
    awaits_report = false;
}

void note_key(const XKeyEvent &key, bool is_press) {
    const std::size_t code = key.keycode % keycode_count;
    if (!is_press) {
        held_keys[code] = false;
    }
    last_is_held = held_keys[code];
    last_has_latin_letters = has_latin_letters(key);
}

} // namespace

void watch_x11_keyboard() {
    SDL_EventState(SDL_SYSWMEVENT, SDL_ENABLE);
}

void note_x11_event(const SDL_SysWMmsg &event) {
    if (event.subsystem != SDL_SYSWM_X11) {
        return;
    }
    const XEvent &x_event = event.msg.x11.event;
    switch (x_event.type) {
    case KeymapNotify:
        if (awaits_report) {
            take_report(x_event.xkeymap);
        }
        break;
    case KeyPress:
    case KeyRelease:
        note_key(x_event.xkey, x_event.type == KeyPress);
        break;
    default:
        break;
    }
}

void ignore_held_keys() {
    awaits_report = true;
}

bool is_held_key() {
    return last_is_held;
}

std::optional<bool> has_latin_letters_on_x11() {
    return last_has_latin_letters;
}

} // namespace host
