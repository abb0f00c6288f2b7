# SPDX-License-Identifier: MIT
"""Tests of files that cannot be opened: the file requester says so and stays open."""

import os
import pathlib
import shutil
import unittest

import desktop
from desktop import OBJECT_TITLE, TEXTURE_TITLE, VIEWER_TITLE

MESSAGE_TITLE = "^Zelvo$"


class RefusedFiles(desktop.Case):
    def setUp(self):
        super().setUp()
        self.write_settings()

    def enter_path_until_refused(self, title, path):
        """Enters a path until a message appears. A path that is typed while the chooser starts is lost."""
        desktop.repeat_until(
            lambda: self.enter_path(title, path),
            lambda: self.display.find(MESSAGE_TITLE),
            "a message about " + str(path),
            2 * desktop.REPEAT_PATIENCE,
        )
        self.display.wait_for(MESSAGE_TITLE)

    def assert_refused(self, title, path):
        """Checks that a message appears, and after it the requester again."""
        self.enter_path_until_refused(title, path)
        self.display.cancel(MESSAGE_TITLE)
        self.display.wait_for(title)

    def assert_refuses_all(self, title):
        pipe = self.work / "pipe"
        os.mkfifo(pipe)
        self.assert_refused(title, self.work / "missing")
        self.assert_refused(title, pipe)

    def test_objects(self):
        viewer = self.start()
        self.assert_refuses_all(OBJECT_TITLE)
        self.choose_file(OBJECT_TITLE, self.object)
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)

    def test_textures(self):
        viewer, _ = self.start_viewing()
        self.display.key("t")
        self.assert_refuses_all(TEXTURE_TITLE)
        self.choose_file(TEXTURE_TITLE, self.work / "Zelvo_envmap.chunky")
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)

    def test_a_folder_is_entered_and_not_chosen(self):
        (self.work / "folder").mkdir()
        viewer = self.start()
        self.enter_path(OBJECT_TITLE, self.work / "folder")
        self.choose_file(OBJECT_TITLE, self.object)
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)

    @unittest.skipUnless(os.geteuid() == 0, "only root can start the viewer as another user")
    def test_a_file_that_may_not_be_read(self):
        user = 65534
        secret = self.work / "secret.lwo"
        shutil.copy(self.object, secret)
        for path in (self.folder, *self.folder.rglob("*")):
            os.chown(path, user, user)
        secret.chmod(0o000)
        self.program = pathlib.Path(desktop.__file__).parent / "as_another_user"
        viewer = self.start(ZELVO_AS=str(user), ZELVO_PROGRAM=str(self.folder / "bin" / "zelvo"))
        self.assert_refused(OBJECT_TITLE, secret)
        self.choose_file(OBJECT_TITLE, self.object)
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)

    def test_cancelling_after_a_refusal(self):
        viewer = self.start()
        self.assert_refused(OBJECT_TITLE, self.work / "missing")
        self.display.cancel(OBJECT_TITLE)
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual(viewer.out(), "No filename given\n")
        self.assertEqual(viewer.err(), "")

    def test_termination_closes_the_message_and_the_requester(self):
        viewer = self.start()
        self.enter_path_until_refused(OBJECT_TITLE, self.work / "missing")
        viewer.process.terminate()
        self.assertEqual(viewer.wait(), 20)
        self.assertEqual(viewer.out(), "No filename given\n")
        self.assertEqual(viewer.err(), "")

    def test_the_native_chooser_appears_again_after_a_refusal(self):
        viewer = self.start(GTK_USE_PORTAL="1")
        self.assert_refused(OBJECT_TITLE, self.work / "missing")
        self.choose_file(OBJECT_TITLE, self.object)
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)


if __name__ == "__main__":
    unittest.main()
