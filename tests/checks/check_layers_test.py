#!/usr/bin/env python3
"""check-layers finds what it is there to find: a small tree with one fault of each kind."""
import importlib.machinery
import importlib.util
import pathlib
import sys
import tempfile
import unittest

script = pathlib.Path(__file__).resolve().parents[2] / "scripts/check-layers"
loader = importlib.machinery.SourceFileLoader("check_layers", str(script))
sys.dont_write_bytecode = True
check_layers = importlib.util.module_from_spec(
    importlib.util.spec_from_loader("check_layers", loader))
loader.exec_module(check_layers)


class CheckLayers(unittest.TestCase):
    def faults(self, files):
        """The faults in a tree of these files, each given as a path and its includes."""
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for path, includes in files.items():
                target = root / path
                target.parent.mkdir(parents=True, exist_ok=True)
                target.write_text("".join(f'#include "{name}"\n' for name in includes))
            return check_layers.check(root)[0]

    def test_accepts_own_family_and_lower_layers(self):
        self.assertEqual([], self.faults({
            "src/base/codec.h": [],
            "include/toolbox/formats.h": ["toolbox/strings.h"],
            "include/toolbox/strings.h": [],
            "src/platform/host.h": ["base/codec.h"],
            "src/platform/posix/files.cpp": ["platform/host.h"],
            "src/format/field.h": [],
            "src/format/field.cpp": ["field.h", "toolbox/formats.h", "platform/host.h"]}))

    def test_refuses(self):
        ground = {"src/base/codec.h": [], "include/toolbox/dates.h": [], "src/text/scan.h": [],
                  "src/platform/posix/file_names.h": [], "src/file/record/parts.h": [], "src/text/output/values.h": []}
        for path, include in [
                ("src/base/up.cpp", "toolbox/dates.h"),                # a higher layer
                ("src/format/beside.cpp", "toolbox/dates.h"),          # a family of the same layer
                ("src/file/record/a.cpp", "text/scan.h"),              # a room below its folder
                ("src/text/char_set/a.cpp", "text/output/values.h"),   # a room below another
                ("src/file/block.cpp", "platform/posix/file_names.h"),  # one system's folder
                ("src/platform/win32/f.cpp", "platform/posix/file_names.h"),
                ("include/toolbox/files.h", "file/record/parts.h"),    # public sees private
                ("src/file/block.cpp", "file/missing.h"),
                ("src/novelty/new.cpp", "base/codec.h")]:              # a folder nobody placed
            with self.subTest(path=path, include=include):
                found = self.faults({**ground, path: [include]})
                self.assertEqual(1, len(found), found)
                self.assertTrue(found[0].startswith(path), found)


if __name__ == "__main__":
    unittest.main()
