# SPDX-License-Identifier: MIT
"""A private desktop for each test: an X server without a screen, a window manager, a user's folders, and the viewer in
a real window. Real key presses and mouse motion control it."""

import math
import os
import pathlib
import re
import shutil
import struct
import subprocess
import tempfile
import time
import unittest

import pictures

VIEWER = os.environ["ZELVO"]
RENDERER = os.environ["ZELVO_RENDER"]

VIEWER_TITLE = "Zelvo   <Esc> to quit"
POINTER_HINT = "<Alt> frees the pointer."
MODE_TITLE = "^Zelvo: screen mode"
OBJECT_TITLE = "^Select a LightWave Object"
TEXTURE_TITLE = "^Select Zelvo_envmap.chunky file"

# A guard against hangs, in seconds. Only a busy machine takes long.
PATIENCE = 30.0

# Input before a window is ready for it can be lost. Without an effect after this time it is repeated.
REPEAT_PATIENCE = 5.0

# The viewer ignores clicks for this time after it got the focus. Nothing shows when the time is over.
STRAY_CLICK_SECONDS = 0.5

# The X server repeats a held key after 0.66 s, and then 25 times per second. A test that shows that a repeated key
# does nothing holds it for this long.
HELD_KEY_SECONDS = 1.2

STATISTICS = re.compile(
    r"number of frames: \d+\n"
    r"all time: \d+\.\d{6}  average frametime: \d+\.\d{6}\n"
    r"average framerate: \d+\.\d{6} fps\n"
)

SETTINGS = """gammas: {gammas}
rotate: {rotate}
obj style: {obj_style}
clear style: {clear_style}
fps: {fps}
dots: {dots}
dot lum: {dot_lum}
dot lum in blur: {dot_lum_in_blur}
internal c2p enabled: {c2p}
envmap filename: {envmap}
ModeID: {mode}
width: {width}
height: {height}
*** Please don't edit this file! ***"""

# The settings of a first start with two changes: the frame-rate counter is off, because it depends on the time, and
# pixels are not enlarged.
DEFAULTS = {
    "gammas": "1.000000 1.000000 1.000000",
    "rotate": "0.000000",
    "obj_style": 1,
    "clear_style": 0,
    "fps": 0,
    "dots": 0,
    "dot_lum": 25600,
    "dot_lum_in_blur": 2560,
    "c2p": 0,
    "envmap": "Zelvo_envmap.chunky",
    "mode": 1,
    "width": 320,
    "height": 256,
}


def settings(**changes):
    """The text of a settings file."""
    return SETTINGS.format(**{**DEFAULTS, **changes})


def wait_until(condition, what, patience=PATIENCE):
    """Returns the first true value of `condition`; fails when that takes too long."""
    end = time.monotonic() + patience
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError("timed out waiting for " + what)
        time.sleep(0.02)


def repeat_until(action, condition, what, patience=REPEAT_PATIENCE):
    """Repeats an action that may be lost until it has an effect; returns the first true value of `condition`."""

    def has_effect():
        action()
        try:
            return wait_until(condition, what, patience)
        except AssertionError:
            return None

    return wait_until(has_effect, what)


def wait_for_different(read, count, what):
    """Waits until `read` has returned this many different values."""
    seen = set()

    def is_enough():
        seen.add(read())
        return len(seen) >= count

    wait_until(is_enough, what)


def _chunk(name, data):
    return name + struct.pack(">I", len(data)) + data


def write_object(path, rings=16, sides=10):
    """Writes a LightWave object: a torus whose tube is thicker at one place, so that every rotation is visible."""
    points, polygons = b"", b""
    for ring in range(rings):
        around = 2 * math.pi * ring / rings
        thickness = 0.3 + 0.12 * math.cos(around)
        for side in range(sides):
            across = 2 * math.pi * side / sides
            radius = 1.0 + thickness * math.cos(across)
            points += struct.pack(
                ">3f", radius * math.cos(around), thickness * math.sin(across), radius * math.sin(around)
            )
            corners = [
                ring * sides + side,
                ring * sides + (side + 1) % sides,
                (ring + 1) % rings * sides + (side + 1) % sides,
                (ring + 1) % rings * sides + side,
            ]
            polygons += struct.pack(">6H", 4, *corners, 1)
    body = b"LWOB" + _chunk(b"PNTS", points) + _chunk(b"POLS", polygons)
    path.write_bytes(_chunk(b"FORM", body))


def write_texture(path, waves=3):
    """Writes a texture of soft waves. Another number of waves gives another texture."""
    path.write_bytes(
        bytes(
            int(127.5 + 127.0 * math.sin(waves * u * math.pi / 128) * math.cos(v * math.pi / 96))
            for v in range(256)
            for u in range(256)
        )
    )


def language(folder, name):
    """Makes a locale in a folder; returns the environment variables that choose it."""
    locales = folder / "locales"
    locales.mkdir(exist_ok=True)
    path = locales / (name + ".UTF-8")
    subprocess.run(["localedef", "-i", name, "-f", "UTF-8", path], capture_output=True, check=False)
    return {"LOCPATH": str(locales), "LANG": name + ".UTF-8", "LC_ALL": name + ".UTF-8"}


class Display:
    """An X server with a screen of this size, and by default with a window manager."""

    def __init__(self, width=1280, height=1024, manager=True):
        number_read, number_write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(number_write), "-screen", "0", f"{width}x{height}x24"]
            # Otherwise the server resets when its last client disconnects, and a new client may connect during the
            # reset.
            + ["-noreset", "-nolisten", "tcp"],
            pass_fds=[number_write],
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )
        os.close(number_write)
        with os.fdopen(number_read) as number:
            self.name = ":" + number.readline().strip()
        self.environment = {**os.environ, "DISPLAY": self.name}
        self.manager = None
        if manager:
            self.manager = subprocess.Popen(
                # A window that opens before the manager has started may never be mapped. The manager runs this command
                # after its start.
                ["openbox", "--sm-disable", "--startup", "xprop -root -f MANAGED 8s -set MANAGED yes"],
                env=self.environment,
                stdout=subprocess.DEVNULL,
                stderr=subprocess.DEVNULL,
            )
            try:
                wait_until(self._is_managed, "the window manager")
            except AssertionError:
                self.close()
                raise

    def _is_managed(self):
        answer = subprocess.run(
            ["xprop", "-root", "MANAGED"], env=self.environment, capture_output=True, text=True
        )
        return "yes" in answer.stdout

    def close(self):
        for process in (self.manager, self.server):
            if process is not None:
                process.terminate()
                process.wait()

    def xdotool(self, *words):
        """Runs xdotool and returns what it prints; empty if it finds nothing."""
        done = subprocess.run(["xdotool", *map(str, words)], env=self.environment, capture_output=True, text=True)
        return done.stdout

    def wmctrl(self, window, *words):
        """Asks the window manager to do something with a window."""
        subprocess.run(["wmctrl", "-i", "-r", hex(window), *words], env=self.environment, check=True)

    def close_window(self, window):
        """Does what the window manager's close button does."""
        subprocess.run(["wmctrl", "-i", "-c", hex(window)], env=self.environment, check=True)

    def find(self, title):
        """The visible window with this title; None if there is none."""
        found = self.xdotool("search", "--onlyvisible", "--name", title).split()
        return int(found[-1]) if found else None

    def wait_for(self, title, patience=PATIENCE):
        """Waits until the window with this title has the focus, and returns it."""

        def focused():
            """Checks both: window managers announce a window as active before the server gives it the keys."""
            words = self.xdotool("getactivewindow").split()
            name = self.xdotool("getwindowname", words[0]) if words else ""
            has_keys = words and self.xdotool("getwindowfocus").split() == words
            return int(words[0]) if has_keys and re.search(title, name) else None

        try:
            return wait_until(focused, "a window " + title, patience)
        except AssertionError as error:
            active = self.xdotool("getactivewindow", "getwindowname").strip()
            raise AssertionError(f"{error}; found {self.find(title)}, active is {active!r}") from None

    def cancel(self, title):
        """Cancels a requester."""
        self.close_by_key(title, "Escape")

    def close_by_key(self, title, key):
        """Presses a key until the window is gone. A window that has just opened may not be ready for the first one."""
        self.wait_for(title)

        def press():
            # The window may have closed by now. The next window must not get the key.
            if re.search(title, self.xdotool("getactivewindow", "getwindowname")):
                self.key(key)

        repeat_until(press, lambda: self.find(title) is None, f"{key} to close {title}")

    def wait_until_gone(self, title, patience=PATIENCE):
        wait_until(lambda: self.find(title) is None, "no window " + title, patience)

    def root(self):
        """The window of the whole screen."""
        answer = subprocess.run(["xwininfo", "-root"], env=self.environment, capture_output=True, text=True, check=True)
        return int(answer.stdout.split("Window id: ")[1].split()[0], 16)

    def name_of(self, window):
        return self.xdotool("getwindowname", window).strip()

    def place_of(self, window):
        """The area inside the window's frame: x, y, width, height."""
        answer = self.xdotool("getwindowgeometry", "--shell", window)
        values = dict(line.split("=") for line in answer.split())
        return tuple(int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def end_of(self, window):
        """The first column and the first row past the window and its frame."""

        def answer(*command):
            return subprocess.run(command, env=self.environment, capture_output=True, text=True, check=True).stdout

        frame = re.findall(r"\d+", answer("xprop", "-id", str(window), "_NET_FRAME_EXTENTS").split("=")[1])
        place = answer("xwininfo", "-id", str(window))
        x, y, width, height = (
            int(re.search(name + r": +(-?\d+)", place)[1]) for name in ("Absolute.*X", "Absolute.*Y", "Width", "Height")
        )
        return x + width + int(frame[1]), y + height + int(frame[3])

    def wait_until_pointer_is_held(self, window):
        """Waits until the viewer has captured the pointer. Its title then says how to free it."""
        wait_until(lambda: POINTER_HINT in self.name_of(window), "the pointer to be held")

    def wait_until_pointer_is_free(self, window):
        wait_until(lambda: POINTER_HINT not in self.name_of(window), "the pointer to be free")

    def change_state(self, window, action, *states):
        """Asks the window manager to add, remove or toggle states such as fullscreen."""
        subprocess.run(
            ["wmctrl", "-i", "-r", str(window), "-b", ",".join([action, *states])], env=self.environment, check=True
        )

    def key(self, *names):
        """Presses and releases keys by their X names. A name may include modifiers, such as alt+Return."""
        self.xdotool("key", "--delay", "20", *names)

    def type(self, text):
        self.xdotool("type", "--delay", "20", text)


class Viewer:
    """A running viewer."""

    def __init__(self, program, arguments, folder, environment, error_stream=None):
        """`error_stream` is a descriptor for standard error, which is a file by default."""
        self.out_path, self.err_path = folder / "out.txt", folder / "err.txt"
        with open(self.out_path, "wb") as out, open(self.err_path, "wb") as err:
            self.process = subprocess.Popen(
                [program, *map(str, arguments)],
                cwd=folder,
                env=environment,
                stdin=subprocess.DEVNULL,
                stdout=out,
                stderr=err if error_stream is None else error_stream,
            )

    def out(self):
        return self.out_path.read_text()

    def err(self):
        return self.err_path.read_text()

    def wait(self):
        """Waits until the viewer has ended; returns its exit code."""
        return self.process.wait(timeout=PATIENCE)

    def signal(self, number):
        self.process.send_signal(number)

    def catches(self, number):
        """Whether the viewer has a handler for this signal by now."""
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text()
        return int(re.search(r"SigCgt:\t([0-9a-f]+)", status)[1], 16) >> (number - 1) & 1 == 1

    def frames(self):
        """The number of passes, from the statistics of a viewer that has ended."""
        return int(re.search(r"number of frames: (\d+)", self.out())[1])


class Case(unittest.TestCase):
    """A test with a display, a user's folders and an object, all of which are removed at its end."""

    DISPLAY_SIZE = (1280, 1024)
    MANAGER = True

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="zelvo-desktop-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.work = self.folder / "work"
        self.runtime = self.folder / "runtime"
        self.config = self.folder / "config"
        self.home = self.folder / "home"
        for made in (self.work, self.runtime, self.home):
            made.mkdir(mode=0o700)
        self.env_file = self.runtime / "zelvo" / "Zelvo.vars"
        self.envarc_file = self.config / "zelvo" / "Zelvo.vars"
        # The program looks for its data relative to itself. Here it finds only what a test installs.
        (self.folder / "bin").mkdir()
        self.program = self.folder / "bin" / "zelvo"
        shutil.copy(VIEWER, self.program)
        self.object = self.work / "torus.lwo"
        write_object(self.object)
        write_texture(self.work / "Zelvo_envmap.chunky")
        self.display = self.open_display()
        self.addCleanup(self.display.close)
        self.viewers = []
        self.addCleanup(self._end_viewers)

    def open_display(self):
        return Display(*self.DISPLAY_SIZE, manager=self.MANAGER)

    def _end_viewers(self):
        for viewer in self.viewers:
            if viewer.process.poll() is None:
                viewer.process.kill()
                viewer.process.wait()

    def environment(self, **changes):
        """The viewer's environment, without the desktop on which the test itself may run."""
        kept = {name: os.environ[name] for name in ("PATH", "LD_LIBRARY_PATH") if name in os.environ}
        own = {
            **kept,
            "HOME": str(self.home),
            "DISPLAY": getattr(self.display, "name", None),
            "XDG_RUNTIME_DIR": str(self.runtime),
            "XDG_CONFIG_HOME": str(self.config),
            "LANG": "C.UTF-8",
            "NO_AT_BRIDGE": "1",
            "GSETTINGS_BACKEND": "memory",
            "GIO_USE_VFS": "local",
            "DBUS_SESSION_BUS_ADDRESS": "disabled:",
            # Toolkit warnings end the viewer, and freed memory is overwritten.
            "G_DEBUG": "fatal-warnings",
            "MALLOC_PERTURB_": "165",
            "G_SLICE": "always-malloc",
            # Toolkits and drivers leave some memory to be freed at the end of the process. These are no leaks of the
            # viewer.
            "ASAN_OPTIONS": "detect_leaks=0",
        }
        return {name: value for name, value in {**own, **changes}.items() if value is not None}

    def write_settings(self, **changes):
        """Writes settings as another run of this login would have saved them."""
        self.env_file.parent.mkdir(mode=0o700, exist_ok=True)
        self.env_file.write_text(settings(**changes))

    def start(self, *arguments, error_stream=None, **environment):
        viewer = Viewer(self.program, arguments, self.work, self.environment(**environment), error_stream)
        self.viewers.append(viewer)
        return viewer

    def start_viewing(self, **environment):
        """Starts on the object with the existing settings; returns the viewer and its window, which has the focus."""
        viewer = self.start(self.object, **environment)
        window = self.display.wait_for(VIEWER_TITLE)
        wait_until(lambda: not self.picture(window).is_black(), "the first picture")
        # The viewer ignores keys that are down when it gets the focus, and captures the pointer after that.
        self.display.wait_until_pointer_is_held(window)
        return viewer, window

    def wait_until_clicks_count(self, window):
        """Waits until a click is a command. The viewer treats an earlier one as the click that gave it the focus."""
        self.display.wait_until_pointer_is_held(window)
        time.sleep(STRAY_CLICK_SECONDS)

    def type_path(self, path):
        """Types an absolute path into the file requester that has the keyboard."""
        # The first slash opens the field for a path. Ctrl+L would also open it, but would close it if it is open.
        self.display.key("ctrl+a")
        self.display.type(str(path))

    def enter_path(self, title, path):
        """Types a path into the file requester with this title, and confirms it."""
        self.display.wait_for(title)
        self.type_path(path)
        self.display.key("Return")

    def choose_file(self, title, path):
        """Enters a path until the file requester closes. A path that is typed while it starts is lost."""
        repeat_until(
            lambda: self.enter_path(title, path),
            lambda: self.display.find(title) is None,
            "the chooser to accept " + str(path),
            2 * REPEAT_PATIENCE,
        )

    def picture(self, window):
        """The picture in the window. A window that is being moved or mapped cannot be read for a moment."""

        def read():
            try:
                return pictures.of_window(window, self.display.environment)
            except subprocess.CalledProcessError:
                return None

        return wait_until(read, "a window that can be read")

    def assert_ends_well(self, viewer, errors=""):
        """Checks exit code 0, the statistics at the end, and that standard error matches `errors`."""
        self.assertEqual(viewer.wait(), 0, viewer.err())
        self.assertRegex(viewer.err(), rf"\A(?:{errors})\Z")
        self.assertRegex(viewer.out(), STATISTICS)
        self.assertTrue(viewer.out().endswith("changescreenbuffer done\n"))

    def quit(self, viewer, errors=""):
        self.display.key("Escape")
        self.assert_ends_well(viewer, errors)

    def rehearse(self, script, passes, first, every=1, tick=0.0005):
        """Pictures of the same object and settings from the offscreen host."""
        folder = pathlib.Path(tempfile.mkdtemp(dir=self.folder))
        (folder / "env").mkdir()
        if self.env_file.exists():
            shutil.copy(self.env_file, folder / "env")
        (folder / "script.txt").write_text(script)
        subprocess.run(
            [RENDERER, self.object, "--env", folder / "env", "--envarc", folder, "--input", folder / "script.txt"]
            + ["--passes", str(passes), "--from", str(first), "--every", str(every), "--tick", str(tick)]
            + ["--png", folder / "%05d.png"],
            cwd=self.work,
            check=True,
            stdout=subprocess.DEVNULL,
        )
        saved = folder / "env" / "Zelvo.vars"
        self.rehearsed_settings = saved.read_text() if saved.exists() else None
        return [pictures.of_png(path) for path in sorted(folder.glob("*.png"))]

    def assert_shows(self, window, expected, what, patience=PATIENCE):
        """Waits until the window shows this picture, pixel for pixel."""
        shown = None
        end = time.monotonic() + patience
        while time.monotonic() < end:
            shown = self.picture(window)
            if shown.rgb == expected.rgb and shown.width == expected.width:
                return
            time.sleep(0.01)
        actual_path, expected_path = (f"{self.id()}.{kind}.ppm" for kind in ("actual", "expected"))
        shown.write(actual_path)
        expected.write(expected_path)
        self.fail(f"{what}: {shown.difference(expected)}; see {actual_path} and {expected_path}")
