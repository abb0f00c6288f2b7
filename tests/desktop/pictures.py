# SPDX-License-Identifier: MIT
"""Pictures as rows of red, green and blue bytes, read from an X window or from a PNG file."""

import struct
import subprocess
import zlib


class Picture:
    """`rgb` holds height * width * 3 bytes, top row first."""

    def __init__(self, width, height, rgb):
        self.width = width
        self.height = height
        self.rgb = bytes(rgb)

    def rows(self, first, end):
        """The rows from `first` up to but not including `end`."""
        return Picture(self.width, end - first, self.rgb[first * self.width * 3 : end * self.width * 3])

    def part(self, x, y, width, height):
        rows = [self.rgb[((y + row) * self.width + x) * 3 :][: width * 3] for row in range(height)]
        return Picture(width, height, b"".join(rows))

    def enlarged(self, factor):
        """This picture with each pixel enlarged to a square of `factor` pixels per side."""
        rows = []
        for y in range(self.height):
            row = self.rgb[y * self.width * 3 : (y + 1) * self.width * 3]
            wide = b"".join(row[x : x + 3] * factor for x in range(0, len(row), 3))
            rows.append(wide * factor)
        return Picture(self.width * factor, self.height * factor, b"".join(rows))

    def centred_on_black(self, width, height):
        """This picture in the middle of a black one of this size."""
        left, above = (width - self.width) // 2, (height - self.height) // 2
        rows = [self.rgb[y * self.width * 3 :][: self.width * 3] for y in range(self.height)]
        centred = [bytes(left * 3) + row + bytes((width - self.width - left) * 3) for row in rows]
        edge = bytes(width * 3)
        below = height - self.height - above
        return Picture(width, height, edge * above + b"".join(centred) + edge * below)

    def is_black(self):
        return not any(self.rgb)

    def difference(self, other):
        """How this picture differs from another one; None if it does not."""
        if (self.width, self.height) != (other.width, other.height):
            return f"{self.width} x {self.height} instead of {other.width} x {other.height}"
        if self.rgb == other.rgb:
            return None
        differing = [i // 3 for i in range(0, len(self.rgb), 3) if self.rgb[i : i + 3] != other.rgb[i : i + 3]]
        x, y = differing[0] % self.width, differing[0] // self.width
        return f"{len(differing)} pixels differ, the first at ({x}, {y})"

    def write(self, path):
        """Writes a PPM file, for people to look at."""
        with open(path, "wb") as file:
            file.write(b"P6\n%d %d\n255\n" % (self.width, self.height) + self.rgb)


def of_window(window, environment):
    """The picture in the X window, with the windows inside it."""
    dump = subprocess.run(
        ["xwd", "-silent", "-id", str(window)], env=environment, capture_output=True, check=True
    ).stdout
    header = struct.unpack(">25I", dump[:100])
    header_size, width, height = header[0], header[4], header[5]
    little_endian, bytes_per_row, colours = header[7] == 0, header[12], header[19]
    # A window that contains windows of another depth has pixels of three bytes.
    step = header[11] // 8
    if step not in (3, 4) or not little_endian:
        raise ValueError("only 24-bit and 32-bit little-endian displays are read")
    pixels = dump[header_size + 12 * colours :]
    rgb = bytearray(width * height * 3)
    for y in range(height):
        row = pixels[y * bytes_per_row :][: width * step]
        at = y * width * 3
        for channel in range(3):
            rgb[at + channel : at + width * 3 : 3] = row[2 - channel :: step]
    return Picture(width, height, rgb)


def _unfilter(data, height, bytes_per_row):
    """Undoes PNG's filters for pictures of one byte per pixel."""
    rows, previous = [], bytearray(bytes_per_row)
    for y in range(height):
        start = y * (bytes_per_row + 1)
        kind, row = data[start], bytearray(data[start + 1 : start + 1 + bytes_per_row])
        if kind > 2:
            raise ValueError("unknown PNG filter")
        for x in range(bytes_per_row):
            if kind == 1 and x > 0:
                row[x] = (row[x] + row[x - 1]) & 255
            elif kind == 2:
                row[x] = (row[x] + previous[x]) & 255
        rows.append(row)
        previous = row
    return b"".join(rows)


def of_png(path):
    """The picture in a PNG file of 8-bit palette indices, as zelvo-render writes it."""
    with open(path, "rb") as file:
        data = file.read()
    at, image, palette, size = 8, b"", b"", None
    while at < len(data):
        length, kind = struct.unpack(">I4s", data[at : at + 8])
        body = data[at + 8 : at + 8 + length]
        if kind == b"IHDR":
            size = struct.unpack(">II", body[:8])
            if tuple(body[8:]) != (8, 3, 0, 0, 0):
                raise ValueError("not an 8-bit palette picture")
        elif kind == b"PLTE":
            palette = body
        elif kind == b"IDAT":
            image += body
        at += 12 + length
    width, height = size
    indices = _unfilter(zlib.decompress(image), height, width)
    channels = [bytes(palette[channel::3]).ljust(256, b"\0") for channel in range(3)]
    rgb = bytearray(width * height * 3)
    for channel in range(3):
        rgb[channel::3] = indices.translate(channels[channel])
    return Picture(width, height, rgb)
