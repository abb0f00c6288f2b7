# SPDX-License-Identifier: MIT
"""Tests of unusual files and streams: closed streams, names with blanks and colons."""

import os
import signal
import unittest

import desktop
from desktop import OBJECT_TITLE, TEXTURE_TITLE, VIEWER_TITLE
from test_requesters import Requesters


class ClosedStreams(desktop.Case):
    def start_without(self, *descriptors):
        """Starts the viewer with these standard streams closed."""
        closings = " ".join(f"{descriptor}>&-" for descriptor in descriptors)
        viewer = desktop.Viewer(
            "/bin/sh", ["-c", f'exec "$0" "$@" {closings}', self.program, self.object], self.work, self.environment()
        )
        self.viewers.append(viewer)
        return viewer

    def assert_runs_without(self, *descriptors):
        self.write_settings()
        viewer = self.start_without(*descriptors)
        window = self.display.wait_for(desktop.VIEWER_TITLE)
        desktop.wait_until(lambda: not self.picture(window).is_black(), "the first picture")
        for descriptor in descriptors:
            self.assertEqual(os.readlink(f"/proc/{viewer.process.pid}/fd/{descriptor}"), "/dev/null")
        viewer.signal(signal.SIGTERM)
        self.assertEqual(viewer.wait(), 0, viewer.err())
        if 1 not in descriptors:
            self.assertRegex(viewer.out(), desktop.STATISTICS)

    def test_no_standard_output(self):
        self.assert_runs_without(1)

    def test_no_standard_error(self):
        self.assert_runs_without(2)

    def test_no_standard_stream_at_all(self):
        self.assert_runs_without(0, 1, 2)


class Names(Requesters):
    """Names of folders and files that have a meaning to the program, or would end early in a settings file."""

    FOLDERS = ("a:", "my things", "tab\there", "100%20", "all: of %25 them")

    def make_folder(self, name):
        folder = self.work / name
        folder.mkdir()
        return folder

    def end(self, viewer):
        """Ends the viewer without a key, which a window that has just opened may miss."""
        viewer.signal(signal.SIGTERM)
        self.assert_ends_well(viewer)

    def written(self, path):
        return str(path).replace("%2", "%252").replace(" ", "%20").replace("\t", "%09")

    def test_object_named_on_the_command_line(self):
        self.write_settings()
        for name in self.FOLDERS:
            other = self.make_folder(name) / "my object.lwo"
            desktop.write_object(other)
            viewer = self.start(other)
            self.display.wait_for(VIEWER_TITLE)
            self.end(viewer)

    def test_object_chosen(self):
        self.write_settings()
        for name in ("a:", "my things"):
            other = self.make_folder(name) / "torus.lwo"
            desktop.write_object(other)
            viewer = self.start()
            self.choose_file(OBJECT_TITLE, other)
            self.display.wait_for(VIEWER_TITLE)
            self.end(viewer)

    def test_texture_is_kept_with_mode_and_size(self):
        for waves, name in enumerate(("a:", "my things", "100%20"), start=5):
            self.write_settings(width=200, height=160)
            other = self.make_folder(name) / "my waves.chunky"
            desktop.write_texture(other, waves)
            viewer, _ = self.start_viewing()
            self.display.key("t")
            self.choose_file(TEXTURE_TITLE, other)
            self.display.wait_for(VIEWER_TITLE)
            saved = desktop.settings(width=200, height=160, envmap=self.written(other))

            def is_saved():
                self.display.key("s")
                return self.env_file.read_text() == saved

            desktop.wait_until(is_saved, "the saved settings")
            self.end(viewer)
            self.assertIn(f"envmap filename: {self.written(other)}\n", viewer.out())

            viewer, window = self.start_viewing()
            # The offscreen host reads the same file by the default name.
            self.write_settings(width=200, height=160)
            (self.work / "Zelvo_envmap.chunky").write_bytes(other.read_bytes())
            self.assert_shows(window, self.rehearse("", 5, 5)[0], "the kept texture")
            self.end(viewer)

    def test_texture_named_like_the_saved_form_of_another(self):
        """Files with both names exist, and each is opened by its own name."""
        self.write_settings()
        desktop.write_texture(self.work / "a b.chunky", 7)
        desktop.write_texture(self.work / "a%20b.chunky", 11)
        for name in ("a b.chunky", "a%20b.chunky"):
            (self.work / "Zelvo_envmap.chunky").write_bytes((self.work / name).read_bytes())
            expected = self.rehearse("", 5, 5)[0].rows(14, 256)
            desktop.write_texture(self.work / "Zelvo_envmap.chunky")
            viewer, window = self.start_viewing()
            self.display.key("t")
            self.choose_file(TEXTURE_TITLE, self.work / name)
            self.display.wait_for(VIEWER_TITLE)
            desktop.wait_until(lambda: self.picture(window).rows(14, 256).rgb == expected.rgb, name)
            self.end(viewer)


if __name__ == "__main__":
    unittest.main()
