# SPDX-License-Identifier: MIT
"""icons.py PICTURE TOOL-ICON DRAWER-ICON: writes the Workbench icons of a program and of a drawer from a plain PGM
picture with four levels.

An icon file is the structure DiskObject as it is in memory, its longs and words big-endian, followed by what its
pointers point to: the drawer's window (of a drawer), the image's structure and bit-planes. A pointer in the file only
says whether there is something.
"""
import struct
import sys

DRAWER, TOOL = 2, 3

#: Workbench's first four colours are grey, black, white and blue: the pens of the levels from dark to bright.
PENS = (0, 1, 3, 2)
PLANES = 2

#: Bytes of stack that Workbench gives the program.
STACK = 65536

NO_POSITION = -0x80000000
PRESENT = 1


def read_picture(path):
    """Rows of pens."""
    with open(path, encoding="ascii") as file:
        words = [word for line in file for word in line.split("#")[0].split()]
    kind, width, height, levels = words[0], int(words[1]), int(words[2]), [int(word) for word in words[4:]]
    if (kind, words[3]) != ("P2", "3") or len(levels) != width * height:
        sys.exit(f"{path}: not a plain PGM picture with four levels")
    return [[PENS[level] for level in levels[row * width:(row + 1) * width]] for row in range(height)]


def bit_planes(rows):
    """One plane after another, its rows filled up to whole words."""
    planes = bytearray()
    for plane in range(PLANES):
        for row in rows:
            padded = row + [0] * (-len(row) % 16)
            for at in range(0, len(padded), 8):
                planes.append(sum((pen >> plane & 1) << (7 - bit) for bit, pen in enumerate(padded[at:at + 8])))
    return bytes(planes)


def gadget(width, height):
    """The structure Gadget: an image that is inverted while it is selected."""
    has_image, relative_verify, immediate, boolean, revision = 4, 1, 2, 1, 1
    return struct.pack(">I4h3H3IiIHI", 0, 0, 0, width, height, has_image, relative_verify | immediate, boolean,
                       PRESENT, 0, 0, 0, 0, 0, revision)


def drawer_window():
    """The structure DrawerData: the window that the drawer opens, a NewWindow and where it is scrolled to."""
    closes_moves_sizes_scrolls = 0x0240027F
    on_workbench = 1
    new_window = struct.pack(">4h2B2I5I2h2HH", 50, 50, 400, 150, 255, 255, 0, closes_moves_sizes_scrolls,
                             0, 0, 0, 0, 0, 94, 65, 65535, 65535, on_workbench)
    return new_window + struct.pack(">2i", 0, 0)


def icon(kind, rows):
    """The whole file."""
    width, height = len(rows[0]), len(rows)
    is_drawer = kind == DRAWER
    magic, version = 0xE310, 1
    disk_object = struct.pack(">2H", magic, version) + gadget(width, height)
    disk_object += struct.pack(">BB2I2i2Ii", kind, 0, 0, 0, NO_POSITION, NO_POSITION,
                               PRESENT if is_drawer else 0, 0, 0 if is_drawer else STACK)
    image = struct.pack(">5hI2BI", 0, 0, width, height, PLANES, PRESENT, 2 ** PLANES - 1, 0, 0) + bit_planes(rows)
    # A drawer's newer fields, flags and view mode, come last.
    shown_as_everywhere_else = struct.pack(">IH", 0, 0)
    if is_drawer:
        return disk_object + drawer_window() + image + shown_as_everywhere_else
    return disk_object + image


def main():
    picture, tool, drawer = sys.argv[1:]
    rows = read_picture(picture)
    for path, kind in ((tool, TOOL), (drawer, DRAWER)):
        with open(path, "wb") as file:
            file.write(icon(kind, rows))


if __name__ == "__main__":
    main()
