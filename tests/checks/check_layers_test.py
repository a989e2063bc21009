#!/usr/bin/env python3
"""check-layers finds what it is there to find: a small tree with one fault of each kind."""
import importlib.machinery
import pathlib
import sys
import tempfile
import types
import unittest

sys.dont_write_bytecode = True
SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts/check-layers"
check_layers = types.ModuleType("check_layers")
importlib.machinery.SourceFileLoader("check_layers", str(SCRIPT)).exec_module(check_layers)


class CheckLayers(unittest.TestCase):
    def test_what_a_file_may_include(self):
        ground = ["src/base/codec.h", "include/toolbox/dates.h", "include/toolbox/formats.h",
                  "src/text/output/values.h", "src/file/record/parts.h",
                  "src/platform/posix/file_names.h"]
        for path, include, is_right in [
                ("src/platform/host_parts.h", "base/codec.h", True),   # a lower layer
                ("src/format/field.cpp", "toolbox/formats.h", True),   # its own family
                ("src/base/up.cpp", "toolbox/dates.h", False),         # a higher layer
                ("src/format/beside.cpp", "toolbox/dates.h", False),   # a family of the same layer
                ("src/text/char_set/a.cpp", "text/output/values.h", False),      # another room
                ("src/file/block.cpp", "platform/posix/file_names.h", False),    # one system's
                ("src/platform/win32/f.cpp", "platform/posix/file_names.h", False),
                ("include/toolbox/files.h", "file/record/parts.h", False),  # public sees private
                ("src/file/block.cpp", "file/missing.h", False),
                ("src/novelty/new.cpp", "base/codec.h", False)]:       # a folder nobody placed
            with self.subTest(path=path), tempfile.TemporaryDirectory() as folder:
                root = pathlib.Path(folder)
                for name in (*ground, path):
                    (root / name).parent.mkdir(parents=True, exist_ok=True)
                    (root / name).write_text(f'#include "{include}"\n' if name == path else "")
                faults = check_layers.check(root)[0]
                self.assertEqual([] if is_right else [path], [fault[:len(path)] for fault in faults])


if __name__ == "__main__":
    unittest.main()
