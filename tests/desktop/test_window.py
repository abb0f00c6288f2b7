# SPDX-License-Identifier: MIT
"""How the picture stands in the window, and how the window gets on with the desktop."""

import subprocess
import unittest

import desktop
import pictures


class Scaling(desktop.Case):
    DISPLAY_SIZE = (800, 600)

    def setUp(self):
        super().setUp()
        self.write_settings()
        self.still = self.rehearse("", 250, 250, tick=0.01)[0]

    def screen(self):
        return pictures.of_window(self.root(), self.display.environment)

    def root(self):
        answer = subprocess.run(
            ["xwininfo", "-root"], env=self.display.environment, capture_output=True, text=True, check=True
        ).stdout
        return int(answer.split("Window id: ")[1].split()[0], 16)

    def assert_stands_at(self, shown, x, y, factor):
        """The still picture at this place, enlarged, and black elsewhere in the width that it takes."""
        expected = self.still.enlarged(factor)
        part = shown.part(x, y, expected.width, expected.height)
        self.assertIsNone(part.difference(expected))
        self.assertEqual(sum(map(bool, shown.rgb)), sum(map(bool, expected.rgb)), "something stands beside it")

    def start_still(self, **settings):
        """Starts, and waits until the greeting has gone."""
        self.write_settings(**settings)
        viewer, window = self.start_viewing()
        desktop.time.sleep(2.5)
        return viewer, window

    def test_doubled_pixels(self):
        viewer, window = self.start_still(mode=2)
        self.assert_stands_at(self.picture(window), 0, 0, 2)
        self.quit(viewer)

    def test_a_window_too_large_for_the_display_opens_smaller(self):
        viewer, window = self.start_still(mode=4)
        self.assert_stands_at(self.picture(window), 0, 0, 2)
        self.quit(viewer)

    def test_full_screen_is_centred_on_black(self):
        viewer, _ = self.start_still(mode=0)
        self.assert_stands_at(self.screen(), 80, 44, 2)
        self.quit(viewer)

    def test_full_screen_keys_go_there_and_back(self):
        viewer, window = self.start_still()
        for name in ("F11", "alt+Return"):
            self.display.key(name)
            desktop.wait_until(lambda: self.picture(window).width == 800, name + " to full screen")
            desktop.time.sleep(0.3)
            self.assert_stands_at(self.screen(), 80, 44, 2)
            self.display.key(name)
            desktop.wait_until(lambda: self.picture(window).width == 320, name + " to a window")
        desktop.time.sleep(0.3)
        self.assert_stands_at(self.picture(window), 0, 0, 1)
        self.display.key("s")
        self.quit(viewer)
        self.assertEqual(self.env_file.read_text(), desktop.settings())

    def test_leaving_a_full_screen_mode_leads_to_a_window(self):
        viewer, window = self.start_still(mode=0)
        self.display.key("F11")
        desktop.wait_until(lambda: self.picture(window).width < 800, "a window")
        desktop.time.sleep(0.3)
        self.assert_stands_at(self.picture(window), 0, 0, 2)
        self.quit(viewer)

    def test_a_larger_window_has_black_edges(self):
        viewer, window = self.start_still()
        self.display.xdotool("windowsize", "--sync", window, 500, 300)
        desktop.time.sleep(0.3)
        self.assert_stands_at(self.picture(window), 90, 22, 1)
        self.quit(viewer)

    def test_a_much_higher_window_is_filled(self):
        viewer, window = self.start_still()
        self.display.xdotool("windowsize", "--sync", window, 480, 480)
        desktop.time.sleep(0.3)
        shown = self.picture(window)
        self.assertTrue(shown.rows(0, 48 + 5).is_black())
        # Where the object stands in the picture, it stands one and a half times as far in the window.
        columns = [x for x in range(320) if any(self.still.part(x, 0, 1, 256).rgb)]
        wide = [x for x in range(480) if any(shown.part(x, 0, 1, 480).rgb)]
        self.assertAlmostEqual(wide[0], columns[0] * 1.5, delta=2)
        self.assertAlmostEqual(wide[-1], columns[-1] * 1.5, delta=2)
        self.quit(viewer)

    def test_a_smaller_window_shows_the_whole_picture(self):
        viewer, window = self.start_still()
        self.display.xdotool("windowsize", "--sync", window, 160, 128)
        desktop.time.sleep(0.3)
        shown = self.picture(window)
        columns = [x for x in range(320) if any(self.still.part(x, 0, 1, 256).rgb)]
        narrow = [x for x in range(160) if any(shown.part(x, 0, 1, 128).rgb)]
        self.assertAlmostEqual(narrow[0], columns[0] / 2, delta=2)
        self.assertAlmostEqual(narrow[-1], columns[-1] / 2, delta=2)
        self.quit(viewer)

    def test_the_software_renderer_shows_the_same(self):
        self.write_settings(mode=2)
        viewer, window = self.start_viewing(SDL_RENDER_DRIVER="software")
        desktop.time.sleep(2.5)
        self.assert_stands_at(self.picture(window), 0, 0, 2)
        self.quit(viewer)


class Focus(desktop.Case):
    def setUp(self):
        super().setUp()
        self.write_settings()
        self.viewer, self.window = self.start_viewing()

    def pointer(self):
        words = self.display.xdotool("getmouselocation").split()
        return tuple(int(word.split(":")[1]) for word in words[:2])

    def open_other_window(self):
        """Another program's window at the top left, which takes the focus."""
        other = subprocess.Popen(["xmessage", "-geometry", "200x100+0+0", "another program"], env=self.display.environment)
        self.addCleanup(other.wait)
        self.addCleanup(other.terminate)
        return self.display.wait_for("xmessage")

    def test_the_pointer_stays_in_the_window_that_has_the_focus(self):
        before = self.pointer()
        self.display.xdotool("mousemove_relative", "--", 3000, 3000)
        x, y = self.pointer()
        self.assertLess(x - before[0], 320)
        self.assertLess(y - before[1], 256)
        self.quit(self.viewer)

    def test_losing_the_focus_frees_the_pointer_and_ends_the_steering(self):
        self.open_other_window()
        desktop.time.sleep(0.2)
        self.display.xdotool("mousemove", 5, 5)
        self.assertEqual(self.pointer(), (5, 5))
        self.display.xdotool("mousemove", 640, 512)
        self.display.xdotool("mousemove_relative", "--", 30, 30)
        self.display.xdotool("windowactivate", "--sync", self.window)
        desktop.time.sleep(0.2)
        desktop.wait_until(
            lambda: self.picture(self.window).rows(14, 256).rgb == self.rehearse("", 5, 5)[0].rows(14, 256).rgb,
            "the object as it stood",
        )
        self.quit(self.viewer)

    def test_the_click_that_brings_the_focus_back_is_no_command(self):
        self.open_other_window()
        desktop.time.sleep(0.2)
        self.display.xdotool("mousemove", 640, 512)
        self.display.xdotool("click", 1)
        self.display.wait_for(desktop.VIEWER_TITLE)
        desktop.time.sleep(0.5)
        self.assertIsNone(self.viewer.process.poll())
        self.display.xdotool("click", 1)
        self.assert_ends_well(self.viewer)

    def test_a_minimised_window_costs_next_to_nothing_and_comes_back(self):
        desktop.time.sleep(2.5)
        shown = self.picture(self.window)
        self.display.xdotool("windowminimize", "--sync", self.window)
        desktop.time.sleep(0.5)
        before = self.viewer.processor_seconds()
        desktop.time.sleep(3.0)
        self.assertLess(self.viewer.processor_seconds() - before, 0.15)
        self.display.xdotool("windowactivate", "--sync", self.window)
        self.display.wait_for(desktop.VIEWER_TITLE)
        self.assert_shows(self.window, shown, "the picture again")
        self.quit(self.viewer)

    def test_a_minimised_window_ends_with_a_signal(self):
        self.display.xdotool("windowminimize", "--sync", self.window)
        self.viewer.process.terminate()
        self.assert_ends_well(self.viewer)


class WithoutManager(desktop.Case):
    MANAGER = False

    def test_keys_work_without_a_window_manager(self):
        self.write_settings()
        viewer = self.start(self.object)
        window = desktop.wait_until(lambda: self.display.find(desktop.VIEWER_TITLE), "the window")
        self.assert_shows(window, self.rehearse("", 5, 5)[0], "the greeting")
        self.display.key("p", "s", "q")
        self.assert_ends_well(viewer)
        self.assertEqual(self.env_file.read_text(), desktop.settings(dots=1))


if __name__ == "__main__":
    unittest.main()
