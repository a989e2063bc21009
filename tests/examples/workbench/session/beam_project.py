"""Reads a beam project, and refuses one that is not written as examples/workbench/project_store.h
says."""
import struct
import zlib
from typing import NamedTuple

from block_file import BlockFile, expect, plain

PROJECT, FIRST_BEAM, FIRST_LABEL = 1, 0x10000000, 0x20000000


class Beam(NamedTuple):
    id: int
    name: str
    section: str
    x: float
    y: float
    span: float
    uniform: float
    loads: list   # (position, force)


class Label(NamedTuple):
    id: int
    beam: int
    x: float
    y: float
    alignment: int
    border: int
    text: str


def values_of(block):
    """The record without the checksum behind it."""
    values, found = block.data[:-4], block.data[-4:]
    expect(found == struct.pack("<I", zlib.crc32(values)), f"block {block.id:#x} is damaged")
    return values


def beam_of(data):
    id, name, section, x, y, span, uniform, count = struct.unpack_from("<I16s16s4dI", data)
    loads = list(struct.iter_unpack("<2d", data[72:]))
    expect(len(loads) == count, f"beam {id} has {len(loads)} loads and says {count}")
    return Beam(id, plain(name), plain(section), x, y, span, uniform, loads)


def label_of(data):
    *fields, words = struct.unpack("<II2dII128s", data)
    return Label(*fields, plain(words))


class Project(NamedTuple):
    beams: list
    labels: list

    @classmethod
    def read(cls, name):
        file = BlockFile.read(name)
        expect(file.description == "Beam project" and file.version == 1, "no beam project")
        expect(file.format == 210, "written in an old format")
        expect(file.mask & 1 and file.whole_words, "its blocks cannot be searched for")
        expect(file.compact and file.index_end == file.size, "it has room that no block uses")
        head, *items = file.blocks
        beams, labels = struct.unpack("<II", values_of(head))
        wanted = [*range(FIRST_BEAM, FIRST_BEAM + beams), *range(FIRST_LABEL, FIRST_LABEL + labels)]
        expect(head.id == PROJECT and [item.id for item in items] == wanted,
               "blocks are missing or out of order")
        project = cls([beam_of(values_of(item)) for item in items[:beams]],
                      [label_of(values_of(item)) for item in items[beams:]])
        for ids in ([beam.id for beam in project.beams], [label.id for label in project.labels]):
            expect(all(a < b for a, b in zip([0, *ids], ids)), "identifiers do not ascend")
        known = {beam.id for beam in project.beams}
        expect(all(label.beam in known for label in project.labels), "a label of no beam")
        return project
