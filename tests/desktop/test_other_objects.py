# SPDX-License-Identifier: MIT
"""Other objects in the same window: each a new run of the program, which asks for nothing."""

import os
import re
import unittest

import desktop
import x11_drop
from desktop import OBJECT_TITLE, VIEWER_TITLE


class OtherObjects(desktop.Case):
    def setUp(self):
        super().setUp()
        for name in ("knot10.LWO", "knot9.lwo", "my objects.lwo"):
            desktop.write_object(self.work / name, 12, 6)
        (self.work / "no object.lwo").write_text("no object")

    def wait_for_object(self, name):
        """The window that shows the object, ready for keys."""
        window = self.display.wait_for(f"^{re.escape(name)} - {VIEWER_TITLE}")
        self.display.wait_until_pointer_is_held(window)
        return window

    def start_on(self, name, *options):
        viewer = self.start(*options, self.work / name)
        return viewer, self.wait_for_object(name)

    def assert_ends_after(self, viewer, runs):
        self.quit(viewer)
        self.assertEqual(viewer.out().count("number of frames"), runs)

    def test_page_keys_walk_around_the_folder(self):
        self.write_settings()
        viewer, _ = self.start_on("knot9.lwo")
        for key, name in (
            ("Next", "knot10.LWO"),
            ("Next", "my objects.lwo"),
            ("Next", "torus.lwo"),
            ("Next", "knot9.lwo"),
            ("Prior", "torus.lwo"),
        ):
            self.display.key(key)
            self.wait_for_object(name)
        # One process all the time, which keeps nothing open of the runs that are over.
        self.assertLess(len(os.listdir(f"/proc/{viewer.process.pid}/fd")), 40)
        self.assert_ends_after(viewer, 6)

    def test_the_next_run_begins_as_any_other(self):
        self.write_settings()
        viewer, window = self.start_on("torus.lwo")
        self.display.key("Right", "p")
        self.display.key("Prior")
        window = self.wait_for_object("my objects.lwo")
        self.object = self.work / "my objects.lwo"
        still = self.rehearse("", 250, 250, tick=0.01)[0]
        self.assert_shows(window, still, "the other object with the saved settings")
        self.assert_ends_after(viewer, 2)

    def test_screen_and_window_stay(self):
        viewer, window = self.start_on("torus.lwo", "--window=2", "--size=200x160")
        self.display.xdotool("windowsize", window, 500, 420)
        self.display.xdotool("windowmove", window, 300, 200)
        desktop.wait_until(lambda: self.display.place_of(window)[2:] == (500, 420), "the size")
        before = self.display.place_of(window)
        self.display.key("Prior")
        window = self.wait_for_object("my objects.lwo")
        desktop.wait_until(lambda: self.display.place_of(window) == before, "the same place")
        self.assert_ends_after(viewer, 2)
        self.assertEqual(viewer.out().count("display parameters: 0x00000002, 200, 160\n"), 2)

    def test_full_screen_stays_and_so_does_a_window(self):
        for mode, first, second in ((1, (1280, 1024), (320, 256)), (0, (640, 512), (1280, 1024))):
            self.write_settings(mode=mode)
            viewer, window = self.start_on("torus.lwo")
            for size, other in ((first, "my objects.lwo"), (second, "torus.lwo")):
                self.display.key("F11")
                desktop.wait_until(lambda: self.display.place_of(window)[2:] == size, size)
                self.display.key("Next" if other == "torus.lwo" else "Prior")
                window = self.wait_for_object(other)
                self.assertEqual(self.display.place_of(window)[2:], size)
            self.assert_ends_after(viewer, 3)

    def test_a_maximised_window_stays_so(self):
        self.write_settings()
        viewer, window = self.start_on("torus.lwo")
        self.display.change_state(window, "add", "maximized_vert", "maximized_horz")
        desktop.wait_until(lambda: self.display.place_of(window)[2] > 1000, "a large window")
        large = self.display.place_of(window)[2:]
        self.display.key("Prior")
        window = self.wait_for_object("my objects.lwo")
        desktop.wait_until(lambda: self.display.place_of(window)[2:] == large, "a large window again")
        self.assert_ends_after(viewer, 2)

    def test_chooser_opens_another_object(self):
        self.write_settings()
        viewer, _ = self.start_on("torus.lwo")
        self.display.key("ctrl+o")
        self.display.cancel(OBJECT_TITLE)
        self.wait_for_object("torus.lwo")
        self.display.key("ctrl+o")
        self.choose_file(OBJECT_TITLE, self.work / "knot10.LWO")
        self.wait_for_object("knot10.LWO")
        self.assert_ends_after(viewer, 2)

    def test_a_file_is_dropped(self):
        self.write_settings()
        viewer, window = self.start_on("torus.lwo")
        source = x11_drop.Source(self.display.name)
        self.addCleanup(source.close)
        x, y = self.display.place_of(window)[:2]
        folder = f"file://{self.work}"
        self.assertTrue(source.drop(window, x + 50, y + 50, f"{folder}/my%20objects.lwo", f"{folder}/torus.lwo"))
        window = self.wait_for_object("my objects.lwo")
        source.drop(window, x + 50, y + 50, f"{folder}/no%20object.lwo")
        self.display.close_by_key("^Zelvo: object not opened", "Escape")
        self.wait_for_object("my objects.lwo")
        self.assert_ends_after(viewer, 2)


if __name__ == "__main__":
    unittest.main()
