# SPDX-License-Identifier: MIT
"""Thumbnails as file managers get them: from a thumbnail service over D-Bus, and inside their sandbox."""

import hashlib
import os
import pathlib
import shutil
import struct
import subprocess
import tempfile
import textwrap
import unittest
import zlib

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
DATA = ROOT / "data"
BIN = pathlib.Path(os.environ["ZELVO"]).parent
THUMBNAILER = BIN / "zelvo-thumbnailer"
ENTRY = ROOT / "apps" / "zelvo_thumbnailer" / "zelvo.thumbnailer"

# What the sandbox of the GNOME desktop's thumbnail factory gives a thumbnailer. Its home, its network and its display
# are not there.
SANDBOX = """
    bwrap --ro-bind /usr /usr --ro-bind-try /etc/ld.so.cache /etc/ld.so.cache --symlink usr/bin /bin
    --symlink usr/lib /lib --symlink usr/lib64 /lib64 --proc /proc --dev /dev --chdir / --setenv GIO_USE_VFS local
    --unshare-all --die-with-parent
""".split()


def png_pixels(path):
    """Width, height and the decoded rows' alpha of a PNG with eight bits per channel; alpha is None without one."""
    content = path.read_bytes()
    assert content.startswith(b"\x89PNG\r\n\x1a\n"), path
    width, height, depth, kind = struct.unpack(">IIBB", content[16:26])
    step = {4: 2, 6: 4}.get(kind)
    if depth != 8 or step is None:
        return width, height, None
    packed, at = b"", 8
    while at < len(content):
        length, name = struct.unpack(">I4s", content[at : at + 8])
        packed += content[at + 8 : at + 8 + length] if name == b"IDAT" else b""
        at += length + 12
    raw = zlib.decompress(packed)
    above, alphas = bytes(width * step), []
    for y in range(height):
        start = y * (width * step + 1)
        row = bytearray(raw[start + 1 : start + 1 + width * step])
        for x in range(width * step):
            left = row[x - step] if x >= step else 0
            corner = above[x - step] if x >= step else 0
            row[x] = (row[x] + predicted(raw[start], left, above[x], corner)) & 255
        above = bytes(row)
        alphas += row[step - 1 :: step]
    return width, height, alphas


def predicted(method, left, above, corner):
    """What a filter method of PNG expects of a byte."""
    if method == 4:
        return min((left, above, corner), key=lambda value: abs(left + above - corner - value))
    return (0, left, above, (left + above) // 2)[method]


class Case(unittest.TestCase):
    def setUp(self):
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="zelvo-test-"))
        self.addCleanup(shutil.rmtree, self.home)

    def assert_thumbnail(self, path, side):
        width, height, alphas = png_pixels(path)
        self.assertEqual((width, height), (side, side))
        self.assertIsNotNone(alphas, "no transparency")
        self.assertEqual(alphas[0], 0)
        self.assertEqual(max(alphas), 255)


class Entry(Case):
    def test_names_the_installed_program_and_the_type_that_the_system_gives_objects(self):
        lines = dict(line.split("=", 1) for line in ENTRY.read_text().splitlines() if "=" in line)
        self.assertEqual(lines["TryExec"], "zelvo-thumbnailer")
        self.assertEqual(lines["Exec"], "zelvo-thumbnailer %i %o %s")
        answer = subprocess.run(
            ["gio", "info", "-a", "standard::fast-content-type", DATA / "cut_gem.lwo"], capture_output=True, text=True
        ).stdout
        self.assertIn("standard::fast-content-type: " + lines["MimeType"].rstrip(";"), answer)

    def test_of_the_converter_is_for_types_that_the_system_gives_models(self):
        folder = ROOT / "apps" / "zelvo_convert"
        expected = set()
        # Of OBJ and 3DS the content decides, since other types have these suffixes too.
        for suffix in ("stl", "gltf", "glb", "3mf", "dxf"):
            model = self.home / f"model.{suffix}"
            model.write_bytes(bytes([1, 2]))
            answer = subprocess.run(
                ["gio", "info", "-a", "standard::fast-content-type", model], capture_output=True, text=True
            ).stdout
            expected.add(answer.split()[-1])
        for entry in ("zelvo-convert.thumbnailer", "zelvo-import.desktop"):
            lines = dict(line.split("=", 1) for line in (folder / entry).read_text().splitlines() if "=" in line)
            self.assertEqual(lines["TryExec"], "zelvo-convert")
            types = set(lines["MimeType"].rstrip(";").split(";"))
            self.assertEqual(types, expected | {"model/obj", "image/x-3ds"})


class Sandbox(Case):
    def setUp(self):
        super().setUp()
        tried = subprocess.run([*SANDBOX, "/bin/true"], capture_output=True, text=True)
        if tried.returncode != 0:
            self.skipTest("no sandbox here: " + tried.stderr.strip())

    def run_in_sandbox(self, source):
        """Runs the thumbnailer as the service does: input and output have other names inside."""
        output = self.home / "output"
        output.mkdir(exist_ok=True)
        result = subprocess.run(
            SANDBOX
            + ["--ro-bind", THUMBNAILER, "/run/zelvo-thumbnailer", "--ro-bind", source, "/tmp/input.lwo"]
            + ["--bind", output, "/run/output"]
            + ["/run/zelvo-thumbnailer", "/tmp/input.lwo", "/run/output/thumbnail.png", "256"],
            capture_output=True,
            text=True,
        )
        return result, output

    def test_makes_a_thumbnail(self):
        result, output = self.run_in_sandbox(DATA / "torus_knot.lwo")
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))
        self.assert_thumbnail(output / "thumbnail.png", 256)

    def test_refuses_a_hostile_file(self):
        hostile = self.home / "hostile.lwo"
        hostile.write_bytes(b"FORM\x00\x00\x00\x20LWOBPNTS\x7f\xff\xff\xf0POLS")
        result, output = self.run_in_sandbox(hostile)
        self.assertEqual(result.returncode, 20)
        self.assertEqual(result.stderr.count("\n"), 1)
        self.assertEqual(list(output.iterdir()), [])


class Service(Case):
    """tumblerd in a session bus of its own, which finds the thumbnailer by its entry."""

    # Queues the files and waits for the service's last word on them; prints a line per signal. The time limit only
    # guards against a hang.
    CLIENT = """
        import sys
        from gi.repository import Gio, GLib

        loop = GLib.MainLoop()
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        service = Gio.DBusProxy.new_sync(
            bus, 0, None, "org.freedesktop.thumbnails.Thumbnailer1", "/org/freedesktop/thumbnails/Thumbnailer1",
            "org.freedesktop.thumbnails.Thumbnailer1")

        def on_signal(proxy, sender, name, parameters):
            values = parameters.unpack()
            if name in ("Ready", "Error"):
                for uri in values[1]:
                    print(name, uri, flush=True)
            if name == "Finished":
                loop.quit()

        service.connect("g-signal", on_signal)
        flavour, uris = sys.argv[1], sys.argv[2:]
        service.call_sync(
            "Queue", GLib.Variant("(asasssu)", (uris, ["image/x-lwo"] * len(uris), flavour, "foreground", 0)), 0, -1)
        GLib.timeout_add_seconds(120, lambda: sys.exit("the service says nothing"))
        loop.run()
    """

    def queue(self, flavour, *files):
        """What the service says about each file: Ready or Error."""
        share = self.home / "share"
        (share / "thumbnailers").mkdir(parents=True, exist_ok=True)
        shutil.copy(ENTRY, share / "thumbnailers")
        environment = {
            "PATH": f"{BIN}:/usr/bin:/bin",
            "HOME": str(self.home),
            "XDG_CACHE_HOME": str(self.home / "cache"),
            "XDG_DATA_HOME": str(self.home / "data"),
            "XDG_CONFIG_HOME": str(self.home / "config"),
            "XDG_RUNTIME_DIR": str(self.home),
            "XDG_DATA_DIRS": f"{share}:/usr/share",
            "GIO_USE_VFS": "local",
        }
        result = subprocess.run(
            ["dbus-run-session", "--", "/usr/bin/python3", "-c", textwrap.dedent(self.CLIENT), flavour]
            + [file.as_uri() for file in files],
            env=environment,
            capture_output=True,
            text=True,
        )
        self.assertEqual(result.returncode, 0, result.stderr)
        said = dict(reversed(line.split(" ", 1)) for line in result.stdout.splitlines())
        return [said.get(file.as_uri()) for file in files]

    def in_cache(self, flavour, file):
        return self.home / "cache" / "thumbnails" / flavour / (hashlib.md5(file.as_uri().encode()).hexdigest() + ".png")

    def test_leaves_thumbnails_in_the_cache(self):
        # A name that a URI cannot have as it is.
        knot = self.home / "my knot 100%.lwo"
        shutil.copy(DATA / "torus_knot.lwo", knot)
        for flavour, side in (("normal", 128), ("large", 256)):
            with self.subTest(flavour=flavour):
                self.assertEqual(self.queue(flavour, knot, DATA / "cut_gem.lwo"), ["Ready", "Ready"])
                self.assert_thumbnail(self.in_cache(flavour, knot), side)
                self.assert_thumbnail(self.in_cache(flavour, DATA / "cut_gem.lwo"), side)

    def test_reports_an_error_for_a_hostile_file_and_goes_on(self):
        hostile = self.home / "hostile.lwo"
        hostile.write_bytes(b"FORM\x00\x00\x00\x20LWOBPNTS\x7f\xff\xff\xf0POLS")
        self.assertEqual(self.queue("normal", hostile, DATA / "cogwheel.lwo"), ["Error", "Ready"])
        self.assertFalse(self.in_cache("normal", hostile).exists())
        self.assert_thumbnail(self.in_cache("normal", DATA / "cogwheel.lwo"), 128)


if __name__ == "__main__":
    unittest.main()
