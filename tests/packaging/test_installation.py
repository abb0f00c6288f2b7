# SPDX-License-Identifier: MIT
"""The installed tree: which files it has, and that it works in any place."""

import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

BUILD = pathlib.Path(os.environ["ZELVO_BUILD"])
HERE = pathlib.Path(__file__).parent
SOURCE = HERE.parent.parent


def install(prefix, stage=None):
    environment = {name: value for name, value in os.environ.items() if name != "DESTDIR"}
    if stage is not None:
        environment["DESTDIR"] = str(stage)
    subprocess.run(
        [os.environ["CMAKE"], "--install", BUILD, "--prefix", prefix],
        env=environment,
        stdout=subprocess.DEVNULL,
        check=True,
    )


def files_of(folder):
    return sorted(str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir())


def state_of(folder):
    """Everything about each file that a second installation could change."""

    def state(path):
        status = path.lstat()
        return status.st_mode, status.st_mtime_ns, hashlib.sha256(path.read_bytes()).hexdigest()

    return {name: state(folder / name) for name in files_of(folder)}


class Installation(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="zelvo-installation-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.elsewhere = self.folder / "elsewhere"
        self.elsewhere.mkdir()

    def picture(self, program, *arguments):
        """What a program draws of the installed knot, in a folder that has nothing."""
        png = self.elsewhere / "knot.png"
        knot = SOURCE / "data" / "torus_knot.lwo"
        subprocess.run(
            [program, knot, "--mode", "texturemap", "--size", "160x128", "--png", png, *arguments],
            cwd=self.elsewhere,
            stdout=subprocess.DEVNULL,
            check=True,
        )
        drawn = png.read_bytes()
        png.unlink()
        return drawn

    def expected_picture(self):
        texture = SOURCE / "data" / "Zelvo_envmap.chunky"
        return self.picture(BUILD / "bin" / "zelvo-render", "--envmap", texture)

    def test_has_these_files(self):
        install("/usr", self.folder / "stage")
        listed = (HERE / "installed_files.txt").read_text().split()
        self.assertEqual(files_of(self.folder / "stage" / "usr"), sorted(listed))
        self.assertEqual([path.name for path in (self.folder / "stage").iterdir()], ["usr"])

    def test_a_second_time_changes_nothing(self):
        install(self.folder / "prefix")
        first = state_of(self.folder / "prefix")
        install(self.folder / "prefix")
        self.assertEqual(state_of(self.folder / "prefix"), first)

    def test_works_where_it_is_installed(self):
        install(self.folder / "prefix")
        self.assertEqual(self.picture(self.folder / "prefix" / "bin" / "zelvo-render"), self.expected_picture())

    def test_works_where_it_is_staged_and_moved(self):
        install("/opt/zelvo", self.folder / "stage")
        moved = self.folder / "another place"
        (self.folder / "stage" / "opt" / "zelvo").rename(moved)
        self.assertEqual(self.picture(moved / "bin" / "zelvo-render"), self.expected_picture())

    def test_the_build_tree_works_by_itself(self):
        self.assertEqual(self.picture(BUILD / "bin" / "zelvo-render"), self.expected_picture())

    def test_nothing_names_the_folders_of_the_build(self):
        install(self.folder / "prefix")
        for name in files_of(self.folder / "prefix"):
            if not name.startswith("bin/"):
                contents = (self.folder / "prefix" / name).read_bytes()
                for folder in (BUILD, SOURCE):
                    self.assertNotIn(str(folder).encode(), contents, name)

    def test_the_metadata_has_the_programs_version(self):
        printed = subprocess.run([BUILD / "bin" / "zelvo", "--version"], capture_output=True, text=True, check=True)
        version, day, month, year = re.search(r"([\d.]+) OS4 \((\d+)-(\w+)-(\d+)\)", printed.stdout).groups()
        months = "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split()
        metadata = (SOURCE / "packaging" / "desktop" / "zelvo.metainfo.xml").read_text()
        release = f'<release version="{version}" date="{year}-{months.index(month) + 1:02}-{day}"/>'
        self.assertIn(release, metadata)
