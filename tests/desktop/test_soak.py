# SPDX-License-Identifier: MIT
"""A random user works for a while with keys, mouse, requesters, other windows, sizes and full screens. The viewer must
keep running, write nothing to standard error, and not grow in memory.

ZELVO_SOAK_ON names the displays ("x11", "weston", "sway"; all by default), ZELVO_SOAK_SECONDS the duration, and
ZELVO_SOAK_SEED the user."""

import os
import pathlib
import random
import subprocess
import time
import unittest

import desktop
import wayland
from desktop import MODE_TITLE, TEXTURE_TITLE, VIEWER_TITLE

ON = os.environ.get("ZELVO_SOAK_ON", "x11 weston sway").split()
SECONDS = float(os.environ.get("ZELVO_SOAK_SECONDS", "10"))
SEED = int(os.environ.get("ZELVO_SOAK_SEED", "1"))

# All keys that are commands, except those that end the viewer or open a requester or another window.
KEYS = list("0123456bcdefilprRsSwWz") + ["space", "Tab", "plus", "minus", "Up", "Down", "Left", "Right", "F2", "a", "7"]

# Pictures of these widths fit every display and every window of a compositor.
WIDTHS = ["160", "200", "320", "401", "512"]

# How much the caches of toolkits and drivers may grow in a session, measured in the same small window before and after.
# They grew by 3 to 11 MiB, and less in four minutes than in two.
ALLOWED_GROWTH_KIB = 16384


class OnX11(desktop.Case):
    """The actions of a session that are particular to X11."""

    TITLES = {"m": MODE_TITLE, "t": TEXTURE_TITLE}
    OTHER = ["xmessage", "-geometry", "200x100+0+0", "another program"]

    def open_requester(self, key):
        self.display.key(key)
        self.requester = self.TITLES[key]
        self.display.wait_for(self.requester)

    def close_requester(self, key):
        self.display.close_by_key(self.requester, key)

    def close_requester_window(self):
        self.close_requester("alt+F4")

    def wait_until_viewing(self, _):
        self.display.wait_for(VIEWER_TITLE)

    def wait_for_other(self):
        self.display.wait_for("xmessage")

    def return_to_viewer(self):
        """Clicks into the picture, where the viewer captures the pointer. A click elsewhere would go to the desktop."""
        window = self.display.wait_for(VIEWER_TITLE)
        x, y, width, height = self.display.place_of(window)
        self.display.xdotool("mousemove", x + width // 2, y + height // 2)
        self.display.wait_until_pointer_is_held(window)

    def move(self, steps):
        words = []
        for x, y in steps:
            words += ["mousemove_relative", "--", x, y]
        self.display.xdotool(*words)

    def click(self, button):
        self.display.xdotool("click", button)

    def resize(self, width, height):
        self.display.xdotool("windowsize", self.display.find(VIEWER_TITLE), width, height)


class OnWayland(wayland.Case):
    """The actions of a session that are particular to Wayland."""

    OTHER = ["weston-flower"]

    def close_requester_window(self):
        self.close_requester("Escape")

    def return_to_viewer(self):
        """Does nothing: the pointer never leaves the viewer."""

    def wait_for_other(self):
        """Waits as long as a user would. The window may be below a full screen, so nothing shows that it is open."""
        time.sleep(0.3)

    def move(self, steps):
        for x, y in steps:
            self.display.move(x, y)

    def click(self, button):
        self.display.click(button)

    def resize(self, width, height):
        """Does nothing: only the compositor can resize a window, and weston has no command for that."""


class OnWeston(OnWayland):
    COMPOSITOR = wayland.Weston

    def ask_for_focus(self):
        """Clicks into the picture. For weston a window's frame is a separate window, which can get the focus by a
        click. When the viewer becomes full screen the frame disappears, and no window has the focus."""
        self.display.point_at_picture()
        self.display.click(3)


class OnSway(OnWayland):
    COMPOSITOR = wayland.Sway

    def return_to_viewer(self):
        """Also moves the pointer into the picture, because a click outside every window takes the focus from all of
        them."""
        self.display.command("[app_id=zelvo]", "focus")
        self.display.seat.move_to(500, 350, 1000, 700)

    def open_requester(self, key):
        self.return_to_viewer()
        super().open_requester(key)

    def wait_until_viewing(self, viewer, *texts):
        self.return_to_viewer()
        super().wait_until_viewing(viewer, *texts)

    def close_requester_window(self):
        self.display.command('[title="^Zelvo: screen|^Select"]', "kill")
        desktop.wait_until(lambda: not self.is_requester_shown(), "the end of the requester")

    def wait_for_other(self):
        # A full screen keeps the focus.
        desktop.wait_until(lambda: any(w["name"] == "Flower" for w in self.display.windows()), "the other window")
        self.display.command("[title=Flower]", "focus")

    def resize(self, width, height):
        self.display.command("resize", "set", str(width), str(height))


class Session:
    """A random user, made from a seed. Combined with the actions of a kind of display."""

    def press_keys(self):
        self.display.key(*self.user.choices(KEYS, k=30))

    def move_mouse(self):
        """Turns the object, and changes the mode with the right button. The left button would end the viewer."""
        self.return_to_viewer()
        self.move([(self.user.randint(-80, 80), self.user.randint(-60, 60)) for _ in range(10)])
        for _ in range(self.user.randrange(4)):
            self.click(3)

    def cancel(self):
        if self.user.randrange(2) == 0:
            self.close_requester("Escape")
        else:
            self.close_requester_window()

    def change_mode(self):
        self.open_requester("m")
        if self.user.randrange(3) == 0:
            self.cancel()
        else:
            if self.user.randrange(2) == 0:
                self.display.key("alt+w")
                self.display.type(self.user.choice(WIDTHS))
            if self.user.randrange(2) == 0:
                self.display.key("alt+d", self.user.choice(["Up", "Down"]))
            self.close_requester("alt+o")

    def change_texture(self):
        self.open_requester("t")
        if self.user.randrange(2) == 0:
            self.cancel()
        else:
            self.type_path(self.user.choice(self.textures))
            self.close_requester("Return")

    def toggle_full_screen(self):
        self.display.key(self.user.choice(["F11", "alt+Return"]))

    def change_size(self):
        self.resize(self.user.randint(100, 900), self.user.randint(80, 600))

    def go_elsewhere(self):
        """Starts another program, which takes the focus, gets some keys, and ends."""
        with subprocess.Popen(
            self.OTHER, env=self.environment(), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL
        ) as other:
            try:
                self.wait_for_other()
                self.move([(40, 30), (-20, 50)])
                self.display.key("a")
            finally:
                other.terminate()

    def end(self, viewer):
        """Ends the viewer in one of the normal ways."""
        self.wait_until_viewing(viewer)
        how = self.user.randrange(3)
        if how == 0:
            viewer.process.terminate()
        else:
            self.display.key("Escape" if how == 1 else "q")
        self.assert_ends_well(viewer)
        self.assertEqual(viewer.err(), "")

    def resident_kib(self, viewer):
        """The resident memory: the minimum over a second, in a window of 320 x 256, since larger windows need more."""
        self.open_requester("m")
        self.display.key("alt+w")
        self.display.type("320")
        self.display.key("alt+d", "Home", "Down")
        self.close_requester("alt+o")
        self.wait_until_viewing(viewer)
        levels = []
        for _ in range(10):
            time.sleep(0.1)
            fields = pathlib.Path(f"/proc/{viewer.process.pid}/status").read_text().split()
            levels.append(int(fields[fields.index("VmRSS:") + 1]))
        return min(levels)

    def test_session(self):
        self.user = random.Random(SEED)
        self.textures = [self.work / "waves", self.work / "more-waves"]
        for waves, texture in enumerate(self.textures, 4):
            desktop.write_texture(texture, waves)
        self.write_settings(rotate="1.000000")
        # A sanitized build grows, because it keeps freed memory to detect its use.
        viewer = self.start(self.object, ASAN_OPTIONS="detect_leaks=0:quarantine_size_mb=0")
        self.wait_until_viewing(viewer)
        # Every kind of interruption happens once before the measurement, so that the toolkit has loaded what it needs.
        interruptions = [self.change_mode, self.change_texture, self.go_elsewhere]
        adjustments = [self.toggle_full_screen, self.change_size]
        self.done = []
        for action in interruptions + adjustments:
            action()
            self.wait_until_viewing(viewer)

        level = self.resident_kib(viewer)
        start = time.monotonic()
        counts = {}
        while time.monotonic() - start < SECONDS:
            what = self.user.randrange(40)
            if what < 3:
                action = self.user.choice(interruptions)
            elif what < 7:
                action = self.user.choice(adjustments)
            else:
                action = self.move_mouse if what < 15 else self.press_keys
            self.done.append(action.__name__)
            action()
            self.assertIsNone(viewer.process.poll(), f"after {self.done[-3:]}: {viewer.err()}")
            if action in interruptions:
                try:
                    self.wait_until_viewing(viewer)
                except AssertionError as error:
                    raise AssertionError(f"after {self.done[-3:]}: {error}") from None
            counts[action.__name__] = counts.get(action.__name__, 0) + 1
        self.wait_until_viewing(viewer)
        growth = self.resident_kib(viewer) - level
        self.end(viewer)
        print(f"{type(self).__name__}, seed {SEED}, {SECONDS:.0f} s, {counts}, {growth} KiB more than {level}", flush=True)
        self.assertLess(growth, ALLOWED_GROWTH_KIB, "resident memory grows")


def load_tests(loader, _, pattern):
    suite = unittest.TestSuite()
    for name, where in (("x11", OnX11), ("weston", OnWeston), ("sway", OnSway)):
        if name in ON:
            suite.addTests(loader.loadTestsFromTestCase(type("Session" + where.__name__, (Session, where), {})))
    return suite


if __name__ == "__main__":
    unittest.main()
