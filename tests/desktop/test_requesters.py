# SPDX-License-Identifier: MIT
"""Tests of the screen-mode requester and the file requesters, by keyboard."""

import signal
import unittest

import desktop
from desktop import MODE_TITLE, OBJECT_TITLE, TEXTURE_TITLE, VIEWER_TITLE


class Requesters(desktop.Case):
    def size_of(self, window):
        picture = self.picture(window)
        return picture.width, picture.height


class ScreenMode(Requesters):
    def test_first_start_asks_before_the_object_is_read(self):
        self.object.write_bytes(b"not an object at all")
        viewer = self.start(self.object)
        self.display.wait_for(MODE_TITLE)
        self.display.key("Return")
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual(
            viewer.out(),
            "display parameters: 0x00000002, 320, 256\nchangescreenbuffer done\nThis is not a(n) LW object\n",
        )

    def test_first_start_confirmed(self):
        viewer = self.start(self.object)
        self.display.wait_for(MODE_TITLE)
        self.display.key("Return")
        window = self.display.wait_for(VIEWER_TITLE)
        self.assertEqual(self.size_of(window), (640, 512))
        self.display.key("s")
        self.quit(viewer)
        self.assertTrue(viewer.out().startswith("display parameters: 0x00000002, 320, 256\n"))
        self.assertEqual(self.env_file.read_text(), desktop.settings(mode=2, fps=1))

    def test_first_start_cancelled_uses_the_requesters_contents(self):
        viewer = self.start(self.object)
        self.display.cancel(MODE_TITLE)
        window = self.display.wait_for(VIEWER_TITLE)
        self.assertEqual(self.size_of(window), (640, 512))
        self.quit(viewer)
        self.assertTrue(viewer.out().startswith("display parameters: 0x00000002, 320, 256\n"))

    def test_cancelling_forgets_what_was_typed(self):
        viewer = self.start(self.object)
        self.display.wait_for(MODE_TITLE)
        self.display.key("alt+w")
        self.display.type("411")
        self.display.key("Tab")
        self.display.cancel(MODE_TITLE)
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)
        self.assertTrue(viewer.out().startswith("display parameters: 0x00000002, 320, 256\n"))

    def test_another_size_is_typed(self):
        viewer = self.start(self.object)
        self.display.wait_for(MODE_TITLE)
        self.display.key("alt+w")
        self.display.type("401")
        self.display.key("alt+h")
        self.display.type("299")
        self.display.key("Return")
        window = self.display.wait_for(VIEWER_TITLE)
        self.assertEqual(self.size_of(window), (802, 598))
        self.display.key("s")
        self.quit(viewer)
        self.assertTrue(viewer.out().startswith("display parameters: 0x00000002, 401, 299\n"))
        self.assertIn("width: 401\nheight: 299\n", self.env_file.read_text())

    def test_a_usual_size_and_another_mode_are_chosen(self):
        viewer = self.start(self.object)
        self.display.wait_for(MODE_TITLE)
        # One mode up from doubled pixels, one size down from 320 x 256.
        self.display.key("alt+d", "Up")
        self.display.key("alt+s", "Down")
        self.display.key("alt+o")
        window = self.display.wait_for(VIEWER_TITLE)
        self.assertEqual(self.size_of(window), (640, 400))
        self.quit(viewer)
        self.assertTrue(viewer.out().startswith("display parameters: 0x00000001, 640, 400\n"))

    def test_m_changes_the_size_and_back(self):
        self.write_settings()
        first = self.rehearse("", 5, 5)[0].rows(14, 256)
        viewer, window = self.start_viewing()
        self.display.key("m")
        self.display.wait_for(MODE_TITLE)
        self.assertIsNone(self.display.find(VIEWER_TITLE))
        self.display.key("alt+w")
        self.display.type("200")
        self.display.key("alt+h")
        self.display.type("160")
        self.display.key("Return")
        window = self.display.wait_for(VIEWER_TITLE)
        self.assertEqual(self.size_of(window), (200, 160))
        self.display.key("m")
        self.display.wait_for(MODE_TITLE)
        self.display.key("alt+w")
        self.display.type("320")
        self.display.key("alt+h")
        self.display.type("256")
        self.display.key("Return")
        window = self.display.wait_for(VIEWER_TITLE)
        desktop.wait_until(lambda: self.picture(window).rows(14, 256).rgb == first.rgb, "the first picture again")
        self.quit(viewer)
        self.assertIn("display parameters: 0x00000001, 200, 160\n", viewer.out())
        self.assertIn("display parameters: 0x00000001, 320, 256\n", viewer.out())

    def test_termination_closes_the_requester(self):
        viewer = self.start(self.object)
        self.display.wait_for(MODE_TITLE)
        viewer.signal(signal.SIGTERM)
        self.assert_ends_well(viewer)


class Files(Requesters):
    def setUp(self):
        super().setUp()
        self.write_settings()

    def test_object_is_chosen(self):
        viewer = self.start()
        self.choose_file(OBJECT_TITLE, self.object)
        window = self.display.wait_for(VIEWER_TITLE)
        self.assert_shows(window, self.rehearse("", 5, 5)[0], "the chosen object")
        self.quit(viewer)

    def test_object_requester_cancelled(self):
        viewer = self.start()
        self.display.cancel(OBJECT_TITLE)
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual(viewer.out(), "No filename given\n")

    def test_object_requester_ends_with_a_signal(self):
        viewer = self.start()
        self.display.wait_for(OBJECT_TITLE)
        viewer.signal(signal.SIGTERM)
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual(viewer.out(), "No filename given\n")

    def test_too_many_words_show_the_requester(self):
        viewer = self.start(self.object, self.object)
        self.display.cancel(OBJECT_TITLE)
        self.assertEqual(viewer.wait(), 20)

    def test_t_loads_another_texture(self):
        other = self.work / "other.chunky"
        desktop.write_texture(other, waves=9)
        expected = self.rehearse(f'30 key t\nanswer file "{self.work}" other.chunky', 60, 60)[0].rows(14, 256)
        viewer, window = self.start_viewing()
        self.display.key("t")
        self.choose_file(TEXTURE_TITLE, other)
        self.display.wait_for(VIEWER_TITLE)
        # The message is not compared, because its two seconds begin before the requester opens.
        desktop.wait_until(lambda: self.picture(window).rows(14, 256).rgb == expected.rgb, "the new texture")
        self.display.key("s")
        self.quit(viewer)
        self.assertIn(f"envmap filename: {other}\n", viewer.out())
        self.assertEqual(self.env_file.read_text(), desktop.settings(envmap=other))

    def test_t_confirmed_at_once_uses_the_initial_file(self):
        # The requester must not begin with the first file of the folder.
        desktop.write_texture(self.work / "A.chunky")
        viewer, _ = self.start_viewing()
        self.display.key("t")
        self.display.close_by_key(TEXTURE_TITLE, "alt+o")
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)
        self.assertIn(f"envmap filename: {self.work}/Zelvo_envmap.chunky\n", viewer.out())

    def test_t_cancelled_uses_the_initial_name(self):
        expected = self.rehearse("30 key t", 60, 60)[0].rows(14, 256)
        viewer, window = self.start_viewing()
        self.display.key("t")
        self.display.cancel(TEXTURE_TITLE)
        self.display.wait_for(VIEWER_TITLE)
        desktop.wait_until(lambda: self.picture(window).rows(14, 256).rgb == expected.rgb, "the old texture")
        self.quit(viewer)
        self.assertIn("envmap filename: Zelvo_envmap.chunky\n", viewer.out())

    def test_escape_held_to_cancel_does_not_quit_the_viewer(self):
        viewer, window = self.start_viewing()
        self.display.key("t")
        self.display.wait_for(TEXTURE_TITLE)
        self.display.xdotool("keydown", "Escape")
        self.display.wait_until_gone(TEXTURE_TITLE)
        self.display.wait_for(VIEWER_TITLE)
        desktop.time.sleep(desktop.HELD_KEY_SECONDS)
        self.assertIsNone(viewer.process.poll())
        self.display.xdotool("keyup", "Escape")
        self.quit(viewer)

    def test_escape_held_to_cancel_the_mode_does_not_quit_the_viewer(self):
        viewer, window = self.start_viewing()
        self.display.key("m")
        self.display.wait_for(MODE_TITLE)
        self.display.xdotool("keydown", "Escape")
        self.display.wait_for(VIEWER_TITLE)
        desktop.time.sleep(desktop.HELD_KEY_SECONDS)
        self.assertIsNone(viewer.process.poll())
        self.display.xdotool("keyup", "Escape")
        self.quit(viewer)

    def test_the_viewer_is_redrawn_where_a_requester_covered_it(self):
        viewer, window = self.start_viewing()
        expected = self.rehearse("", 250, 250, tick=0.01)[0]
        self.assert_shows(window, expected, "the viewer without its greeting")
        self.display.key("t")
        requester = self.display.wait_for(TEXTURE_TITLE)
        x, y, _, _ = self.display.place_of(window)
        self.display.xdotool("windowmove", "--sync", requester, x, y)
        desktop.wait_until(lambda: self.picture(window).difference(expected), "the requester to cover the viewer")
        # Moves the requester almost off the display. The viewer is in the opposite corner.
        self.display.xdotool("windowmove", "--sync", requester, 1200, 950)
        self.display.xdotool("windowmove", "--sync", window, 10, 40)
        self.assert_shows(window, expected, "the viewer again")
        self.display.cancel(TEXTURE_TITLE)
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)

    def test_a_full_screen_makes_room_for_the_requester(self):
        self.write_settings(mode=0)
        viewer, window = self.start_viewing()
        self.display.key("t")
        self.display.wait_for(TEXTURE_TITLE)
        self.assertIsNone(self.display.find(VIEWER_TITLE))
        self.display.cancel(TEXTURE_TITLE)
        window = self.display.wait_for(VIEWER_TITLE)
        desktop.wait_until(lambda: self.size_of(window) == (1280, 1024), "the full screen again")
        self.display.key("p", "s")
        self.quit(viewer)
        self.assertEqual(self.env_file.read_text(), desktop.settings(mode=0, dots=1))

    def test_missing_texture_is_requested_and_cancelled(self):
        (self.work / "Zelvo_envmap.chunky").unlink()
        viewer = self.start(self.object)
        self.display.cancel(TEXTURE_TITLE)
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual(viewer.out(), "envmap filename: Zelvo_envmap.chunky\nenvmap file open error\n")

    def test_missing_texture_is_requested_and_chosen(self):
        (self.work / "Zelvo_envmap.chunky").unlink()
        other = self.work / "other.chunky"
        desktop.write_texture(other)
        viewer = self.start(self.object)
        self.choose_file(TEXTURE_TITLE, other)
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)
        self.assertIn(f"envmap filename: {other}\n", viewer.out())

    def test_installed_texture_is_found(self):
        installed = self.folder / "share" / "zelvo"
        installed.mkdir(parents=True)
        expected = self.rehearse("", 5, 5)[0]
        (self.work / "Zelvo_envmap.chunky").rename(installed / "Zelvo_envmap.chunky")
        viewer, window = self.start_viewing()
        self.assert_shows(window, expected, "the installed texture")
        self.quit(viewer)

    def test_texture_of_the_current_folder_comes_before_the_installed_one(self):
        installed = self.folder / "share" / "zelvo"
        installed.mkdir(parents=True)
        desktop.write_texture(installed / "Zelvo_envmap.chunky", waves=7)
        expected = self.rehearse("", 5, 5)[0]
        viewer, window = self.start_viewing()
        self.assert_shows(window, expected, "the current folder's texture")
        self.quit(viewer)


if __name__ == "__main__":
    unittest.main()
