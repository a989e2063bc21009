#!/usr/bin/env python3
"""What a how-to page says works: its files and changes, put into a copy of the sources, build and run.

A page's `text` block is what its program prints. What it adds or changes is compiled, with what
includes a changed header of src/, and linked before the library as it was built: so what a page adds
to a class or table of the public headers stands at its end.

A page for Windows has resource scripts too. The copy passes the check of the layers.
"""
import argparse
import pathlib
import re
import shutil
import sys
import tempfile

sys.dont_write_bytecode = True
import pages  # beside this file
from pages import run

parser = argparse.ArgumentParser()
for name in ("page", "source", "archive", "compiler", "resource-compiler", "emulator", "flags",
             "libraries"):
    parser.add_argument("--" + name, default="")
options = parser.parse_args()
SOURCE = pathlib.Path(options.source)
OTHER_SYSTEM = "posix" if options.emulator else "win32"
PAGE = pathlib.Path(options.page)


def apply_page(root):
    """Makes the copy with the page's files and changes; their names."""
    for folder in ("include", "resources", "scripts", "src"):
        shutil.copytree(SOURCE / folder, root / folder)
    files = pages.write_files(PAGE, root)
    for _, language, text in pages.blocks(PAGE):
        if language == "diff":
            run("git", "apply", "-C1", "-", given=text, cwd=root)
            files += re.findall(r"^\+\+\+ b/(.+)$", text, re.M)
    return files


def build_and_run(root, files):
    run(root / "scripts/check-layers", root)
    headers = [name for name in files if name.startswith("src/") and name.endswith(".h")]
    for path in (root / "src").rglob("*.cpp"):
        text = path.read_text("utf-8")
        files += [str(path.relative_to(root)) for name in headers if f'"{name[4:]}"' in text]
    sources = {name for name in files if name.endswith(".cpp") and OTHER_SYSTEM not in name}
    flags = ["-std=c++20", "-Wall", "-Wextra", "-Werror", "-fmax-errors=5", *options.flags.split(),
             *(f"-I{root / folder}" for folder in ("include", "resources", "src"))]
    objects = []
    for name in sorted(sources):
        objects.append(root / (name.replace("/", "_") + ".o"))
        run(options.compiler, *flags, "-c", root / name, "-o", objects[-1])
    for name in (name for name in files if name.endswith(".rc")):
        objects.append(root / (name.replace("/", "_") + ".o"))
        run(options.resource_compiler, "--codepage=1252", f"-I{root / 'resources'}",
            f"-I{(root / name).parent}", root / name, "-o", objects[-1])
    program = root / "page.exe"
    run(options.compiler, *flags, *objects, options.archive, *options.libraries.split(), "-o",
        program)
    start = [options.emulator, program] if options.emulator else [program]
    output = run(*start, cwd=root).replace("\r", "")
    if output != pages.printed(PAGE):
        sys.exit(f"the page says\n{pages.printed(PAGE)}its program prints\n{output}")


with tempfile.TemporaryDirectory(prefix="tb-howto-") as folder:
    build_and_run(pathlib.Path(folder), apply_page(pathlib.Path(folder)))
