# SPDX-License-Identifier: MIT
"""Tests in a language that writes numbers with a comma."""

import subprocess
import unittest

import desktop
from desktop import MODE_TITLE, TEXTURE_TITLE, VIEWER_TITLE


class Comma(desktop.Case):
    def setUp(self):
        super().setUp()
        self.language = desktop.language(self.folder, "de_DE")
        # Check that the locale really writes a comma.
        printed = subprocess.run(
            ["printf", "%.1f", "0,5"], env={**self.environment(), **self.language}, capture_output=True, text=True
        )
        self.assertEqual(printed.stdout, "0,5")

    def test_settings_messages_and_statistics_keep_the_point(self):
        viewer = self.start(self.object, **self.language)
        self.display.wait_for(MODE_TITLE)
        self.display.key("Return")
        window = self.display.wait_for(VIEWER_TITLE)
        self.display.key("f", "Right", "4", "s")
        self.quit(viewer)
        written = desktop.settings(gammas="1.100000 1.000000 1.000000", rotate="0.100000", mode=2)
        self.assertEqual(self.env_file.read_text(), written)

        self.env_file.write_text(desktop.settings(gammas="1.700000 1.000000 1.000000", dots=1))
        expected = self.rehearse("2 key 5", 6, 6)[0]
        viewer, window = self.start_viewing(**self.language)
        self.display.key("5")
        self.assert_shows(window, expected, "the message and the dots with a point")
        self.display.key("t")
        self.display.cancel(TEXTURE_TITLE)
        self.display.wait_for(VIEWER_TITLE)
        self.display.key("s")
        self.quit(viewer)
        self.assertEqual(
            self.env_file.read_text(), desktop.settings(gammas="1.700000 1.100000 1.000000", dots=1)
        )

    def test_the_screen_mode_requester_has_the_toolkits_words(self):
        viewer = self.start(self.object, **self.language)
        self.display.wait_for(MODE_TITLE)
        # The underlined letters of "Breite" and "Abbrechen".
        self.display.key("alt+b")
        self.display.type("401")
        self.display.key("Return")
        self.display.wait_for(VIEWER_TITLE)
        self.display.key("m")
        self.display.wait_for(MODE_TITLE)
        self.display.key("alt+a")
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)
        self.assertTrue(viewer.out().startswith("display parameters: 0x00000002, 401, 256\n"))


if __name__ == "__main__":
    unittest.main()
