# SPDX-License-Identifier: MIT
"""Tests that no way to close a requester writes anything to standard error."""

import signal
import unittest

import desktop
from desktop import MODE_TITLE, OBJECT_TITLE, TEXTURE_TITLE, VIEWER_TITLE


class Ends(desktop.Case):
    def leave_by_escape(self, title, viewer):
        self.display.cancel(title)

    def leave_by_close_button(self, title, viewer):
        self.display.close_window(self.display.wait_for(title))
        self.display.wait_until_gone(title)

    def leave_by_alt_f4(self, title, viewer):
        self.display.close_by_key(title, "alt+F4")

    def leave_by_signal(self, title, viewer):
        viewer.signal(signal.SIGTERM)

    def ways_to_cancel(self):
        return [self.leave_by_escape, self.leave_by_close_button, self.leave_by_alt_f4]

    def assert_ends_without_an_object(self, viewer):
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual(viewer.out(), "No filename given\n")
        self.assertEqual(viewer.err(), "")

    def test_screen_mode_cancelled_at_a_first_start(self):
        for leave in self.ways_to_cancel():
            with self.subTest(leave.__name__):
                viewer = self.start(self.object)
                self.display.wait_for(MODE_TITLE)
                leave(MODE_TITLE, viewer)
                self.display.wait_for(VIEWER_TITLE)
                self.quit(viewer)

    def test_screen_mode_cancelled_while_viewing(self):
        self.write_settings()
        viewer, _ = self.start_viewing()
        for leave in self.ways_to_cancel():
            self.display.key("m")
            self.display.wait_for(MODE_TITLE)
            leave(MODE_TITLE, viewer)
            self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)

    def test_screen_mode_closed_by_a_signal(self):
        self.write_settings()
        viewer, _ = self.start_viewing()
        self.display.key("m")
        self.display.wait_for(MODE_TITLE)
        self.leave_by_signal(MODE_TITLE, viewer)
        self.assert_ends_well(viewer)

    def test_object_requester(self):
        self.write_settings()
        for leave in [*self.ways_to_cancel(), self.leave_by_signal]:
            with self.subTest(leave.__name__):
                viewer = self.start()
                self.display.wait_for(OBJECT_TITLE)
                leave(OBJECT_TITLE, viewer)
                self.assert_ends_without_an_object(viewer)

    def test_texture_requester(self):
        self.write_settings()
        viewer, _ = self.start_viewing()
        for leave in self.ways_to_cancel():
            self.display.key("t")
            self.display.wait_for(TEXTURE_TITLE)
            leave(TEXTURE_TITLE, viewer)
            self.display.wait_for(VIEWER_TITLE)
        self.display.key("t")
        self.display.wait_for(TEXTURE_TITLE)
        self.leave_by_signal(TEXTURE_TITLE, viewer)
        self.assert_ends_well(viewer)


if __name__ == "__main__":
    unittest.main()
