# SPDX-License-Identifier: MIT
"""Tests of displays that are missing, disappear, or are of another kind."""

import signal
import time
import unittest

import desktop
import wayland

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
    """Counts the passes of three seconds: at most 180, and fewer on a busy machine. Passes that do not wait for the
    display would be many more."""
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


class Wayland(wayland.Case):
    COMPOSITOR = wayland.Weston

    def start_on_the_object(self):
        self.write_settings()
        return self.start(self.object)

    def test_keys_and_picture(self):
        self.display.park_pointer()
        viewer = self.start_on_the_object()
        greeting, dots = self.rehearse("50 key p", 60, 10, 50)
        self.wait_until_shown(greeting.rows(20, 256))
        self.display.key("p")
        self.wait_until_shown(dots)
        self.display.key("s", "Escape")
        self.assert_ends_well(viewer)
        self.assertEqual(self.env_file.read_text(), desktop.settings(dots=1))

    def test_passes_are_paced_and_a_signal_ends_them(self):
        assert_runs_until_terminated(self, self.start_on_the_object)

    def test_requesters_are_on_the_same_display_as_the_viewer(self):
        viewer = self.start(self.object, DISPLAY=self.display.x.name)
        self.display.x.wait_for(desktop.MODE_TITLE)
        self.display.key("Return")
        self.display.x.wait_for(desktop.VIEWER_TITLE)
        self.quit(viewer)

    def test_a_compositor_that_goes_away(self):
        self.display.park_pointer()
        viewer = self.start_on_the_object()
        self.wait_until_shown(self.rehearse("", 10, 10)[0].rows(20, 256))
        self.display.process.kill()
        self.assert_ends_well(viewer)

    def test_a_compositor_that_goes_away_after_a_requester(self):
        """By then the toolkit has its own connection, and would end the process."""
        viewer = self.start_on_the_object()
        self.wait_until_viewing(viewer)
        self.open_requester("t")
        self.close_requester("Escape")
        self.wait_until_viewing(viewer)
        self.display.process.kill()
        self.assert_ends_well(viewer)


if __name__ == "__main__":
    unittest.main()
