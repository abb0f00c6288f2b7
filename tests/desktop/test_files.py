# SPDX-License-Identifier: MIT
"""Files and streams as users really have them: closed streams, names with blanks and colons, disks that refuse."""

import os
import unittest

import desktop


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
        self.display.key("Escape")
        self.assertEqual(viewer.wait(), 0, viewer.err())
        if 1 not in descriptors:
            self.assertRegex(viewer.out(), desktop.STATISTICS)

    def test_no_standard_output(self):
        self.assert_runs_without(1)

    def test_no_standard_error(self):
        self.assert_runs_without(2)

    def test_no_standard_stream_at_all(self):
        self.assert_runs_without(0, 1, 2)


if __name__ == "__main__":
    unittest.main()
