# SPDX-License-Identifier: MIT
"""A keyboard and a mouse for a Wayland compositor that has none. This is a client that uses the few requests of the
wire protocol for virtual devices. The devices exist as long as it is connected."""

import os
import socket
import struct
import time

# The compositor compiles it and gives its clients the result.
KEYMAP = b"""xkb_keymap {
xkb_keycodes { include "evdev+aliases(qwerty)" };
xkb_types { include "complete" };
xkb_compat { include "complete" };
xkb_symbols { include "pc+us+inet(evdev)" };
};\0"""

# The kernel's key codes, by the keys' X names.
_ROWS = {2: "1234567890-=", 16: "qwertyuiop[]", 30: "asdfghjkl;'`", 43: "\\zxcvbnm,./"}
KEYS = {character: first + at for first, row in _ROWS.items() for at, character in enumerate(row)}
KEYS.update({f"F{number}": 58 + number for number in range(1, 11)})
KEYS.update(Escape=1, BackSpace=14, Tab=15, Return=28, space=57, F11=87, F12=88, Home=102, Delete=111)
KEYS.update(Up=103, Left=105, Right=106, Down=108, Prior=104, Next=109)
KEYS.update({" ": 57, "minus": 12, "plus": 13})

# The keys that give these characters with Shift, and the modifier keys with their bits in the keyboard's state.
SHIFTED = dict(zip('!@#$%^&*()_+{}:"~|<>?', "1234567890-=[];'`\\,./"))
MODIFIERS = {"shift": (42, 1), "ctrl": (29, 4), "alt": (56, 8)}

BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111}

_DISPLAY, _REGISTRY = 1, 2


def _string(text):
    data = text.encode() + b"\0"
    return struct.pack("=I", len(data)) + data + bytes(-len(data) % 4)


class Seat:
    """The compositor's seat, with this client's keyboard and mouse; `path` is the compositor's socket."""

    def __init__(self, path):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.connect(str(path))
        # The compositor requires a client's object numbers to have no gaps.
        self.next_id = _REGISTRY + 1
        self.globals = {}
        self._send(_DISPLAY, 1, struct.pack("=I", _REGISTRY))
        self._round_trip()
        self.seat = self._bind("wl_seat")
        self.keyboards = self._bind("zwp_virtual_keyboard_manager_v1")
        self.pointers = self._bind("zwlr_virtual_pointer_manager_v1")
        self.keyboard = self.plug_keyboard_in()
        self.pointer = self._new_id()
        self._send(self.pointers, 0, struct.pack("=2I", self.seat, self.pointer))
        self._round_trip()

    def close(self):
        self.socket.close()

    def _new_id(self):
        self.next_id += 1
        return self.next_id - 1

    def _bind(self, interface):
        bound = self._new_id()
        name = struct.pack("=I", self.globals[interface])
        self._send(_REGISTRY, 0, name + _string(interface) + struct.pack("=2I", 1, bound))
        return bound

    def _message(self, target, request, arguments):
        return struct.pack("=2I", target, (8 + len(arguments)) << 16 | request) + arguments

    def _send(self, target, request, arguments=b""):
        self.socket.sendall(self._message(target, request, arguments))

    def _receive(self, count):
        data = b""
        while len(data) < count:
            part = self.socket.recv(count - len(data))
            if not part:
                raise ConnectionError("the compositor is gone")
            data += part
        return data

    def _take_event(self):
        """Reads one event; returns its object and its number."""
        target, word = struct.unpack("=2I", self._receive(8))
        body = self._receive((word >> 16) - 8)
        if (target, word & 0xFFFF) == (_REGISTRY, 0):
            name, length = struct.unpack("=2I", body[:8])
            self.globals[body[8 : 8 + length - 1].decode()] = name
        if (target, word & 0xFFFF) == (_DISPLAY, 0):
            raise ConnectionError("the compositor refuses a request: " + repr(body))
        return target

    def _round_trip(self):
        """Waits until the compositor has handled all requests so far."""
        done = self._new_id()
        self._send(_DISPLAY, 0, struct.pack("=I", done))
        while self._take_event() != done:
            pass

    def plug_keyboard_in(self):
        """Makes another keyboard; returns its number."""
        keyboard = self._new_id()
        keymap = os.memfd_create("keymap")
        os.write(keymap, KEYMAP)
        # In one message, because SDL 2.26 crashes on a keyboard that has no keymap yet.
        made = self._message(self.keyboards, 0, struct.pack("=2I", self.seat, keyboard))
        mapped = self._message(keyboard, 0, struct.pack("=2I", 1, len(KEYMAP)))
        socket.send_fds(self.socket, [made + mapped], [keymap])
        os.close(keymap)
        self._round_trip()
        return keyboard

    def unplug(self, keyboard):
        self._send(keyboard, 3)
        self._round_trip()

    def _now(self):
        return int(time.monotonic() * 1000) & 0xFFFFFFFF

    def _put_key(self, keyboard, code, is_down):
        self._send(keyboard, 1, struct.pack("=3I", self._now(), code, int(is_down)))

    def press(self, name, keyboard=None, hold=0.0):
        """Presses and releases a key. Its name may begin with modifiers, such as alt+Return."""
        keyboard = keyboard or self.keyboard
        *modifiers, key = name.split("+") if len(name) > 1 else [name]
        if len(key) == 1 and (key in SHIFTED or key.isupper()):
            modifiers.append("shift")
            key = SHIFTED.get(key, key.lower())
        bits = 0
        for modifier in modifiers:
            bits |= MODIFIERS[modifier][1]
            self._put_key(keyboard, MODIFIERS[modifier][0], True)
            self._send(keyboard, 2, struct.pack("=4I", bits, 0, 0, 0))
        self._put_key(keyboard, KEYS[key], True)
        time.sleep(hold)
        self._put_key(keyboard, KEYS[key], False)
        for modifier in reversed(modifiers):
            bits &= ~MODIFIERS[modifier][1]
            self._put_key(keyboard, MODIFIERS[modifier][0], False)
            self._send(keyboard, 2, struct.pack("=4I", bits, 0, 0, 0))
        self._round_trip()

    def move(self, x, y):
        """Moves the pointer by this distance in pixels."""
        self._send(self.pointer, 0, struct.pack("=I2i", self._now(), x * 256, y * 256))
        self._send(self.pointer, 4)
        self._round_trip()

    def move_to(self, x, y, width, height):
        """Moves the pointer to a place on a display of this size."""
        self._send(self.pointer, 1, struct.pack("=5I", self._now(), x, y, width, height))
        self._send(self.pointer, 4)
        self._round_trip()

    def click(self, button):
        for is_down in (1, 0):
            self._send(self.pointer, 2, struct.pack("=3I", self._now(), BUTTONS[button], is_down))
            self._send(self.pointer, 4)
        self._round_trip()
