# SPDX-License-Identifier: MIT
"""Sessions that lack what libraries of a desktop expect: the viewer starts, asks, and says nothing on standard error."""

import os
import pathlib
import shutil
import unittest

import desktop
from desktop import MODE_TITLE, TEXTURE_TITLE, VIEWER_TITLE

# Some user other than the test's, for whom file permissions count.
NOBODY = 65534


class BareSessions(desktop.Case):
    def environment(self, **changes):
        """Without what spares other tests these sessions."""
        bare = dict.fromkeys(("DBUS_SESSION_BUS_ADDRESS", "GIO_USE_VFS", "GSETTINGS_BACKEND", "NO_AT_BRIDGE"))
        return super().environment(**{**bare, **changes})

    def assert_is_quiet(self, errors="", **environment):
        """From the first start through a requester of each kind to the end."""
        viewer = self.start(self.object, **environment)
        self.display.close_by_key(MODE_TITLE, "Return")
        window = self.display.wait_for(VIEWER_TITLE)
        desktop.wait_until(lambda: not self.picture(window).is_black(), "the first picture")
        self.display.wait_until_pointer_is_held(window)
        self.display.key("t")
        self.choose_file(TEXTURE_TITLE, self.work / "Zelvo_envmap.chunky")
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer, errors)

    def test_without_a_bus(self):
        self.assert_is_quiet()

    def test_with_a_bus_that_is_gone(self):
        self.assert_is_quiet(DBUS_SESSION_BUS_ADDRESS=f"unix:path={self.folder}/gone")

    def test_without_drivers_for_opengl(self):
        # Mesa says this whatever it is told.
        self.assert_is_quiet("(libGL error: failed to load driver: swrast\n)*", LIBGL_DRIVERS_PATH=str(self.folder))

    def test_without_folders(self):
        self.assert_is_quiet(HOME=str(self.folder / "gone"), XDG_CONFIG_HOME=None)

    def assert_is_quiet_in_read_only_home(self):
        """As a user for whom permissions count, and whose everything is."""
        for path in (self.folder, *self.folder.rglob("*")):
            os.chown(path, NOBODY, NOBODY)
        for folder in (self.home, *(path for path in self.home.rglob("*"))):
            folder.chmod(0o555)
        self.program = pathlib.Path(desktop.__file__).parent / "as_another_user"
        program = str(self.folder / "bin" / "zelvo")
        self.assert_is_quiet(ZELVO_AS=str(NOBODY), ZELVO_PROGRAM=program, XDG_CONFIG_HOME=None)

    @unittest.skipUnless(os.geteuid() == 0 and shutil.which("setpriv"), "becoming another user needs root")
    def test_with_an_empty_home_that_cannot_be_written(self):
        self.assert_is_quiet_in_read_only_home()

    @unittest.skipUnless(os.geteuid() == 0 and shutil.which("setpriv"), "becoming another user needs root")
    def test_with_a_used_home_that_cannot_be_written(self):
        for folder in (".local/share", ".config/gtk-3.0", ".cache/dconf"):
            (self.home / folder).mkdir(parents=True)
        self.assert_is_quiet_in_read_only_home()


if __name__ == "__main__":
    unittest.main()
