# SPDX-License-Identifier: MIT
"""What was copied in a requester is there for everybody while the viewer runs."""

import subprocess
import unittest

import desktop
from desktop import MODE_TITLE, TEXTURE_TITLE, VIEWER_TITLE
from test_requesters import Requesters


class Clipboard(Requesters):
    def paste(self):
        """What another program gets when it pastes; it waits for the answer for as long as it takes."""
        done = subprocess.run(
            ["xclip", "-selection", "clipboard", "-out"],
            env=self.display.environment,
            capture_output=True,
            text=True,
            timeout=desktop.PATIENCE,
        )
        return done.stdout

    def copy_width(self, width):
        """Types a width into the screen-mode requester, copies it, and confirms."""
        self.display.wait_for(MODE_TITLE)
        self.display.key("alt+w")
        self.display.type(width)
        self.display.key("ctrl+a", "ctrl+c", "Return")

    def test_a_closed_requester_is_pasted_from(self):
        viewer = self.start(self.object)
        self.copy_width("411")
        self.display.wait_for(VIEWER_TITLE)
        self.assertEqual(self.paste(), "411")
        self.assertEqual(self.paste(), "411")
        self.display.key("m")
        self.copy_width("412")
        self.display.wait_for(VIEWER_TITLE)
        self.assertEqual(self.paste(), "412")
        self.quit(viewer)

    def test_a_hidden_viewer_is_pasted_from(self):
        viewer = self.start(self.object)
        self.copy_width("411")
        window = self.display.wait_for(VIEWER_TITLE)
        self.display.xdotool("windowminimize", window)
        self.display.wait_until_gone(VIEWER_TITLE)
        self.assertEqual(self.paste(), "411")
        viewer.process.terminate()
        self.assert_ends_well(viewer)

    def test_a_file_requester_is_pasted_from(self):
        self.write_settings()
        viewer, _ = self.start_viewing()
        self.display.key("t")
        self.display.wait_for(TEXTURE_TITLE)

        def is_copied():
            """A location that is typed too soon is lost in the chooser's start."""
            self.display.key("ctrl+l", "ctrl+a")
            self.display.type("/somewhere")
            self.display.key("ctrl+a", "ctrl+c")
            return self.paste() == "/somewhere"

        desktop.wait_until(is_copied, "the copy")
        self.display.cancel(TEXTURE_TITLE)
        self.display.wait_for(VIEWER_TITLE)
        self.assertEqual(self.paste(), "/somewhere")
        self.quit(viewer)


if __name__ == "__main__":
    unittest.main()
