# SPDX-License-Identifier: MIT
"""Tests of the golden frames, drawn by the program built for AmigaOS 4, on 32-bit PowerPC."""
import lzma
import shutil
import subprocess

from amigaos4 import BUILD, PROJECT, TESTS, ProgramTest

GOLDEN = TESTS / "golden"


def golden_cases():
    """The object, script, width, height and number of passes of every case."""
    for line in (GOLDEN / "cases.txt").read_text().splitlines():
        if not line.startswith("#"):
            drawn, script, size, passes = line.split()
            yield drawn, script, *size.split("x"), int(passes)


class GoldenFrames(ProgramTest):
    def compare(self, drawn, script, width, height, passes, build):
        """Runs a case and compares all of its frames; returns their number."""
        shutil.copy(GOLDEN / f"objects/{drawn}.lwo", self.folder)
        events = (GOLDEN / f"scripts/{script}.txt").read_text()
        run = self.run_program(f"{drawn}.lwo", program=BUILD / build / "bin/Zelvo", frames="frames",
                               script=f"answer mode 0 {width} {height}\n{events}\n{passes} key 0x1B\n")
        self.assertEqual(run.code, 0)
        frames = (self.folder / "frames").read_bytes()
        expected = lzma.open(GOLDEN / f"frames/{drawn}.{script}.{width}x{height}.pgm.xz").read()
        self.assertEqual(len(frames), len(expected))
        length = len(expected) // passes
        different = [at + 1 for at in range(passes)
                     if frames[at * length:(at + 1) * length] != expected[at * length:(at + 1) * length]]
        self.assertEqual(different, [], "passes whose frame differs")
        return passes

    def test_are_equal_to_the_byte(self):
        compared = 0
        for case in golden_cases():
            with self.subTest(case=case):
                compared += self.compare(*case, build="clib4")
        print(f"  {compared} golden frames equal to the byte on 32-bit PowerPC")

    def test_are_equal_in_every_build(self):
        for build in ("newlib-Os", "long-int32"):
            for case in golden_cases():
                if case[1] in ("04_gouraud_light", "10_all_keys"):
                    with self.subTest(build=build, case=case):
                        self.compare(*case, build=build)


class Mathematics(ProgramTest):
    def values(self, compiler, *objects, emulator=()):
        """Tests of a checksum over a million values of a C library, as the program rounds them."""
        subprocess.run([compiler, "-std=c++20", "-O2", "-ffp-contract=off", "-I", PROJECT / "src",
                        TESTS / "robustness/frames/math_values.cpp", *objects, "-o", self.folder / "values"], check=True)
        printed = subprocess.run([*emulator, self.folder / "values"], stdout=subprocess.PIPE, check=True).stdout
        return printed.split()[0]

    def test_of_newlib_on_powerpc_give_the_values_of_this_machine(self):
        newlib = (BUILD / "mathematics").glob("*.o")
        self.assertEqual(self.values(BUILD / "bin/ppc-amigaos-g++", *newlib, emulator=("qemu-ppc-static",)),
                         self.values("g++"))
