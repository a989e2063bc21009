"""What other programs make of the sample drawing, as SVG and as PDF.

    readers_test.py PROGRAM...     the program that writes it, with what runs it

Python's XML parser reads the SVG, a small reader here the PDF. Where pdftotext, pdftoppm and
rsvg-convert are installed they read and draw both, and the pictures are compared region by region,
with that of a device context too where the program writes one; a test whose program is missing says
so.
"""
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import pathlib
import unittest
import xml.etree.ElementTree as xml

PROGRAM = sys.argv[1:]
SVG = "{http://www.w3.org/2000/svg}"
TEXTS = ["Poutre élancée (A&B) <1> \\", "σ ≤ 235 N/mm²", "MEd = 106 Nm", "turned", "two", "lines"]
SCALE = 4   # pixels for each point
# Places of the drawing in points, and what is there.
PLACES = {"square": ((40, 40), (255, 0, 0)), "ellipse": ((85, 40), (0, 0, 255)),
          "frame": ((147, 40), (0, 128, 0)), "hole": ((170, 40), (255, 255, 255)),
          "clipped in": ((235, 40), (255, 160, 0)), "clipped left": ((215, 40), (255, 255, 255)),
          "clipped right": ((270, 40), (255, 255, 255)), "polyline": ((40, 90), (128, 0, 128)),
          "dash": ((123, 90), (0, 0, 0)), "gap": ((130, 90), (255, 255, 255)),
          "arc": ((250, 100), (0, 128, 128)), "no arc": ((250, 80), (255, 255, 255))}


def tool(name):
    path = shutil.which(name)
    if not path:
        raise unittest.SkipTest(f"{name} is not installed")
    return path


def pixels(ppm):
    """Width, height and the bytes of a binary PPM picture."""
    head = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", ppm)
    return int(head[1]), int(head[2]), ppm[head.end():]


class Readers(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.path = pathlib.Path(cls.folder.name)
        subprocess.run([*PROGRAM, cls.folder.name], check=True)
        cls.svg = cls.path / "sample.svg"
        cls.pdf = (cls.path / "sample.pdf").read_bytes()

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def test_svg_is_xml_whose_texts_are_texts(self):
        root = xml.parse(self.svg).getroot()
        self.assertEqual(root.find(SVG + "title").text, "Échantillon")
        self.assertEqual(["".join(text.itertext()) for text in root.iter(SVG + "text")], TEXTS)
        for text in root.iter(SVG + "text"):
            for run in list(text) or [text]:
                self.assertGreater(float(run.get("textLength")), 0)

    def objects(self):
        """The bodies of the PDF's objects, by number, from its cross-reference table."""
        table = int(re.search(rb"startxref\n(\d+)\n%%EOF\n$", self.pdf)[1])
        count = int(re.match(rb"xref\n0 (\d+)\n", self.pdf[table:])[1])
        entries = self.pdf[self.pdf.index(b"\n", table + 5) + 1:]
        bodies = {}
        for number in range(1, count):
            entry = entries[20 * number:20 * number + 20]
            self.assertRegex(entry, rb"^\d{10} 00000 n \n$")
            body = self.pdf[int(entry[:10]):]
            self.assertTrue(body.startswith(b"%d 0 obj\n" % number))
            bodies[number] = body[:body.index(b"endobj")]
        return bodies

    def test_pdf_objects_and_streams_are_where_they_say(self):
        bodies = self.objects()
        for body in bodies.values():
            for number in re.findall(rb"\b(\d+) 0 R\b", body):
                self.assertIn(int(number), bodies)
            length = re.search(rb"/Length (\d+) >>\nstream\n", body)
            if length:
                self.assertTrue(body[length.end() + int(length[1]):].startswith(b"\nendstream"))
        file = b"".join(bodies.values())
        for part, times in ((b"/Title <FEFF00C9", 1), (b"/Type /Page ", 1), (b"<73> <03C3>\n", 1),
                            (b"/ToUnicode", 1), (b"/WinAnsiEncoding", 3)):   # Symbol has its own
            self.assertEqual(file.count(part), times, part)

    def test_pdftotext_finds_the_texts(self):
        got = subprocess.run([tool("pdftotext"), "-raw", self.path / "sample.pdf", "-"],
                             check=True, capture_output=True).stdout.decode()
        for text in ["Poutre élancée (A&B) <1> \\", "235 N/mm²", "σ", "≤", "turned", "two", "lines"]:
            self.assertIn(text, got)

    def drawn(self, pdf):
        """Width, height and bytes of what pdftoppm draws."""
        return pixels(subprocess.run([tool("pdftoppm"), "-r", str(72 * SCALE), pdf], check=True,
                                     capture_output=True).stdout)

    def drawn_from_svg(self):
        # Cairo's PDF of it, drawn again: no library here reads PNG.
        drawn = self.path / "drawn.pdf"
        subprocess.run([tool("rsvg-convert"), "-f", "pdf", "-b", "white", "--dpi-x", "72",
                        "--dpi-y", "72", "-o", drawn, self.svg], check=True)
        return self.drawn(drawn)

    def bitmap(self, name):
        """What the program drew on a bitmap: rows of blue, green, red and a fourth byte."""
        name = self.path / name
        if not name.exists():
            self.skipTest("there are no device contexts here")
        bitmap = name.read_bytes()
        start, width, height = struct.unpack("<10xI4xii", bitmap[:26])
        data = bytearray(3 * width * -height)
        for part in range(3):
            data[part::3] = bitmap[start + 2 - part::4]
        return width, -height, bytes(data)

    def test_pdftoppm_draws_the_shapes(self):
        self.check_places(*self.drawn(self.path / "sample.pdf"))

    def test_rsvg_convert_draws_the_shapes(self):
        self.check_places(*self.drawn_from_svg())

    def test_a_device_draws_the_shapes(self):
        for name in "device4.bmp", "metafile.bmp":
            self.check_places(*self.bitmap(name))

    def test_a_device_draws_as_the_others_do(self):
        for drawn in self.drawn(self.path / "sample.pdf"), self.drawn_from_svg():
            self.check_regions(self.bitmap("device4.bmp"), drawn, tolerance=14)
            self.check_regions(self.bitmap("metafile.bmp"), drawn, tolerance=14)
            # Small letters are thicker than they should be.
            self.check_regions(self.bitmap("device1.bmp"), drawn, tolerance=20)

    def check_places(self, width, height, data):
        self.assertAlmostEqual(width / height, 300 / 200, delta=0.01)
        scale = width / 300
        for name, ((x, y), wanted) in PLACES.items():
            start = 3 * (round(y * scale) * width + round(x * scale))
            got = tuple(data[start:start + 3])
            difference = max(abs(a - b) for a, b in zip(got, wanted))
            self.assertLessEqual(difference, 8, f"{name}: {got} instead of {wanted}")

    def check_regions(self, one, other, tolerance):
        """Both pictures have the same mean of each colour in each region of 20 by 20 points."""
        for y in range(0, 200, 20):
            for x in range(0, 300, 20):
                for a, b in zip(region(one, x, y), region(other, x, y)):
                    self.assertAlmostEqual(a, b, delta=tolerance, msg=f"at {x}, {y}")


def region(picture, x, y):
    """The means of red, green and blue in 20 by 20 points from a place on."""
    width, height, data = picture
    left, right = (3 * round(at * width / 300) for at in (x, x + 20))
    rows = range(round(y * height / 200), round((y + 20) * height / 200))
    return [sum(sum(data[3 * row * width + left + part:3 * row * width + right:3]) for row in rows)
            / (len(rows) * (right - left) / 3) for part in range(3)]


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
