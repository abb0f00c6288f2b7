# SPDX-License-Identifier: MIT
"""Tests of every way to end the viewer, and of its command line."""

import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import unittest

import desktop


class Ends(desktop.Case):
    def setUp(self):
        super().setUp()
        self.write_settings()

    def assert_quits_by(self, *words):
        viewer, window = self.start_viewing()
        self.wait_until_clicks_count(window)
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
        self.display.close_by_key(desktop.VIEWER_TITLE, "alt+F4")
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
        self.write_settings(rotate="1.000000")
        viewer, window = self.start_viewing()
        desktop.wait_for_different(lambda: self.picture(window).rgb, 20, "20 different pictures")
        self.quit(viewer)
        self.assertGreaterEqual(viewer.frames(), 20)

    def test_missing_object(self):
        viewer = self.start("missing.lwo")
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual(viewer.out(), "File open error\n")

    def test_unknown_mode_is_not_opened(self):
        self.write_settings(mode=7)
        viewer = self.start(self.object)
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual(viewer.out(), "Couldn't open screen\n")
        self.assertEqual(viewer.err(), f"zelvo: {self.env_file}:11: no display mode 7\n")

    def test_impossible_size_is_not_opened(self):
        self.write_settings(width=16385, height=0)
        viewer = self.start(self.object)
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual(viewer.out(), "Couldn't open screen\n")
        self.assertEqual(
            viewer.err(),
            f"zelvo: {self.env_file}:12: no screen has a width of 16385, only of 1 to 16384\n"
            f"zelvo: {self.env_file}:13: no screen has a height of 0, only of 1 to 16384\n",
        )

    def test_impossible_size_of_the_lasting_settings_is_not_opened(self):
        shutil.rmtree(self.env_file.parent)
        self.envarc_file.parent.mkdir(parents=True)
        self.envarc_file.write_text(desktop.settings(height=16385))
        viewer = self.start(self.object)
        self.assertEqual(viewer.wait(), 20)
        # The login's settings, a copy of the lasting ones, were loaded.
        self.assertIn(f"zelvo: {self.env_file}:13: ", viewer.err())


class CommandLine(unittest.TestCase):
    """Tests of the command line's words. The named file is not an object, which ends the run."""

    NO_OBJECT = (20, "This is not a(n) LW object\n", "")
    NO_FILE = (20, "File open error\n", "")

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "zelvo").mkdir(mode=0o700)
        (self.folder / "zelvo" / "Zelvo.vars").write_text(desktop.settings())

    def run_viewer(self, *words):
        done = subprocess.run(
            [desktop.VIEWER, *words],
            cwd=self.folder,
            env={**os.environ, "XDG_RUNTIME_DIR": str(self.folder), "DISPLAY": "", "WAYLAND_DISPLAY": ""},
            capture_output=True,
            text=True,
            stdin=subprocess.DEVNULL,
        )
        return done.returncode, done.stdout, done.stderr

    def make(self, *names):
        for name in names:
            (self.folder / name).write_text("no object")

    def assert_refused(self, word, *words):
        code, out, err = self.run_viewer(*words, word)
        self.assertEqual((code, out), (2, ""))
        self.assertEqual(err, f"zelvo: neither an option nor a file: {word} (see zelvo --help)\n")

    def assert_impossible(self, *words):
        code, out, err = self.run_viewer(*words)
        self.assertEqual((code, out), (2, ""), words)
        self.assertRegex(err, r"\Azelvo: (impossible value|a value is missing): .* \(see zelvo --help\)\n\Z")

    def test_version_is_the_tag_without_its_marker(self):
        version = (0, "Zelvo 0.67 OS4 (23-Feb-2005)\n", "")
        self.assertEqual(self.run_viewer("--version"), version)
        self.assertEqual(self.run_viewer("knot.lwo", "--version"), version)

    def test_help(self):
        code, text, errors = self.run_viewer("--help")
        self.assertEqual((code, errors), (0, ""))
        self.assertTrue(text.startswith("Usage: zelvo [OPTION...] [OBJECT]\n"))
        self.assertTrue(text.endswith("\n"))
        self.assertEqual(self.run_viewer("-h"), (0, text, ""))

    def test_help_fits_a_terminal_and_has_all_options(self):
        text = self.run_viewer("--help")[1]
        words = ("--fullscreen", "--window[=", "--size ", "--env ", "--envarc ", "--envmap ", "--import ", "--record ")
        for word in (*words, "-h, --help ", "--version ", "? the template", "-- OBJECT", "F1 ", "F12 ", "Ctrl+O", "Page Down, Page Up"):
            self.assertIn(word, text)
        lines = text.splitlines()
        # The last line is the shell's.
        self.assertLess(len(lines), 24)
        self.assertLessEqual(max(map(len, lines)), 80)

    def test_impossible_values(self):
        for words in (["--window=5"], ["--window=0"], ["--window=2x"], ["--window="], ["--size", "320"]):
            self.assert_impossible(*words)
        for size in ("0x256", "320x16385", "x", "320x", "x256", "-1x1", "320x256x1", "320X256", "99999999999x1"):
            self.assert_impossible("--size=" + size)
        for option in ("--size", "--env", "--envarc", "--envmap"):
            self.assert_impossible(option)
            self.assert_impossible(option + "=")

    def test_a_word_that_is_no_option(self):
        for word in ("-x", "-", "--unknown", "--version=abc", "--help=abc", "-hx", "--vers", "-missing.lwo"):
            self.assert_refused(word)
        self.make("knot.lwo")
        self.assert_refused("-x", "knot.lwo")

    def test_a_word_that_looks_like_an_option_and_is_a_file(self):
        self.make("-odd.lwo", "-", "--version=abc")
        for word in ("-odd.lwo", "-", "--version=abc"):
            self.assertEqual(self.run_viewer(word), self.NO_OBJECT)

    def test_words_after_two_dashes_are_files(self):
        names = ("knot.lwo", "-odd.lwo", "--version", "--", "?", "FILE", "FILE=knot")
        for name in names:
            self.assertEqual(self.run_viewer("--", name), self.NO_FILE)
        self.make(*names)
        for name in names:
            self.assertEqual(self.run_viewer("--", name), self.NO_OBJECT)

    def test_other_words_are_file_names(self):
        missing = "missing.lwo"
        for words in ([missing], ["FILE=--missing"], ["file", missing], ["FILE", "--version"], ["File", "-h"], [""]):
            self.assertEqual(self.run_viewer(*words), self.NO_FILE, words)
        self.make("knot.lwo")
        for words in (["knot.lwo"], ["FILE=knot.lwo"], ["file", "knot.lwo"]):
            self.assertEqual(self.run_viewer(*words), self.NO_OBJECT, words)

    def test_any_other_number_of_words_asks_for_the_object(self):
        self.make("a", "b")
        others = ([], ["--"], ["a", "b"], ["--", "a", "b"], ["a", "--", "b"], ["FILE"], ["FILE", "a", "b"], ["?", "a"])
        for words in others:
            code, out, _ = self.run_viewer(*words)
            self.assertEqual((code, out), (20, "No filename given\n"), words)

    def test_question_mark_prints_the_template(self):
        self.assertEqual(self.run_viewer("?"), (0, "FILE/A: the LightWave object to view\n", ""))


if __name__ == "__main__":
    unittest.main()
