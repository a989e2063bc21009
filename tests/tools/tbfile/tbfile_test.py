#!/usr/bin/env python3
"""What tbfile prints and writes, checked by a reader that shares nothing with it.

    tbfile_test.py PROGRAM [EMULATOR]       with an emulator, which takes its time, only a part
"""
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "support"))
from block_file import Block, BlockFile, made, record, words

PROGRAM, EMULATOR = os.path.abspath(sys.argv[1]), sys.argv[2:]

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

    def mode(self, name):
        return (self.folder / name).stat().st_mode & 0o777

    def everything(self):
        return {path: path.read_bytes() for path in self.folder.rglob("*") if path.is_file()}

    def unchanged(self, part, *arguments):
        """A run that cannot be carried out says so and changes nothing."""
        self.assertIn(part, self.run_it(*arguments, status=2)[1])

    def run_it(self, *arguments, status=0, lang="C.UTF-8"):
        """The standard output and error of a run, which must end with this status and leave its
        inputs and no temporary file."""
        inputs = self.everything()
        environment = {**os.environ, "LC_ALL": "", "LC_MESSAGES": "", "LANG": lang}
        with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
            done = subprocess.run([*EMULATOR, PROGRAM, *arguments], cwd=self.folder,
                                  stdin=subprocess.DEVNULL, stdout=output, stderr=errors,
                                  env=environment, timeout=60)
            output.seek(0)
            errors.seek(0)
            printed, complained = output.read(), errors.read()
        self.assertEqual(status, done.returncode, (arguments, printed, complained))
        self.assertEqual(status == 2, bool(complained), complained)
        if status == 2:
            self.assertEqual(inputs, self.everything())
        elif "--force" not in arguments:
            for path, content in inputs.items():
                self.assertEqual(content, path.read_bytes(), path)
        self.assertEqual([], list(self.folder.rglob("*~tbfile*")))
        return printed.decode("utf-8"), complained.decode("utf-8")

    def json(self, *arguments, status=0):
        return json.loads(self.run_it(*arguments, "--json", status=status)[0])

    def findings(self, *arguments, sound=False):
        """What verify finds and where; its status must agree."""
        told = self.json("verify", *arguments, status=0 if sound else 1)
        self.assertEqual(sound, told["file"]["sound"])
        return {(f["finding"], f["offset"]) for f in told["findings"]}


class Listing(Tbfile):
    def test_info_of_every_format(self):
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

    def test_no_control_character_reaches_a_terminal(self):
        wild = bytes([*range(1, 0x20), 0x7F, 0x81, 0x8D, 0x8F, 0x90, 0x9D, 0x80, 0xA0, 0xE9])
        shown = "." * 37 + "\u20ac\u00a0\u00e9"
        content = bytearray(made(210, BLOCKS[:1]))
        for at in (8, 164):
            content[at:at + 128] = wild.ljust(128, b"\0")
        odd = b"\x1b[2J\n\xc2\x9b\xe2\x80\xae\xff\xc3\xa9.tbf".decode("utf-8", "surrogateescape")
        self.write(odd, content)
        self.write("b.tbf", made(210, BLOCKS[:1]))
        for arguments, count, status in ((("info", odd), 1, 0), (("ls", odd), 1, 0),
                                         (("diff", odd, "b.tbf"), 2, 1), (("x", odd), 0, 2),
                                         (("ls", odd + "3"), 0, 2), (("dump", odd, "\x1b"), 0, 2)):
            with self.subTest(arguments=arguments):
                printed = "".join(self.run_it(*arguments, status=status))
                self.assertEqual(count, printed.count(shown))
                self.assertNotRegex(printed, "[\\x00-\\x09\\x0b-\\x1f\\x7f-\\x9f\\u202e]")
        printed = self.run_it("info", odd, "--json")[0]
        self.assertNotRegex(printed, "[\\x00-\\x09\\x0b-\\x1f\\x7f-\\x9f]")
        self.assertEqual(wild.decode("latin-1").replace("\x80", "\u20ac"),
                         json.loads(printed)["description"])

class Verify(Tbfile):

    def test_findings(self):
        whole = made(210, BLOCKS)
        plain = BlockFile(whole)
        first, second, index = plain.blocks[0].offset, plain.blocks[1].offset, plain.index_offset

        def changed(at, bytes_):
            return whole[:at] + bytes_ + whole[at + len(bytes_):]

        # What verify says, and what recover says beside the blocks where it gets all of them.
        for finding, at, content, faults in [
                ("headerFormat", 152, changed(152, words(211)), None),
                ("headerLayout", 152, changed(152, words(205)), ["headerLayout"]),
                ("headerDate", 136, changed(136, words(5)), ["headerDate"]),
                ("headerTerminator", 156, changed(156, words(0)), ["headerDamaged"]),
                ("indexMoved", index, changed(148, words(second)), ["indexMoved"]),
                ("outside", 0, changed(index + 144, bytes(32)), ["indexDamaged"]),
                ("terminator", first, changed(second - 4, words(0)), None),
                ("notWholeWords", first, changed(4, words(1)), None),
                ("otherId", second, changed(index + 140, words(second)), None),
                ("description", index, changed(index + 90, b"x"), None),
                ("strayBytes", len(whole), whole + b"rest" * 60, None),
                ("notIndexed", len(whole), whole + record(210, Block(50, b"late")), None),
                ("neverCommitted", 0, changed(148, words(0))[:index], None),
                ("indexDamaged", index, whole[:-9], None),
                ("noIndex", index, whole[:index], None),
                ("headerTooShort", 0, whole[:100], None)]:
            with self.subTest(finding=finding):
                name = self.write("a.tbf", content)
                self.assertIn((finding, at), self.findings(name))
                if faults:
                    told = self.json("recover", name, "out.tbf", "--force", status=1)
                    self.assertEqual((faults, BLOCKS), ([fault["fault"] for fault in told["faults"]],
                                                        self.read("out.tbf").blocks))
        ones = bytearray(made(210, [Block(7, b"\xff" * 150, "ones")]))
        ones[292] ^= 0x80
        self.assertEqual({("lengthRepaired", 160)}, self.findings(self.write("a.tbf", ones)))


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
        for version, commits in (*((version, (2,)) for version in FORMATS), (210, ())):
            blocks = [versions(version, block) for block in BLOCKS]
            name = self.write("a.tbf", made(version, BLOCKS, commits))
            self.assertEqual(set(), self.findings(name, sound=True))
            self.run_it("extract", name, "folder", "--force")
            for arguments in (("repack", name), ("recover", name), ("pack", "folder")):
                with self.subTest(version=version, arguments=arguments):
                    self.run_it(*arguments, "out.tbf", "--force")
                    self.expect("out.tbf", blocks)
        self.assertEqual((self.folder / name).read_bytes(), (self.folder / "out.tbf").read_bytes())

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
                ("cut off", whole[:plain.blocks[4].offset + 7], (), BLOCKS[:4], {"lostBytes": 7})]:
            with self.subTest(what=what):
                told = self.json("recover", self.write("a.tbf", content), "out.tbf", "--force",
                                 *certain, status=1)
                self.expect("out.tbf", kept)
                self.assertEqual(len(kept), told["rescued"])
                self.assertEqual(more, {key: told[key] for key in more})
                self.assertEqual(set(), self.findings("out.tbf", sound=True))

    def test_of_blocks_with_one_identifier_none_is_dropped_silently(self):
        twice = [BLOCKS[0], BLOCKS[4], Block(7, b"the second", "again"), Block(7, b"third")]
        whole = made(210, twice)
        self.write("a.tbf", whole)
        later = [{"id": 7, "from": block.offset} for block in BlockFile(whole).blocks[2:]]
        for command in ("repack", "extract"):
            told = self.json(command, "a.tbf", command, status=1)
            self.assertEqual((2, later), (told["blocks"], told["repeated"]))
        self.run_it("pack", "extract", "packed")
        for name in ("repack", "packed"):
            self.assertEqual(twice[:2], self.read(name).blocks)
        self.write("b.tbf", whole[:BlockFile(whole).index_offset])
        for certain, kept in (((), twice), (("--certain",), twice[:2])):
            told = self.json("recover", "b.tbf", "out.tbf", "--force", *certain, status=1)
            self.assertEqual((len(kept), 2, 4 - len(kept)),
                             (told["rescued"], told["doubtful"], told["leftOut"]))
            self.expect("out.tbf", kept)

    def test_diff(self):
        changed = [BLOCKS[0], Block(9, b"", "new text"), Block(0xFFFFFFF0, bytes(256), "all bytes",
                                                               5, 6), BLOCKS[3], Block(4, b"")]
        self.write("a.tbf", made(210, BLOCKS))
        # Damage is a difference, and what comes after it is compared all the same.
        damaged = bytearray(made(210, changed))
        damaged[BlockFile(damaged).blocks[0].offset + 132] ^= 1
        self.write("c.tbf", damaged)
        told = self.json("diff", "a.tbf", "c.tbf", "--ignore-dates", status=1)["differences"]
        self.assertEqual({(7, "b"), (9, "description"), (0xFFFFFFF0, "data"), (3, "a"), (4, "b")}, {
            (d["id"], d.get("field") or d.get("onlyIn") or d["damaged"]) for d in told})


class Checksums(Tbfile):
    """A file with a list of checksums, which `repack --checksums` adds to any sound one."""

    def setUp(self):
        super().setUp()
        self.write("plain.tbf", made(205, BLOCKS))
        self.run_it("repack", "--checksums", "plain.tbf", "a.tbf")
        self.whole = (self.folder / "a.tbf").read_bytes()
        self.places = {block.id: block.offset for block in self.read("a.tbf").blocks}

    def changed(self, at, bytes_):
        return self.write("b.tbf", self.whole[:at] + bytes_ + self.whole[at + len(bytes_):])

    def test_copies_keep_a_current_list(self):
        blocks = [versions(205, block) for block in BLOCKS]
        self.run_it("extract", "a.tbf", "folder")
        for arguments in (("repack", "a.tbf"), ("recover", "a.tbf"), ("pack", "folder")):
            self.run_it(*arguments, "out.tbf", "--force")
            copy = self.read("out.tbf")
            self.assertEqual((blocks, True, self.whole),
                             (copy.blocks, None not in copy.sums.values(),
                              (self.folder / "out.tbf").read_bytes()), arguments)
        self.assertEqual(set(), self.findings("a.tbf", sound=True))
        self.run_it("verify", "--quick", "a.tbf")
        self.assertEqual("current", self.json("info", "a.tbf")["checksums"])
        self.run_it("extract", "plain.tbf", "other")
        self.run_it("pack", "other", "unsummed.tbf")
        self.assertIsNone(self.read("unsummed.tbf").sums)
        self.run_it("diff", "a.tbf", "unsummed.tbf")

    def test_damage(self):
        twelve, three = self.places[12], self.places[3]
        for what, at, content, finding, kept, certain in [
                ("data", twelve + 140, b"?", "wrongChecksum", 5, 4),
                ("length", twelve + 132, words(7), "wrongChecksum", 5, 5),
                ("terminator", three - 4, b"gone", "terminator", 5, 5),
                ("head", twelve, b"?" * 140, "otherId", 4, 4)]:
            with self.subTest(what=what):
                name = self.changed(at, content)
                told = dict(self.findings(name))
                self.assertIn(finding, told)
                recovered = self.json("recover", name, "out.tbf", "--force", status=1)
                self.assertEqual(kept, recovered["rescued"])
                doubtful = {block["id"]: block["doubts"] for block in recovered["doubtfulBlocks"]}
                self.assertEqual({12: ["wrongChecksum"]} if what == "data" else {}, doubtful)
                copy = self.read("out.tbf")
                self.assertEqual(what == "data", None in copy.sums.values())
                self.assertEqual(certain, self.json("recover", name, "out.tbf", "--force",
                                                    "--certain", status=1)["rescued"])
                told = self.json("diff", "a.tbf", name, status=1)["differences"]
                self.assertEqual([(12, "b")], [(d["id"], d["damaged"]) for d in told])
                self.unchanged("block 12", "repack", name, "none.tbf")

    def test_a_block_at_another_place_is_found(self):
        first, second, end = (self.places[id] for id in (7, 9, 0xFFFFFFF0))
        name = self.changed(first, self.whole[second:end] + self.whole[first:second])
        self.assertLess({("misplaced", first), ("misplaced", first + end - second)},
                        self.findings(name))
        told = self.json("recover", "--certain", name, "out.tbf", status=1)
        self.assertEqual((5, 0), (told["rescued"], told["lostBytes"]))
        self.assertIn("misplaced", [fault["fault"] for fault in told["faults"]])

    def test_a_list_that_does_not_fit_is_told(self):
        index = self.read("a.tbf").index_offset
        for finding, at, content, blocks in [
                ("checksumsOutdated", len(self.whole), self.whole[index:], 5),
                ("checksumsDamaged", index - 20, b"?", 5),
                ("checksumsDiffer", 140, words(2452031), 5)]:
            with self.subTest(finding=finding):
                name = self.changed(at, content)
                if finding == "checksumsOutdated":
                    name = self.write("b.tbf", self.whole[:148] + words(len(self.whole)) +
                                      self.whole[152:] + self.whole[index:])
                self.assertEqual({(finding, index - 180 - 16 * 6)}, self.findings(name))
                told = self.json("recover", name, "out.tbf", "--force", status=1)
                self.assertIn(finding, [fault["fault"] for fault in told["faults"]])
                self.assertEqual(blocks, len(self.read("out.tbf").sums))
                self.json("info", name, status=1)


class Refusals(Tbfile):
    """What cannot be carried out is said in the user's language, and nothing is changed."""

    def test_what_cannot_run(self):
        name = self.write("a.tbf", made(210, BLOCKS))
        self.write("other", b"something else")
        damaged = bytearray(made(210, BLOCKS))
        damaged[BlockFile(damaged).blocks[1].offset + 132] ^= 1
        self.write("damaged.tbf", damaged)
        for folder in ("folder", "empty"):
            (self.folder / folder).mkdir()
        self.write("folder/note", b"mine")
        for arguments, part in [
                (("repack", name, "folder/"), "it is a folder"),
                (("repack", name, "other"), "already exists"),
                (("recover", name, "./a.tbf", "--force"), "cannot be the output"),
                (("dump", name, "7", "--raw", name, "--force"), "cannot be the output"),
                (("recover", "other", "out.tbf"), "no block was found"),
                (("ls", "other"), "not a block file"),
                (("repack", "damaged.tbf", "out.tbf"), "block 9"),
                *((("extract", "damaged.tbf", target, "--force"), "block 9")
                  for target in ("folder", "empty", "none")),
                (("ls", "missing.tbf"), "no such file"), (("ls", "folder"), "not a file"),
                (("dump", name, "8"), "has no block 8"),
                (("extract", name, "other", "--force"), "is not a folder"),
                (("recover", "--json", name), "OUT is missing"),
                (("frobnicate",), "unknown command: frobnicate ('tbfile --help')")]:
            with self.subTest(arguments=arguments):
                self.unchanged(part, *arguments)
                said = self.run_it(*arguments, status=2, lang="fr_CA.UTF-8")[1]
                self.assertNotRegex(said, r"\b(is|the|cannot|not|of|no|error|option|too)\b")
        self.assertEqual([], list((self.folder / "empty").iterdir()))
        self.assertFalse((self.folder / "none").exists())

    def test_pipes_and_links(self):
        """A folder that was sent may hold anything. Nothing waits for a pipe."""
        name = self.write("a.tbf", made(210, BLOCKS))
        os.mkfifo(self.folder / "pipe")
        self.run_it("extract", name, "x")
        for command in (("info",), ("verify",), ("recover",), ("extract",), ("diff", name)):
            more = ("out",) if command[0] in ("recover", "extract") else ()
            self.unchanged("pipe is not a file", *command, "pipe", *more)
        for replaced in ("9.bin", "manifest.json"):
            file = self.folder / "x" / replaced
            file.rename(self.folder / "secret")
            for target, part in (("../secret", "is a link"), (None, "is not a file")):
                file.symlink_to(target) if target else os.mkfifo(file)
                self.unchanged(part, "pack", "x", "out.tbf")
                file.unlink()
            (self.folder / "secret").rename(file)

    def test_names_of_any_characters(self):
        name = self.write("\u03bb \u65e5\u672c.tbf", made(210, BLOCKS))
        self.run_it("repack", name, "\u20ac\u0416.tbf")
        self.assertEqual(BLOCKS, self.read("\u20ac\u0416.tbf").blocks)


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

    def pack(self, text, status):
        self.write("x/manifest.json", text.encode())
        return self.run_it("pack", "x", "out.tbf", "--force", status=status)[1]

    def test_what_is_refused(self):
        numbers = [4294967303, -1, 1.0, True, "7", 2 ** 70]
        texts = ["d" * 129, "\u0416", "a\0", "\x80", 5, "\ud800"]
        days = ["2001-02-31", "2001-2-3", " 2001-04-30", "99999999999-01-01", "5874898-06-04",
                "0000-01-01", 2 ** 31, -2 ** 31 - 1, 1.5, None]
        files = ["d.bin\0x", "", "..", "../d.bin", "a\\d.bin", "c:d.bin", 7]
        lists = [{}, [7], self.manifest()["blocks"] * 2]
        for path, values in ((("blocks", 0, "id"), numbers), (("header", "mask"), [-1]),
                             (("index", "version"), [None]), (("tbfileManifest",), [2, True, 1.0]),
                             (("blocks", 0, "description"), texts), (("header", "created"), days),
                             (("blocks", 0, "file"), files), (("blocks",), lists)):
            for value in values:
                with self.subTest(path=path, value=value):
                    manifest = self.manifest()
                    at = manifest
                    for key in path[:-1]:
                        at = at[key]
                    at[path[-1]] = value
                    self.assertIn("invalid manifest", self.pack(json.dumps(manifest), 2))
                    del at[path[-1]]
        for text in ("", "[1]", "[" * 60000):
            self.assertIn("invalid manifest", self.pack(text, 2))
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
    """What an output may replace, and who may use it."""

    def setUp(self):
        super().setUp()
        self.write("a.tbf", made(210, BLOCKS))

    def test_outputs_have_the_access_of_their_input(self):
        # Wine tells of an access list whether it is for all others; its groups are not those here.
        told = 0o007 if EMULATOR else 0o777
        for mode, arguments in ((0o640, ("recover",)), (0o444, ("dump", "7", "--raw"))):
            with self.subTest(arguments=arguments):
                os.chmod(self.folder / "a.tbf", 0o600 if EMULATOR else mode)
                self.run_it(arguments[0], "a.tbf", *arguments[1:], "out")
                self.assertEqual((0o600 if EMULATOR else mode) & told, self.mode("out") & told)
                (self.folder / "out").unlink()
        if EMULATOR:   # its folders have what the system gives them
            return
        os.chmod(self.folder / "a.tbf", 0o640)
        self.run_it("extract", "a.tbf", "x")
        self.assertEqual((0o750, 0o640), (self.mode("x"), self.mode("x/7.bin")))
        os.chmod(self.folder / "x/9.bin", 0o600)   # one secret makes all of them one
        self.run_it("pack", "x", "out")
        self.assertEqual(0o600, self.mode("out"))
        self.run_it("repack", "a.tbf", "out", "--force")
        self.assertEqual(0o600, self.mode("out"), "what is replaced was for its owner")

    def test_extract_over_an_earlier_one(self):
        self.run_it("extract", self.write("b.tbf", made(210, [Block(7, b"earlier"),
                                                              Block(80, b"stays")])), "x")
        self.unchanged("already exists", "extract", "a.tbf", "x")
        (self.folder / "y/12.bin").mkdir(parents=True)
        self.write("y/3.bin", b"mine")
        self.unchanged("not a regular file", "extract", "a.tbf", "y", "--force")
        self.run_it("extract", "a.tbf", "x/", "--force")
        self.assertEqual(b"stays", (self.folder / "x/80.bin").read_bytes())
        self.run_it("pack", "x", "out.tbf")
        self.assertEqual(BLOCKS, self.read("out.tbf").blocks)

    def test_what_is_no_file_is_not_replaced(self):
        os.mkfifo(self.folder / "fifo")
        (self.folder / "link").symlink_to("a.tbf")
        (self.folder / "nowhere").symlink_to("missing")
        (self.folder / "folder").mkdir()
        other = self.write("b.tbf", made(210, BLOCKS[:1]))
        for target in ("fifo", "link", "nowhere", "folder"):
            before = (self.folder / target).lstat()
            for command in (("repack", other), ("recover", other), ("dump", other, "7", "--raw")):
                with self.subTest(target=target, command=command):
                    self.unchanged("not a regular file", *command, target, "--force")
            after = (self.folder / target).lstat()
            self.assertEqual((before.st_mode, before.st_ino), (after.st_mode, after.st_ino))


def usual(loader):
    """All of it; with an emulator one test of each kind."""
    if not EMULATOR:
        return loader.loadTestsFromModule(sys.modules[__name__])
    return unittest.TestSuite([Verify("test_findings"),
                               Outputs("test_recover_says_what_it_did"),
                               Checksums("test_copies_keep_a_current_list"),
                               Checksums("test_damage"),
                               Targets("test_outputs_have_the_access_of_their_input"),
                               Targets("test_extract_over_an_earlier_one"),
                               Refusals("test_names_of_any_characters")])


if __name__ == "__main__":
    result = unittest.TextTestRunner(verbosity=2).run(usual(unittest.TestLoader()))
    sys.exit(not result.wasSuccessful())
