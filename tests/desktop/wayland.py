# SPDX-License-Identifier: MIT
"""Two private Wayland compositors: weston in a window of an X server without a screen, and sway without any display.
They have the same methods as the X display, so that a test is the same on each."""

import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import time

import desktop
import pictures
import wayland_seat

# The background colours of the toolkit's dialogs and of its list of places. Nothing else has so many pixels of these
# colours.
DIALOG_COLOURS = (b"\xf6\xf5\xf4", b"\xfb\xfa\xfa")
DIALOG_PIXELS = 5000

# The pace of a very quick user, in seconds per key or motion. A compositor disconnects a client that leaves hundreds of
# events unread, as the viewer could while it saves a file.
KEY_SECONDS, MOTION_SECONDS = 0.02, 0.005

# A key without an effect after this time was lost, because its window did not have the keyboard yet. A requester has
# more time to close, since a second Escape would end the viewer if the requester had just closed.
OPENING_PATIENCE, CLOSING_PATIENCE = 5.0, 15.0

# The brightness of weston's background; red, green and blue are the same.
BACKGROUND = 0x5A

# Sway refuses to run as root, so it then runs as this user.
NOBODY = 65534

SWAY_SETTINGS = """
xwayland disable
focus_follows_mouse no
default_border none
{rules}
output HEADLESS-1 resolution {width}x{height} scale {scale}
"""


class Weston:
    """The reference compositor, with window frames of libdecor. It gets keys and motion through the X server, and its
    picture is read from its X window."""

    def __init__(self, environment, width=1000, height=700, scale=1):
        self.x = desktop.Display()
        self.size = (width, height)
        self.at = (width // 2, height // 2)
        # No panel, because its button starts other programs.
        settings = pathlib.Path(environment["XDG_RUNTIME_DIR"]) / "weston.ini"
        settings.write_text(f"[shell]\npanel-position=none\nbackground-color=0xff{BACKGROUND * 0x10101:06x}\n")
        self.socket = pathlib.Path(environment["XDG_RUNTIME_DIR"]) / "zelvo-test"
        self.process = None
        try:
            self.process = subprocess.Popen(
                ["weston", "--backend=x11-backend.so", "--use-pixman", f"--width={width}", f"--height={height}"]
                + [f"--scale={scale}", "--socket=zelvo-test", "--idle-time=0", f"--config={settings}"],
                env={**environment, "DISPLAY": self.x.name},
                stdout=subprocess.DEVNULL,
                stderr=subprocess.DEVNULL,
            )
            desktop.wait_until(self.socket.exists, "the compositor")
            self.screen = self.x.wait_for("^Weston Compositor")
        except AssertionError:
            self.close()
            raise

    def close(self):
        if self.process is not None:
            self.process.terminate()
            self.process.wait()
        self.x.close()

    def key(self, *names):
        self.x.key(*names)

    def type(self, text):
        self.x.type(text)

    def move(self, x, y):
        # Stays within the compositor's window. Outside it, a click opens the window manager's menu.
        self.at = tuple(min(max(at + by, 20), size - 20) for at, by, size in zip(self.at, (x, y), self.size))
        self.x.xdotool("mousemove", "--window", self.screen, *self.at)

    def point_at_picture(self):
        """Moves the pointer to the middle of the viewer's window, the only visible one."""
        shown = self.shown()
        background = bytes([BACKGROUND])
        rows = [shown.rows(y, y + 1).rgb for y in range(shown.height)]
        lit = [y for y, row in enumerate(rows) if row.strip(background)]
        middle = (lit[0] + lit[-1]) // 2
        row = rows[middle]
        left, right = (len(row) - len(row.lstrip(background))) // 3, len(row.rstrip(background)) // 3
        self.at = ((left + right) // 2, middle)
        self.x.xdotool("mousemove", "--window", self.screen, *self.at)

    def park_pointer(self):
        """Moves the pointer, which is visible, to where it covers no picture: only window frames are so far up."""
        self.x.xdotool("mousemove", "--window", self.screen, 500, 2)

    def click(self, button):
        self.x.xdotool("click", button)

    def shown(self):
        """The picture on the display."""
        return pictures.of_window(self.screen, self.x.environment)


class Sway:
    """A tiling compositor that draws window frames itself. The test provides its keyboard and mouse."""

    # Its rules for windows: the viewer's windows are not tiled.
    RULES = 'for_window [app_id="zelvo"] floating enable'

    def __init__(self, environment, width=1000, height=700, scale=1):
        # Not in the test's folder, which other users cannot read.
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="zelvo-sway-"))
        self.socket = self.folder / "wayland-1"
        self.environment = {**environment, "WAYLAND_DISPLAY": str(self.socket)}
        self.process = self.seat = None
        settings = self.folder / "settings"
        settings.write_text(SWAY_SETTINGS.format(rules=self.RULES, width=width, height=height, scale=scale))
        self.folder.chmod(0o700)
        become = []
        if os.geteuid() == 0:
            os.chown(self.folder, NOBODY, NOBODY)
            become = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups", "--"]
        own = {
            **environment,
            "XDG_RUNTIME_DIR": str(self.folder),
            "SWAYSOCK": str(self.folder / "ipc"),
            "WLR_BACKENDS": "headless",
            "WLR_RENDERER": "pixman",
            "WLR_LIBINPUT_NO_DEVICES": "1",
        }
        for name in ("DISPLAY", "WAYLAND_DISPLAY"):
            own.pop(name, None)
        try:
            self.process = subprocess.Popen(
                become + ["sway", "-c", str(settings)], env=own, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL
            )
            desktop.wait_until(lambda: self._tree() is not None, "the compositor")
            self.seat = wayland_seat.Seat(self.socket)
        except (AssertionError, ConnectionError):
            self.close()
            raise

    def close(self):
        if self.seat is not None:
            self.seat.close()
        if self.process is not None:
            self.process.terminate()
            self.process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def command(self, *words):
        return subprocess.run(
            ["swaymsg", "-s", str(self.folder / "ipc"), *words], capture_output=True, text=True
        ).stdout

    def _tree(self):
        answer = self.command("-t", "get_tree")
        return json.loads(answer) if answer else None

    def windows(self):
        """Title and state of every window."""
        found, waiting = [], [self._tree() or {}]
        while waiting:
            node = waiting.pop()
            children = node.get("nodes", []) + node.get("floating_nodes", [])
            if not children and node.get("pid"):
                found.append(node)
            waiting += children
        return found

    def find(self, title):
        """The state of the window whose title matches; None if there is none."""
        return next((window for window in self.windows() if re.search(title, window["name"] or "")), None)

    def focused(self):
        """The title of the window that has the focus; empty if none has it."""
        return next((window["name"] or "" for window in self.windows() if window["focused"]), "")

    def key(self, *names):
        for name in names:
            self.seat.press(name)
            time.sleep(KEY_SECONDS)

    def type(self, text):
        self.key(*text)

    def move(self, x, y):
        self.seat.move(x, y)
        time.sleep(MOTION_SECONDS)

    def park_pointer(self):
        """Does nothing: windows open in the middle, where the pointer is not."""

    def click(self, button):
        self.seat.click(button)

    def shown(self):
        grabbed = subprocess.run(
            ["grim", "-t", "ppm", "-"], env=self.environment, capture_output=True, check=True
        ).stdout
        _, size, _, rgb = grabbed.split(b"\n", 3)
        width, height = map(int, size.split())
        return pictures.Picture(width, height, rgb)


class Case(desktop.Case):
    """A test on a compositor, which subclasses choose."""

    COMPOSITOR = None
    SCALE = 1

    def open_display(self):
        kept = {name: value for name, value in os.environ.items() if not name.endswith("DISPLAY")}
        own = {"XDG_RUNTIME_DIR": str(self.runtime), "HOME": str(self.home)}
        return self.COMPOSITOR({**kept, **own}, scale=self.SCALE)

    def environment(self, **changes):
        return super().environment(**{"DISPLAY": None, "WAYLAND_DISPLAY": str(self.display.socket), **changes})

    def picture(self, window=None):
        return desktop.wait_until(self.display.shown, "a picture of the display")

    def shows(self, expected):
        """Whether the display shows this picture somewhere."""
        shown = self.picture()
        lit = next(y for y in range(expected.height) if not expected.rows(y, y + 1).is_black())
        needle = expected.rows(lit, lit + 1).rgb
        for y in range(lit, shown.height - expected.height + lit + 1):
            at = shown.rows(y, y + 1).rgb.find(needle)
            if at >= 0 and at % 3 == 0:
                part = shown.part(at // 3, y - lit, expected.width, expected.height)
                return part.difference(expected) is None
        return False

    def wait_until_shown(self, expected):
        try:
            desktop.wait_until(lambda: self.shows(expected), "the picture")
        except AssertionError:
            expected.write(f"{self.id()}.expected.ppm")
            self._fail_and_show("the picture")

    def is_requester_shown(self):
        """Whether a dialog is visible in any window."""
        shown = self.picture().rgb
        return sum(map(shown.count, DIALOG_COLOURS)) > DIALOG_PIXELS

    def open_requester(self, key):
        """Presses a key until the viewer gets it and a requester is visible."""
        self._press_until(key, self.is_requester_shown, OPENING_PATIENCE, "a requester after " + key, self.ask_for_focus)

    def close_requester(self, key):
        """Presses a key until the requester gets it and is gone."""
        self._press_until(key, lambda: not self.is_requester_shown(), CLOSING_PATIENCE, "no requester after " + key)

    def _press_until(self, key, condition, patience, what, between=lambda: None):
        for _ in range(5):
            self.display.key(key)
            try:
                desktop.wait_until(condition, what, patience)
                return
            except AssertionError:
                between()
        self._fail_and_show(what)

    def _fail_and_show(self, what):
        shown = pathlib.Path(f"{self.id()}.ppm").resolve()
        self.picture().write(shown)
        self.fail(f"timed out waiting for {what}; see {shown}")

    def ask_for_focus(self):
        """Does what a user does when no window reacts to keys. By default nothing."""

    def wait_until_viewing(self, viewer, *texts):
        """Waits until the viewer has the keyboard: it then saves its settings, which must contain these texts."""

        def state():
            # Without the time of the last access: the viewer also reads the file when it starts.
            return self.env_file.stat().st_mtime_ns if self.env_file.exists() else None

        def saved():
            self.assertIsNone(viewer.process.poll(), viewer.err())
            before = state()
            self.display.key("s")
            try:
                desktop.wait_until(lambda: state() != before, "the settings", 1.0)
            except AssertionError:
                self.ask_for_focus()
                return False
            return all(text in self.env_file.read_text() for text in texts)

        try:
            desktop.wait_until(saved, "the viewer")
        except AssertionError:
            self.assertIsNone(viewer.process.poll(), viewer.err())
            self._fail_and_show("the viewer")
