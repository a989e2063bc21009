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
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "documents"))
import pages

parser = argparse.ArgumentParser()
for name in ("source", "build", "cmake", "objcopy", "compiler", "libdir", "emulator", "driver"):
    parser.add_argument("--" + name)
parser.add_argument("--settings", nargs="*")
options = parser.parse_args()
SOURCE = pathlib.Path(options.source)
WINDOWS = bool(options.emulator)
EXE = ".exe" if WINDOWS else ""


def run(*command, **more):
    """The output of a command; what it printed is in the error when it fails."""
    # Not a pipe: Wine's services, started with the first program, would keep it open.
    with tempfile.TemporaryFile("w+", errors="replace") as output:
        done = subprocess.run([str(part) for part in command], stdin=subprocess.DEVNULL,
                              stdout=output, stderr=subprocess.STDOUT, timeout=60, **more)
        output.seek(0)
        printed = output.read()
    if done.returncode:
        raise AssertionError(f"{command} ended with {done.returncode}:\n{printed}")
    return printed


def version():
    text = (SOURCE / "include/toolbox/version.h").read_text()
    return [int(re.search(rf"TOOLBOX_VERSION_{part} (\d+)", text)[1])
            for part in ("MAJOR", "MINOR", "PATCH")]


def exported_bytes(program):
    """Size of the table of exports of a Windows program."""
    data = program.read_bytes()
    header = int.from_bytes(data[0x3C:0x40], "little") + 24
    wide = data[header:header + 2] == b"\x0b\x02"
    entry = header + (112 if wide else 96)
    return int.from_bytes(data[entry + 4:entry + 8], "little")


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
        more = {}
        if WINDOWS:
            folder = self.folder / "alone" if alone else self.prefix / "bin"
            folder.mkdir(exist_ok=True)
            command = [options.emulator, shutil.copy(program, folder)]
        else:
            command = [program]
            libraries = str(self.prefix / options.libdir)
            more["env"] = {**os.environ, "LD_LIBRARY_PATH": libraries}
        return run(*command, *arguments, cwd=self.folder, **more).replace("\r", "").splitlines()

    def expected(self, module, file_version):
        major, minor, patch = version()
        text, number = f"{major}.{minor}.{patch}", major * 10000 + minor * 100 + patch
        lines = [f"headers {number}, library {number} ({text})", "[   8356.11] Nombre entier"]
        if WINDOWS:
            shown = f"{text} = {text}" if file_version else "none"
            lines.append(f"{module}: file version {shown}, menu found")
        return lines

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
        if WINDOWS:
            self.frame_of_the_how_to_page(program)

    def frame_of_the_how_to_page(self, program):
        notes = f"{self.prefix.name}\\bin\\{program.name}"
        user = (options.emulator, options.driver, notes)
        run(*user, "plan.dat", "saved", cwd=self.folder)
        self.assertEqual(["04 note(s) in plan.dat"], self.started(program, "plan.dat", "Fourth"))
        run(*user, "missing\\plan.dat", "refused", cwd=self.folder)

    def test_a_project_builds_with_find_package(self):
        built = self.project(self.folder / "consumer")
        self.assertEqual(self.expected("toolbox.dll", True), self.started(built / f"consumer{EXE}"))
        self.assertEqual(self.expected("static", False),
                         self.started(built / f"consumer_static{EXE}", alone=True))
        if WINDOWS:
            self.assertGreater(exported_bytes(self.prefix / "bin/toolbox.dll"), 10000)
            self.assertEqual(0, exported_bytes(built / f"consumer_static{EXE}"))

    def test_a_program_builds_with_pkg_config(self):
        where = {**os.environ, "PKG_CONFIG_LIBDIR": str(self.prefix / options.libdir / "pkgconfig")}
        source = self.folder / "plain.cpp"
        source.write_text('#include <toolbox/version.h>\n#include <iostream>\n'
                          'int main() { std::cout << toolbox::versionText() << "\\n"; }\n')
        for kind in ([], ["--static"]):
            with self.subTest(kind=kind):
                flags = run("pkg-config", *kind, "--cflags", "--libs", "toolbox", env=where).split()
                if kind:
                    flags = [flag.replace("-ltoolbox", "-l:libtoolbox.a") for flag in flags]
                program = self.folder / f"plain{EXE}"
                run(options.compiler, "-std=c++20", source, *flags, "-o", program)
                self.assertEqual([".".join(map(str, version()))], self.started(program))

    def test_it_has_the_public_headers(self):
        root = SOURCE / "include"
        headers = {path.relative_to(root) for path in root.rglob("*.h")}
        installed = self.prefix / "include"
        found = {path.relative_to(installed) for path in installed.rglob("*") if path.is_file()}
        self.assertEqual(set(), found - headers)
        for path in headers - found:
            self.assertFalse(WINDOWS, path)
            # What another header needs is missed by the program that includes them all.
            self.assertTrue(path.parent.name == "detail" or "#error" in (root / path).read_text(),
                            path)

    def test_no_file_names_a_folder_of_the_build(self):
        folders = [os.fsencode(folder) for folder in (SOURCE, options.build, self.first)]
        self.assertGreater(len(self.files), 30)
        for path in self.files:
            content = path.read_bytes()
            program = path.parent.name == "bin" and path.stem == "tbfile"
            if (program or path.suffix == ".a" or
                    path.name.startswith(("toolbox.dll", "libtoolbox.so"))):
                # Debug information names the sources; a release has none.
                bare = self.folder / "bare"
                run(options.objcopy, "--strip-debug", path, bare)
                content = bare.read_bytes()
            named = [folder for folder in folders if folder in content]
            self.assertEqual([], named, path)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
