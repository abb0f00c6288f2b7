# SPDX-License-Identifier: MIT
"""Runs the program built for AmigaOS 4 under user-mode emulation, on a simulated system that records its calls."""
import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

TESTS = Path(__file__).resolve().parent.parent
PROJECT = TESTS.parent
BUILD = Path(os.environ["AMIGAOS4_BUILD"])
PROGRAM = BUILD / "clib4/bin/Zelvo"

#: A guard against hangs, in seconds.
SECONDS = 600


class Run:
    """One run: its exit code, its standard output, and a line for each call that it made."""

    def __init__(self, code, output, calls):
        self.code = code
        self.output = output
        self.calls = calls

    def named(self, *names):
        """The calls with these names, in order."""
        return [line for line in self.calls if line.split()[0] in names]

    def still_held(self):
        """What the program had not given back when it ended."""
        return [line for line in self.calls if line.startswith("still held")]


class ProgramTest(unittest.TestCase):
    """A test with its own current folder, which has an object and the default texture."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        shutil.copy(TESTS / "golden/envmap.chunky", self.folder / "Zelvo_envmap.chunky")
        shutil.copy(TESTS / "golden/objects/cube.lwo", self.folder)

    def run_program(self, *words, script="", program=PROGRAM, **told):
        """Runs the program with these words, this input, and options of the system (libraries="NAME=VERSION")."""
        (self.folder / "input").write_text(script)
        environment = {"AMIGA_INPUT": "input", "AMIGA_CALLS": "calls"}
        environment |= {f"AMIGA_{name.upper()}": value for name, value in told.items()}
        done = subprocess.run(["qemu-ppc-static", str(program), *words], cwd=self.folder, env=environment,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, timeout=SECONDS, check=False)
        calls = (self.folder / "calls").read_text(encoding="latin-1").splitlines()
        return Run(done.returncode, done.stdout.decode("latin-1"), calls)
