# SPDX-License-Identifier: MIT
"""Displays that are missing, go away, or are of another kind."""

import signal
import subprocess
import time
import unittest

import desktop

NOWHERE = {"DISPLAY": None, "WAYLAND_DISPLAY": None}


class NoDisplay(desktop.Case):
    def assert_fails(self, viewer, text):
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual(viewer.out(), text)
        self.assertTrue(viewer.err().startswith("zelvo: no "), viewer.err())

    def test_with_settings(self):
        self.write_settings()
        self.assert_fails(self.start(self.object, **NOWHERE), "Couldn't open screen\n")

    def test_first_start(self):
        self.assert_fails(self.start(self.object, **NOWHERE), "Couldn't open screen\n")

    def test_without_an_object(self):
        self.assert_fails(self.start(**NOWHERE), "No filename given\n")

    def test_a_display_that_does_not_answer(self):
        self.write_settings()
        self.assert_fails(self.start(self.object, DISPLAY=":4711"), "Couldn't open screen\n")


class LostDisplay(desktop.Case):
    def lose_display(self):
        self.display.server.kill()
        self.display.server.wait()

    def test_while_viewing(self):
        self.write_settings()
        viewer, _ = self.start_viewing()
        self.lose_display()
        self.assertNotEqual(viewer.wait(), 0)

    def test_while_a_requester_is_open(self):
        viewer = self.start(self.object)
        self.display.wait_for(desktop.MODE_TITLE)
        self.lose_display()
        self.assertNotEqual(viewer.wait(), 0)

    def test_while_viewing_after_a_requester(self):
        viewer = self.start(self.object)
        self.display.wait_for(desktop.MODE_TITLE)
        self.display.key("Return")
        self.display.wait_for(desktop.VIEWER_TITLE)
        self.lose_display()
        self.assertNotEqual(viewer.wait(), 0)


def assert_runs_until_terminated(case, start):
    """Three seconds, which are 180 passes. A busy machine makes fewer, but passes that never wait are more on any."""
    started = time.monotonic()
    viewer = start()
    desktop.wait_until(lambda: viewer.catches(signal.SIGTERM), "a viewer that can be ended")
    time.sleep(3.0)
    case.assertIsNone(viewer.process.poll(), viewer.err())
    viewer.process.terminate()
    case.assert_ends_well(viewer)
    case.assertGreater(viewer.frames(), 0)
    case.assertLess(viewer.frames(), 75 * (time.monotonic() - started))


class Dummy(desktop.Case):
    def test_dummy_driver(self):
        self.write_settings()
        assert_runs_until_terminated(self, lambda: self.start(self.object, SDL_VIDEODRIVER="dummy", **NOWHERE))


class Wayland(desktop.Case):
    """A compositor that draws into a window of the X server without a screen, where it has a keyboard."""

    def setUp(self):
        super().setUp()
        self.compositor = self.start_compositor()
        self.screen = self.display.wait_for("^Weston Compositor")
        # The compositor places windows at random, but never over its panel: there its pointer, which is part of
        # what it shows, covers none.
        self.display.xdotool("mousemove", "--window", self.screen, 500, 2)

    def start_compositor(self):
        compositor = subprocess.Popen(
            ["weston", "--backend=x11-backend.so", "--use-pixman", "--width=1000", "--height=700"]
            + ["--socket=zelvo-test", "--idle-time=0", "--no-config"],
            env=self.environment(),
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )
        self.addCleanup(compositor.wait)
        self.addCleanup(compositor.terminate)
        desktop.wait_until((self.runtime / "zelvo-test").exists, "the compositor")
        return compositor

    def start_on_wayland(self):
        return self.start(self.object, DISPLAY=None, WAYLAND_DISPLAY="zelvo-test")

    def find_on_screen(self, expected):
        """Whether the compositor shows this picture somewhere."""
        shown = self.picture(self.screen)
        rows = [shown.rgb[y * shown.width * 3 : (y + 1) * shown.width * 3] for y in range(shown.height)]
        lit = next(y for y in range(expected.height) if not expected.rows(y, y + 1).is_black())
        needle = expected.rows(lit, lit + 1).rgb
        for y, row in enumerate(rows):
            at = row.find(needle)
            if at >= 0 and at % 3 == 0 and y >= lit and y - lit + expected.height <= shown.height:
                part = shown.part(at // 3, y - lit, expected.width, expected.height)
                return part.difference(expected) is None
        return False

    def settled(self):
        """What the compositor shows below its panel, which has a clock, once that stays for half a second."""

        def staying():
            before = self.picture(self.screen).rows(40, 700).rgb
            desktop.time.sleep(0.5)
            return before if before == self.picture(self.screen).rows(40, 700).rgb else None

        return desktop.wait_until(staying, "a picture that stays")

    def test_keys_and_picture(self):
        self.write_settings()
        viewer = self.start_on_wayland()
        greeting, dots = self.rehearse("50 key p", 60, 10, 50)
        desktop.wait_until(lambda: self.find_on_screen(greeting.rows(20, 256)), "the picture")
        self.display.key("p")
        desktop.wait_until(lambda: self.find_on_screen(dots), "the dots and their message")
        self.display.key("s", "Escape")
        self.assert_ends_well(viewer)
        self.assertEqual(self.env_file.read_text(), desktop.settings(dots=1))

    def test_passes_are_paced_and_a_signal_ends_them(self):
        self.write_settings()
        assert_runs_until_terminated(self, self.start_on_wayland)

    def test_first_start_requester(self):
        empty = self.settled()
        viewer = self.start_on_wayland()
        desktop.wait_until(lambda: self.settled() != empty, "the requester")
        self.display.key("Return")

        def saved():
            """A key that comes before the viewer has the keyboard is lost; a second save does no harm."""
            self.display.key("s")
            desktop.time.sleep(0.3)
            return self.env_file.exists()

        desktop.wait_until(saved, "the settings")
        viewer.process.terminate()
        self.assert_ends_well(viewer)
        self.assertTrue(viewer.out().startswith("display parameters: 0x00000002, 320, 256\n"))

    def test_requesters_are_on_the_same_display_as_the_viewer(self):
        viewer = self.start(self.object, WAYLAND_DISPLAY="zelvo-test")
        self.display.wait_for(desktop.MODE_TITLE)
        self.display.key("Return")
        self.display.wait_for(desktop.VIEWER_TITLE)
        self.quit(viewer)

    def test_a_compositor_that_goes_away(self):
        self.write_settings()
        viewer = self.start_on_wayland()
        desktop.time.sleep(1.0)
        self.compositor.kill()
        self.assert_ends_well(viewer)


if __name__ == "__main__":
    unittest.main()
