# SPDX-License-Identifier: MIT
"""Tests of the program file for AmigaOS 4: its version tag, its instructions, its stack frames."""
import re
import subprocess
import tempfile
import unittest

from amigaos4 import BUILD, PROJECT

BUILDS = ("clib4", "newlib-Os", "long-int32")
FUSED = re.compile(r"\tfn?m(?:add|sub)s?\b")
FRAME = re.compile(r"\tstwu +r1,-(\d+)\(r1\)")


def disassembly(path):
    return subprocess.run([BUILD / "bin/ppc-amigaos-objdump", "--disassemble", str(path)], stdout=subprocess.PIPE,
                          text=True, check=True).stdout


def program_code(build):
    """The instructions of the program itself, without those of libraries."""
    text = disassembly(BUILD / build / "src/libzelvo_program.a")
    assert "\tfmul" in text
    return text


class VersionTag(unittest.TestCase):
    def test_is_in_the_file_where_the_version_command_looks_for_it(self):
        for build in BUILDS:
            with self.subTest(build=build):
                program = (BUILD / build / "bin/Zelvo").read_bytes()
                self.assertIn(b"$VER: Zelvo 0.67 OS4 (23-Feb-2005)\0", program)


class FusedMultiplyAdd(unittest.TestCase):
    def test_is_not_in_the_program(self):
        for build in BUILDS:
            with self.subTest(build=build):
                self.assertEqual(len(FUSED.findall(program_code(build))), 0)

    def test_is_counted_where_the_compiler_may_use_it(self):
        with tempfile.NamedTemporaryFile(suffix=".o") as compiled:
            options = ["-std=c++20", "-O2", "-ffp-contract=fast", "-DZELVO_SIMD=0", "-I", PROJECT / "src"]
            subprocess.run([BUILD / "bin/ppc-amigaos-g++", *options, "-c", PROJECT / "src/pipeline/rotation.cpp",
                            "-o", compiled.name], check=True)
            self.assertGreater(len(FUSED.findall(disassembly(compiled.name))), 0)


class Stack(unittest.TestCase):
    def test_no_function_of_the_program_takes_more_than_2_kilobytes(self):
        for build in BUILDS:
            with self.subTest(build=build):
                frames = [int(size) for size in FRAME.findall(program_code(build))]
                self.assertLess(max(frames), 2048)
