# SPDX-License-Identifier: MIT
"""What the window itself does for the user: the list of keys, saved pictures, and the title."""

import re
import unittest

import desktop
import pictures
from desktop import VIEWER_TITLE

KEYS_TITLE = "^Zelvo: keys"


class Keys(desktop.Case):
    def test_list_over_a_window_and_over_a_full_screen(self):
        for mode in (1, 0):
            self.write_settings(mode=mode)
            viewer, _ = self.start_viewing()
            self.display.key("F1")
            keys = self.display.wait_for(KEYS_TITLE)
            self.assertGreater(self.display.place_of(keys)[2], 300)
            self.display.close_by_key(KEYS_TITLE, "Escape")
            window = self.display.wait_for(VIEWER_TITLE)
            self.display.wait_until_pointer_is_held(window)
            self.quit(viewer)

    def test_close_button_closes_the_list_alone(self):
        self.write_settings()
        viewer, _ = self.start_viewing()
        self.display.key("F1")
        self.display.close_window(self.display.wait_for(KEYS_TITLE))
        self.display.wait_until_gone(KEYS_TITLE)
        self.display.wait_until_pointer_is_held(self.display.wait_for(VIEWER_TITLE))
        self.quit(viewer)

    def test_termination_closes_the_list(self):
        self.write_settings()
        viewer, _ = self.start_viewing()
        self.display.key("F1")
        self.display.wait_for(KEYS_TITLE)
        viewer.process.terminate()
        self.assert_ends_well(viewer)


class Title(desktop.Case):
    def test_names_the_object(self):
        self.write_settings()
        for name, shown in (("my knot.lwo", "my knot.lwo"), (b"\xff.lwo".decode(errors="surrogateescape"), "\ufffd.lwo")):
            self.object = self.work / name
            desktop.write_object(self.object)
            viewer, window = self.start_viewing()
            title = f"{shown} - Zelvo   <Esc> to quit.   {desktop.POINTER_HINT}"
            self.assertEqual(self.display.name_of(window), title)
            self.quit(viewer)


class SavedPictures(desktop.Case):
    def setUp(self):
        super().setUp()
        self.write_settings()
        self.pictures = self.home / "My pictures"
        self.config.mkdir()

    def choose_folder(self, folder):
        (self.config / "user-dirs.dirs").write_text(f'XDG_PICTURES_DIR="{folder}"\n')

    def save(self, window):
        """The file that the title names."""
        self.display.key("F12")
        named = desktop.wait_until(
            lambda: re.match("Zelvo: picture saved as (.*)", self.display.name_of(window)), "the file's name"
        )
        return named[1]

    def test_picture_is_what_the_screen_shows(self):
        self.choose_folder("$HOME/My pictures")
        still = self.rehearse("", 250, 250, tick=0.01)[0]
        viewer, window = self.start_viewing()
        self.display.xdotool("windowsize", window, 700, 600)
        self.assert_shows(window, still.enlarged(2).centred_on_black(700, 600), "the picture, enlarged")
        path = self.save(window)
        self.assertRegex(path, rf"\A{self.pictures}/torus_\d{{4}}-\d\d-\d\d_\d\d-\d\d-\d\d\.png\Z")
        # The title is the viewer's again after a while, and two pictures may be of one second.
        self.display.key("F12", "F12")
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)
        saved = sorted(self.pictures.iterdir())
        self.assertEqual(len(saved), 3)
        self.assertIn(path, map(str, saved))
        for picture in saved:
            self.assertIsNone(pictures.of_png(picture).difference(still))

    def test_a_full_screen_says_it_over_the_picture(self):
        self.write_settings(mode=0)
        viewer, window = self.start_viewing()

        def is_line_shown():
            return not self.picture(self.display.root()).rows(1024 - 32, 1024).is_black()

        self.assertFalse(is_line_shown())
        self.save(window)
        desktop.wait_until(is_line_shown, "the line")
        desktop.wait_until(lambda: not is_line_shown(), "the line to go")
        self.quit(viewer)

    def test_home_is_where_no_folder_is_named(self):
        viewer, window = self.start_viewing()
        self.assertTrue(self.save(window).startswith(f"{self.home}/torus_"))
        self.quit(viewer)

    def test_a_failure_is_said(self):
        (self.home / "file").write_text("no folder")
        self.choose_folder("$HOME/file/pictures")
        viewer, window = self.start_viewing()
        self.display.key("F12")
        self.display.close_by_key("^Zelvo: picture not saved", "Escape")
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer, rf"zelvo: The picture was not saved: Not a directory \({self.home}/file/pictures/torus_.*\)\n")


if __name__ == "__main__":
    unittest.main()
