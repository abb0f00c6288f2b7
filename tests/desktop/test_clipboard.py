# SPDX-License-Identifier: MIT
"""Text that was copied in a requester can be pasted as long as the viewer runs."""

import subprocess
import unittest

import desktop
from desktop import MODE_TITLE, TEXTURE_TITLE, VIEWER_TITLE
from test_requesters import Requesters


class Clipboard(Requesters):
    def paste(self):
        """What another program gets when it pastes. It waits for the answer."""
        done = subprocess.run(
            ["xclip", "-selection", "clipboard", "-out"],
            env=self.display.environment,
            capture_output=True,
            text=True,
            timeout=desktop.PATIENCE,
        )
        return done.stdout

    def copy_width(self, width):
        """Types a width into the screen-mode requester, copies it, and confirms the requester."""
        self.display.wait_for(MODE_TITLE)
        self.display.key("alt+w")
        self.display.type(width)
        self.display.key("ctrl+a", "ctrl+c", "Return")

    def test_text_copied_in_a_closed_requester_can_be_pasted(self):
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

    def test_text_can_be_pasted_while_the_viewer_is_hidden(self):
        viewer = self.start(self.object)
        self.copy_width("411")
        window = self.display.wait_for(VIEWER_TITLE)
        self.display.xdotool("windowminimize", window)
        self.display.wait_until_gone(VIEWER_TITLE)
        self.assertEqual(self.paste(), "411")
        viewer.process.terminate()
        self.assert_ends_well(viewer)

    def test_text_copied_in_a_file_requester_can_be_pasted(self):
        self.write_settings()
        viewer, _ = self.start_viewing()
        self.display.key("t")
        self.display.wait_for(TEXTURE_TITLE)

        def is_copied():
            """Types the location again if it was lost while the chooser started."""
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
