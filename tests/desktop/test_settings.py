# SPDX-License-Identifier: MIT
"""Tests of saving and loading in the user's folders, and of folders that cannot be written."""

import os
import pathlib
import pty
import re
import shutil
import signal
import subprocess
import sys
import unittest

import desktop

FULL_DISK = "full-disk"
NOTICE_TITLE = "^Zelvo: settings not saved"


class Settings(desktop.Case):
    def test_s_saves_only_for_this_login(self):
        self.write_settings()
        viewer, _ = self.start_viewing()
        self.display.key("p", "s")
        self.quit(viewer)
        self.assertEqual(self.env_file.read_text(), desktop.settings(dots=1))
        self.assertFalse(self.envarc_file.exists())

    def test_shift_s_saves_for_later_logins(self):
        self.write_settings()
        viewer, _ = self.start_viewing()
        self.display.key("p", "S")
        self.quit(viewer)
        self.assertEqual(self.env_file.read_text(), desktop.settings(dots=1))
        self.assertEqual(self.envarc_file.read_text(), desktop.settings(dots=1))
        self.assertEqual(self.envarc_file.parent.stat().st_mode & 0o777, 0o700)

        shutil.rmtree(self.env_file.parent)
        viewer, window = self.start_viewing()
        self.assert_shows(window, self.rehearse("", 5, 5)[0], "the settings of the login before")
        self.quit(viewer)
        self.assertEqual(self.env_file.read_text(), desktop.settings(dots=1))

    def test_only_the_first_use_in_a_login_copies_the_lasting_settings(self):
        self.write_settings()
        self.envarc_file.parent.mkdir(parents=True)
        self.envarc_file.write_text(desktop.settings(dots=1))
        viewer, _ = self.start_viewing()
        self.quit(viewer)
        self.assertEqual(self.env_file.read_text(), desktop.settings())

    def test_w_loads_this_logins_settings(self):
        self.write_settings()
        viewer, window = self.start_viewing()
        self.env_file.write_text(desktop.settings(obj_style=4, gammas="2.000000 1.000000 0.500000"))
        self.display.key("w")
        self.assert_shows(window, self.rehearse("2 key w", 5, 5)[0], "the loaded settings and the message")
        self.quit(viewer)

    def test_shift_w_loads_the_lasting_settings(self):
        self.write_settings()
        self.envarc_file.parent.mkdir(parents=True)
        self.envarc_file.write_text(desktop.settings(obj_style=4, dots=1))
        viewer, window = self.start_viewing()
        self.display.key("W", "s")
        desktop.wait_until(lambda: self.env_file.read_text() == self.envarc_file.read_text(), "the same settings")
        self.quit(viewer)

    def test_w_without_a_file_changes_nothing(self):
        self.write_settings()
        viewer, window = self.start_viewing()
        self.display.key("p", "W", "s")
        self.quit(viewer)
        self.assertEqual(self.env_file.read_text(), desktop.settings(dots=1))

    def test_without_a_runtime_folder_a_private_one_is_made(self):
        viewer = self.start(self.object, XDG_RUNTIME_DIR=None, TMPDIR=str(self.folder))
        self.display.wait_for(desktop.MODE_TITLE)
        self.display.key("Return")
        self.display.wait_for(desktop.VIEWER_TITLE)
        self.display.key("s")
        self.quit(viewer)
        folder = self.folder / f"zelvo-{os.geteuid()}"
        self.assertEqual(folder.stat().st_mode & 0o777, 0o700)
        self.assertEqual((folder / "Zelvo.vars").read_text(), desktop.settings(fps=1, mode=2))

    def test_a_link_in_place_of_the_private_folder_is_refused(self):
        elsewhere = self.folder / "elsewhere"
        elsewhere.mkdir()
        (elsewhere / "Zelvo.vars").write_text(desktop.settings())
        (self.folder / f"zelvo-{os.geteuid()}").symlink_to(elsewhere)
        viewer = self.start(self.object, XDG_RUNTIME_DIR=None, TMPDIR=str(self.folder))
        self.display.wait_for(desktop.MODE_TITLE)
        self.display.key("Return")
        self.display.wait_for(desktop.VIEWER_TITLE)
        self.display.key("p", "s")
        self.display.cancel(NOTICE_TITLE)
        self.display.wait_for(desktop.VIEWER_TITLE)
        self.quit(
            viewer,
            errors="zelvo: no settings: .* is not a folder of yours alone\n"
            "zelvo: ENV:Zelvo.vars was not saved: Operation not permitted\n",
        )
        self.assertEqual((elsewhere / "Zelvo.vars").read_text(), desktop.settings())
        self.assertEqual(list(self.work.glob("ENV*")), [])

    def test_a_folder_that_cannot_be_created_only_fails_the_save(self):
        self.write_settings()
        self.config.write_text("a file in place of the folder")
        viewer, window = self.start_viewing()
        self.display.key("S")
        self.display.cancel(NOTICE_TITLE)
        self.display.wait_for(desktop.VIEWER_TITLE)
        self.save_again(viewer, "S", 2)
        self.assert_shows(window, self.rehearse("2 key S", 5, 5)[0], "the message all the same")
        self.quit(viewer, errors=2 * "zelvo: ENVARC:Zelvo.vars was not saved: Not a directory\n")
        self.assertEqual(self.config.read_text(), "a file in place of the folder")

    def start_viewing_as_another_user(self):
        """Starts as a user who owns all files and for whom permissions count."""
        user = 65534
        for path in (self.folder, *self.folder.rglob("*")):
            os.chown(path, user, user)
        self.program = pathlib.Path(desktop.__file__).parent / "as_another_user"
        return self.start_viewing(ZELVO_AS=str(user), ZELVO_PROGRAM=str(self.folder / "bin" / "zelvo"))

    @unittest.skipUnless(os.geteuid() == 0 and shutil.which("setpriv"), "becoming another user needs root")
    def test_a_file_in_a_read_only_folder_is_written_in_place(self):
        self.write_settings()
        self.env_file.parent.chmod(0o500)
        viewer, _ = self.start_viewing_as_another_user()
        self.display.key("p", "s")
        desktop.wait_until(lambda: self.env_file.read_text() == desktop.settings(dots=1), "the save")
        self.quit(viewer)
        self.assertEqual([path.name for path in self.env_file.parent.iterdir()], ["Zelvo.vars"])

    @unittest.skipUnless(os.geteuid() == 0 and shutil.which("setpriv"), "becoming another user needs root")
    def test_a_read_only_file_is_kept(self):
        self.write_settings()
        self.env_file.chmod(0o400)
        viewer, window = self.start_viewing_as_another_user()
        self.display.key("p", "s")
        self.display.cancel(NOTICE_TITLE)
        self.display.wait_for(desktop.VIEWER_TITLE)
        self.save_again(viewer, "s", 2)
        self.assert_shows(window, self.rehearse("2 key p\n2 key s", 5, 5)[0], "the message all the same")
        self.quit(viewer, errors=2 * self.not_saved("Permission denied"))
        self.assertEqual(self.env_file.read_text(), desktop.settings())
        self.assertEqual([path.name for path in self.env_file.parent.iterdir()], ["Zelvo.vars"])

    def test_there_is_no_notice_if_standard_error_is_a_terminal(self):
        self.write_settings()
        self.env_file.unlink()
        self.env_file.mkdir()
        terminal, inside = pty.openpty()
        self.addCleanup(os.close, terminal)
        viewer = self.start(self.object, error_stream=inside)
        os.close(inside)
        self.display.wait_for(desktop.MODE_TITLE)
        self.display.key("Return")
        window = self.display.wait_for(desktop.VIEWER_TITLE)
        desktop.wait_until(lambda: not self.picture(window).is_black(), "the first picture")
        self.display.key("s", "S")
        desktop.wait_until(lambda: self.envarc_file.exists(), "the save that is possible")
        viewer.signal(signal.SIGTERM)
        self.assert_ends_well(viewer)
        printed = os.read(terminal, 10000).decode().replace("\r\n", "\n")
        self.assertRegex(printed, rf"\A{2 * self.not_saved('Is a directory')}\Z")

    def test_termination_closes_the_notice(self):
        self.write_settings()
        viewer, _ = self.start_viewing()
        self.env_file.unlink()
        self.env_file.mkdir()
        self.display.key("s")
        self.display.wait_for(NOTICE_TITLE)
        viewer.signal(signal.SIGTERM)
        self.assert_ends_well(viewer, errors=self.not_saved("Is a directory"))

    def test_a_notice_over_full_screen(self):
        self.write_settings(mode=0)
        viewer, window = self.start_viewing()
        self.env_file.unlink()
        self.env_file.mkdir()
        self.display.key("s")
        self.display.wait_for(NOTICE_TITLE)
        self.assertIsNone(self.display.find(desktop.VIEWER_TITLE))
        self.display.key("Return")
        self.display.wait_until_gone(NOTICE_TITLE)
        window = self.display.wait_for(desktop.VIEWER_TITLE)
        desktop.wait_until(lambda: self.picture(window).width == 1280, "the full screen again")
        viewer.signal(signal.SIGTERM)
        self.assert_ends_well(viewer, errors=self.not_saved("Is a directory"))

    def not_saved(self, reason):
        """The expected text on standard error, as a pattern."""
        return re.escape(f"zelvo: ENV:Zelvo.vars was not saved: {reason} ({self.env_file})\n")

    def save_again(self, viewer, key, lines):
        """Presses a key until standard error has this many lines. The key's message is then new."""

        def is_told():
            if viewer.err().count("\n") < lines:
                self.display.key(key)
            return viewer.err().count("\n") >= lines

        desktop.wait_until(is_told, "the reason")


class FullDisk(desktop.Case):
    """Runs again inside its own namespace, where a tiny disk can be mounted."""

    def test_a_full_disk_keeps_the_old_file(self):
        if FULL_DISK not in os.environ:
            command = ["unshare", "--map-root-user", "--user", "--mount", sys.executable, "-B", "-m", "unittest"]
            tried = subprocess.run([*command[:4], "true"], capture_output=True)
            if tried.returncode != 0:
                self.skipTest("no name space of one's own here: " + tried.stderr.decode().strip())
            done = subprocess.run(
                [*command, self.id()], env={**os.environ, FULL_DISK: "1"}, capture_output=True, text=True
            )
            self.assertEqual(done.returncode, 0, done.stderr)
            return

        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=16k,mode=700", "none", self.runtime], check=True)
        self.addCleanup(subprocess.run, ["umount", self.runtime])
        self.write_settings()
        viewer, window = self.start_viewing()
        filler = self.runtime / "filler"
        with self.assertRaises(OSError):
            with open(filler, "wb", buffering=0) as file:
                while True:
                    file.write(bytes(512))
        self.display.key("p", "s")
        self.display.cancel(NOTICE_TITLE)
        self.display.wait_for(desktop.VIEWER_TITLE)
        self.assertEqual(self.env_file.read_text(), desktop.settings())
        self.assertEqual([path.name for path in self.env_file.parent.iterdir()], ["Zelvo.vars"])
        filler.unlink()
        self.display.key("s")
        desktop.wait_until(lambda: self.env_file.read_text() == desktop.settings(dots=1), "the save with room")
        reason = f"zelvo: ENV:Zelvo.vars was not saved: No space left on device ({self.env_file})\n"
        self.quit(viewer, errors=re.escape(reason))


if __name__ == "__main__":
    unittest.main()
