# SPDX-License-Identifier: MIT
"""Tests of the picture's place in the window, and of the window's behaviour on the desktop."""

import pathlib
import re
import subprocess
import unittest

import desktop


class Scaling(desktop.Case):
    DISPLAY_SIZE = (800, 600)

    def setUp(self):
        super().setUp()
        self.write_settings()
        self.still = self.rehearse("", 250, 250, tick=0.01)[0]

    def start_still(self, **settings):
        self.write_settings(**settings)
        return self.start_viewing()

    def assert_shows_still(self, window, width, height, factor):
        """Waits until the greeting is gone and the window shows the still picture, enlarged and centred on black."""
        expected = self.still.enlarged(factor).centred_on_black(width, height)
        self.assert_shows(window, expected, f"the still picture {factor} times as large")

    def lit_columns(self, picture):
        """The first and the last column of a picture that is not black."""
        lit = [x for x in range(picture.width) if any(picture.part(x, 0, 1, picture.height).rgb)]
        return (lit[0], lit[-1]) if lit else None

    def assert_shows_scaled(self, window, width, height, factor):
        """Waits until the greeting is gone and the object is `factor` times as wide as in the still picture, below a
        black edge."""
        first, last = (column * factor for column in self.lit_columns(self.still))
        edge = (height - round(256 * factor)) // 2

        def is_shown():
            shown = self.picture(window)
            if (shown.width, shown.height) != (width, height) or not shown.rows(0, edge + 5).is_black():
                return False
            lit = self.lit_columns(shown)
            return lit is not None and abs(lit[0] - first) <= 2 and abs(lit[1] - last) <= 2

        desktop.wait_until(is_shown, f"the object {factor} times as large")

    def test_doubled_pixels(self):
        viewer, window = self.start_still(mode=2)
        self.assert_shows_still(window, 640, 512, 2)
        self.quit(viewer)

    def test_a_window_too_large_for_the_display_opens_smaller(self):
        viewer, window = self.start_still(mode=4)
        self.assert_shows_still(window, 640, 512, 2)
        self.quit(viewer)

    def test_full_screen_is_centred_on_black(self):
        viewer, _ = self.start_still(mode=0)
        self.assert_shows_still(self.display.root(), 800, 600, 2)
        self.quit(viewer)

    def test_full_screen_keys_switch_there_and_back(self):
        viewer, window = self.start_still()
        for name in ("F11", "alt+Return"):
            self.display.key(name)
            self.assert_shows_still(self.display.root(), 800, 600, 2)
            self.display.key(name)
            self.assert_shows_still(window, 320, 256, 1)
        self.display.key("s")
        self.quit(viewer)
        self.assertEqual(self.env_file.read_text(), desktop.settings())

    def test_a_held_full_screen_key_switches_once(self):
        viewer, window = self.start_still()
        self.display.xdotool("keydown", "F11")
        desktop.wait_until(lambda: self.picture(window).width == 800, "the full screen")
        released = desktop.time.monotonic() + desktop.HELD_KEY_SECONDS
        while desktop.time.monotonic() < released:
            self.assertEqual(self.picture(window).width, 800)
        self.display.xdotool("keyup", "F11")
        self.quit(viewer)

    def is_maximised(self, window):
        answer = subprocess.run(
            ["xprop", "-id", str(window), "_NET_WM_STATE"], env=self.display.environment, capture_output=True, text=True
        )
        return "_NET_WM_STATE_MAXIMIZED_VERT" in answer.stdout and "_NET_WM_STATE_FULLSCREEN" not in answer.stdout

    def test_full_screen_and_back_keeps_the_window_maximised(self):
        viewer, window = self.start_still()
        self.display.change_state(window, "add", "maximized_vert", "maximized_horz")
        desktop.wait_until(lambda: self.is_maximised(window), "the maximised window")
        maximised = desktop.wait_until(
            lambda: self.display.place_of(window)[2] == 800 and self.display.place_of(window), "its size"
        )
        self.display.key("F11")
        desktop.wait_until(lambda: self.display.place_of(window)[3] == 600, "the full screen")
        self.display.key("F11")
        desktop.wait_until(
            lambda: self.is_maximised(window) and self.display.place_of(window) == maximised, "the maximised window again"
        )
        self.quit(viewer)

    def test_a_full_screen_made_by_the_window_manager_can_be_left_by_key(self):
        viewer, window = self.start_still()
        self.display.change_state(window, "add", "fullscreen")
        desktop.wait_until(lambda: self.display.place_of(window)[2:] == (800, 600), "the full screen")
        self.display.key("F11")
        desktop.wait_until(lambda: self.display.place_of(window)[2:] == (320, 256), "the window")
        self.display.key("F11")
        desktop.wait_until(lambda: self.display.place_of(window)[2:] == (800, 600), "the full screen again")
        self.quit(viewer)

    def test_a_full_screen_made_by_the_window_manager_makes_room_for_a_requester(self):
        viewer, window = self.start_still()
        self.display.change_state(window, "add", "fullscreen")
        desktop.wait_until(lambda: self.display.place_of(window)[2:] == (800, 600), "the full screen")
        self.display.key("t")
        self.display.wait_for(desktop.TEXTURE_TITLE)
        self.assertIsNone(self.display.find(desktop.VIEWER_TITLE))
        self.display.cancel(desktop.TEXTURE_TITLE)
        self.display.wait_for(desktop.VIEWER_TITLE)
        self.quit(viewer)

    def test_leaving_a_full_screen_mode_opens_a_window(self):
        viewer, window = self.start_still(mode=0)
        self.display.key("F11")
        self.assert_shows_still(window, 640, 512, 2)
        self.quit(viewer)

    def test_a_larger_window_has_black_edges(self):
        viewer, window = self.start_still()
        self.display.xdotool("windowsize", "--sync", window, 500, 300)
        self.assert_shows_still(window, 500, 300, 1)
        self.quit(viewer)

    def test_a_much_higher_window_is_filled(self):
        viewer, window = self.start_still()
        self.display.xdotool("windowsize", "--sync", window, 480, 480)
        self.assert_shows_scaled(window, 480, 480, 1.5)
        self.quit(viewer)

    def assert_is_sharp_at_one_and_a_half(self, window):
        """Of three window pixels, the first and the third are each inside one picture pixel and have its colour. Only
        the one between them may be a mixture."""
        self.display.xdotool("windowsize", "--sync", window, 480, 480)
        desktop.wait_until(lambda: self.picture(window).width == 480, "the new size")
        top = 48

        def first_blurred():
            shown = self.picture(window)
            for y in range(0, 256, 2):
                for half in range(2):
                    row = shown.rows(top + 3 * (y // 2) + 2 * half, top + 3 * (y // 2) + 2 * half + 1).rgb
                    still = self.still.rows(y + half, y + half + 1).rgb
                    for x in range(0, 320, 2):
                        for column in range(2):
                            at = 3 * (3 * (x // 2) + 2 * column)
                            if row[at : at + 3] != still[3 * (x + column) : 3 * (x + column) + 3]:
                                return x + column, y + half
            return None

        # The window is redrawn one pass after it got its size.
        desktop.wait_until(lambda: first_blurred() is None, "a sharp picture", 10.0)

    def test_a_fractional_scale_is_sharp(self):
        viewer, window = self.start_still()
        self.assert_is_sharp_at_one_and_a_half(window)
        self.quit(viewer)

    def test_a_fractional_scale_is_sharp_after_another_mode(self):
        viewer, window = self.start_still()
        self.assert_is_sharp_at_one_and_a_half(window)
        self.display.key("m")
        self.display.wait_for(desktop.MODE_TITLE)
        self.display.key("Return")
        window = self.display.wait_for(desktop.VIEWER_TITLE)
        self.assert_is_sharp_at_one_and_a_half(window)
        self.quit(viewer)

    def test_a_smaller_window_shows_the_whole_picture(self):
        viewer, window = self.start_still()
        self.display.xdotool("windowsize", "--sync", window, 160, 128)
        self.assert_shows_scaled(window, 160, 128, 0.5)
        self.quit(viewer)

    def assert_shows_doubled(self, **environment):
        self.write_settings(mode=2)
        viewer, window = self.start_viewing(**environment)
        self.assert_shows(window, self.still.enlarged(2), "the picture, doubled")
        self.quit(viewer)

    def test_the_software_renderer_shows_the_same(self):
        self.assert_shows_doubled(SDL_RENDER_DRIVER="software")

    def test_a_display_that_refuses_opengl_shows_the_same(self):
        self.assert_shows_doubled(LIBGL_ALWAYS_INDIRECT="1")

    def test_the_software_renderer_loads_no_opengl(self):
        viewer, _ = self.start_viewing(SDL_RENDER_DRIVER="software")
        loaded = pathlib.Path(f"/proc/{viewer.process.pid}/maps").read_text()
        self.assertEqual(re.findall(r"\S*/libGL\S*", loaded), [])
        self.quit(viewer)

    def test_the_software_renderer_needs_no_opengl(self):
        self.assert_shows_doubled(LIBGL_ALWAYS_INDIRECT="1", SDL_RENDER_DRIVER="software")

    def test_a_tiny_picture_has_a_window_that_the_mouse_can_grab(self):
        self.write_settings(width=1, height=1)
        viewer = self.start(self.object)
        window = self.display.wait_for(desktop.VIEWER_TITLE)
        self.assertEqual(self.display.place_of(window)[2:], (128, 96))
        hints = subprocess.run(
            ["xprop", "-id", str(window), "WM_NORMAL_HINTS"], env=self.display.environment, capture_output=True, text=True
        )
        self.assertIn("minimum size: 128 by 96", hints.stdout)
        self.quit(viewer)


class Focus(desktop.Case):
    def setUp(self):
        super().setUp()
        self.write_settings()
        self.started = desktop.time.monotonic()
        self.viewer, self.window = self.start_viewing()

    def pointer(self):
        words = self.display.xdotool("getmouselocation").split()
        return tuple(int(word.split(":")[1]) for word in words[:2])

    def open_other_window(self):
        """Opens another program's window at the top left, which takes the focus."""
        other = subprocess.Popen(["xmessage", "-geometry", "200x100+0+0", "another program"], env=self.display.environment)
        self.addCleanup(other.wait)
        self.addCleanup(other.terminate)
        return self.display.wait_for("xmessage")

    def test_the_pointer_stays_in_the_window_that_has_the_focus(self):
        self.display.wait_until_pointer_is_held(self.window)
        before = self.pointer()
        self.display.xdotool("mousemove_relative", "--", 3000, 3000)
        x, y = self.pointer()
        self.assertLess(x - before[0], 320)
        self.assertLess(y - before[1], 256)
        self.quit(self.viewer)

    def test_holding_alt_frees_the_pointer(self):
        self.display.wait_until_pointer_is_held(self.window)
        self.display.xdotool("keydown", "alt")
        self.display.wait_until_pointer_is_free(self.window)
        self.display.xdotool("mousemove", 5, 5)
        self.assertEqual(self.pointer(), (5, 5))
        self.display.xdotool("keyup", "alt")
        # The viewer captures the pointer again only over the picture. This time is enough for several passes.
        desktop.time.sleep(0.3)
        self.assertEqual(self.pointer(), (5, 5))
        self.display.xdotool("mousemove", 640, 512)
        self.display.wait_until_pointer_is_held(self.window)
        self.quit(self.viewer)

    def test_dragging_with_alt_moves_the_window(self):
        x, y, _, _ = self.display.place_of(self.window)
        self.display.xdotool("keydown", "alt")
        self.display.wait_until_pointer_is_free(self.window)
        self.display.xdotool("mousedown", 1)

        def has_moved():
            self.display.xdotool("mousemove_relative", "--", 8, 5)
            return self.display.place_of(self.window)[:2] != (x, y)

        desktop.wait_until(has_moved, "the window to move")
        self.display.xdotool("mouseup", 1, "keyup", "alt")
        self.display.wait_until_pointer_is_held(self.window)
        self.quit(self.viewer)

    def test_the_window_managers_menu_opens(self):
        """Opens a menu of the window manager, which needs the pointer."""
        self.display.xdotool("keydown", "alt")
        self.display.wait_until_pointer_is_free(self.window)
        shown = self.picture(self.display.root())
        self.display.xdotool("key", "space")
        desktop.wait_until(lambda: self.picture(self.display.root()).difference(shown), "the menu")
        self.display.xdotool("keyup", "alt")
        # While the menu has the pointer the viewer keeps running, and a signal ends it.
        self.viewer.process.terminate()
        self.assert_ends_well(self.viewer)

    def test_holding_the_title_bar_leaves_the_pointer_to_the_window_manager(self):
        """Holds it for longer than SDL would wait for the pointer. Afterwards the viewer must be able to capture it."""
        self.open_other_window()
        self.display.wait_until_pointer_is_free(self.window)
        x, y, _, _ = self.display.place_of(self.window)
        self.display.xdotool("mousemove", x + 160, y - 10, "mousedown", 1, "mousemove_relative", 0, 5)
        self.display.wait_for(desktop.VIEWER_TITLE)
        # SDL would wait for five seconds.
        desktop.time.sleep(6.0)
        self.assertNotIn(desktop.POINTER_HINT, self.display.name_of(self.window))
        self.display.xdotool("mouseup", 1)
        x, y, _, _ = self.display.place_of(self.window)
        self.display.xdotool("mousemove", x + 160, y + 128)
        self.display.wait_until_pointer_is_held(self.window)
        self.display.xdotool("mousemove_relative", "--", 3000, 3000)
        self.assertLess(self.pointer()[0], x + 320)
        self.quit(self.viewer)

    def test_a_signal_ends_a_viewer_whose_title_bar_is_held(self):
        self.open_other_window()
        self.display.wait_until_pointer_is_free(self.window)
        x, y, _, _ = self.display.place_of(self.window)
        self.display.xdotool("mousemove", x + 160, y - 10, "mousedown", 1)
        self.display.wait_for(desktop.VIEWER_TITLE)
        self.viewer.process.terminate()
        self.assert_ends_well(self.viewer)

    def test_clicks_with_modifiers_are_no_commands(self):
        self.display.wait_until_pointer_is_held(self.window)
        for modifier in ("ctrl", "alt", "super"):
            self.display.xdotool("keydown", modifier, "click", 1, "keyup", modifier)
        self.display.key("p", "s")
        desktop.wait_until(
            lambda: self.env_file.read_text() == desktop.settings(dots=1), "the viewer to go on"
        )
        self.quit(self.viewer)

    def test_losing_the_focus_frees_the_pointer_and_stops_tilting(self):
        self.open_other_window()
        self.display.wait_until_pointer_is_free(self.window)
        self.display.xdotool("mousemove", 5, 5)
        self.assertEqual(self.pointer(), (5, 5))
        self.display.xdotool("mousemove", 640, 512)
        self.display.xdotool("mousemove_relative", "--", 30, 30)
        self.display.xdotool("windowactivate", "--sync", self.window)
        # The viewer captures the pointer after it has read all events from before the focus.
        self.display.wait_until_pointer_is_held(self.window)
        unmoved = self.rehearse("", 5, 5)[0].rows(14, 256)
        desktop.wait_until(lambda: self.picture(self.window).rows(14, 256).rgb == unmoved.rgb, "the object as it was")
        self.quit(self.viewer)

    def test_the_click_that_brings_the_focus_back_is_no_command(self):
        self.open_other_window()
        self.display.wait_until_pointer_is_free(self.window)
        self.display.xdotool("mousemove", 640, 512)
        self.display.xdotool("click", 1)
        self.display.wait_for(desktop.VIEWER_TITLE)
        self.wait_until_clicks_count(self.window)
        self.assertIsNone(self.viewer.process.poll())
        self.display.xdotool("click", 1)
        self.assert_ends_well(self.viewer)

    def test_a_key_that_is_held_when_the_focus_comes_is_no_command(self):
        self.open_other_window()
        self.display.wait_until_pointer_is_free(self.window)
        self.display.xdotool("keydown", "1")
        self.display.xdotool("windowactivate", "--sync", self.window)
        self.display.wait_for(desktop.VIEWER_TITLE)
        desktop.time.sleep(desktop.HELD_KEY_SECONDS)
        self.display.xdotool("keyup", "1")
        # After its release the key works as usual.
        self.display.key("1", "p", "s")
        desktop.wait_until(lambda: "dots: 1" in self.env_file.read_text(), "the saved settings")
        self.assertEqual(self.env_file.read_text(), desktop.settings(dots=1, gammas="0.900000 1.000000 1.000000"))
        self.quit(self.viewer)

    def test_the_double_click_that_brings_the_focus_back_is_no_command(self):
        self.open_other_window()
        self.display.wait_until_pointer_is_free(self.window)
        self.display.xdotool("mousemove", 640, 512)
        self.display.xdotool("click", "--repeat", 2, "--delay", 150, 1)
        self.display.wait_for(desktop.VIEWER_TITLE)
        self.display.key("p", "s")
        desktop.wait_until(
            lambda: self.env_file.read_text() == desktop.settings(dots=1), "the viewer to go on"
        )
        self.quit(self.viewer)

    def test_a_minimised_window_makes_few_passes_and_returns(self):
        still = self.rehearse("", 250, 250, tick=0.01)[0]
        self.assert_shows(self.window, still, "the picture without its greeting")
        self.display.xdotool("windowminimize", "--sync", self.window)
        minimised = desktop.time.monotonic()
        # Long enough that passes at the display's rate would be too many, even if the window manager is slow to tell.
        desktop.time.sleep(10.0)
        minimised = desktop.time.monotonic() - minimised
        self.display.xdotool("windowactivate", "--sync", self.window)
        self.display.wait_for(desktop.VIEWER_TITLE)
        self.assert_shows(self.window, still, "the picture again")
        self.quit(self.viewer)
        # At most four passes per second while minimised, and the display's rate in the rest of the time. On a busy machine
        # the viewer learns seconds later that its window is minimised.
        seen = desktop.time.monotonic() - self.started - minimised + 3.0
        self.assertLess(self.viewer.frames(), 75 * seen + 6 * minimised)

    def test_a_minimised_window_ends_with_a_signal(self):
        self.display.xdotool("windowminimize", "--sync", self.window)
        self.viewer.process.terminate()
        self.assert_ends_well(self.viewer)


class Place(desktop.Case):
    """Tests that a window opens where the one before it was."""

    def change_mode(self, width=None):
        self.display.key("m")
        self.display.wait_for(desktop.MODE_TITLE)
        if width is not None:
            self.display.key("alt+w")
            self.display.type(str(width))
        self.display.key("Return")
        return self.display.wait_for(desktop.VIEWER_TITLE)

    def place_soon(self, window, expected):
        desktop.wait_until(lambda: self.display.place_of(window) == expected, f"the window at {expected}")

    def test_another_mode_opens_in_the_same_place(self):
        self.write_settings()
        viewer, window = self.start_viewing()
        self.display.xdotool("windowmove", "--sync", window, 70, 130)
        first = self.display.place_of(window)
        for width in (None, 400, 320):
            window = self.change_mode(width)
            self.place_soon(window, (*first[:2], width or 320, 256))
        self.quit(viewer)

    def test_a_window_fits_with_its_frame(self):
        self.write_settings()
        viewer, window = self.start_viewing()
        self.display.xdotool("windowmove", "--sync", window, 1100, 900)
        window = self.change_mode(400)
        desktop.wait_until(lambda: self.display.end_of(window) == (1280, 1024), "the window in the display's corner")
        self.quit(viewer)

    def test_after_a_maximised_window_the_next_one_is_centred(self):
        self.write_settings()
        viewer, window = self.start_viewing()
        self.display.change_state(window, "add", "maximized_vert", "maximized_horz")
        desktop.wait_until(lambda: self.display.place_of(window)[2] > 1000, "the maximised window")
        window = self.change_mode()
        x, y, width, height = self.display.place_of(window)
        self.assertEqual((width, height), (320, 256))
        self.assertAlmostEqual(x + width / 2, 640, delta=60)
        self.assertAlmostEqual(y + height / 2, 512, delta=60)
        self.quit(viewer)

    def test_a_larger_window_is_moved_to_fit(self):
        self.write_settings()
        viewer, window = self.start_viewing()
        self.display.xdotool("windowmove", "--sync", window, 900, 700)
        window = self.change_mode(800)
        x, y, width, height = self.display.place_of(window)
        self.assertEqual((width, height), (800, 256))
        self.assertGreaterEqual(x, 400)
        self.assertLessEqual(x + width, 1280)
        self.assertGreaterEqual(y, 600)
        self.assertLessEqual(y + height, 1024)
        self.quit(viewer)

    def test_after_a_full_screen_the_next_window_is_centred(self):
        self.write_settings(mode=0)
        viewer, window = self.start_viewing()
        self.display.key("m")
        self.display.wait_for(desktop.MODE_TITLE)
        self.display.key("alt+d", "Down", "alt+o")
        window = self.display.wait_for(desktop.VIEWER_TITLE)
        x, y, width, height = self.display.place_of(window)
        self.assertEqual((width, height), (320, 256))
        self.assertAlmostEqual(x + width / 2, 640, delta=60)
        self.assertAlmostEqual(y + height / 2, 512, delta=60)
        self.quit(viewer)


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
