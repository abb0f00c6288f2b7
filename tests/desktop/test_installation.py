# SPDX-License-Identifier: MIT
"""The viewer in an installed tree: it finds its texture, and desktops can tell whose windows these are."""

import pathlib
import re
import subprocess
import unittest

import desktop

SVG = pathlib.Path(__file__).parents[2] / "packaging" / "desktop" / "zelvo.svg"


class Installed(desktop.Case):
    def setUp(self):
        super().setUp()
        prefix = self.folder / "prefix"
        build = pathlib.Path(desktop.VIEWER).parents[1]
        subprocess.run(["cmake", "--install", build, "--prefix", prefix], stdout=subprocess.DEVNULL, check=True)
        self.program = prefix / "bin" / "zelvo"
        (self.work / "Zelvo_envmap.chunky").unlink()
        entry = (prefix / "share" / "applications" / "zelvo.desktop").read_text()
        self.window_class = re.search("^StartupWMClass=(.*)$", entry, re.MULTILINE)[1]

    def property(self, window, name, *kind):
        answer = subprocess.run(
            ["xprop", "-id", str(window), *kind, name], env=self.display.environment, capture_output=True, text=True
        )
        return answer.stdout.partition("=")[2].strip()

    def assert_is_known(self, window):
        """Class and icon. The icon holds the colours of its faces, of which the smallest may be nothing but blended edge."""
        self.assertEqual(self.property(window, "WM_CLASS"), f'"{self.window_class}", "{self.window_class}"')
        words = self.property(window, "_NET_WM_ICON", "-notype", "-f", "_NET_WM_ICON", "32c").split(", ")
        numbers = {int(word) & 0xFFFFFFFF for word in words}
        faces = {int("ff" + colour, 16) for colour in re.findall(r'stroke="#([0-9a-f]{6})"', SVG.read_text())}
        self.assertEqual(len(faces), 9)
        self.assertGreaterEqual(len(faces & numbers), 7)

    def test_windows_have_the_class_of_the_desktop_entry_and_the_icon(self):
        viewer = self.start(self.object)
        self.assert_is_known(self.display.wait_for(desktop.MODE_TITLE))
        self.display.key("Return")
        window = self.display.wait_for(desktop.VIEWER_TITLE)
        self.assert_is_known(window)
        self.display.wait_until_pointer_is_held(window)
        self.quit(viewer)

    def test_the_icon_is_there_when_the_window_opens_again(self):
        self.write_settings()
        viewer, _ = self.start_viewing()
        self.display.key("m")
        self.display.wait_for(desktop.MODE_TITLE)
        self.display.key("Return")
        window = self.display.wait_for(desktop.VIEWER_TITLE)
        self.assert_is_known(window)
        self.display.wait_until_pointer_is_held(window)
        self.quit(viewer)


if __name__ == "__main__":
    unittest.main()
