#!/usr/bin/env python3
"""check-docs finds what has no comment, and takes the headers' ways of writing one for all."""
import pathlib
import re
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts/check-docs"
CLASS = "// About the file.\n#pragma once\n\n/// A thing.\nclass Thing {\n  public:\n%s};\n"
RIGHT = (
    "    // First section. Of two.\n\n    /// Its size.\n    void setSize(int n);\n    int getSize();\n"
    "    int room();  ///< and room\n\n    // Second.\n\n"
    "    // Both.\n    int all();\n    int both() {\n        return 2;\n    }\n\n"
    "    /// Stores it.\n    void set(int a);\n    void set(double b,\n             int c);\n\n"
    "    Thing(const Thing& other);\n    Thing& operator=(const Thing& other);\n"
    "    /// Same.\n    int operator==(const Thing& other);\n    int operator!=(const Thing& other);\n")
WRONG = ("\n    int bad();\n\n    // Section.\n\n    /// Size.\n    int length();\n    int badRoom();\n"
         "    int badField = 0;\n#if !defined(_WIN32)\n    int badElsewhere();\n#endif\n")
WRONG_ON_WINDOWS = "#if defined(_WIN32)\n    int bad();\n#endif\n"


class CheckDocs(unittest.TestCase):
    def complaints(self, members):
        """Exit code and the lines complained of, for a class with these members."""
        with tempfile.TemporaryDirectory() as folder:
            header = pathlib.Path(folder) / "include/toolbox/thing.h"
            header.parent.mkdir(parents=True)
            header.write_text(CLASS % members)
            run = subprocess.run([SCRIPT, folder], capture_output=True, text=True)
            return run.returncode, {int(n) for n in re.findall(r"thing\.h:(\d+): ", run.stderr)}

    def test_members(self):
        self.assertEqual((0, set()), self.complaints(RIGHT))
        for members in (RIGHT + WRONG, RIGHT + WRONG_ON_WINDOWS):
            lines = (CLASS % members).splitlines()
            wrong = {number for number, line in enumerate(lines, 1) if "bad" in line}
            self.assertEqual((1, wrong), self.complaints(members))


if __name__ == "__main__":
    unittest.main()
