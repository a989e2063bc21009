#!/usr/bin/env python3
"""Pictures of the screen: reads bitmap files of 24 bits per pixel, tells how much is drawn in them,
writes PNG files without loss. As a program:  picture.py FOLDER FILE.bmp...  puts a PNG of each into
the folder.
"""
import pathlib
import struct
import sys
import zlib
from collections import Counter


class Picture:
    """Rows of colours, each (red, green, blue)."""

    def __init__(self, rows):
        self.rows = rows
        self.width = len(rows[0]) if rows else 0
        self.height = len(rows)

    @classmethod
    def read(cls, name):
        with open(name, "rb") as file:
            data = file.read()
        start, = struct.unpack_from("<I", data, 10)
        width, height, _, bits = struct.unpack_from("<iiHH", data, 18)
        if data[:2] != b"BM" or bits != 24 or height < 0:
            raise ValueError(f"{name}: no bitmap of 24 bits")
        stride = (width * 3 + 3) // 4 * 4
        rows = []
        for row in range(height - 1, -1, -1):   # the lowest is the first in the file
            line = data[start + row * stride:start + row * stride + width * 3]
            rows.append(list(zip(line[2::3], line[1::3], line[0::3])))
        return cls(rows)

    def colors(self):
        return Counter(color for row in self.rows for color in row)

    def ink(self):
        """The part of the pixels that do not have the most common colour, from 0 to 1."""
        colors = self.colors()
        return 1 - colors.most_common(1)[0][1] / colors.total()

    def write_png(self, name):
        colors = self.colors()
        palette = list(colors) if len(colors) <= 256 else None
        if palette:
            number = {color: i for i, color in enumerate(palette)}
            lines = [bytes(number[color] for color in row) for row in self.rows]
        else:
            lines = [bytes(part for color in row for part in color) for row in self.rows]
        best = min((zlib.compress(scan, 9) for scan in (_plain(lines), _upward(lines))),
                   key=len)
        with open(name, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n")
            _chunk(file, b"IHDR", struct.pack(">IIBBBBB", self.width, self.height, 8,
                                              3 if palette else 2, 0, 0, 0))
            if palette:
                _chunk(file, b"PLTE", bytes(part for color in palette for part in color))
            _chunk(file, b"IDAT", best)
            _chunk(file, b"IEND", b"")


def _plain(lines):
    return b"".join(b"\0" + line for line in lines)


def _upward(lines):
    """Each line as what differs from the one above it."""
    out, above = [], bytes(len(lines[0]))
    for line in lines:
        out.append(b"\2" + bytes((a - b) & 0xFF for a, b in zip(line, above)))
        above = line
    return b"".join(out)


def _chunk(file, kind, data):
    file.write(struct.pack(">I", len(data)) + kind + data)
    file.write(struct.pack(">I", zlib.crc32(kind + data)))


if __name__ == "__main__":
    for bitmap in map(pathlib.Path, sys.argv[2:]):
        if bitmap.exists():
            Picture.read(bitmap).write_png(pathlib.Path(sys.argv[1]) / (bitmap.stem + ".png"))
