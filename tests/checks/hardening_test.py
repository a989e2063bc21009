#!/usr/bin/env python3
"""The built files have the protections that cmake/ToolboxTargets.cmake asks for.

    hardening_test.py --readelf TOOL | --objdump TOOL   --nm TOOL [--wide] [--fortified] FILE...
"""
import argparse
import pathlib
import re
import subprocess
import sys
import unittest

parser = argparse.ArgumentParser()
parser.add_argument("--readelf", help="for programs of Linux")
parser.add_argument("--objdump", help="for programs of Windows")
parser.add_argument("--nm", required=True)
parser.add_argument("--wide", action="store_true", help="a 64-bit program of Windows")
parser.add_argument("--fortified", action="store_true", help="the C library's checked calls are used")
parser.add_argument("files", nargs="+", type=pathlib.Path)
options = parser.parse_args()


def printed(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True,
                          errors="replace").stdout


def symbols(file):
    """The names of a file's symbols, without versions and the leading underscores of 32-bit Windows."""
    lines = printed(options.nm, file).splitlines()
    return {line.split()[-1].partition("@")[0].lstrip("_") for line in lines if line.strip()}


class Hardening(unittest.TestCase):
    def test_checks(self):
        for file in options.files:
            found = symbols(file)
            self.assertTrue("stack_chk_fail" in found, file)
            if options.fortified:   # an optimized build for Linux
                self.assertTrue([name for name in found if name.endswith("_chk")], file)

    @unittest.skipUnless(options.readelf, "not for Linux")
    def test_elf(self):
        for file in options.files:
            segments = printed(options.readelf, "-lW", file)
            dynamic = printed(options.readelf, "-dW", file)
            # Any address, read-only tables, no code on the stack.
            for pattern in (r"\bDYN\b", r"\n\s+GNU_RELRO\b", r"\n\s+GNU_STACK\b.* RW +0x"):
                self.assertRegex(segments, pattern, file)
            self.assertRegex(dynamic, r"\(FLAGS\).*\bBIND_NOW\b", file)

    @unittest.skipUnless(options.objdump, "not for Windows")
    def test_pe(self):
        wanted = ["DYNAMIC_BASE", "NX_COMPAT"] + ["HIGH_ENTROPY_VA"] * options.wide
        for file in options.files:
            headers = printed(options.objdump, "-p", file).partition("The Export Tables")[0]
            lines = [line.strip() for line in headers.splitlines()]
            for name in wanted:
                self.assertTrue(name in lines, f"{file}: no {name}")
            self.assertFalse("relocations stripped" in lines, file)   # without them it cannot be moved
            self.assertFalse([line for line in lines if "libssp" in line], file)   # no further DLL


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
