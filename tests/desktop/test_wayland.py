# SPDX-License-Identifier: MIT
"""Tests of the viewer and its requesters on two Wayland compositors: with window frames of libdecor, and with its
own."""

import unittest

import desktop
import wayland


class Requesters(wayland.Case):
    """Opens requesters over a window and over a full screen."""

    DRIVER = None
    ANSWERS = ("Return", "Escape", "Return")

    def start_on(self, mode):
        self.write_settings(mode=mode)
        viewer = self.start(self.object, SDL_RENDER_DRIVER=self.DRIVER)
        self.wait_until_viewing(viewer)
        return viewer

    def end(self, viewer):
        """Checks that there is no crash and nothing on standard error."""
        viewer.process.terminate()
        self.assert_ends_well(viewer)

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


class Sizes(wayland.Case):
    """Changes the picture's size in the window that is kept from the last screen."""

    # Below the line of the greeting and the messages.
    FIRST_ROW = 14

    def change_size(self, viewer, width, height):
        """Answers the requester, again if it did not have the keyboard for everything that was typed."""

        def is_changed():
            self.open_requester("m")
            for key, side in (("alt+w", width), ("alt+h", height)):
                self.display.key(key)
                self.display.type(str(side))
            self.close_requester("Return")
            self.wait_until_viewing(viewer)
            return f"width: {width}\nheight: {height}\n" in self.env_file.read_text()

        desktop.wait_until(is_changed, "the size")

    def go_to_another_size_and_back(self, mode, factor, other_factor):
        self.write_settings(mode=mode)
        sized = self.rehearse(f"20 key m\nanswer mode {mode} 200 160", 40, 10, 30)
        first, other = (picture.rows(self.FIRST_ROW, picture.height) for picture in sized)
        self.display.park_pointer()
        viewer = self.start(self.object)
        self.wait_until_viewing(viewer)
        self.change_size(viewer, 200, 160)
        self.wait_until_shown(other.enlarged(other_factor))
        self.change_size(viewer, 320, 256)
        self.wait_until_shown(first.enlarged(factor))
        viewer.process.terminate()
        self.assert_ends_well(viewer)

    def test_in_a_window(self):
        self.go_to_another_size_and_back(1, 1, 1)

    def test_on_a_full_screen(self):
        self.go_to_another_size_and_back(0, 2, 4)


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
        self.assertTrue(viewer.out().startswith("display parameters: 0x00000002, 320, 256\n"))


class HostKeys(wayland.Case):
    def test_list_of_keys_and_another_object(self):
        desktop.write_object(self.work / "knot.lwo", 12, 6)
        self.write_settings()
        viewer = self.start(self.object)
        self.wait_until_viewing(viewer)
        self.open_requester("F1")
        self.close_requester("Escape")
        self.wait_until_viewing(viewer)
        self.display.key("Next")
        desktop.wait_until(lambda: "number of frames" in viewer.out(), "the end of the first run")
        self.wait_until_viewing(viewer)
        viewer.process.terminate()
        self.assert_ends_well(viewer)
        self.assertEqual(viewer.out().count("number of frames"), 2)


def load_tests(loader, _, pattern):
    """Runs every case on each compositor. On weston, where the viewer draws its window frame, the requesters also run
    on a scaled display and with the software renderer."""
    suite = unittest.TestSuite()
    for compositor in (wayland.Weston, wayland.Sway):
        for case in (Requesters, Sizes, FirstStart, HostKeys):
            made = type(f"{case.__name__}On{compositor.__name__}", (case,), {"COMPOSITOR": compositor})
            suite.addTests(loader.loadTestsFromTestCase(made))
    for name, change in (("Scaled", {"SCALE": 2}), ("InSoftware", {"DRIVER": "software"})):
        made = type(name, (Requesters,), {"COMPOSITOR": wayland.Weston, "ANSWERS": ("Return",), **change})
        suite.addTests(loader.loadTestsFromTestCase(made))
    return suite


if __name__ == "__main__":
    unittest.main()
