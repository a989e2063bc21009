"""Block files, read and made byte by byte: shares nothing with the library."""
import dataclasses
import struct

INDEX = 0xFFFFFFEF
END = b"\xff\xff\xff\xff"


@dataclasses.dataclass
class Block:
    id: int
    data: bytes
    description: str = ""
    version: int = 210
    record_version: int = 200
    offset: int = dataclasses.field(default=0, compare=False)


def words(*numbers):
    return struct.pack(f"<{len(numbers)}I", *(number & 0xFFFFFFFF for number in numbers))


def text(value, size):
    return value.encode("cp1252").ljust(size, b"\0")


def layout(version):
    """Bytes of a description, and whether there is a block and a record version."""
    return (128 if version >= 210 else 64), version >= 200, version >= 210


class BlockFile:
    """A whole file; ValueError when it is not."""

    def __init__(self, content):
        def word(at):
            return struct.unpack_from("<I", content, at)[0]

        if word(152) == 0xFFFFFFFF:
            self.format, start = 100, 156
        else:
            self.format, start = word(152), 160
            if word(156) != 0xFFFFFFFF:
                raise ValueError("no terminator behind the header")
        self.version, self.mask = word(0), word(4)
        self.description = content[8:136].split(b"\0")[0].decode("cp1252")
        self.dates = struct.unpack_from("<3i", content, 136)
        self.index_offset = word(148)

        room, has_version, has_record_version = layout(self.format)

        def block(at):
            length = word(at + 4 + room)
            data = at + 8 + room
            tail = 4 * (1 + has_version + has_record_version)
            if data + length + tail > len(content):
                raise ValueError(f"the block at {at} is not whole")
            if content[data + length + tail - 4:data + length + tail] != END:
                raise ValueError(f"no terminator behind the block at {at}")
            return Block(word(at), content[data:data + length],
                         content[at + 4:at + 4 + room].split(b"\0")[0].decode("cp1252"),
                         word(data + length) if has_version else 0,
                         word(data + length + 4) if has_record_version else 0,
                         at), data + length + tail

        index, self.index_end = block(self.index_offset)
        if index.id != INDEX or len(index.data) % 8:
            raise ValueError("no index")
        self.blocks, at = [], start
        for entry in range(0, len(index.data), 8):
            id, offset = struct.unpack_from("<2I", index.data, entry)
            found, end = block(offset)
            if found.id != id:
                raise ValueError(f"block {id} is not at {offset}")
            self.blocks.append(found)
            # Without gaps: not so in a file that was committed more than once.
            self.compact = getattr(self, "compact", True) and offset == at
            at = end
        self.compact = getattr(self, "compact", True) and at == self.index_offset
        self.whole_words = all((len(b.data) + 8 + room + 4 * (1 + has_version +
                               has_record_version)) % 4 == 0 for b in self.blocks)
        self.size = len(content)


def record(version, block):
    room, has_version, has_record_version = layout(version)
    return (words(block.id) + text(block.description, room) + words(len(block.data)) + block.data +
            (words(block.version) if has_version else b"") +
            (words(block.record_version) if has_record_version else b"") + END)


def header(version, mask, index_offset, description="made by hand"):
    dates = words(2452030, 2452032, -1)
    return (words(3, mask) + text(description, 128) + dates + words(index_offset) +
            (words(version) if version != 100 else b"") + END)


def made(version, blocks, commits=(), mask=0):
    """A file of these blocks, with an index behind the last one and behind those in `commits`."""
    start = 156 if version == 100 else 160
    body, entries, index_offset = b"", b"", 0
    for number, block in enumerate(blocks, 1):
        entries += words(block.id, start + len(body))
        body += record(version, block)
        if number in commits or number == len(blocks):
            index_offset = start + len(body)
            body += record(version, Block(INDEX, entries, "Master index"))
    return header(version, mask, index_offset) + body
