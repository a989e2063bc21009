#!/usr/bin/env python3
"""mutate makes the mutants that it says, and leaves no file changed."""
import pathlib
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
import scripts

mutate = scripts.load("mutate")


class Mutate(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        mutate.ROOT = pathlib.Path(folder.name)
        mutate.JOURNAL = mutate.ROOT / "journal"
        self.file = mutate.ROOT / "a.cpp"

    def test_mutants(self):
        for text, wanted in {
                "x = a <= b;": {"x = a < b;"},
                "x = 0x10 + 1.5;": {"x = 0x10 - 1.5;"},
                "std::vector<int> v; T&& t; for (a; f(x); g(y)) h; Type name(a);": set(),
                "// a < b\n\"a < b\" 'a' /* 1 */\n#if A < 1\n": set()}.items():
            with self.subTest(text):
                self.file.write_text(text)
                self.assertEqual(wanted, {text[:m.start] + m.text + text[m.end:]
                                          for m in mutate.mutants_of(self.file)})

    def test_restores(self):
        text = "y;\r\nx = a < b;\r\n"
        self.file.write_bytes(text.encode())
        mutant = mutate.mutants_of(self.file)[0]
        with self.assertRaises(KeyboardInterrupt), mutate.Changed(mutant):
            self.assertEqual(b"y;\r\nx = a <= b;\r\n", self.file.read_bytes())
            raise KeyboardInterrupt
        self.assertEqual(text.encode(), self.file.read_bytes())

        mutate.Changed(mutant).__enter__()   # and no more: the script was killed
        mutate.restore_last()
        self.assertEqual(text.encode(), self.file.read_bytes())


if __name__ == "__main__":
    unittest.main()
