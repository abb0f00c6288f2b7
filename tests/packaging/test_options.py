# SPDX-License-Identifier: MIT
"""Each option that a program's help names is in its man page and its completions, and these name no others."""

import os
import pathlib
import re
import subprocess
import unittest

BUILD = pathlib.Path(os.environ["ZELVO_BUILD"])
PACKAGING = pathlib.Path(__file__).parents[2] / "packaging"
OPTION = re.compile(r"(?<![\w-])--[a-z][a-z0-9-]*")


def options_of_help(program):
    """All long options that the help names, wherever it does."""
    text = subprocess.run([BUILD / "bin" / program, "--help"], capture_output=True, text=True, check=True).stdout
    return set(OPTION.findall(text))


def options_of_page(program):
    """Options are given by the macro Fl, which adds the first of the two dashes."""
    text = (PACKAGING / "man" / f"{program}.1").read_text()
    items = re.findall(r"^\.It (Fl .*)$", text, re.MULTILINE)
    return {"-" + word for item in items for word in re.findall(r"-[a-z][a-z0-9-]*", item)}


def options_of_completion(program, shell):
    text = (PACKAGING / "completions" / f"{program}.{shell}").read_text()
    code = "\n".join(line for line in text.splitlines() if not line.startswith("#"))
    return set(re.findall(r"-l ([a-z0-9-]+)", code)) if shell == "fish" else {name[2:] for name in OPTION.findall(code)}


class Options(unittest.TestCase):
    maxDiff = None

    def programs(self, folder, suffix):
        """The programs that have a file of this kind, each with its options."""
        programs = [path.name.removesuffix(suffix) for path in (PACKAGING / folder).glob("*" + suffix)]
        self.assertLessEqual({"zelvo", "zelvo-render"}, set(programs))
        for program in programs:
            options = options_of_help(program)
            self.assertIn("--help", options)
            yield program, options

    def test_are_in_the_man_page(self):
        for program, options in self.programs("man", ".1"):
            with self.subTest(program):
                self.assertEqual(options_of_page(program), options)

    def test_are_in_the_completions(self):
        for shell in ("bash", "zsh", "fish"):
            for program, options in self.programs("completions", "." + shell):
                with self.subTest(program, shell=shell):
                    known = {"--" + name for name in options_of_completion(program, shell)}
                    self.assertEqual(known, options)
