#!/usr/bin/env python3
"""What tbfile prints and writes, checked by a reader that shares nothing with it.

    tbfile_test.py PROGRAM [EMULATOR]       with an emulator, which takes its time, only a part
"""
import json
import os
import pathlib
import pty
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "support"))
from block_file import Block, BlockFile, header, made, record, words

PROGRAM, EMULATOR = sys.argv[1], sys.argv[2:]

BLOCKS = [Block(7, b"ten bytes.", "A block \u00e9", 3, 200), Block(9, b"", ""),
          Block(0xFFFFFFF0, bytes(range(256)), "all bytes", 5, 6),
          Block(12, b"\xff" * 300 + bytes(100), "d" * 64), Block(3, b"abcd" * 50, "words")]
FORMATS = (210, 205, 150, 100)


def versions(version, block):
    """The block as a file of that format version keeps it."""
    return Block(block.id, block.data, block.description, block.version if version >= 200 else 0,
                 block.record_version if version >= 210 else 0)


class Tbfile(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tbfile-"))
        self.addCleanup(shutil.rmtree, self.folder)

    def write(self, name, content):
        (self.folder / name).write_bytes(content)
        return name

    def read(self, name):
        return BlockFile.read(self.folder / name)

    def run_it(self, *arguments, status=0, lang="C.UTF-8", more=None):
        """The standard output and error of a run, which must end with this status and leave its
        inputs and no temporary file."""
        inputs = {path: path.read_bytes() for path in self.folder.rglob("*") if path.is_file()}
        environment = {**os.environ, "LC_ALL": "", "LC_MESSAGES": "", "LANG": lang, **(more or {})}
        with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
            done = subprocess.run([*EMULATOR, PROGRAM, *arguments], cwd=self.folder,
                                  stdin=subprocess.DEVNULL, stdout=output, stderr=errors,
                                  env=environment, timeout=60)
            output.seek(0)
            errors.seek(0)
            printed, complained = output.read(), errors.read()
        self.assertEqual(status, done.returncode, (arguments, printed, complained))
        self.assertEqual(status == 2, bool(complained), complained)
        if "--force" not in arguments:
            for path, content in inputs.items():
                self.assertEqual(content, path.read_bytes(), path)
        self.assertEqual([], list(self.folder.rglob("*~tbfile*")))
        return printed.decode("utf-8"), complained.decode("utf-8")

    def json(self, *arguments, status=0):
        return json.loads(self.run_it(*arguments, "--json", status=status)[0])

    def findings(self, *arguments):
        """What verify finds, each with where and of which block; its status must agree."""
        output, _ = self.run_it("verify", *arguments, "--json",
                                status=1 if self.expects_findings else 0)
        told = json.loads(output)
        self.assertEqual(not told["findings"], told["file"]["sound"])
        return {(f["finding"], f["offset"]) for f in told["findings"]}

    expects_findings = True


class Listing(Tbfile):
    def test_info_and_ls_of_every_format(self):
        for version in FORMATS:
            with self.subTest(version=version):
                name = self.write("a.tbf", made(version, BLOCKS, mask=0x10))
                plain = self.read(name)
                told = self.json("info", name)
                expected = {"size": plain.size, "version": 3, "mask": 0x10, "created": "2001-04-30",
                            "stamped": "2001-05-02", "net": None, "description": "made by hand",
                            "formatVersion": version, "blocks": len(BLOCKS),
                            "indexOffset": plain.index_offset}
                self.assertEqual(expected, {key: told[key] for key in expected})
                rows = self.json("ls", name)["blocks"]
                self.assertEqual([(b.id, b.offset, len(b.data), b.version, b.record_version,
                                   b.description) for b in plain.blocks],
                                 [(r["id"], r["offset"], r["length"], r["version"],
                                   r["recordVersion"], r["description"]) for r in rows])

    def test_a_format_that_is_not_that_of_the_blocks(self):
        whole = made(210, BLOCKS)
        name = self.write("a.tbf", whole[:152] + words(205) + whole[156:])
        told = self.json("info", name, status=1)
        self.assertEqual((205, 210), (told["formatVersion"], told["layout"]))
        self.assertRegex(self.run_it("info", name, status=1)[0],
                         "Format version +205, that of the blocks is 210")
        self.assertEqual(len(BLOCKS), len(self.json("ls", name, status=1)["blocks"]))

    def test_ls_sorts(self):
        name = self.write("a.tbf", made(210, BLOCKS))
        keys = {"id": lambda b: b.id, "length": lambda b: len(b.data),
                "description": lambda b: b.description.encode("cp1252"), "file": lambda b: 0}
        for order, key in keys.items():
            expected = [b.id for b in sorted(BLOCKS, key=key)]
            for reverse in ((), ("--reverse",)):
                rows = self.json("ls", name, "--sort", order, *reverse)["blocks"]
                self.assertEqual(expected[::-1] if reverse else expected, [r["id"] for r in rows])

    def test_no_control_character_of_a_file_is_printed(self):
        wild = bytes([*range(1, 0x20), 0x7F, 0x81, 0x8D, 0x8F, 0x90, 0x9D, 0x80, 0xA0, 0xE9])
        shown = "." * 37 + "\u20ac\u00a0\u00e9"
        content = bytearray(made(210, BLOCKS[:1]))
        content[8:8 + len(wild)] = wild
        content[8 + len(wild):136] = bytes(128 - len(wild))
        content[164:164 + len(wild)] = wild
        self.write("a.tbf", content)
        self.write("b.tbf", made(210, BLOCKS[:1]))
        for arguments, count, status in ((("info", "a.tbf"), 1, 0), (("ls", "a.tbf"), 1, 0),
                                         (("diff", "a.tbf", "b.tbf"), 2, 1)):
            with self.subTest(arguments=arguments):
                printed, _ = self.run_it(*arguments, status=status)
                self.assertEqual(count, printed.count(shown))
                self.assertNotRegex(printed, "[\\x00-\\x09\\x0b-\\x1f\\x7f-\\x9f]")
        told = wild.decode("latin-1").replace("\x80", "\u20ac")
        self.assertEqual(told, self.json("info", "a.tbf")["description"])
        self.assertEqual(told, self.json("ls", "a.tbf")["blocks"][0]["description"])

    def test_rows_and_bar_share_a_terminal(self):
        blocks = [Block(i, b"data" * 100, f"block {i}") for i in range(1, 1501)]
        name = self.write("a.tbf", made(210, blocks))
        content = bytearray(made(210, blocks))
        for block in BlockFile(content).blocks[1::2]:
            content[block.offset + 132:block.offset + 136] = b"\xff" * 4
        self.write("many.tbf", content)
        for arguments in (("ls", name), ("ls", name, "--json"), ("recover", "many.tbf", "out")):
            with self.subTest(arguments=arguments):
                plain = subprocess.run([PROGRAM, *arguments], cwd=self.folder, text=True,
                                       stdout=subprocess.PIPE).stdout
                (self.folder / "out").unlink(missing_ok=True)
                written, bars = self.on_terminal(*arguments)
                self.assertEqual([line.rstrip() for line in plain.splitlines()], written)
                if "--json" not in arguments:
                    self.assertGreater(bars, 0, "nothing was to be seen of the bar")

    def on_terminal(self, *arguments):
        """The lines that a terminal shows in the end, and how often a bar was drawn."""
        ours, its = pty.openpty()
        process = subprocess.Popen([PROGRAM, *arguments], cwd=self.folder, stdin=its, stdout=its,
                                   stderr=its, env={**os.environ, "LC_ALL": "C"})
        os.close(its)
        time.sleep(0.7)   # its output is full by then, and it is time for a bar
        output = b""
        try:
            while piece := os.read(ours, 65536):
                output += piece
        except OSError:   # the other end is closed
            pass
        os.close(ours)
        process.wait()
        text = output.decode().replace("\r\n", "\n")
        lines = []
        for line in text.split("\n"):
            shown = ""
            for part in line.split("\r"):
                shown = part + shown[len(part):]
            lines.append(shown.rstrip())
        return lines[:-1] if lines[-1] == "" else lines, text.count("\r[")

    def test_dump(self):
        name = self.write("a.tbf", made(205, BLOCKS))
        for block in BLOCKS[:3]:
            self.run_it("dump", name, hex(block.id), "--raw", "out.bin", "--force")
            self.assertEqual(block.data, (self.folder / "out.bin").read_bytes())
        text = self.run_it("dump", name, "7")[0]
        self.assertEqual("00000000  74 65 6e 20 62 79 74 65  73 2e                    "
                         "|ten bytes.|\n", text)
        self.assertIn("|\u00e0\u00e1", self.run_it("dump", name, str(0xFFFFFFF0))[0])


class Verify(Tbfile):
    def test_sound_files(self):
        self.expects_findings = False
        for version in FORMATS:
            for commits in ((), (2, 3)):
                name = self.write("a.tbf", made(version, BLOCKS, commits))
                for quick in ((), ("--quick",)):
                    self.assertEqual(set(), self.findings(name, *quick), (version, commits, quick))

    def test_damage(self):
        whole = made(210, BLOCKS)
        plain = BlockFile(whole)
        first, second = plain.blocks[0].offset, plain.blocks[1].offset
        index = plain.index_offset
        # What replaces the bytes at a place, and what verify then says; quick says the same.
        for what, at, bytes_, expected in [
                ("format", 152, words(211), {("headerFormat", 152)}),
                ("layout", 152, words(205), {("headerLayout", 152)}),
                ("date", 136, words(5), {("headerDate", 136)}),
                ("description", 135, b"x", {("headerDescription", 8)}),
                ("header end", 156, words(0), {("headerTerminator", 156)}),
                ("index place", 148, words(second), {("indexMoved", index)}),
                ("terminator", second - 4, words(0), {("terminator", first)}),
                ("padding", first + 100, b"x", {("description", first)}),
                ("mask", 4, words(1), {("notWholeWords", first)}),
                ("entry", index + 136 + 4, words(second), {("otherId", second)})]:
            content = whole[:at] + bytes_ + whole[at + len(bytes_):]
            name = self.write("a.tbf", content)
            for quick in ((), ("--quick",)):
                with self.subTest(what=what, quick=quick):
                    self.assertLessEqual(expected, self.findings(name, *quick))

    def test_a_damaged_end_in_a_file_without_an_index(self):
        body = b"".join(record(210, block) for block in BLOCKS)
        second = 160 + len(record(210, BLOCKS[0]))
        content = header(210, 0, 0) + body
        name = self.write("a.tbf", content[:second - 4] + words(7) + content[second:])
        self.assertEqual({("neverCommitted", 0), ("terminator", 160)}, self.findings(name))
        name = self.write("a.tbf", content[:160 + 100] + b"x" + content[160 + 101:])
        self.assertEqual({("neverCommitted", 0), ("description", 160)}, self.findings(name))

    def test_garbage_in_the_indexs_description(self):
        whole = made(210, BLOCKS)
        index = BlockFile(whole).index_offset
        name = self.write("a.tbf", whole[:index + 90] + b"x" + whole[index + 91:])
        for quick in ((), ("--quick",)):
            self.assertEqual({("description", index)}, self.findings(name, *quick))

    def test_verify_and_recover_tell_what_a_walk_doubts(self):
        content = bytearray(made(210, [Block(7, b"\xff" * 150, "ones")]))
        content[292] ^= 0x80
        self.assertEqual({("lengthRepaired", 160)}, self.findings(self.write("a.tbf", content)))
        whole = made(210, BLOCKS)
        for at, bytes_ in [(135, b"x"), (BlockFile(whole).blocks[0].offset + 100, b"x"), (4, words(1))]:
            name = self.write("a.tbf", whole[:at] + bytes_ + whole[at + len(bytes_):])
            self.findings(name)
            self.json("recover", name, "out.tbf", "--force", status=1)

    def test_places(self):
        whole = made(210, BLOCKS)
        index = BlockFile(whole).index_offset
        late = record(210, Block(50, b"late"))
        for what, content, expected in [
                ("trailing bytes", whole + b"rest" * 60, ("strayBytes", len(whole))),
                ("a block behind the index", whole + late, ("notIndexed", len(whole))),
                ("never committed", whole[:148] + words(0) + whole[152:index],
                 ("neverCommitted", 0)),
                ("cut in the index", whole[:-9], ("indexDamaged", index)),
                ("cut before the index", whole[:index], ("noIndex", index)),
                ("too short", whole[:100], ("headerTooShort", 0))]:
            with self.subTest(what=what):
                self.assertIn(expected, self.findings(self.write("a.tbf", content)))


class Outputs(Tbfile):
    def expect(self, name, blocks):
        """The file is sound, of the written version, without gaps, and has these blocks."""
        plain = self.read(name)
        self.assertEqual((210, blocks, True), (plain.format, plain.blocks, plain.compact))
        self.assertEqual(plain.whole_words, bool(plain.mask & 1))
        self.assertEqual(plain.size, plain.index_end)
        self.assertEqual((3, "made by hand", (2452030, 2452032, -1)),
                         (plain.version, plain.description, plain.dates))

    def test_every_format(self):
        for version in FORMATS:
            blocks = [versions(version, block) for block in BLOCKS]
            name = self.write("a.tbf", made(version, BLOCKS, commits=(2,)))
            for command in ("repack", "recover"):
                with self.subTest(version=version, command=command):
                    self.run_it(command, name, "out.tbf", "--force")
                    self.expect("out.tbf", blocks)
            self.run_it("extract", name, f"folder{version}")
            self.run_it("pack", f"folder{version}", "packed.tbf", "--force")
            self.expect("packed.tbf", blocks)
            self.assertEqual([], self.json("diff", "out.tbf", "packed.tbf")["differences"])

    def test_a_compact_file_comes_back_byte_for_byte(self):
        name = self.write("a.tbf", made(210, BLOCKS))
        self.run_it("extract", name, "folder")
        for arguments in (("repack", name), ("recover", name), ("pack", "folder")):
            self.run_it(*arguments, "out.tbf", "--force")
            self.assertEqual((self.folder / name).read_bytes(),
                             (self.folder / "out.tbf").read_bytes(), arguments)

    def test_recover_says_what_it_did(self):
        whole = made(210, BLOCKS)
        plain = BlockFile(whole)
        second, third = plain.blocks[1].offset, plain.blocks[2].offset
        flipped = bytearray(whole)
        flipped[second + 132] ^= 0x20
        torn = whole[:second] + b"?" * (third - second) + whole[third:]
        for what, content, certain, kept, more in [
                ("length", flipped, (), BLOCKS, {"doubtful": 1, "lostBytes": 0}),
                ("length, certain", flipped, ("--certain",), BLOCKS[:1] + BLOCKS[2:],
                 {"leftOut": 1}),
                ("torn", torn, (), BLOCKS[:1] + BLOCKS[2:], {"lostBytes": third - second}),
                ("cut off", whole[:plain.blocks[4].offset + 7], (), BLOCKS[:4], {"lostBytes": 7}),
                ("no index", whole[:plain.index_offset], (), BLOCKS, {"lostBytes": 0})]:
            with self.subTest(what=what):
                told = self.json("recover", self.write("a.tbf", content), "out.tbf", "--force",
                                 *certain, status=1)
                self.expect("out.tbf", kept)
                self.assertEqual(len(kept), told["rescued"])
                self.assertEqual(more, {key: told[key] for key in more})
                self.expects_findings = False
                self.assertEqual(set(), self.findings("out.tbf"))

    def test_recover_says_what_is_wrong_beside_the_blocks(self):
        whole = made(210, BLOCKS)
        index = BlockFile(whole).index_offset
        for at, bytes_, faults in [(136, words(5), ["headerDate"]), (152, words(205), ["headerLayout"]),
                                   (156, words(0), ["headerDamaged"]),
                                   (148, words(9), ["indexMoved"]),
                                   (index + 136 + 8, bytes(32), ["indexDamaged"])]:
            name = self.write("a.tbf", whole[:at] + bytes_ + whole[at + len(bytes_):])
            for lang in ("C.UTF-8", "fr_FR.UTF-8"):
                told = json.loads(self.run_it("recover", name, "out.tbf", "--force", "--json",
                                              status=1, lang=lang)[0])
                self.assertEqual(faults, [fault["fault"] for fault in told["faults"]])
                self.assertEqual(len(BLOCKS), told["rescued"])
            self.assertEqual(BLOCKS, self.read("out.tbf").blocks)

    def test_of_two_blocks_with_one_identifier_both_are_kept(self):
        twice = [BLOCKS[0], BLOCKS[4], Block(7, b"the second", "again")]
        content = made(210, twice)
        name = self.write("a.tbf", content[:BlockFile(content).index_offset])
        told = self.json("recover", name, "out.tbf", status=1)
        self.assertEqual((3, 1), (told["rescued"], told["doubtful"]))
        self.expect("out.tbf", twice)
        self.assertEqual(("repeatedId", self.read("out.tbf").blocks[2].offset),
                         *self.findings("out.tbf"))
        told = self.json("recover", name, "out.tbf", "--certain", "--force", status=1)
        self.assertEqual((2, 1, 1), (told["rescued"], told["doubtful"], told["leftOut"]))
        self.expect("out.tbf", twice[:2])

    def test_no_copy_drops_a_block_silently(self):
        twice = [BLOCKS[0], BLOCKS[4], Block(7, b"the second", "again"), Block(7, b"third")]
        self.write("a.tbf", made(210, twice))
        left_out = [{"id": 7, "from": block.offset} for block in self.read("a.tbf").blocks[2:]]
        for command in ("repack", "extract"):
            with self.subTest(command=command):
                told = self.json(command, "a.tbf", command, status=1)
                self.assertEqual((2, left_out), (told["blocks"], told["repeated"]))
                lines = self.run_it(command, "a.tbf", "other", status=1)[0].splitlines()
                self.assertEqual([f"block 7 at {told['from']}: left out, an earlier block has the "
                                  "same identifier" for told in left_out], lines[:-1])
                if command == "repack":
                    (self.folder / "other").unlink()
        self.assertEqual(twice[:2], self.read("repack").blocks)
        self.run_it("pack", "extract", "packed")
        self.assertEqual(twice[:2], self.read("packed").blocks)
        self.assertEqual([], self.json("repack", "repack", "again")["repeated"])

    def test_diff_of_repeated_identifiers(self):
        twice = [BLOCKS[0], BLOCKS[4], Block(7, b"the second", "again"), Block(7, b"third")]
        self.write("a.tbf", made(210, twice))
        self.write("b.tbf", made(210, [BLOCKS[4], BLOCKS[0], Block(7, b"the Second", "again")]))
        self.assertEqual([], self.json("diff", "a.tbf", "a.tbf")["differences"])
        differences = [{"id": 7, "number": 2, "field": "data", "from": 4},
                       {"id": 7, "number": 3, "onlyIn": "a"}]
        self.assertEqual(differences, self.json("diff", "a.tbf", "b.tbf", status=1)["differences"])
        differences[1]["onlyIn"] = "b"
        self.assertEqual(differences, self.json("diff", "b.tbf", "a.tbf", status=1)["differences"])
        self.assertIn("block 7 (3): only in the first\n",
                      self.run_it("diff", "a.tbf", "b.tbf", status=1)[0])

    def test_diff_goes_on_behind_damage(self):
        whole = made(210, BLOCKS)
        damaged = bytearray(made(210, [*BLOCKS[:4], Block(3, b"other")]))
        damaged[BlockFile(damaged).blocks[1].offset + 132] ^= 1
        self.write("a.tbf", whole)
        self.write("b.tbf", damaged)
        for files, side in ((("a.tbf", "b.tbf"), "b"), (("b.tbf", "a.tbf"), "a")):
            told = self.json("diff", *files, status=1)["differences"]
            self.assertEqual((9, side), (told[0]["id"], told[0]["damaged"]))
            self.assertEqual({3}, {difference["id"] for difference in told[1:]})
        told = self.json("diff", "b.tbf", "b.tbf", status=1)["differences"]
        self.assertEqual([(9, "a"), (9, "b")], [(d["id"], d["damaged"]) for d in told])

    def test_diff_of_what_is_no_date(self):
        whole = made(210, BLOCKS)
        self.write("a.tbf", whole)
        self.write("b.tbf", whole[:144] + words(5) + whole[148:])
        told = self.json("diff", "a.tbf", "b.tbf", status=1)["differences"]
        self.assertEqual([{"header": "net", "a": "-1", "b": "5"}], told)
        self.assertEqual([], self.json("diff", "a.tbf", "b.tbf", "--ignore-dates")["differences"])

    def test_diff(self):
        changed = [BLOCKS[0], Block(9, b"", "new text"), Block(0xFFFFFFF0, bytes(256), "all bytes",
                                                               5, 6), BLOCKS[3], Block(4, b"")]
        self.write("a.tbf", made(210, BLOCKS))
        later = made(210, changed)
        self.write("b.tbf", later[:140] + words(2452033) + later[144:])
        told = self.json("diff", "a.tbf", "b.tbf", status=1)["differences"]
        self.assertEqual([("stamped", "2001-05-02", "2001-05-03")],
                         [(d["header"], d["a"], d["b"]) for d in told if "header" in d])
        self.assertEqual({(9, "description"), (0xFFFFFFF0, "data"), (3, "a"), (4, "b")},
                         {(d["id"], d.get("field", d.get("onlyIn"))) for d in told if "id" in d})
        self.assertEqual(4, len(self.json("diff", "a.tbf", "b.tbf", "--ignore-dates",
                                          status=1)["differences"]))


class Refusals(Tbfile):
    def test_what_cannot_run(self):
        name = self.write("a.tbf", made(210, BLOCKS))
        self.write("other", b"something else")
        damaged = bytearray(made(210, BLOCKS))
        damaged[BlockFile(damaged).blocks[1].offset + 132] ^= 1
        self.write("damaged.tbf", damaged)
        (self.folder / "folder").mkdir()
        self.write("folder/manifest.json", b'{"tbfileManifest":1,"header":{"version":1,"mask":0,'
                   b'"description":"","created":-1,"stamped":-1,"net":-1},"index":{"description":'
                   b'"","version":1,"recordVersion":1},"blocks":[{"id":1,"description":"",'
                   b'"version":1,"recordVersion":1,"file":"../a.tbf"}]}')
        for arguments, part in [
                (("repack", name, "other"), "exists already"),
                (("recover", name, name, "--force"), "would be the file"),
                (("recover", name, "./a.tbf", "--force"), "would be the file"),
                (("dump", name, "7", "--raw", name, "--force"), "would be the file"),
                (("recover", "other", "out.tbf"), "no block was found"),
                (("ls", "other"), "not a block file"),
                (("repack", "damaged.tbf", "out.tbf"), "block 9"),
                (("ls", "missing.tbf"), "no such file"),
                (("ls", "folder"), "not a file"),
                (("repack", name, "nowhere/out.tbf"), "no such file or folder"),
                (("dump", name, "8"), "no block 8"),
                (("dump", name, "0x"), "no identifier"),
                (("pack", "folder", "out.tbf"), "../a.tbf"),
                (("extract", name, "folder"), "exists already"),
                (("ls",), "FILE is missing"), (("recover", "--json", name), "OUT is missing"),
                (("frobnicate",), "unknown command: frobnicate ('tbfile --help')"),
                (("ls", name, "more", "--all"), "more --all is not expected"),
                (("info", name, "--sort", "id"), "--sort id is not expected"),
                (("ls", name, "--sort", "date"), "the value of --sort"),
                (("ls", name, "--sort"), "the value of --sort"),
                (("dump", name, "7", "--raw"), "the value of --raw"),
                (("--lang", "de", "ls", name), "the value of --lang"),
                ((), "the command is missing"), (("--lang", "fr"), "il manque la commande")]:
            with self.subTest(arguments=arguments):
                printed, complained = self.run_it(*arguments, status=2)
                self.assertIn(part, complained)
                self.assertFalse((self.folder / "out.tbf").exists())

    def test_languages(self):
        for variables, french in [({"LANG": "fr_FR.UTF-8"}, True), ({"LANG": "de_DE"}, False),
                                  ({"LC_ALL": "fr_CA", "LANG": "en_US"}, True),
                                  ({"LC_MESSAGES": "en_GB", "LANG": "fr_FR"}, False)]:
            self.assertEqual(french,
                             "V\u00e9rifie tout" in self.run_it("--help", more=variables)[0])
        self.assertIn("V\u00e9rifie tout", self.run_it("--lang", "fr", "--help")[0])
        self.assertIn("Checks all", self.run_it("--lang=en", "--help", lang="fr_FR")[0])

    def test_completions_offer_what_the_commands_take(self):
        folder = pathlib.Path(__file__).resolve().parents[3] / "tools/tbfile/completions"
        in_bash = ("source $0; COMP_WORDS=(tbfile $1 --); COMP_CWORD=2; _tbfile;"
                   "echo ${COMPREPLY[*]}")
        everything = set()

        def part(title, *command):
            return self.run_it(*command, "--help")[0].split(title)[1].split("\n\n")[0]

        commands = re.findall(r"^  (\w+) ", part("Commands:"), re.M)
        self.assertEqual(9, len(commands))
        for command in commands:
            options = set(re.findall(r"--[a-z]+(?:-[a-z]+)*", part("Options:", command)))
            everything |= options
            offered = subprocess.run(["bash", "-c", in_bash, folder / "tbfile.bash", command],
                                     capture_output=True, text=True, check=True).stdout.split()
            self.assertEqual(options | {"--lang"}, set(offered), command)
            for name in ("_tbfile", "tbfile.fish"):
                self.assertRegex((folder / name).read_text(), rf"\b{command}\b", name)
        for name in ("_tbfile", "tbfile.fish"):
            text = (folder / name).read_text()
            for option in everything - {"--help"}:
                self.assertRegex(text, rf"(--|-l ){option[2:]}\b", name)

    def test_completion_of_names_with_blanks(self):
        folder = pathlib.Path(__file__).resolve().parents[3] / "tools/tbfile/completions"
        self.write("a file.tbf", b"")
        self.write("a second.tbf", b"")
        offered = subprocess.run(
            ["bash", "-c", "source $0; COMP_WORDS=(tbfile ls 'a '); COMP_CWORD=2; _tbfile;"
             "printf '%s\\n' \"${COMPREPLY[@]}\"", folder / "tbfile.bash"], cwd=self.folder,
            capture_output=True, text=True, check=True).stdout.splitlines()
        self.assertEqual(["a file.tbf", "a second.tbf"], sorted(offered))

    def test_names_of_any_characters(self):
        name = self.write("\u03bb \u65e5\u672c.tbf", made(210, BLOCKS))
        self.run_it("repack", name, "\u20ac\u0416.tbf")
        self.assertEqual(BLOCKS, self.read("\u20ac\u0416.tbf").blocks)
        self.assertIn(name, self.run_it("info", name)[0])


class Manifests(Tbfile):
    def manifest(self):
        label = {"description": "", "version": 1, "recordVersion": 1}
        return {"tbfileManifest": 1, "index": dict(label),
                "header": {"version": 1, "mask": 0, "description": "", "created": "2001-04-30",
                           "stamped": "0001-01-01", "net": -1},
                "blocks": [{"id": 7, **label, "file": "d.bin"}]}

    def setUp(self):
        super().setUp()
        (self.folder / "x").mkdir()
        self.write("x/d.bin", b"data")

    def pack(self, manifest, status):
        self.write("x/manifest.json", json.dumps(manifest).encode())
        return self.run_it("pack", "x", "out.tbf", "--force", status=status)[1]

    def test_what_is_taken(self):
        manifest = self.manifest()
        for created, number in (("2001-04-30", 2452030), ("0001-01-01", 1721426), (-1, -1),
                                (2452030, 2452030), ("5874898-06-03", 0x7FFFFFFF), (0, 0),
                                (0x7FFFFFFF, 0x7FFFFFFF), (-0x80000000, -0x80000000)):
            manifest["header"]["created"] = created
            self.pack(manifest, 0)
            self.assertEqual(number, self.read("out.tbf").dates[0])
        manifest["blocks"][0].update(id=0xFFFFFFFF, description="\u20ac" * 128, version=0)
        self.pack(manifest, 0)
        self.assertEqual([Block(0xFFFFFFFF, b"data", "\u20ac" * 128, 0, 1)],
                         self.read("out.tbf").blocks)

    def test_what_is_refused(self):
        numbers = [4294967303, -1, 7.9, True, 1e30, 1.0, None, "7", [7], 2 ** 70]
        texts = ["d" * 129, "\u0416", "a\0", "\0", "\x80", 5, None, "\ud800"]
        days = ["yesterday", "2001-02-31", "2001-2-3", "", " 2001-04-30", "2001-04-30 ",
                "2001-04-30x", "+2001-04-30", "99999999999-01-01", "5874898-06-04", "2001-13-01",
                "2001-04", "0000-01-01", "2001/04/30", "2001-04-257", 2 ** 31, -2 ** 31 - 1, 1.5,
                True, None, 1e30]
        files = ["d.bin\0x", "", ".", "..", "../d.bin", "/d.bin", "a\\d.bin", "c:d.bin", 7, None]
        lists = [None, {}, {"a": self.manifest()["blocks"][0]}, 7, "", [None], [7]]
        for path, values in ((("blocks", 0, "id"), numbers), (("blocks", 0, "version"), numbers),
                             (("blocks", 0, "recordVersion"), numbers),
                             (("header", "version"), numbers), (("header", "mask"), numbers),
                             (("index", "version"), numbers), (("tbfileManifest",), [2, True, 1.0]),
                             (("blocks", 0, "description"), texts),
                             (("header", "description"), texts), (("index", "description"), texts),
                             (("header", "created"), days), (("header", "net"), days),
                             (("blocks", 0, "file"), files), (("blocks",), lists)):
            for value in values:
                with self.subTest(path=path, value=value):
                    manifest = self.manifest()
                    at = manifest
                    for key in path[:-1]:
                        at = at[key]
                    at[path[-1]] = value
                    self.assertIn("not a right manifest", self.pack(manifest, 2))
                    self.assertFalse((self.folder / "out.tbf").exists())

    def test_what_extract_writes_comes_back(self):
        bytes_ = bytes(range(1, 256))
        blocks = [Block(7, b"x"), Block(9, b"yy"), Block(0xFFFFFFFF, b"z", "", 0xFFFFFFFF, 0)]
        content = bytearray(made(210, blocks, mask=0xFFFFFFFE))
        content[8:136] = bytes_[127:].ljust(128, b"d")
        for block, text in zip(BlockFile(made(210, blocks)).blocks, (bytes_[:128], bytes_[127:])):
            content[block.offset + 4:block.offset + 132] = text.ljust(128, b"\x81")
        for dates in ((0, -2, -0x80000000), (0x7FFFFFFF, 1721425, 1721426), (5, 2452030, -1)):
            content[136:148] = words(*dates)
            self.write("a.tbf", content)
            self.run_it("extract", "a.tbf", "y", "--force")
            self.run_it("pack", "y", "out.tbf", "--force")
            self.assertEqual(bytes(content), (self.folder / "out.tbf").read_bytes())


class Targets(Tbfile):
    """What an output may replace, and what is left where it may not."""

    def everything(self):
        return {str(path.relative_to(self.folder)): path.read_bytes()
                for path in self.folder.rglob("*") if path.is_file()}

    def unchanged(self, part, *arguments):
        before = self.everything()
        self.assertIn(part, self.run_it(*arguments, status=2)[1])
        self.assertEqual(before, self.everything())

    def folder_of(self, name, *more):
        (self.folder / name).mkdir()
        for file, content in more:
            self.write(f"{name}/{file}", content)

    def test_extract_spares_its_input(self):
        whole = made(210, BLOCKS)
        for name in ("3.bin", "manifest.json"):
            with self.subTest(name=name):
                self.folder_of(f"of {name}", (name, whole))
                self.unchanged("would be the file", "extract", f"of {name}/{name}", f"of {name}",
                               "--force")

    def test_extract_of_a_damaged_file_changes_nothing(self):
        damaged = bytearray(made(210, BLOCKS))
        damaged[BlockFile(damaged).blocks[2].offset + 132] ^= 1
        self.write("damaged.tbf", damaged)
        name = self.write("a.tbf", made(210, [Block(7, b"earlier"), Block(80, b"")]))
        self.run_it("extract", name, "earlier")
        (self.folder / "empty").mkdir()
        for target in ("earlier", "empty", "none"):
            with self.subTest(target=target):
                self.unchanged("damaged", "extract", "damaged.tbf", target, "--force")
        self.assertEqual([], list((self.folder / "empty").iterdir()))
        self.assertFalse((self.folder / "none").exists())

    def test_extract_over_an_earlier_one(self):
        self.run_it("extract", self.write("a.tbf", made(210, [Block(7, b"earlier"),
                                                              Block(80, b"stays")])), "x")
        self.write("b.tbf", made(210, BLOCKS))
        self.unchanged("exists already", "extract", "b.tbf", "x")
        self.write("x/note", b"mine")
        os.chmod(self.folder / "x/7.bin", 0o600)
        self.run_it("extract", "b.tbf", "x/", "--force")
        self.assertEqual((b"stays", b"mine"), ((self.folder / "x/80.bin").read_bytes(),
                                               (self.folder / "x/note").read_bytes()))
        if not EMULATOR:   # Windows has no such permissions
            self.assertEqual(0o600, (self.folder / "x/7.bin").stat().st_mode & 0o777)
        self.run_it("pack", "x", "out.tbf")
        self.assertEqual(BLOCKS, self.read("out.tbf").blocks)

    def test_extract_meets_what_is_no_file(self):
        self.write("a.tbf", made(210, BLOCKS))
        for name in ("12.bin", "manifest.json"):
            self.folder_of("x", ("3.bin", b"mine"), ("manifest.json", b"mine"))
            (self.folder / "x" / name).unlink(missing_ok=True)
            (self.folder / "x" / name).mkdir()
            self.unchanged("no regular file", "extract", "a.tbf", "x", "--force")
            shutil.rmtree(self.folder / "x")
        self.write("plain", b"")
        self.unchanged("is not a folder", "extract", "a.tbf", "plain", "--force")

    def test_names_of_folders(self):
        name = self.write("a.tbf", made(210, BLOCKS))
        (self.folder / "y.~tbfile").mkdir()   # what an earlier version left behind
        (self.folder / "empty").mkdir()
        (self.folder / "there").mkdir()
        (self.folder / "link").symlink_to("there")
        names = ["y", "z/", "w//", "empty/", "link", "n" * 250]
        for folder in names:
            with self.subTest(folder=folder):
                done = subprocess.run([PROGRAM, "extract", name, folder], cwd=self.folder,
                                      capture_output=True, text=True, timeout=60)
                self.assertEqual((0, ""), (done.returncode, done.stderr))
                self.assertTrue((self.folder / folder / "manifest.json").is_file())
        subprocess.run(["bash", "-c", f"mkdir v.~tbfile$$ && exec {PROGRAM} extract a.tbf v"],
                       cwd=self.folder, check=True, stdout=subprocess.DEVNULL)
        next(self.folder.glob("v.~tbfile*")).rmdir()
        self.assertTrue((self.folder / "link").is_symlink())
        self.assertEqual(["y.~tbfile"], [path.name for path in self.folder.rglob("*~tbfile*")])

    def test_long_names(self):
        name = self.write("a.tbf", made(210, BLOCKS))
        self.run_it("repack", name, "n" * 255)
        self.assertEqual(BLOCKS, self.read("n" * 255).blocks)
        self.unchanged("File name too long", "repack", name, "n" * 256)

    def test_what_is_no_file_is_not_replaced(self):
        name = self.write("a.tbf", made(210, BLOCKS))
        os.mkfifo(self.folder / "fifo")
        (self.folder / "link").symlink_to("a.tbf")
        (self.folder / "nowhere").symlink_to("missing")
        (self.folder / "folder").mkdir()
        other = self.write("b.tbf", made(210, BLOCKS[:1]))
        for target in ("fifo", "link", "nowhere", "folder"):
            for force in ((), ("--force",)):
                for command in (("repack", other), ("recover", other), ("dump", other, "7", "--raw")):
                    with self.subTest(target=target, command=command):
                        before = (self.folder / target).lstat()
                        self.unchanged("no regular file", *command, target, *force)
                        after = (self.folder / target).lstat()
                        self.assertEqual((before.st_mode, before.st_ino),
                                         (after.st_mode, after.st_ino))
        for target in ("new/", "folder/"):
            self.unchanged("is a folder", "repack", name, target, "--force")


class Interruptions(Tbfile):
    """What ends a program from outside leaves no half-made file."""

    def big(self, name, size=512 << 20, start=None):
        """A file of one block, most of it a hole."""
        whole = made(210, [Block(7, b"")]) if start is None else start
        offset = BlockFile(made(210, [Block(7, b"")])).index_offset
        with open(self.folder / name, "wb") as file:
            file.write(whole[:148] + words(offset + size) + whole[152:292] + words(size))
            file.seek(size, os.SEEK_CUR)
            file.write(whole[296:])
        return name

    def ended(self, number, begun, *arguments, hangup=signal.SIG_DFL):
        """The status and the standard error of a run that gets a signal once it has begun."""
        process = subprocess.Popen([PROGRAM, *arguments], cwd=self.folder, text=True,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                                   env={**os.environ, "LC_ALL": "C"},
                                   preexec_fn=lambda: signal.signal(signal.SIGHUP, hangup))
        with process:
            while process.poll() is None and not begun(process):
                pass
            process.send_signal(number)
            errors = process.stderr.read()
        self.assertEqual([], list(self.folder.rglob("*~tbfile*")))
        return process.returncode, errors

    def writes(self, _):
        return any(path.stat().st_size > 0 for path in self.folder.rglob("*~tbfile*"))

    @staticmethod
    def reads(process):
        with open(f"/proc/{process.pid}/io") as told:
            return int(re.search(r"rchar: (\d+)", told.read())[1]) > 8 << 20

    def test_copies_end(self):
        name = self.big("big.tbf")
        (self.folder / "packed").mkdir()
        manifest = {"tbfileManifest": 1, "index": {"description": "", "version": 1,
                                                   "recordVersion": 1},
                    "header": {"version": 1, "mask": 0, "description": "", "created": -1,
                               "stamped": -1, "net": -1},
                    "blocks": [{"id": 7, "description": "", "version": 1, "recordVersion": 1,
                                "file": "7.bin"}]}
        self.write("packed/manifest.json", json.dumps(manifest).encode())
        with open(self.folder / "packed/7.bin", "wb") as file:
            file.truncate(512 << 20)
        for arguments in (("repack", name, "out"), ("pack", "packed", "out"),
                          ("extract", name, "out"), ("dump", name, "7", "--raw", "out")):
            for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
                with self.subTest(arguments=arguments, number=number):
                    self.assertEqual((2, "tbfile: interrupted\n"),
                                     self.ended(number, self.writes, *arguments))
                    self.assertFalse((self.folder / "out").exists())

    def test_who_is_to_outlive_the_terminal_does(self):
        name = self.big("big.tbf", 64 << 20)
        self.assertEqual((0, ""), self.ended(signal.SIGHUP, self.writes, "repack", name, "out",
                                             hangup=signal.SIG_IGN))
        self.assertEqual((self.folder / name).stat().st_size,
                         (self.folder / "out").stat().st_size)

    @unittest.skipUnless(os.path.exists("/proc/self/io"), "only Linux tells what a process reads")
    def test_looking_for_the_index_ends(self):
        name = self.big("big.tbf", start=made(210, [Block(7, b"")])[:300])
        self.assertEqual((2, "tbfile: interrupted\n"),
                         self.ended(signal.SIGINT, self.reads, "info", name))

    def many(self):
        """A file with more losses than a pipe holds, and the blocks that are left."""
        blocks = [Block(i, b"data" * 5, f"block {i}") for i in range(1, 4001)]
        content = bytearray(made(210, blocks))
        for block in BlockFile(content).blocks[1::2]:
            content[block.offset + 132:block.offset + 136] = b"\xff" * 4
        return self.write("many.tbf", content), blocks[::2]

    def test_a_pipe_that_nobody_reads(self):
        name, left = self.many()
        done = self.in_shell(f"{PROGRAM} recover {name} out | head -1; exit ${{PIPESTATUS[0]}}")
        self.assertEqual((2, "tbfile: the standard output did not take everything\n"),
                         (done.returncode, done.stderr))
        self.assertEqual(1, done.stdout.count("\n"))
        self.assertEqual(left, self.read("out").blocks)
        done = self.in_shell(f"{PROGRAM} ls {name} | head -1; exit ${{PIPESTATUS[0]}}")
        self.assertEqual(2, done.returncode)

    def test_closed_streams(self):
        name, left = self.many()
        unheard = "tbfile: the standard output did not take everything\n"
        for closed, status, complaint in (("<&- >&-", 2, unheard), ("<&- >&- 2>&-", 2, ""),
                                          ("<&- 2>&-", 1, "")):
            with self.subTest(closed=closed):
                done = self.in_shell(f"{PROGRAM} recover {name} out --force {closed}")
                self.assertEqual((status, complaint), (done.returncode, done.stderr))
                self.assertEqual(left, self.read("out").blocks)

    def in_shell(self, script):
        done = subprocess.run(["bash", "-c", script], cwd=self.folder, capture_output=True,
                              text=True, env={**os.environ, "LC_ALL": "C"}, timeout=60)
        self.assertEqual([], list(self.folder.rglob("*~tbfile*")))
        return done


def usual(loader):
    """All of it; with an emulator one test of each kind."""
    if not EMULATOR:
        return loader.loadTestsFromModule(sys.modules[__name__])
    return unittest.TestSuite([Listing("test_dump"), Verify("test_places"),
                               Outputs("test_recover_says_what_it_did"),
                               Targets("test_extract_over_an_earlier_one"),
                               Targets("test_extract_meets_what_is_no_file"),
                               Refusals("test_names_of_any_characters")])


if __name__ == "__main__":
    result = unittest.TextTestRunner(verbosity=2).run(usual(unittest.TestLoader()))
    sys.exit(not result.wasSuccessful())
