#!/usr/bin/env python3
"""check-docs finds what has no comment, and takes the headers' ways of writing one for all."""
import pathlib
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts/check-docs"
CLASS = "// About the file.\n#pragma once\n\n/// A thing.\nclass Thing {\n  public:\n%s};\n"


class CheckDocs(unittest.TestCase):
    def run_on(self, members):
        """Exit code and complaints for a class with these members."""
        with tempfile.TemporaryDirectory() as folder:
            header = pathlib.Path(folder) / "include/toolbox/thing.h"
            header.parent.mkdir(parents=True)
            header.write_text(CLASS % members)
            run = subprocess.run([SCRIPT, folder], capture_output=True, text=True)
            return run.returncode, run.stderr

    def test_accepts(self):
        for name, members in {
                "one comment each": "    /// Its size.\n    int size();\n    int room();  ///< and room\n",
                "one for several": "    // Both.\n    int size();\n    int room() {\n        return 2;\n"
                                   "    }\n",
                "overloads": "    /// Stores it.\n    void set(int a);\n    void set(double b,\n"
                             "             int c);\n",
                "set and get": "    /// Its size.\n    void setSize(int n);\n    int getSize();\n",
                "copies": "    Thing(const Thing& other);\n    Thing& operator=(const Thing& other);\n"
                          "    /// Same.\n    int operator==(const Thing& other);\n"
                          "    int operator!=(const Thing& other);\n",
                "sections": "    // First. Of two.\n\n    /// Its size.\n    int size();\n\n"
                            "    // Second.\n\n    /// Its room.\n    int room();\n"}.items():
            with self.subTest(name):
                self.assertEqual((0, ""), self.run_on(members))

    def test_refuses(self):
        for name, members in {
                "no comment": "    int bad();\n",
                "after a comment's group": "    // Both.\n    int a();\n\n    int bad();\n",
                "after a section and a comment of its own":
                    "    // Section.\n\n    /// Size.\n    int size();\n    int bad();\n",
                "a field": "    int bad = 0;\n",
                "on Windows only": "#if defined(_WIN32)\n    int bad();\n#endif\n",
                "elsewhere only": "#if !defined(_WIN32)\n    int bad();\n#endif\n"}.items():
            with self.subTest(name):
                code, complaints = self.run_on(members)
                self.assertNotEqual(0, code)
                line = 1 + next(n for n, text in enumerate((CLASS % members).splitlines())
                                if "bad" in text)
                self.assertRegex(complaints, rf"thing\.h:{line}: .*bad")


if __name__ == "__main__":
    unittest.main()
