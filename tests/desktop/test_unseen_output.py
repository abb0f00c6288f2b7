# SPDX-License-Identifier: MIT
"""A program that fails where nobody sees its standard output says so in a dialog."""

import os
import pty
import socket
import subprocess
import unittest

import desktop

FAILURE_TITLE = "^Zelvo: File open error"


class UnseenOutput(desktop.Case):
    def run_into(self, output, error=subprocess.DEVNULL, name="missing.lwo"):
        """Starts on an object that is not there, with this standard output."""
        self.write_settings()
        process = subprocess.Popen(
            [self.program, self.work / name],
            cwd=self.work,
            env=self.environment(),
            stdin=subprocess.DEVNULL,
            stdout=output,
            stderr=error,
        )
        self.addCleanup(process.kill)
        return process

    def assert_says(self, process):
        self.display.close_by_key(FAILURE_TITLE, "Escape")
        self.assertEqual(process.wait(desktop.PATIENCE), 20)

    def assert_is_silent(self, process):
        self.assertEqual(process.wait(desktop.PATIENCE), 20)

    def test_null_device(self):
        self.assert_says(self.run_into(subprocess.DEVNULL))

    def test_socket_as_of_a_journal(self):
        here, there = socket.socketpair()
        with here, there:
            self.assert_says(self.run_into(there.fileno()))
            self.assertEqual(here.recv(100), b"File open error\n")

    def test_log_of_a_session(self):
        with open(self.home / ".xsession-errors", "wb") as log:
            self.assert_says(self.run_into(log))
        self.assertEqual((self.home / ".xsession-errors").read_bytes(), b"File open error\n")

    def test_a_pipe_or_a_file_or_a_terminal_is_seen(self):
        process = self.run_into(subprocess.PIPE)
        self.assertEqual(process.communicate(timeout=desktop.PATIENCE)[0], b"File open error\n")
        self.assertEqual(process.returncode, 20)
        with open(self.folder / "log", "wb") as log:
            self.assert_is_silent(self.run_into(log))
        leader, follower = pty.openpty()
        self.assert_is_silent(self.run_into(subprocess.DEVNULL, error=follower))
        os.close(leader)
        os.close(follower)

    def test_a_good_end_says_nothing(self):
        process = self.run_into(subprocess.DEVNULL, name=self.object.name)
        self.display.wait_until_pointer_is_held(self.display.wait_for(desktop.VIEWER_TITLE))
        self.display.key("Escape")
        self.assertEqual(process.wait(desktop.PATIENCE), 0)

    def test_termination_closes_the_dialog(self):
        process = self.run_into(subprocess.DEVNULL)
        self.display.wait_for(FAILURE_TITLE)
        process.terminate()
        self.assertEqual(process.wait(desktop.PATIENCE), 20)


if __name__ == "__main__":
    unittest.main()
