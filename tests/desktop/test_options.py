# SPDX-License-Identifier: MIT
"""Options that choose the first screen and the files of a run, in real windows."""

import unittest

import desktop
from desktop import MODE_TITLE, VIEWER_TITLE


class Screens(desktop.Case):
    def start_with(self, *options):
        """Starts on the object; the viewer and its window, which must come without a requester."""
        viewer = self.start(*options, self.object)
        window = self.display.wait_for(VIEWER_TITLE)
        self.display.wait_until_pointer_is_held(window)
        return viewer, window

    def assert_opens(self, options, parameters, place):
        viewer, window = self.start_with(*options)
        self.assertEqual(self.display.place_of(window)[2:], place)
        self.quit(viewer)
        self.assertTrue(viewer.out().startswith(f"display parameters: {parameters}\n"), viewer.out())

    def test_a_first_start_asks_nothing(self):
        self.assert_opens(["--window"], "0x00000002, 320, 256", (640, 512))
        self.assert_opens(["--window=1", "--size", "200x100"], "0x00000001, 200, 100", (200, 100))
        self.assert_opens(["--fullscreen"], "0x00000000, 320, 256", (1280, 1024))

    def test_settings_keep_all_but_what_was_chosen(self):
        self.write_settings(rotate="1.500000", width=320, height=200)
        viewer, window = self.start_with("--window=3")
        self.assertEqual(self.display.place_of(window)[2:], (960, 600))
        self.display.key("s")
        self.quit(viewer)
        self.assertNotIn("display parameters", viewer.out())
        self.assertEqual(self.env_file.read_text(), desktop.settings(rotate="1.500000", mode=3, width=320, height=200))

    def test_only_the_first_screen_is_chosen(self):
        viewer, window = self.start_with("--window=1", "--size=300x200")
        self.display.key("m")
        self.display.wait_for(MODE_TITLE)
        self.display.close_by_key(MODE_TITLE, "Return")
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)
        self.assertEqual(viewer.out().count("display parameters: 0x00000001, 300, 200\n"), 2)

    def test_folders_and_texture(self):
        env, envarc = self.folder / "env", self.folder / "envarc"
        env.mkdir()
        envarc.mkdir()
        (env / "Zelvo.vars").write_text(desktop.settings(rotate="0.500000"))
        (self.work / "Zelvo_envmap.chunky").unlink()
        desktop.write_texture(self.work / "other", 5)
        viewer, window = self.start_with("--env", env, f"--envarc={envarc}", "--envmap", "other")
        self.display.key("S")
        self.quit(viewer)
        for folder in (env, envarc):
            self.assertEqual((folder / "Zelvo.vars").read_text(), desktop.settings(rotate="0.500000"))
        self.assertFalse(self.env_file.exists())
        self.assertFalse(self.envarc_file.exists())


if __name__ == "__main__":
    unittest.main()
