# SPDX-License-Identifier: MIT
"""Tests of the program's start and end on AmigaOS 4: libraries, the command line, requesters, settings."""
from amigaos4 import ProgramTest

LIBRARIES = [("graphics", 39, "Gfx V39"), ("intuition", 39, "Intuition V39"), ("lowlevel", 39, "LowLevel V39"),
             ("asl", 38, "Asl V38")]
QUIT = "1 key 0x1B\n"


class Libraries(ProgramTest):
    def test_are_opened_with_their_versions_and_closed_in_the_opposite_order(self):
        run = self.run_program("cube.lwo", script=QUIT)
        self.assertEqual(run.code, 0)
        expected = []
        for name, version, _ in LIBRARIES:
            expected += [f"OpenLibrary {name}.library {version}", f"GetInterface {name}.library main 1"]
        for name, _, _ in reversed(LIBRARIES):
            expected += [f"DropInterface {name}.library", f"CloseLibrary {name}.library"]
        self.assertEqual(run.named("OpenLibrary", "GetInterface", "DropInterface", "CloseLibrary"), expected)

    def test_of_the_oldest_allowed_version_are_enough(self):
        oldest = " ".join(f"{name}.library={version}" for name, version, _ in LIBRARIES)
        self.assertEqual(self.run_program("cube.lwo", script=QUIT, libraries=oldest).code, 0)

    def test_that_are_missing_or_too_old_end_the_program_with_their_text(self):
        for at, (name, version, text) in enumerate(LIBRARIES):
            for found in (0, version - 1):
                with self.subTest(library=name, version=found):
                    run = self.run_program("cube.lwo", libraries=f"{name}.library={found}")
                    self.assertEqual((run.code, run.output), (20, f"Couldn't open {text}\n"))
                    closed = [f"CloseLibrary {before}.library" for before, _, _ in reversed(LIBRARIES[:at])]
                    self.assertEqual(run.named("CloseLibrary"), closed)
                    self.assertEqual(run.still_held(), [])

    def test_without_their_interface_end_the_program_the_same_way(self):
        run = self.run_program("cube.lwo", refuse="GetInterface")
        self.assertEqual((run.code, run.output), (20, "Couldn't open Gfx V39\n"))
        self.assertEqual(run.named("CloseLibrary"), ["CloseLibrary graphics.library"])
        self.assertEqual(run.still_held(), [])


class Starts(ProgramTest):
    def test_a_shell_start_takes_the_object_from_the_command_line(self):
        run = self.run_program("cube.lwo", script=QUIT)
        self.assertEqual(run.code, 0)
        self.assertEqual(run.named("ReadArgs"), ["ReadArgs FILE/A"])
        self.assertNotIn('  title "Select a LightWave Object"', run.calls)

    def test_a_shell_start_without_an_object_asks_for_one(self):
        (self.folder / "drawer").mkdir()
        (self.folder / "cube.lwo").rename(self.folder / "drawer/other.lwo")
        run = self.run_program(script="answer file drawer other.lwo\n" + QUIT)
        self.assertEqual(run.code, 0)
        self.assertEqual(run.named("ReadArgs", "AddPart"), ["ReadArgs FILE/A", 'AddPart "drawer" "other.lwo" 1024'])

    def test_a_workbench_start_asks_for_the_object_and_reads_no_command_line(self):
        run = self.run_program(workbench="1", script="answer file - cube.lwo\n" + QUIT)
        self.assertEqual(run.code, 0)
        self.assertEqual(run.calls[0], "main 0")
        self.assertEqual(run.named("ReadArgs"), [])
        self.assertIn('  title "Select a LightWave Object"', run.calls)

    def test_no_object_chosen_ends_the_program(self):
        run = self.run_program(workbench="1", script="answer cancel\n")
        self.assertEqual((run.code, run.output), (20, "No filename given\n"))
        self.assertEqual(run.still_held(), [])

    def test_a_missing_object_ends_the_program_before_any_requester(self):
        run = self.run_program("missing.lwo")
        self.assertEqual((run.code, run.output), (20, "File open error\n"))
        self.assertEqual(run.named("AllocAslRequest"), [])
        self.assertEqual(run.still_held(), [])


class Settings(ProgramTest):
    def test_the_first_start_asks_for_the_mode_and_a_later_one_does_not(self):
        first = self.run_program("cube.lwo", script="answer mode 0x50001000 640 480\n1 key S\n" + QUIT)
        self.assertIn("display parameters: 0x50001000, 640, 480\n", first.output)
        saved = (self.folder / "ENV:Zelvo.vars").read_bytes()
        self.assertIn(b"ModeID: 1342181376\nwidth: 640\nheight: 480\n", saved)
        self.assertEqual((self.folder / "ENVARC:Zelvo.vars").read_bytes(), saved)

        later = self.run_program("cube.lwo", script=QUIT)
        self.assertEqual(later.named("AllocAslRequest"), [])
        self.assertEqual(later.named("OpenScreenTagList")[0].split()[1:5], ["32=50001000", "34=1", "23=280", "24=1e0"])


class Refusals(ProgramTest):
    def test_a_refused_call_ends_the_program_with_its_text_and_everything_given_back(self):
        texts = {"OpenScreenTagList": "Couldn't open screen\n", "OpenWindowTagList": "Couldn't open window\n",
                 "AllocScreenBuffer": "AllocScreenBuffer() failed\nAllocScreenBuffer() failed"}
        for call, text in texts.items():
            with self.subTest(call=call):
                run = self.run_program("cube.lwo", refuse=call)
                self.assertEqual(run.code, 20)
                self.assertEqual(run.output, "display parameters: 0x00000000, 320, 256\n" + text)
                self.assertEqual(run.still_held(), [])

    def test_requesters_that_cannot_be_made_leave_the_defaults(self):
        run = self.run_program("cube.lwo", script=QUIT, refuse="AllocAslRequest")
        self.assertEqual(run.code, 0)
        self.assertEqual(run.named("OpenScreenTagList")[0].split()[3:5], ["23=140", "24=100"])
