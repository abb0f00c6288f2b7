# SPDX-License-Identifier: MIT
"""What bash, zsh and fish offer when a user presses Tab after a part of a command."""

import os
import pathlib
import pty
import re
import select
import shutil
import subprocess
import tempfile
import unittest

COMPLETIONS = pathlib.Path(__file__).parents[2] / "packaging" / "completions"

MODES = {"effect", "envmap", "texturemap", "lightsourced", "phong", "z-light", "dots"}

# A guard against hangs.
PATIENCE = 60.0

# Prints what the completion function finds for the words in the arguments.
BASH = r"""
source "$1"; shift
COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))
compopt() { :; }
function=$(complete -p "$1"); function=${function#*-F }
${function%% *}
printf '%s\n' "${COMPREPLY[@]}"
"""

# Prints each match as a line between two marks, instead of showing it.
ZSH = r"""
PS1= ; fpath=(%s $fpath); autoload -Uz compinit; compinit -u -D
stty -echo; bindkey '^I' complete-word
compadd() {
    if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then builtin compadd "$@"; return; fi
    local -a found
    builtin compadd -A found "$@"
    local match
    for match in $found; do print -r -- "<match>$match</match>"; done
    builtin compadd "$@"
}
said() { print "<end>" }
comppostfuncs=(said)
cd %s; print "<re""ady>"
"""


class Completions(unittest.TestCase):
    """A folder with two objects, something else, and a folder; the same answers are expected of all shells."""

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="zelvo-completions-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.work = self.folder / "work"
        (self.work / "inner").mkdir(parents=True)
        for name in ("cup.lwo", "Cone.LWO", "notes.txt"):
            (self.work / name).touch()
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(self.folder), "LANG": "C.UTF-8", "TERM": "dumb"}

    def bash(self, *words):
        done = subprocess.run(
            ["bash", "--norc", "-c", BASH, "bash", COMPLETIONS / f"{words[0]}.bash", *words],
            cwd=self.work,
            env=self.environment,
            capture_output=True,
            text=True,
            check=True,
        )
        self.assertEqual(done.stderr, "")
        return set(done.stdout.split())

    def fish(self, *words):
        done = subprocess.run(
            ["fish", "--no-config", "-c", 'source "$argv[1]"; complete -C "$argv[2]"']
            + [COMPLETIONS / f"{words[0]}.fish", " ".join(words)],
            cwd=self.work,
            env=self.environment,
            capture_output=True,
            text=True,
            check=True,
        )
        self.assertEqual(done.stderr, "")
        return {line.split("\t")[0].rstrip("/") for line in done.stdout.splitlines()}

    def zsh(self, *words):
        """An interactive shell on a terminal, since zsh completes nowhere else."""
        functions = self.folder / "functions"
        functions.mkdir(exist_ok=True)
        shutil.copy(COMPLETIONS / f"{words[0]}.zsh", functions / f"_{words[0]}")
        setup = self.folder / "setup"
        setup.write_text(ZSH % (functions, self.work))
        ours, theirs = pty.openpty()
        shell = subprocess.Popen(["zsh", "-f", "-i"], stdin=theirs, stdout=theirs, stderr=theirs, env=self.environment)
        os.close(theirs)
        said = ""

        def read_until(mark):
            nonlocal said
            while mark not in said:
                self.assertTrue(select.select([ours], [], [], PATIENCE)[0], "no answer: " + said)
                said += os.read(ours, 4096).decode()

        try:
            os.write(ours, f"source {setup}\n".encode())
            read_until("<ready>")
            os.write(ours, (" ".join(words) + "\t").encode())
            read_until("<end>")
        finally:
            shell.kill()
            shell.wait()
            os.close(ours)
        return {match.rstrip("/") for match in re.findall(r"<match>([^<]*)</match>", said)}

    def for_each_shell(self):
        for shell in ("bash", "zsh", "fish"):
            with self.subTest(shell):
                yield shell, getattr(self, shell)

    def test_values_of_an_option(self):
        for _, complete in self.for_each_shell():
            self.assertEqual(complete("zelvo-render", "--mode", ""), MODES)
            self.assertEqual(complete("zelvo-render", "--clear", "r"), {"rise"})
            self.assertEqual(complete("zelvo-render", "--background", "t"), {"transparent"})
            self.assertEqual(complete("zelvo-render", "--clock", ""), {"fixed", "real"})

    def test_names_of_options(self):
        for _, complete in self.for_each_shell():
            self.assertEqual({name.rstrip("=") for name in complete("zelvo-render", "--tu")}, {"--turntable"})
            self.assertEqual(complete("zelvo", "--vers"), {"--version"})

    def test_objects(self):
        for shell, complete in self.for_each_shell():
            for program in ("zelvo", "zelvo-render"):
                # A file of another kind may be offered by nobody, and fish completes without regard to case.
                found = complete(program, "c")
                self.assertEqual(found - {"Cone.LWO"}, {"cup.lwo"}, program)
                self.assertNotIn("notes.txt", complete(program, ""), (shell, program))

    def test_folders(self):
        for _, complete in self.for_each_shell():
            self.assertEqual(complete("zelvo-render", "--env", "i"), {"inner"})

    def test_no_names_of_files_where_a_number_is_due(self):
        for shell, complete in self.for_each_shell():
            if shell != "zsh":
                self.assertEqual(complete("zelvo-render", "--passes", "c"), set())

    def test_a_value_after_an_equals_sign_in_bash(self):
        self.assertEqual(self.bash("zelvo-render", "--mode", "=", "ph"), {"phong"})
        self.assertEqual(self.bash("zelvo-render", "--mode", "="), MODES)
