# SPDX-License-Identifier: MIT
"""Runs in real windows, recorded and repeated without a screen: all frames are the same."""

import random
import re
import subprocess
import unittest

import desktop
from desktop import MODE_TITLE, OBJECT_TITLE, TEXTURE_TITLE, VIEWER_TITLE

# What a user types, often: every command but those that end or ask.
KEYS = [*"0123456bcdefilprRswSW", "Up", "Down", "Right", "Right", "Left", "F11", "F12"]

# Small pictures, which Python sums up in a moment.
SCREEN = ("--window=4", "--size=48x40")


def frame_sum(folder):
    """The sum of a run's frames, from their PGM files."""
    total = 0xCBF29CE484222325
    for path in sorted(folder.iterdir()):
        size, pixels = re.match(rb"P5\n(\d+ \d+)\n255\n(.*)", path.read_bytes(), re.DOTALL).groups()
        sides = b"".join(int(side).to_bytes(4, "little") for side in size.split())
        for byte in sides + pixels:
            total = (total ^ byte) * 0x100000001B3 & 0xFFFFFFFFFFFFFFFF
    return total


class Recording(desktop.Case):
    def setUp(self):
        super().setUp()
        self.script = self.folder / "run.txt"
        self.elsewhere = self.folder / "elsewhere"
        self.elsewhere.mkdir()

    def repeat(self, script, *options):
        """Exit code and standard error of a repetition, whose frames are in the folder `elsewhere`/frames."""
        done = subprocess.run(
            [desktop.RENDERER, "--input", script, "--chunky", "frames", *options],
            cwd=self.elsewhere,
            capture_output=True,
            text=True,
        )
        return done.returncode, done.stderr

    def assert_repeats(self, passes):
        """The repetition draws as many frames as the run, and the same."""
        self.assertEqual(self.repeat(self.script), (0, ""))
        frames = self.elsewhere / "frames"
        self.assertEqual(len(list(frames.iterdir())), passes)
        recorded = re.search(r"^frames (\d+) +(0x\w{16})$", self.script.read_text(), re.MULTILINE)
        self.assertEqual((int(recorded[1]), int(recorded[2], 16)), (passes, frame_sum(frames)))

    def act(self, user):
        """Something that a user does."""
        what = user.randrange(12)
        if what < 6:
            self.display.key(*user.choices(KEYS, k=12))
        elif what < 10:
            for _ in range(8):
                self.display.xdotool("mousemove_relative", "--", user.randint(-40, 40), user.randint(-40, 40))
            self.display.xdotool("click", 3)
        elif what == 10:
            self.display.key("m")
            self.display.wait_for(MODE_TITLE)
            if user.randrange(2):
                self.display.key("alt+w")
                self.display.type(str(user.randint(20, 60)))
            self.display.close_by_key(MODE_TITLE, user.choice(["Return", "Escape"]))
        else:
            self.display.key("t")
            if user.randrange(3):
                self.choose_file(TEXTURE_TITLE, self.work / "more waves")
            else:
                self.display.cancel(TEXTURE_TITLE)
        self.display.wait_for(VIEWER_TITLE)

    def test_a_random_run(self):
        user = random.Random(7)
        desktop.write_texture(self.work / "more waves", 6)
        self.write_settings(rotate="0.700000", fps=1, clear_style=2)
        viewer = self.start("--record", self.script, *SCREEN, "torus.lwo")
        window = self.display.wait_for(VIEWER_TITLE)
        self.wait_until_clicks_count(window)
        for _ in range(25):
            self.act(user)
            self.assertIsNone(viewer.process.poll(), viewer.err())
        viewer.process.terminate()
        self.assert_ends_well(viewer)
        self.assert_repeats(viewer.frames())
        # The repetition finds out that a run is another one.
        lines = self.script.read_text().splitlines(keepends=True)
        turn = next(i for i, line in enumerate(lines) if re.match(r"\d+ rawkey 0x4[EF]", line))
        other = self.folder / "other.txt"
        other.write_text("".join(lines[:turn] + lines[turn + 1 :]))
        self.assertEqual(self.repeat(other), (2, "zelvo-render: the frames are not those of the recorded run\n"))

    def test_all_requesters_of_a_first_start(self):
        (self.work / "Zelvo_envmap.chunky").rename(self.work / "waves")
        viewer = self.start("--record", self.script)
        self.choose_file(OBJECT_TITLE, self.object)
        self.display.close_by_key(MODE_TITLE, "Return")
        self.choose_file(TEXTURE_TITLE, self.work / "waves")
        window = self.display.wait_for(VIEWER_TITLE)
        self.display.wait_until_pointer_is_held(window)
        self.display.key("Right", "f")
        self.quit(viewer)
        # Where the repetition runs there is a texture under the default name, which the run did not find.
        desktop.write_texture(self.elsewhere / "Zelvo_envmap.chunky", 9)
        self.assertEqual(self.repeat(self.script), (0, ""))

    def test_a_run_that_is_killed(self):
        self.write_settings(rotate="1.000000")
        viewer = self.start("--record", self.script, *SCREEN, "torus.lwo")
        window = self.display.wait_for(VIEWER_TITLE)
        desktop.wait_for_different(lambda: self.picture(window).rgb, 20, "20 different pictures")
        viewer.process.kill()
        viewer.process.wait()
        self.assertEqual(self.repeat(self.script), (0, ""))
        recorded = int(re.search(r"^frames (\d+)", self.script.read_text(), re.MULTILINE)[1])
        self.assertGreaterEqual(recorded, 20)
        # One more, in which it may have crashed.
        self.assertEqual(len(list((self.elsewhere / "frames").iterdir())), recorded + 1)

    def test_the_next_run_has_a_file_of_its_own(self):
        self.write_settings()
        desktop.write_object(self.work / "knot.lwo", 12, 6)
        viewer = self.start("--record", self.script, *SCREEN, "torus.lwo")
        for name, key in (("torus", "Next"), ("knot", "Next"), ("torus", "Escape")):
            self.display.wait_until_pointer_is_held(self.display.wait_for(name + ".*Zelvo"))
            self.display.key("Right", key)
        self.assert_ends_well(viewer)
        for name in ("run.txt", "run-2.txt", "run-3.txt"):
            self.assertEqual(self.repeat(self.folder / name), (0, ""), name)

    def test_a_file_that_cannot_be_made(self):
        viewer = self.start("--record", "missing/run.txt", self.object)
        self.assertEqual(viewer.wait(), 2)
        self.assertEqual(viewer.err(), "zelvo: cannot write missing/run.txt: No such file or directory\n")


if __name__ == "__main__":
    unittest.main()
