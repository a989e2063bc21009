#!/usr/bin/env python3
"""What `cmake --install` gives is whole, may be moved, and is enough to build and run a program.

The package is installed from the built tree and moved to another folder before anything uses it, so
that whatever names the first folder fails.
"""
import argparse
import os
import pathlib
import re
import shutil
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "documents"))
import pages
from pages import run

parser = argparse.ArgumentParser()
for name in ("source", "build", "cmake", "objcopy", "compiler", "libdir", "emulator"):
    parser.add_argument("--" + name)
parser.add_argument("--settings", nargs="*")
options = parser.parse_args()
SOURCE = pathlib.Path(options.source)
WINDOWS = bool(options.emulator)
EXE = ".exe" if WINDOWS else ""


HEADER = (SOURCE / "include/toolbox/version.h").read_text()
MAJOR, MINOR, PATCH = (int(number) for number in
                       re.findall(r"TOOLBOX_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)", HEADER))
VERSION = f"{MAJOR}.{MINOR}.{PATCH}"


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="tb-package-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        cls.first = cls.folder / "first"
        cls.prefix = cls.folder / "moved"
        run(options.cmake, "--install", options.build, "--prefix", cls.first)
        cls.first.rename(cls.prefix)
        # Programs are put beside the DLLs later.
        cls.files = [path for path in cls.prefix.rglob("*") if path.is_file()]
        shutil.copytree(SOURCE / "tests/package/consumer", cls.folder / "consumer")

    def started(self, program, *arguments, alone=False):
        """What a program prints that has nothing but the package's own libraries, or on Windows
        nothing at all, beside it."""
        if WINDOWS:
            folder = self.folder / "alone" if alone else self.prefix / "bin"
            folder.mkdir(exist_ok=True)
            command = [options.emulator, shutil.copy(program, folder)]
        else:
            command = [program]
        env = {**os.environ, "LD_LIBRARY_PATH": str(self.prefix / options.libdir)}
        return run(*command, *arguments, cwd=self.folder, env=env).replace("\r", "").splitlines()

    def project(self, source):
        """The folder with what a project builds that knows the package only."""
        built = self.folder / (source.name + "-built")
        run(options.cmake, "-G", "Ninja", "-S", source, "-B", built,
            f"-DCMAKE_PREFIX_PATH={self.prefix}", *("-D" + s for s in options.settings))
        run(options.cmake, "--build", built)
        return built

    def test_the_application_of_the_how_to_page(self):
        page = SOURCE / "docs/howto-application.md"
        pages.write_files(page, self.folder / "notes")
        program = self.project(self.folder / "notes") / f"notes{EXE}"
        lines = [line for note in ("Check the bridge", "Call the town")
                 for line in self.started(program, "plan.dat", note)]
        self.assertEqual(pages.printed(page).splitlines(), lines)

    def test_a_project_builds_with_find_package(self):
        built = self.project(self.folder / "consumer")
        number = MAJOR * 10000 + MINOR * 100 + PATCH
        lines = [f"headers {number}, library {number} ({VERSION})", "[   8356.11] Nombre entier"]
        for name, module in (("consumer", "toolbox.dll"), ("consumer_static", "static")):
            self.assertEqual(lines + [f"{module}: menu found"] * WINDOWS,
                             self.started(built / f"{name}{EXE}", alone=module == "static"))

    def test_a_program_builds_with_pkg_config(self):
        where = {**os.environ, "PKG_CONFIG_LIBDIR": str(self.prefix / options.libdir / "pkgconfig")}
        source = self.folder / "plain.cpp"
        source.write_text('#include <toolbox/version.h>\n#include <iostream>\n'
                          'int main() { std::cout << toolbox::versionText() << "\\n"; }\n')
        for kind in ([], ["--static"]):
            with self.subTest(kind=kind):
                flags = run("pkg-config", *kind, "--cflags", "--libs", "toolbox", env=where)
                if kind:
                    flags = flags.replace("-ltoolbox", "-l:libtoolbox.a")
                program = self.folder / f"plain{EXE}"
                run(options.compiler, "-std=c++20", source, *flags.split(), "-o", program)
                self.assertEqual([VERSION], self.started(program))

    def test_no_file_names_a_folder_of_the_build(self):
        folders = [os.fsencode(folder) for folder in (SOURCE, options.build, self.first)]
        self.assertGreater(len(self.files), 30)
        for path in self.files:
            content = path.read_bytes()
            if (path.parent.name == "bin" and path.stem == "tbfile" or path.suffix == ".a" or
                    path.name.startswith(("toolbox.dll", "libtoolbox.so"))):
                # Debug information names the sources; a release has none.
                bare = self.folder / "bare"
                run(options.objcopy, "--strip-debug", path, bare)
                content = bare.read_bytes()
            self.assertEqual([], [folder for folder in folders if folder in content], path)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
