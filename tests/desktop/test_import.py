# SPDX-License-Identifier: MIT
"""Models of other formats, which the viewer opens if it is asked to, where zelvo-convert is built."""

import os
import pathlib
import shutil
import unittest

import desktop
from desktop import VIEWER_TITLE

# A pyramid.
MODEL = """v -1 0 1
v 1 0 1
v 1 0 -1
v -1 0 -1
v 0 2 0
f 4 3 2 1
f 1 2 5
f 2 3 5
f 3 4 5
f 4 1 5
"""


CONVERTER = pathlib.Path(os.environ["ZELVO"]).parent / "zelvo-convert"


@unittest.skipUnless(CONVERTER.exists(), "no converter was built")
class Import(desktop.Case):
    def setUp(self):
        super().setUp()
        self.write_settings()
        self.model = self.work / "pyramid.obj"
        self.model.write_text(MODEL)
        self.cache = self.folder / "cache"
        shutil.copy(CONVERTER, self.folder / "bin")

    def test_opens_a_model(self):
        for words in (["--import", self.model], ["--import", "--", "pyramid.obj"]):
            viewer = self.start(*words, XDG_CACHE_HOME=str(self.cache))
            window = self.display.wait_for(f"^pyramid.lwo - {VIEWER_TITLE}")
            self.display.wait_until_pointer_is_held(window)
            self.quit(viewer)
        # The second time the object was there.
        self.assertEqual(len(list(self.cache.glob("zelvo/objects/*/pyramid.lwo"))), 1)

    def test_the_converter_opens_the_viewer_and_leaves_nothing(self):
        temporary = self.folder / "temporary"
        temporary.mkdir()
        environment = self.environment(TMPDIR=str(temporary))
        viewer = desktop.Viewer(self.folder / "bin" / "zelvo-convert", ["--view", self.model], self.work, environment, None)
        self.viewers.append(viewer)
        window = self.display.wait_for(f"^pyramid.lwo - {VIEWER_TITLE}")
        self.assertEqual(len(list(temporary.glob("zelvo-*/pyramid.lwo"))), 1)
        self.display.wait_until_pointer_is_held(window)
        self.quit(viewer)
        self.assertEqual(list(temporary.iterdir()), [])

    def test_opens_an_object_as_it_is(self):
        viewer = self.start("--import", self.object, XDG_CACHE_HOME=str(self.cache))
        window = self.display.wait_for(f"^torus.lwo - {VIEWER_TITLE}")
        self.display.wait_until_pointer_is_held(window)
        self.quit(viewer)
        self.assertFalse((self.cache / "zelvo").exists())

    def test_refuses_a_model_without_being_asked(self):
        viewer = self.start(self.model)
        self.assertEqual(viewer.wait(), 20)
        self.assertIn("This is not a(n) LW object", viewer.out())

    def test_refuses_what_cannot_be_converted(self):
        self.model.write_text("v 0 0 0\n")
        viewer = self.start("--import", self.model, XDG_CACHE_HOME=str(self.cache))
        self.assertEqual(viewer.wait(), 20)
        self.assertIn("This is not a(n) LW object", viewer.out())
        self.assertIn("zelvo-convert: ", viewer.err())

    def test_opens_nothing_else_without_the_converter(self):
        (self.folder / "bin" / "zelvo-convert").unlink()
        viewer = self.start("--import", self.model, PATH=str(self.folder / "bin"))
        self.assertEqual(viewer.wait(), 20)
        self.assertIn("This is not a(n) LW object", viewer.out())


if __name__ == "__main__":
    unittest.main()
