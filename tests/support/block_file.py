"""Block files, read and made byte by byte from docs/block-file-format.md alone, so that what the
library writes is checked by something that shares no code with it. Format versions 100 and 200 to
210. The reader forgives nothing: whatever is not as the document says raises BadFile.

    file = BlockFile.read("plan.tbf")
    file.description, [block.id for block in file.blocks]
"""
import dataclasses
import struct

INDEX = 0xFFFFFFEF
LIST = 0xFFFFFFEE
END = b"\xff\xff\xff\xff"


class BadFile(ValueError):
    pass


def expect(condition, complaint):
    if not condition:
        raise BadFile(complaint)


def plain(field):
    """The text of a field of fixed size; nothing but zeros follows it."""
    value, _, rest = field.partition(b"\0")
    expect(not rest.strip(b"\0"), "something after a text's end")
    return value.decode("cp1252")


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


def crc32c(content):
    total = 0xFFFFFFFF
    for byte in content:
        total ^= byte
        for _ in range(8):
            total = total >> 1 ^ (0x82F63B78 if total & 1 else 0)
    return total ^ 0xFFFFFFFF


class BlockFile:
    """A whole file, its blocks in the order of its index.

    `compact`: nothing lies between the blocks, unlike in a file that was committed twice.
    `whole_words`: every block is a multiple of 4 bytes long, which bit 0 of the mask tells.
    """

    @classmethod
    def read(cls, name):
        with open(name, "rb") as file:
            return cls(file.read())

    def __init__(self, content):
        def word(at):
            expect(at + 4 <= len(content), f"ends before {at + 4}")
            return struct.unpack_from("<I", content, at)[0]

        if content[152:156] == END:
            self.format, start = 100, 156
        else:
            self.format, start = word(152), 160
            expect(content[156:160] == END, "no terminator after the header")
        self.version, self.mask = word(0), word(4)
        self.description = plain(content[8:136])
        self.dates = struct.unpack_from("<3i", content, 136)   # creation, time stamp, net date
        self.size = len(content)
        self.index_offset = word(148)

        room, has_version, has_record_version = layout(self.format)

        def block(at):
            data = at + 8 + room
            after = data + word(data - 4)
            end = after + 4 * (1 + has_version + has_record_version)
            expect(content[end - 4:end] == END, f"no terminator after the block at {at}")
            return Block(word(at), content[data:after], plain(content[at + 4:data - 4]),
                         word(after) if has_version else 0,
                         word(after + 4) if has_record_version else 0, at), end

        index, self.index_end = block(self.index_offset)
        expect(index.id == INDEX and len(index.data) % 8 == 0, "the header points at no index")
        self.blocks, self.sums, ends = [], None, [start]
        if index.data[:4] == words(LIST):   # stands first, and lies last
            self.check_list(content, index, block(struct.unpack_from("<I", index.data, 4)[0]))
            index.data = index.data[8:]
        for id, offset in struct.iter_unpack("<2I", index.data):
            found, end = block(offset)
            expect(found.id == id, f"block {id} is not at {offset}")
            self.blocks.append(found)
            ends.append(end)
        last = self.index_offset if self.sums is None else self.list_offset
        self.compact = ends == [*(found.offset for found in self.blocks), last]
        self.whole_words = all((end - found.offset) % 4 == 0
                               for found, end in zip(self.blocks, ends[1:]))


    def check_list(self, content, index, found):
        """`sums` are those of the list, by identifier; None for one that it does not know."""
        (block, end), at = found, found[0].offset
        numbers = struct.unpack(f"<{len(block.data) // 4}I", block.data)
        expect(numbers[:7] == (1, at, self.index_offset, self.index_end - self.index_offset,
                               crc32c(content[self.index_offset:self.index_end]),
                               crc32c(content[:148] + content[152:160]), len(index.data) // 8),
               "the start of the list of checksums")
        expect((block.id, end) == (LIST, self.index_offset), "the place of the list")
        expect(numbers[-1] == crc32c(content[at:end - 16]), "the list's own sum")
        self.list_offset, self.sums = at, {}
        rows = list(zip(*[iter(numbers[7:-1])] * 4))
        expect([row[:2] for row in rows] == list(struct.iter_unpack("<2I", index.data)),
               "the rows are not those of the index")
        expect(rows[0][2:] == (0, 0), "the list's own row")
        for id, offset, length, total in rows[1:]:
            self.sums[id] = total if length else None
            expect(not length or total == crc32c(content[offset:offset + length]), f"sum of {id}")


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
    """A file of these blocks, with an index after the last one and after those in `commits`."""
    start = 156 if version == 100 else 160
    body, entries, index_offset = b"", b"", 0
    for number, block in enumerate(blocks, 1):
        entries += words(block.id, start + len(body))
        body += record(version, block)
        if number in commits or number == len(blocks):
            index_offset = start + len(body)
            body += record(version, Block(INDEX, entries, "Master index"))
    return header(version, mask, index_offset) + body
