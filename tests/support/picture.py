"""Pictures of the screen: reads portable pixmaps, tells how much is drawn in them, writes PNG files.

    picture.py FOLDER FILE.ppm...       puts a PNG of each into the folder; fails when there is none
"""
import pathlib
import struct
import sys
import zlib
from collections import Counter


class Picture:
    """Rows of pixels, 3 bytes each: red, green, blue."""

    def __init__(self, rows):
        self.rows = rows

    @classmethod
    def read(cls, name):
        kind, size, most, pixels = pathlib.Path(name).read_bytes().split(b"\n", 3)
        width, height = map(int, size.split())
        if (kind, most) != (b"P6", b"255") or len(pixels) != 3 * width * height:
            raise ValueError(f"{name}: no whole pixmap")
        return cls([pixels[at:at + 3 * width] for at in range(0, len(pixels), 3 * width)])

    def ink(self):
        """The part of the pixels that do not have the most common colour, from 0 to 1."""
        colors = Counter(row[at:at + 3] for row in self.rows for at in range(0, len(row), 3))
        return 1 - colors.most_common(1)[0][1] / colors.total()

    def write_png(self, name):
        header = struct.pack(">IIBBBBB", len(self.rows[0]) // 3, len(self.rows), 8, 2, 0, 0, 0)
        lines = b"".join(b"\0" + row for row in self.rows)
        with open(name, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n")
            _chunk(file, b"IHDR", header)
            _chunk(file, b"IDAT", zlib.compress(lines, 9))
            _chunk(file, b"IEND", b"")


def _chunk(file, kind, data):
    file.write(struct.pack(">I", len(data)) + kind + data)
    file.write(struct.pack(">I", zlib.crc32(kind + data)))


if __name__ == "__main__":
    pixmaps = [file for file in map(pathlib.Path, sys.argv[2:]) if file.exists()]
    for pixmap in pixmaps:
        Picture.read(pixmap).write_png(pathlib.Path(sys.argv[1], pixmap.stem + ".png"))
    sys.exit(0 if pixmaps else f"picture.py: none of {sys.argv[2:]} is there")
