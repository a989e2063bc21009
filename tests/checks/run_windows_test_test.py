#!/usr/bin/env python3
"""run-windows-test starts a program again when signal 11 ended it after its tests, and only then."""
import os
import pathlib
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts/run-windows-test"
PASSED = "echo '[  PASSED  ] 11 tests.'; "
KILLED = "kill -SEGV $$"


class RunWindowsTest(unittest.TestCase):
    def test_starts_again(self):
        for name, (wine, status, starts) in {
                "passed": (PASSED, 0, 1),
                "killed once": (f"{PASSED} [ $n -gt 1 ] || {KILLED}", 0, 2),
                "killed twice": (PASSED + KILLED, 139, 2),
                "killed before the end": ("echo '[ RUN      ] A.b'; " + KILLED, 139, 1),
                "with a trace": (f"echo 'exception 0xc0000005'; {PASSED} {KILLED}", 139, 1),
                "with a status": (PASSED + "exit 5", 5, 1)}.items():
            with self.subTest(name), tempfile.TemporaryDirectory() as folder:
                program = pathlib.Path(folder) / "wine"
                program.write_text(f"#!/bin/bash\necho >>{folder}/starts\n"
                                   f"n=$(wc -l <{folder}/starts)\n{wine}\n")
                program.chmod(0o755)
                run = subprocess.run([SCRIPT, "a_test.exe"], capture_output=True, timeout=60,
                                     env={**os.environ, "PATH": f"{folder}:{os.environ['PATH']}"})
                self.assertEqual(status, run.returncode)
                self.assertEqual(starts, (pathlib.Path(folder) / "starts").read_text().count("\n"))


if __name__ == "__main__":
    unittest.main()
