# SPDX-License-Identifier: MIT
"""Drags a file onto an X window as a file manager does: a client of the X server that speaks its protocol itself."""

import select
import socket
import struct
import time

VERSION = 5
SELECTION_REQUEST, SELECTION_NOTIFY, CLIENT_MESSAGE = 30, 31, 33
INPUT_ONLY = 2


class Source:
    """A window that text can be dragged from."""

    def __init__(self, display):
        """`display` is the server's name, such as ":7"."""
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.connect("/tmp/.X11-unix/X" + display.strip(":"))
        self.socket.sendall(struct.pack("<BxHHHHxx", ord("l"), 11, 0, 0, 0))
        head = self._read(8)
        if head[0] != 1:
            raise ConnectionError("the X server refuses")
        setup = self._read(4 * struct.unpack("<H", head[6:8])[0])
        self.window, vendor_length, formats = struct.unpack("<4xI8xH3xB", setup[:22])
        root = struct.unpack("<I", setup[32 + (vendor_length + 3) // 4 * 4 + 8 * formats :][:4])[0]
        self._send(1, 0, struct.pack("<IIhhHHHHII", self.window, root, 0, 0, 1, 1, 0, INPUT_ONLY, 0, 0))
        names = ["Enter", "Position", "Drop", "Status", "Finished", "Selection", "ActionCopy"]
        self.atoms = {name: self._atom("Xdnd" + name) for name in names}
        self.list_type = self._atom("text/uri-list")
        self._send(22, 0, struct.pack("<III", self.window, self.atoms["Selection"], 0))

    def close(self):
        self.socket.close()

    def _read(self, count):
        data = b""
        while len(data) < count:
            more = self.socket.recv(count - len(data))
            if not more:
                raise ConnectionError("the X server has gone")
            data += more
        return data

    def _send(self, request, detail, body):
        body += bytes(-len(body) % 4)
        self.socket.sendall(struct.pack("<BBH", request, detail, 1 + len(body) // 4) + body)

    def _atom(self, name):
        self._send(16, 0, struct.pack("<Hxx", len(name)) + name.encode())
        return struct.unpack("<8xI20x", self._read(32))[0]

    def _send_event(self, window, event):
        self._send(25, 0, struct.pack("<II", window, 0) + event)

    def _message(self, target, kind, *values):
        data = [self.window, *values] + [0] * (4 - len(values))
        self._send_event(target, struct.pack("<BBxxII5I", CLIENT_MESSAGE, 32, target, self.atoms[kind], *data))

    def _answer_until(self, kind, text, patience):
        """Gives the text to the window that asks for it, until that sends a message of this kind; its first values."""
        end = time.monotonic() + patience
        while True:
            if not select.select([self.socket], [], [], max(end - time.monotonic(), 0))[0]:
                raise AssertionError("timed out waiting for Xdnd" + kind)
            event = self._read(32)
            code = event[0] & 0x7F
            if code == SELECTION_REQUEST:
                moment, _, requestor, selection, target, place = struct.unpack("<4x6I4x", event)
                body = struct.pack("<IIIBxxxI", requestor, place, target, 8, len(text)) + text
                self._send(18, 0, body)
                answer = struct.pack("<BxxxIIIII8x", SELECTION_NOTIFY, moment, requestor, selection, target, place)
                self._send_event(requestor, answer)
            elif code == CLIENT_MESSAGE and struct.unpack("<8xI20x", event)[0] == self.atoms[kind]:
                return struct.unpack("<12x5I", event)

    def drop(self, window, x, y, *uris, patience=30.0):
        """Drops files at a point of the screen onto a window; whether the window took them."""
        text = "".join(uri + "\r\n" for uri in uris).encode()
        self._message(window, "Enter", VERSION << 24, self.list_type)
        self._message(window, "Position", 0, x << 16 | y, 0, self.atoms["ActionCopy"])
        accepts = self._answer_until("Status", text, patience)[1] & 1
        if accepts:
            self._message(window, "Drop", 0, 0)
            self._answer_until("Finished", text, patience)
        return bool(accepts)
