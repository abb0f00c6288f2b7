# SPDX-License-Identifier: MIT
"""The viewer and its requesters on Wayland compositors: one with window frames of libdecor, one with its own."""

import unittest

import desktop
import wayland


class Requesters(wayland.Case):
    """Requesters over a window and over a full screen, one after the other."""

    DRIVER = None
    ANSWERS = ("Return", "Escape", "Return")

    def start_on(self, mode):
        self.write_settings(mode=mode)
        viewer = self.start(self.object, SDL_RENDER_DRIVER=self.DRIVER)
        self.wait_until_viewing(viewer)
        return viewer

    def end(self, viewer):
        """No crash, and nothing to complain of."""
        viewer.process.terminate()
        self.assert_ends_well(viewer)
        self.assertEqual(viewer.err(), "")

    def ask_again_and_again(self, mode):
        viewer = self.start_on(mode)
        for answer in self.ANSWERS:
            self.open_requester("m")
            self.close_requester(answer)
            self.wait_until_viewing(viewer, f"ModeID: {mode}\n")
            self.open_requester("t")
            self.close_requester("Escape")
            self.wait_until_viewing(viewer)
        self.end(viewer)
        self.assertEqual(viewer.out().count("display parameters: "), len(self.ANSWERS))
        self.assertEqual(viewer.out().count("envmap filename: Zelvo_envmap.chunky\n"), len(self.ANSWERS))

    def test_from_a_window(self):
        self.ask_again_and_again(1)

    def test_from_a_full_screen(self):
        self.ask_again_and_again(0)


class FirstStart(wayland.Case):
    def test_object_and_mode_are_asked_for(self):
        viewer = self.start()
        desktop.wait_until(self.is_requester_shown, "the object requester")
        self.close_requester("Escape")
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual((viewer.out(), viewer.err()), ("No filename given\n", ""))
        viewer = self.start(self.object)
        desktop.wait_until(self.is_requester_shown, "the screen-mode requester")
        self.close_requester("Return")
        self.wait_until_viewing(viewer, "ModeID: 2\n")
        viewer.process.terminate()
        self.assert_ends_well(viewer)
        self.assertEqual(viewer.err(), "")


def load_tests(loader, _, pattern):
    """Every case on each compositor; the scaled display and the software renderer where a window's frame is drawn
    by the viewer itself."""
    suite = unittest.TestSuite()
    for compositor in (wayland.Weston, wayland.Sway):
        for case in (Requesters, FirstStart):
            made = type(f"{case.__name__}On{compositor.__name__}", (case,), {"COMPOSITOR": compositor})
            suite.addTests(loader.loadTestsFromTestCase(made))
    for name, change in (("Scaled", {"SCALE": 2}), ("InSoftware", {"DRIVER": "software"})):
        made = type(name, (Requesters,), {"COMPOSITOR": wayland.Weston, "ANSWERS": ("Return",), **change})
        suite.addTests(loader.loadTestsFromTestCase(made))
    return suite


if __name__ == "__main__":
    unittest.main()
