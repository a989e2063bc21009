"""A second reader of block files, written from docs/block-file-format.md alone, so that what the
library writes is checked by something that shares no code with it. Format version 210 only. It
forgives nothing: whatever is not as the document says raises BadFile.

    file = BlockFile.read("plan.tbf")
    file.description, [block.id for block in file.blocks]
"""
import struct
from typing import NamedTuple

HEADER_SIZE = 160
INDEX_ID = 0xFFFFFFEF
END = 0xFFFFFFFF


class BadFile(ValueError):
    pass


def expect(condition, complaint):
    if not condition:
        raise BadFile(complaint)


def text(field):
    """A field of fixed size: the text, which nothing but zeros follows."""
    end = field.find(b"\0")
    if end < 0:
        end = len(field)
    expect(not field[end:].strip(b"\0"), "something behind a text's end")
    return field[:end].decode("cp1252")


class Block(NamedTuple):
    id: int
    description: str
    data: bytes
    version: int
    record_version: int
    offset: int
    size: int   # in the file

    @classmethod
    def at(cls, data, offset):
        expect(offset + 136 <= len(data), f"no block at {offset}")
        name, description, length = struct.unpack_from("<I128sI", data, offset)
        behind = offset + 136 + length
        expect(behind + 12 <= len(data), f"the block at {offset} is cut")
        version, record_version, end = struct.unpack_from("<III", data, behind)
        expect(end == END, f"the block at {offset} has no terminator")
        return cls(name, text(description), data[offset + 136:behind], version, record_version,
                   offset, length + 148)


class BlockFile(NamedTuple):
    version: int
    mask: int
    description: str
    dates: tuple    # creation, time stamp, net date
    blocks: list    # in the order of the file, the index not among them

    @classmethod
    def read(cls, name):
        with open(name, "rb") as file:
            return cls.parse(file.read())

    @classmethod
    def parse(cls, data):
        expect(len(data) >= HEADER_SIZE, "shorter than a header")
        version, mask, description, created, stamped, net, index_at, form, end = \
            struct.unpack_from("<II128siiiIII", data)
        expect(form == 210 and end == END, "no header of format version 210")
        blocks, offset = [], HEADER_SIZE
        while offset < index_at:
            blocks.append(Block.at(data, offset))
            offset += blocks[-1].size
        expect(offset == index_at, "the index is not where the blocks end")
        index = Block.at(data, index_at)
        expect(index.id == INDEX_ID, "the header points at no index")
        expect(index_at + index.size == len(data), "something behind the index")
        entries = list(struct.iter_unpack("<II", index.data))
        expect(entries == [(block.id, block.offset) for block in blocks],
               "the index does not have the blocks as they lie")
        expect(mask & 1 == all(len(block.data) % 4 == 0 for block in blocks),
               "the mask is wrong about the blocks' lengths")
        return cls(version, mask, text(description), (created, stamped, net), blocks)
