# SPDX-License-Identifier: MIT
"""Tests of the archive for AmigaOS 4 with another project's unpacker and icon reader."""
import subprocess
import tempfile
import unittest
from pathlib import Path

from amigaos4 import BUILD, PROJECT

PICTURE = PROJECT / "packaging/amigaos4/icon.pgm"

#: The picture's level for each of Workbench's pens: grey, black, white, blue.
LEVELS = (0, 1, 3, 2)


def picture_levels():
    lines = [line for line in PICTURE.read_text().splitlines() if not line.startswith("#")]
    return [int(word) for line in lines[3:] for word in line.split()]


class Archive(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = Path(folder.name)
        cls.archive = BUILD / "clib4/zelvo.lha"
        subprocess.run(["lhasa", "xq", cls.archive], cwd=folder.name, check=True)
        cls.drawer = cls.folder / "Zelvo"

    def test_lists_one_drawer_and_its_icon(self):
        listed = subprocess.run(["lhasa", "l", self.archive], stdout=subprocess.PIPE, text=True, check=True).stdout
        names = [line.split()[-1] for line in listed.splitlines() if line.startswith("[")]
        objects = sorted(f"Zelvo/objects/{path.name}" for path in (PROJECT / "data").glob("*.lwo"))
        self.assertEqual(len(objects), 6)
        self.assertEqual(sorted(names), sorted(objects + [
            "Zelvo.info", "Zelvo/LICENSE", "Zelvo/README", "Zelvo/Zelvo", "Zelvo/Zelvo.info",
            "Zelvo/Zelvo_envmap.chunky", "Zelvo/zelvo_lha.readme"]))

    def test_is_whole(self):
        done = subprocess.run(["lhasa", "t", self.archive], stdout=subprocess.PIPE, check=False)
        self.assertEqual(done.returncode, 0)

    def test_extracts_what_was_packed(self):
        packed = {"Zelvo": BUILD / "clib4/bin/Zelvo", "LICENSE": PROJECT / "LICENSE",
                  "Zelvo_envmap.chunky": PROJECT / "data/Zelvo_envmap.chunky",
                  "zelvo_lha.readme": BUILD / "clib4/zelvo_lha.readme"}
        packed |= {f"objects/{path.name}": path for path in (PROJECT / "data").glob("*.lwo")}
        for name, source in packed.items():
            with self.subTest(name=name):
                self.assertEqual((self.drawer / name).read_bytes(), source.read_bytes())

    def test_icons_show_the_picture(self):
        # A DiskObject has 78 bytes, the window of a drawer 56, and an image's structure 20.
        for icon, image in ((self.drawer / "Zelvo.info", 78), (self.folder / "Zelvo.info", 78 + 56)):
            with self.subTest(icon=icon):
                data = icon.read_bytes()
                left, top, width, height, planes = (int.from_bytes(data[at:at + 2], "big")
                                                    for at in range(image, image + 10, 2))
                self.assertEqual((left, top, width, height, planes), (0, 0, 48, 46, 2))
                pixels = width * height
                bits = "".join(f"{byte:08b}" for byte in data[image + 20:image + 20 + 2 * pixels // 8])
                self.assertEqual(len(bits), 2 * pixels)
                pens = [int(bits[at]) + 2 * int(bits[pixels + at]) for at in range(pixels)]
                self.assertTrue([LEVELS[pen] for pen in pens] == picture_levels())

    def test_icons_have_a_picture_for_another_reader(self):
        # Netpbm 11.1 finds the picture, but mirrors the eight pixels of every byte, so only its size is compared.
        for icon in (self.folder / "Zelvo.info", self.drawer / "Zelvo.info"):
            with self.subTest(icon=icon):
                pam = subprocess.run(["infotopam", icon], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                     check=True).stdout
                header, pixels = pam.split(b"ENDHDR\n")
                self.assertIn(b"WIDTH 48\nHEIGHT 46\nDEPTH 3\n", header)
                self.assertEqual(len(pixels), 48 * 46 * 3)

    def test_icons_are_of_a_tool_with_its_stack_and_of_a_drawer(self):
        tool = (self.drawer / "Zelvo.info").read_bytes()
        drawer = (self.folder / "Zelvo.info").read_bytes()
        self.assertEqual((tool[48], int.from_bytes(tool[74:78], "big")), (3, 65536))
        self.assertEqual(drawer[48], 2)


class Readme(unittest.TestCase):
    def test_is_plain_text_that_any_system_shows(self):
        text = (BUILD / "clib4/zelvo_lha.readme").read_bytes()
        self.assertTrue(text.isascii())
        self.assertNotIn(b"\r", text)
        self.assertLessEqual(max(map(len, text.splitlines())), 78)

    def test_begins_with_the_fields_of_an_archive(self):
        header, text = (BUILD / "clib4/zelvo_lha.readme").read_text().split("hend:\n")
        fields = dict(line.split(":", 1) for line in header.splitlines())
        self.assertEqual(list(fields), ["name", "description", "version", "author", "submitter", "url", "category",
                                        "requirements", "license", "distribute", "minosversion"])
        self.assertEqual(fields["version"].strip(), "0.67")
        self.assertIn("Zelvo objects/torus_knot.lwo", text)

    def test_names_the_library_that_a_build_needs(self):
        for build, is_named in (("clib4", True), ("newlib-Os", False)):
            readme = (BUILD / build / "zelvo_lha.readme").read_text()
            self.assertEqual("requirements: clib4.library, 8-bit screen modes" in readme, is_named)
            self.assertEqual("requirements: 8-bit screen modes" in readme, not is_named)
