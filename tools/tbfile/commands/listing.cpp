// info, ls and dump: what a file holds.
#include <algorithm>
#include <charconv>
#include <numeric>

#include "commands/commands.h"
#include "commands/days.h"
#include "commands/open_file.h"
#include "terminal/failure.h"
#include "terminal/json.h"
#include "toolbox/utf8.h"

namespace tbfile {
namespace {

JsonValue dayValue(std::int32_t day) {
    const std::string text = dayText(day);
    return text.empty() ? JsonValue(nullptr) : JsonValue(text);
}

std::string shownDay(std::int32_t day) {
    const std::string text = dayText(day);
    return text.empty() ? say(Text::noDate, {std::to_string(day)}) : text;
}

std::string hexadecimal(std::uint32_t number) {
    std::array<char, 8> digits{};
    char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16).ptr;
    return "0x" + std::string(digits.data(), end);
}

std::string indexText(const OpenFile& open) {
    const BlockFileMap& map = open.map;
    if (!map.index) return say(map.header.indexOffset == 0 ? Text::neverCommitted : Text::noIndex);
    const std::string count = grouped(open.indexedBlocks());
    const std::string at = std::to_string(map.index->frame.offset);
    if (!map.index->isWhole()) return say(Text::indexNotWhole, {at, count});
    return say(map.index->atItsPlace ? Text::indexAt : Text::indexElsewhere, {at, count});
}

/// What the list of checksums is worth, by its name in JSON and as a text.
struct ChecksumState {
    const char* json;
    Text text;
};

ChecksumState checksumState(const BlockFileMap& map) {
    if (!map.checksums) return {"none", Text::checksumsNone};
    if (map.checksums->state == TarvFileRead::ChecksumsCurrent)
        return {"current", Text::checksumsCurrent};
    if (map.checksums->state == TarvFileRead::ChecksumsOutdated)
        return {"outdated", Text::checksumsOutdated};
    return {"damaged", Text::checksumsDamaged};
}

Json infoJson(const OpenFile& open, bool sound) {
    const Header& header = open.map.header;
    const Index* index = open.map.index ? &*open.map.index : nullptr;
    const auto orNull = [&](bool known, std::uint64_t number) {
        return known ? JsonValue(number) : JsonValue(nullptr);
    };
    return jsonObject({{"file", nameOf(open.file.path())},
                       {"size", open.file.size()},
                       {"version", std::uint64_t{header.version}},
                       {"mask", std::uint64_t{header.mask}},
                       {"description", toolbox::toUtf8(header.description)},
                       {"created", dayValue(header.dates[0])},
                       {"stamped", dayValue(header.dates[1])},
                       {"net", dayValue(header.dates[2])},
                       {"indexOffset", std::uint64_t{header.indexOffset}},
                       {"formatVersion", std::uint64_t{header.shape.format}},
                       {"layout", std::uint64_t{open.map.shape.format}},
                       {"indexFoundAt", orNull(index, index ? index->frame.offset : 0)},
                       {"blocks", orNull(index, open.indexedBlocks())},
                       {"checksums", std::string(checksumState(open.map).json)},
                       {"headerReadable", header.isReadable()},
                       {"indexReadable", sound}});
}

void printInfo(const OpenFile& open) {
    const Header& header = open.map.header;
    const auto line = [](Text label, const std::string& value) {
        print(say(label) + value + "\n");
    };
    line(Text::labelFile, visible(nameOf(open.file.path())));
    line(Text::labelSize, say(Text::bytes, {grouped(open.file.size())}));
    if (header.has(HeaderFault::tooShort)) return line(Text::labelFormat, say(Text::noHeader));
    line(Text::labelFormat,
         std::to_string(header.shape.format) +
             (header.isReadable() ? "" : ", " + say(Text::headerDamaged)) +
             (open.map.formatDiffers()
                  ? ", " + say(Text::blocksFormat, {std::to_string(open.map.shape.format)})
                  : ""));
    line(Text::labelVersion, std::to_string(header.version));
    line(Text::labelMask, hexadecimal(header.mask) +
                              (header.wholeWords() ? ", " + say(Text::wholeWords) : std::string()));
    line(Text::labelDescription, visible(toolbox::toUtf8(header.description)));
    line(Text::labelCreated, shownDay(header.dates[0]));
    line(Text::labelStamped, shownDay(header.dates[1]));
    line(Text::labelNet, shownDay(header.dates[2]));
    line(Text::labelIndex, indexText(open));
    line(Text::labelChecksums, say(checksumState(open.map).text));
}

/// What is listed of one block.
struct Row {
    BlocItem entry{};
    Frame frame;
    Label label;
    bool whole = false;
};

Row rowOf(OpenFile& open, const BlocItem& entry) {
    Row row{.entry = entry, .frame = {}, .label = {}};
    row.frame = frameAt(open.window, open.map.shape, entry.offset, open.file.size(), &row.label);
    row.whole = row.frame.fits && row.frame.id == entry.id;
    return row;
}

/// Appends a number at the right of a column.
void appendRight(std::string& line, std::uint32_t number, std::size_t width) {
    std::array<char, 10> digits{};
    const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    const auto size = static_cast<std::size_t>(end - digits.data());
    line.append(width > size ? width - size : 0, ' ');
    line.append(digits.data(), size);
}

void appendRow(std::string& line, const Row& row) {
    appendRight(line, row.entry.id, 11);
    appendRight(line, row.entry.offset, 11);
    if (!row.whole) {
        line += ' ' + say(Text::notWhole) + '\n';
        return;
    }
    appendRight(line, row.frame.length, 11);
    appendRight(line, row.label.version, 9);
    appendRight(line, row.label.recordVersion, 9);
    line += "  ";
    line += visible(toolbox::toUtf8(row.label.description));
    line += '\n';
}

Json rowJson(const Row& row) {
    const JsonMember id{"id", std::uint64_t{row.entry.id}};
    const JsonMember offset{"offset", std::uint64_t{row.entry.offset}};
    if (!row.whole) return jsonObject({id, offset, {"whole", false}});
    return jsonObject({id,
                       offset,
                       {"whole", true},
                       {"length", std::uint64_t{row.frame.length}},
                       {"version", std::uint64_t{row.label.version}},
                       {"recordVersion", std::uint64_t{row.label.recordVersion}},
                       {"description", toolbox::toUtf8(row.label.description)}});
}

/// The positions of the entries in the order asked for. Lengths and descriptions are read for it.
std::vector<std::uint32_t> ordered(OpenFile& open, const Options& options) {
    const std::vector<BlocItem>& entries = open.index().entries;
    std::vector<std::uint32_t> order(entries.size());
    std::iota(order.begin(), order.end(), 0u);
    if (options.order == Order::id)
        std::ranges::stable_sort(order, {}, [&](std::uint32_t i) { return entries[i].id; });
    if (options.order == Order::length) {
        std::vector<std::uint32_t> lengths;
        lengths.reserve(entries.size());
        for (const BlocItem& entry : entries) lengths.push_back(rowOf(open, entry).frame.length);
        std::ranges::stable_sort(order, {}, [&](std::uint32_t i) { return lengths[i]; });
    }
    if (options.order == Order::description) {
        std::vector<std::string> texts;
        texts.reserve(entries.size());
        for (const BlocItem& entry : entries) texts.push_back(rowOf(open, entry).label.description);
        std::ranges::stable_sort(order, {},
                                 [&](std::uint32_t i) -> const std::string& { return texts[i]; });
    }
    if (options.reverse) std::ranges::reverse(order);
    return order;
}

/// 16 bytes in hexadecimal and, where they are printable, as characters of Windows-1252.
std::string dumpLine(std::uint64_t offset, std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    constexpr std::size_t kBytes = 16;
    std::string line;
    for (int shift = 28; shift >= 0; shift -= 4) line += kDigits[(offset >> shift) & 15];
    std::string text;
    for (std::size_t i = 0; i < kBytes; ++i) {
        if (i % 8 == 0) line += ' ';
        if (i >= bytes.size()) {
            line += "   ";
            continue;
        }
        const auto byte = static_cast<unsigned char>(bytes[i]);
        line += {' ', kDigits[byte >> 4], kDigits[byte & 15]};
        text += byte >= 0x20 && (byte < 0x7F || byte >= 0xA0) ? bytes[i] : '.';
    }
    return line + "  |" + toolbox::toUtf8(text) + "|\n";
}

const BlocItem& entryOf(const OpenFile& open, std::uint32_t id) {
    const auto& entries = open.index().entries;
    const auto entry = std::ranges::find(entries, id, &BlocItem::id);
    if (entry == entries.end())
        throw Failure(Text::noSuchBlock, {nameOf(open.file.path()), std::to_string(id)});
    return *entry;
}

/// Hands the data of a block over in pieces of a multiple of 16 bytes but for the last.
template <class Take>
void eachPiece(OpenFile& open, const Frame& frame, Take take) {
    constexpr std::uint32_t kPiece = 64 * 1024;
    const std::uint64_t start = frame.offset + open.map.shape.head;
    for (std::uint32_t done = 0; done < frame.length;) {
        const std::uint32_t n = std::min(kPiece, frame.length - done);
        const char* bytes = open.window.at(start + done, n);
        if (!bytes) throw Failure(Text::shortened, {nameOf(open.file.path())});
        take(done, std::string_view(bytes, n));
        stopIfUnread();
        done += n;
    }
}

}  // namespace

int info(const Options& options) {
    const OpenFile open(options.input);
    const bool indexed = open.map.index && open.map.index->isWhole() && open.map.index->atItsPlace;
    if (options.json)
        print(infoJson(open, indexed).text + "\n");
    else
        printInfo(open);
    const bool fits =
        !open.map.checksums || open.map.checksums->state == TarvFileRead::ChecksumsCurrent;
    const bool sound = open.map.header.faults.empty() && !open.map.formatDiffers() && fits;
    return indexed && sound ? kSound : kFindings;
}

int list(const Options& options) {
    OpenFile open(options.input);
    const std::vector<BlocItem>& entries = open.index().entries;
    bool sound = open.index().atItsPlace && !open.map.formatDiffers();
    std::size_t shown = 0;
    std::string line;
    const auto show = [&](const BlocItem& entry) {
        const Row row = rowOf(open, entry);
        sound = sound && row.whole;
        line.clear();
        if (options.json)
            line = (shown > 0 ? ",\n " : "\n ") + rowJson(row).text;
        else
            appendRow(line, row);
        print(line);
        stopIfUnread();
        ++shown;
    };
    print(options.json ? "{\"blocks\":[" : say(Text::listHead) + "\n");
    if (options.order == Order::file && !options.reverse)
        for (const BlocItem& entry : entries) show(entry);
    else
        for (const std::uint32_t i : ordered(open, options)) show(entries[i]);
    if (options.json)
        print("]}\n");
    else
        print(say(Text::listFoot, {grouped(entries.size())}) + "\n");
    return sound ? kSound : kFindings;
}

int dump(const Options& options) {
    OpenFile open(options.input);
    // As the library does: the terminator's value does not matter.
    const Row row = rowOf(open, entryOf(open, options.id));
    if (!row.whole) static_cast<void>(open.block(row.entry));
    const Frame& frame = row.frame;
    if (options.raw == "-") {
        eachPiece(open, frame, [](std::uint32_t, std::string_view bytes) { print(bytes); });
    } else if (options.raw) {
        checkTarget(pathOf(*options.raw), options.input, options.force);
        OutputFile out(pathOf(*options.raw), open.file.access(), options.force, open.watch());
        out.copy(open.file, frame.offset + open.map.shape.head, frame.length);
        out.finish();
    } else {
        eachPiece(open, frame, [](std::uint32_t offset, std::string_view bytes) {
            for (std::size_t i = 0; i < bytes.size(); i += 16)
                print(dumpLine(offset + i, bytes.substr(i, 16)));
        });
    }
    return frame.terminated ? kSound : kFindings;
}

}  // namespace tbfile
