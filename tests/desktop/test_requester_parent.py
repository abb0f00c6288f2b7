# SPDX-License-Identifier: MIT
"""Tests that a requester is a dialog of the viewer: it stays above the viewer's window, and going to the viewer
activates it."""

import subprocess
import unittest

import desktop
import wayland
from desktop import MODE_TITLE, TEXTURE_TITLE, VIEWER_TITLE


def numbers_after(text, word):
    """The window numbers that follow a word, from the last line that has it."""
    line = [line for line in text.splitlines() if word in line][-1]
    return [int(number, 16) for number in desktop.re.findall(r"0x[0-9a-f]+", line.split(word)[1])]


class Managed(desktop.Case):
    def setUp(self):
        super().setUp()
        self.write_settings()

    def root_property(self, name):
        answer = subprocess.run(
            ["xprop", "-root", name], env=self.display.environment, capture_output=True, text=True, check=True
        )
        return numbers_after(answer.stdout, name)

    def visit_another_window(self):
        other = subprocess.Popen(["xmessage", "elsewhere"], env=self.display.environment, stderr=subprocess.DEVNULL)
        self.addCleanup(other.wait)
        self.addCleanup(other.terminate)
        window = desktop.wait_until(lambda: self.display.find("^xmessage"), "another window")

        def is_there():
            self.display.xdotool("windowactivate", window)
            return self.display.xdotool("getactivewindow").split() == [str(window)]

        desktop.wait_until(is_there, "the other window's focus")

    def test_an_always_on_top_viewer_is_below_its_requester(self):
        viewer, window = self.start_viewing()
        self.display.wmctrl(window, "-b", "add,above")
        self.display.key("t")
        requester = self.display.wait_for(TEXTURE_TITLE)
        stack = self.root_property("_NET_CLIENT_LIST_STACKING")
        self.assertLess(stack.index(window), stack.index(requester))
        self.display.cancel(TEXTURE_TITLE)
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)

    def test_a_requester_names_the_viewer_as_its_parent(self):
        viewer, window = self.start_viewing()
        self.display.key("t")
        requester = self.display.wait_for(TEXTURE_TITLE)
        answer = subprocess.run(
            ["xprop", "-id", str(requester), "WM_TRANSIENT_FOR"],
            env=self.display.environment,
            capture_output=True,
            text=True,
            check=True,
        )
        self.assertEqual(numbers_after(answer.stdout, "WM_TRANSIENT_FOR"), [window])
        self.display.cancel(TEXTURE_TITLE)
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)

    def test_going_to_the_viewer_activates_its_requester(self):
        viewer, window = self.start_viewing()
        self.display.key("t")
        self.display.wait_for(TEXTURE_TITLE)
        self.visit_another_window()
        self.display.xdotool("windowactivate", window)
        self.display.wait_for(TEXTURE_TITLE)
        self.display.cancel(TEXTURE_TITLE)
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)


class Unmanaged(desktop.Case):
    """Tests without a window manager, where only the viewer itself moves the focus."""

    MANAGER = False

    def test_focusing_the_viewer_focuses_its_requester(self):
        self.write_settings()
        viewer = self.start(self.object)
        window = desktop.wait_until(lambda: self.display.find(VIEWER_TITLE), "the viewer")
        desktop.wait_until(lambda: not self.picture(window).is_black(), "the first picture")
        self.display.xdotool("windowfocus", window)
        self.display.key("t")
        requester = desktop.wait_until(lambda: self.display.find(TEXTURE_TITLE), "the requester")

        def go_to_the_viewer():
            self.display.xdotool("windowfocus", requester)
            # As slowly as a user: the viewer does not notice a focus that leaves and returns at once.
            desktop.time.sleep(0.5)
            self.display.xdotool("windowraise", window, "windowfocus", window)

        desktop.repeat_until(go_to_the_viewer, lambda: self.focused_window() == requester, "the requester's focus")
        self.assertEqual(self.top_window(), requester)
        viewer.process.terminate()
        self.assert_ends_well(viewer)

    def focused_window(self):
        return int(self.display.xdotool("getwindowfocus"))

    def top_window(self):
        tree = subprocess.run(
            ["xwininfo", "-root", "-children"], env=self.display.environment, capture_output=True, text=True, check=True
        )
        shown = [line for line in tree.stdout.splitlines() if "Zelvo   " in line or "Select Zelvo" in line]
        return int(shown[0].split()[0], 16)


class WaylandCase(wayland.Case):
    """On Wayland the viewer's window and its requesters belong to two clients of the compositor."""

    COMPOSITOR = wayland.Sway

    def start_asking(self, key, title, **environment):
        """Starts the viewer and opens a requester."""
        self.write_settings()
        viewer = self.start(self.object, **environment)
        self.wait_until_viewing(viewer)
        self.open_requester(key)
        desktop.wait_until(lambda: self.display.find(title), "the requester")
        return viewer

    def end(self, viewer, errors=""):
        viewer.process.terminate()
        self.assert_ends_well(viewer, errors)


class OnWayland(WaylandCase):
    def is_full_screen(self):
        """Whether a corner is black like the viewer's borders, unlike the compositor's background."""
        return self.picture().part(0, 0, 20, 20).is_black()

    def test_a_requester_stays_above_the_viewers_full_screen(self):
        viewer = self.start_asking("m", MODE_TITLE)
        self.assertFalse(self.is_full_screen())
        # Besides a full screen, the compositor shows only its dialogs.
        self.display.command(f'[title="{VIEWER_TITLE}"] fullscreen enable')
        desktop.wait_until(self.is_full_screen, "the full screen")
        self.assertTrue(self.is_requester_shown())
        self.display.command(f'[title="{MODE_TITLE}"] focus')
        self.close_requester("Return")
        self.wait_until_viewing(viewer)
        self.end(viewer)

    def test_the_viewers_window_has_a_name_only_while_a_requester_is_open(self):
        viewer = self.start_asking("t", TEXTURE_TITLE, WAYLAND_DEBUG="1")

        def requests(name):
            return len(desktop.re.findall(f"-> zxdg_{name}\\(", viewer.err()))

        self.assertEqual(requests(r"exporter_v1@\d+\.export"), 1)
        self.assertEqual(requests(r"exported_v1@\d+\.destroy"), 0)
        self.close_requester("Escape")
        self.wait_until_viewing(viewer)
        self.assertEqual(requests(r"exported_v1@\d+\.destroy"), 1)
        self.assertEqual(requests(r"exporter_v1@\d+\.destroy"), 1)
        self.end(viewer, errors=r"(\[ *[\d.]+\] [^\n]*\n)*")


class SwayThatTiles(wayland.Sway):
    """Tiles all windows except dialogs."""

    RULES = ""


class OnTilingWayland(WaylandCase):
    COMPOSITOR = SwayThatTiles

    def test_a_requester_is_a_dialog_and_not_tiled(self):
        viewer = self.start_asking("t", TEXTURE_TITLE)
        self.assertEqual(self.display.find(VIEWER_TITLE)["type"], "con")
        self.assertEqual(self.display.find(TEXTURE_TITLE)["type"], "floating_con")
        self.end(viewer)


if __name__ == "__main__":
    unittest.main()
