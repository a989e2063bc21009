// Makes, saves and compares blocks, and builds block files of any format version byte by byte.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "toolbox/block_files.h"

namespace block_kit {

struct Block {
    std::uint32_t id;
    std::string data;
    std::string description = "";
    std::uint32_t version = 210;
    std::uint32_t recordVersion = 200;

    bool operator==(const Block&) const = default;
};

inline TarvBlocFile made(const Block& block) {
    TarvBlocFile out;
    out.setID(block.id);
    out.setDescription(block.description);
    out.setVersion(block.version);
    out.setVersionVarrec(block.recordVersion);
    out.writeString(block.data.data(), static_cast<int>(block.data.size()));
    return out;
}

inline Block seen(const TarvBlocFile& block) {
    return {static_cast<std::uint32_t>(block.getID()),
            {block.getPData(), block.getLen()},
            block.getDescription().str(),
            block.getVersion(),
            block.getVersionVarrec()};
}

/// Opens, writes, commits and closes; 1 when all of it succeeded.
inline int save(const std::string& name, const std::vector<Block>& blocks, bool safely = false) {
    TarvFileWrite file;
    file.setSafeSave(safely);
    int result = file.open(name.c_str());
    for (const Block& block : blocks) result &= file.writeBloc(made(block));
    result &= file.commit();
    return result & file.close();
}

/// What a file gives for these identifiers; nothing when it does not open.
inline std::vector<Block> fetched(const std::string& name, const std::vector<Block>& wanted) {
    TarvFileRead file;
    std::vector<Block> found;
    if (!file.open(name.c_str())) return found;
    for (const Block& block : wanted) {
        TarvBlocFile out;
        if (file.getBloc(block.id, out)) found.push_back(seen(out));
    }
    return found;
}

/// Blocks of many sizes, all of them full of a letter that stands for the number.
inline std::vector<Block> generation(std::uint32_t number) {
    std::vector<Block> blocks;
    for (std::uint32_t i = 0; i < 40; ++i)
        blocks.push_back(
            {1000 + i, std::string(1000 * i + 4, static_cast<char>('a' + number % 26))});
    return blocks;
}

inline std::string word(std::uint32_t value) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>((value >> shift) & 0xFF);
    return bytes;
}

inline std::uint32_t wordAt(std::string_view bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

inline std::string padded(std::string text, std::size_t size) {
    text.resize(size);
    return text;
}

inline std::string header(std::uint32_t format, std::uint32_t mask, std::uint32_t indexOffset) {
    std::string bytes = word(1) + word(mask) + padded("made by hand", 128) + word(2451545) +
                        word(2451546) + word(0xFFFFFFFF) + word(indexOffset);
    if (format != 100) bytes += word(format);
    return bytes + word(0xFFFFFFFF);
}

inline std::string record(std::uint32_t format, const Block& block) {
    std::string bytes = word(block.id) + padded(block.description, format >= 210 ? 128 : 64) +
                        word(static_cast<std::uint32_t>(block.data.size())) + block.data;
    if (format >= 200) bytes += word(block.version);
    if (format >= 210) bytes += word(block.recordVersion);
    return bytes + word(0xFFFFFFFF);
}

/// Whether a block stands in the bytes of a file, all of it but its terminator. What follows the
/// text in the field of its description does not count.
inline bool standsIn(std::string_view bytes, const Block& block) {
    const std::uint32_t format = wordAt(bytes, 152) == 0xFFFFFFFF ? 100 : wordAt(bytes, 152);
    const std::string whole = record(format, block);
    const std::string start = whole.substr(0, 4 + block.description.size());
    const std::size_t length = format >= 210 ? 132 : 68;
    const std::string rest = whole.substr(length, whole.size() - 4 - length);
    for (std::size_t at = bytes.find(start); at != bytes.npos; at = bytes.find(start, at + 1))
        if (bytes.substr(std::min(at + length, bytes.size())).starts_with(rest)) return true;
    return false;
}

/// A whole file as a writer of that format version left it.
inline std::string fileOf(std::uint32_t format, const std::vector<Block>& blocks) {
    const std::size_t start = format == 100 ? 156 : 160;
    std::string body;
    std::string entries;
    for (const Block& block : blocks) {
        entries += word(block.id) + word(static_cast<std::uint32_t>(start + body.size()));
        body += record(format, block);
    }
    const auto indexOffset = static_cast<std::uint32_t>(start + body.size());
    return header(format, 1, indexOffset) + body + record(format, {0xFFFFFFEF, entries, "index"});
}

}  // namespace block_kit
