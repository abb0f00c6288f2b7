# SPDX-License-Identifier: MIT
"""archive.py ARCHIVE FOLDER: packs everything in a folder into an LhA archive, its names relative to the folder.

Every member has the oldest kind of header (level 0) and is stored as it is (method -lh0-), so that any unpacker reads
it. A header is: its length and the sum of the bytes after these two, the method, the two sizes, the date, the
protection bits (0: everything is allowed), the level, the name with its length, and the CRC-16 of the contents; all
numbers are little-endian. A zero byte ends the archive.
"""
import os
import struct
import sys
import time
from pathlib import Path


def crc_of_byte(byte):
    """The remainder of a byte by x^16 + x^15 + x^2 + 1, bits reversed."""
    for _ in range(8):
        byte = byte >> 1 ^ (0xA001 if byte & 1 else 0)
    return byte


CRC_TABLE = [crc_of_byte(byte) for byte in range(256)]


def crc16(data):
    crc = 0
    for byte in data:
        crc = crc >> 8 ^ CRC_TABLE[(crc ^ byte) & 0xFF]
    return crc


def date(seconds):
    """A time as MS-DOS keeps it: two seconds are its smallest step and 1980 its first year."""
    at = time.gmtime(seconds)
    return ((at.tm_year - 1980) << 25 | at.tm_mon << 21 | at.tm_mday << 16
            | at.tm_hour << 11 | at.tm_min << 5 | at.tm_sec // 2)


def member(name, data, seconds):
    encoded = name.encode("latin-1")
    fields = struct.pack("<5s3I3B", b"-lh0-", len(data), len(data), date(seconds), 0, 0, len(encoded))
    fields += encoded + struct.pack("<H", crc16(data))
    return struct.pack("<2B", len(fields), sum(fields) & 0xFF) + fields + data


def main():
    archive, folder = Path(sys.argv[1]), Path(sys.argv[2])
    # One date for all of them, if the build has one.
    fixed = os.environ.get("SOURCE_DATE_EPOCH")
    with archive.open("wb") as file:
        for path in sorted(path for path in folder.rglob("*") if path.is_file()):
            seconds = int(fixed) if fixed else path.stat().st_mtime
            file.write(member(path.relative_to(folder).as_posix(), path.read_bytes(), seconds))
        file.write(b"\0")


if __name__ == "__main__":
    main()
