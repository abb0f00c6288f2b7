# SPDX-License-Identifier: MIT
"""All ways out, and what is asked of the program on the command line."""

import re
import signal
import subprocess
import unittest

import desktop


class Ends(desktop.Case):
    def setUp(self):
        super().setUp()
        self.write_settings()

    def assert_quits_by(self, *words):
        viewer, _ = self.start_viewing()
        self.display.xdotool(*words)
        self.assert_ends_well(viewer)
        self.assertEqual(viewer.out().count("number of frames"), 1)

    def test_escape(self):
        self.assert_quits_by("key", "Escape")

    def test_q(self):
        self.assert_quits_by("key", "q")

    def test_x(self):
        self.assert_quits_by("key", "x")

    def test_control_q(self):
        self.assert_quits_by("key", "ctrl+q")

    def test_left_button(self):
        self.assert_quits_by("click", 1)

    def test_close_button(self):
        viewer, _ = self.start_viewing()

        def is_closed():
            """The window manager does not always hear its own keys so soon after a window came."""
            self.display.key("alt+F4")
            desktop.time.sleep(0.5)
            return viewer.process.poll() is not None

        desktop.wait_until(is_closed, "the window's end")
        self.assert_ends_well(viewer)

    def test_interrupt(self):
        viewer, _ = self.start_viewing()
        viewer.signal(signal.SIGINT)
        self.assert_ends_well(viewer)

    def test_termination(self):
        viewer, _ = self.start_viewing()
        viewer.signal(signal.SIGTERM)
        self.assert_ends_well(viewer)

    def test_termination_twice_prints_the_statistics_once(self):
        viewer, _ = self.start_viewing()
        viewer.signal(signal.SIGTERM)
        viewer.signal(signal.SIGTERM)
        self.assert_ends_well(viewer)
        self.assertEqual(viewer.out().count("number of frames"), 1)

    def test_statistics_count_the_passes(self):
        viewer, _ = self.start_viewing()
        desktop.time.sleep(1.0)
        self.quit(viewer)
        frames = int(re.search(r"number of frames: (\d+)", viewer.out())[1])
        self.assertGreater(frames, 20)

    def test_missing_object(self):
        viewer = self.start("missing.lwo")
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual(viewer.out(), "File open error\n")

    def test_unknown_mode_is_not_opened(self):
        self.write_settings(mode=7)
        viewer = self.start(self.object)
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual(viewer.out(), "Couldn't open screen\n")
        self.assertIn("no display mode 7", viewer.err())

    def test_impossible_size_is_not_opened(self):
        self.write_settings(width=16385)
        viewer = self.start(self.object)
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual(viewer.out(), "Couldn't open screen\n")


class CommandLine(unittest.TestCase):
    def run_viewer(self, *words):
        done = subprocess.run([desktop.VIEWER, *words], capture_output=True, text=True, stdin=subprocess.DEVNULL)
        return done.returncode, done.stdout

    def test_version_is_the_tag_without_its_marker(self):
        self.assertEqual(self.run_viewer("--version"), (0, "Zelvo 0.67 OS4 (23-Feb-2005)\n"))

    def test_help(self):
        code, text = self.run_viewer("--help")
        self.assertEqual(code, 0)
        self.assertIn("Usage: zelvo [OBJECT]", text)

    def test_other_words_are_file_names(self):
        self.assertEqual(self.run_viewer("-missing.lwo"), (20, "File open error\n"))
        self.assertEqual(self.run_viewer("FILE=--missing"), (20, "File open error\n"))
        self.assertEqual(self.run_viewer("file", "missing.lwo"), (20, "File open error\n"))

    def test_question_mark_prints_the_template(self):
        code, text = self.run_viewer("?")
        self.assertEqual(code, 0)
        self.assertTrue(text.startswith("FILE/A"))


if __name__ == "__main__":
    unittest.main()
