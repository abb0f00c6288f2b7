# SPDX-License-Identifier: MIT
"""A user who presses anything for a while: the viewer goes on, and its memory stays where it is.

ZELVO_SOAK_SECONDS says for how long, ZELVO_SOAK_SEED which user it is."""

import os
import pathlib
import random
import time
import unittest

import desktop
from desktop import MODE_TITLE, TEXTURE_TITLE, VIEWER_TITLE
from test_requesters import Requesters

SECONDS = float(os.environ.get("ZELVO_SOAK_SECONDS", "12"))
SEED = int(os.environ.get("ZELVO_SOAK_SEED", "1"))

# Every key that is a command, but those that end the viewer or open a requester.
KEYS = list("0123456bcdefilprRsSwWz") + ["space", "Tab", "plus", "minus", "Up", "Down", "Left", "Right", "F1", "a", "7"]

# Of a run that is long enough to tell: what the toolkits' caches may take after its first fifth.
ALLOWED_GROWTH_KIB = 4096


class Soak(Requesters):
    def resident_kib(self, viewer):
        fields = pathlib.Path(f"/proc/{viewer.process.pid}/status").read_text().split()
        return int(fields[fields.index("VmRSS:") + 1])

    def press_keys(self, user):
        self.display.xdotool("key", "--delay", "5", *user.choices(KEYS, k=30))

    def move_mouse(self, user):
        """Turns the object; the right button goes to the next mode, the left one would end the viewer."""
        words = []
        for _ in range(10):
            words += ["mousemove_relative", "--", user.randint(-80, 80), user.randint(-60, 60)]
        self.display.xdotool(*words)
        for _ in range(user.randrange(4)):
            self.display.xdotool("click", 3)

    def change_mode(self, user):
        self.display.key("m")
        self.display.wait_for(MODE_TITLE)
        if user.randrange(3) == 0:
            self.display.cancel(MODE_TITLE)
        else:
            self.display.key(*user.choices(["Up", "Down"], k=3))
            self.display.key("Return")
        self.display.wait_for(VIEWER_TITLE)

    def change_texture(self, user, textures):
        self.display.key("t")
        if user.randrange(2) == 0:
            self.display.wait_for(TEXTURE_TITLE)
            self.display.cancel(TEXTURE_TITLE)
        else:
            self.choose_file(TEXTURE_TITLE, user.choice(textures))
        self.display.wait_for(VIEWER_TITLE)

    def test_random_keys(self):
        user = random.Random(SEED)
        textures = [self.work / "waves", self.work / "more-waves"]
        for waves, texture in enumerate(textures, 4):
            desktop.write_texture(texture, waves)
        self.write_settings(rotate="1.000000")
        # A sanitized build would keep what is freed, to catch whoever still uses it, and grow by it.
        viewer, _ = self.start_viewing(ASAN_OPTIONS="detect_leaks=0:quarantine_size_mb=0")
        # Both requesters once, so that what the toolkit loads for them is there from the start.
        self.change_mode(user)
        self.change_texture(user, textures)

        start = time.monotonic()
        counts = {"keys": 0, "mouse": 0, "modes": 0, "textures": 0}
        levels = []
        while (passed := time.monotonic() - start) < SECONDS or not levels:
            what = user.randrange(40)
            if what == 0:
                self.change_mode(user)
                counts["modes"] += 1
            elif what == 1:
                self.change_texture(user, textures)
                counts["textures"] += 1
            elif what < 10:
                self.move_mouse(user)
                counts["mouse"] += 1
            else:
                self.press_keys(user)
                counts["keys"] += 30
            self.assertIsNone(viewer.process.poll(), viewer.err())
            if passed > SECONDS / 5:
                levels.append(self.resident_kib(viewer))
        print(f"seed {SEED}, {SECONDS:.0f} s, {counts}, resident {min(levels)} to {max(levels)} KiB", flush=True)
        self.quit(viewer)
        self.assertLess(max(levels) - levels[0], ALLOWED_GROWTH_KIB, "resident memory grows")


if __name__ == "__main__":
    unittest.main()
