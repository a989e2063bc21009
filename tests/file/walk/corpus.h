// Block files of every kind, and ways to damage them, for the tests of the walk.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "file/block/block_kit.h"
#include "support/temp_folder.h"
#include "toolbox/block_frames.h"

namespace corpus {

/// A file in memory, which counts the bytes that are read.
class Bytes final : public toolbox::FileSource {
  public:
    explicit Bytes(std::string bytes) : bytes_(std::move(bytes)) {}
    [[nodiscard]] std::uint64_t size() const override { return bytes_.size(); }
    std::size_t readAt(std::uint64_t offset, char* buffer, std::size_t n) const override {
        if (offset >= bytes_.size()) return 0;
        const std::size_t got = std::min(n, bytes_.size() - static_cast<std::size_t>(offset));
        std::memcpy(buffer, bytes_.data() + offset, got);
        read += got;
        return got;
    }
    mutable std::uint64_t read = 0;

  private:
    std::string bytes_;
};

struct Record {
    std::size_t from;
    std::size_t to;
    std::uint32_t id;
};

/// A whole file and where its blocks lie.
struct Original {
    std::string name;
    std::string bytes;
    std::vector<Record> records;
    bool hasIndex = true;
};

/// Writes a file step by step, as a program would that writes blocks and commits now and then.
class Maker {
  public:
    Maker(std::string name, std::uint32_t format) : format_(format) {
        made_.name = std::move(name);
        made_.bytes = block_kit::header(format, 0, 0);
        made_.hasIndex = false;
    }
    Maker& block(std::uint32_t id, const std::string& data, const std::string& text = "a block") {
        const std::string record = block_kit::record(format_, {id, data, text, 3, 200});
        const std::size_t at = made_.bytes.size();
        made_.records.push_back({at, at + record.size(), id});
        entries_ += block_kit::word(id) + block_kit::word(static_cast<std::uint32_t>(at));
        made_.bytes += record;
        return *this;
    }
    Maker& commit() {
        made_.bytes.replace(148, 4,
                            block_kit::word(static_cast<std::uint32_t>(made_.bytes.size())));
        made_.bytes += block_kit::record(format_, {0xFFFFFFEF, entries_, "Master index"});
        made_.hasIndex = true;
        return *this;
    }
    operator Original() const { return made_; }

  private:
    std::uint32_t format_;
    Original made_;
    std::string entries_;
};

/// Blocks that are hard on a search: runs of what ends a block, zeros, and block files as data.
inline Maker& addHardBlocks(Maker& file, std::uint32_t format) {
    using block_kit::record;
    const std::string inner = block_kit::fileOf(
        format, {{5, "inner five", "inner"}, {9, std::string(40, 'i')}, {11, "", "inner"}});
    std::string steps;
    for (std::uint32_t i = 0; i < 60; ++i) steps += block_kit::word(i % 3 ? 0xFFFFFFFF : i);
    return file.block(1, "ten bytes.")
        .block(2, std::string(301, '\xFF'), "all ones")
        .block(3, "")
        .block(4, inner, "a file in a file")
        .block(5, std::string(300, '\0'), std::string(format >= 210 ? 128 : 64, 'd'))
        .block(6, record(format, {77, "alone", "a record as data"}), "")
        .block(7, steps)
        .block(0xFFFFFFF0, "odd")
        .block(9, block_kit::word(0xFFFFFFFF) + record(format, {78, "beyond ones"}) + "more")
        .block(8, std::string(700, 'x'), "last");
}

/// Blocks of a file whose identifiers are 1, 2, 3 and so on, all with data of this length.
inline Maker equalBlocks(std::uint32_t format, std::uint32_t count, std::size_t length) {
    Maker file(std::to_string(format) + " equal", format);
    for (std::uint32_t id = 1; id <= count; ++id)
        file.block(id, std::string(length, static_cast<char>('a' + id % 26)),
                   "b" + std::to_string(id));
    return file;
}

/// Files of blocks of 512 bytes, so that one bit of a length takes it to the end of another block.
inline std::vector<Original> alignedOriginals() {
    std::vector<Original> all;
    for (const std::uint32_t format : {210u, 150u, 100u})
        all.push_back(equalBlocks(format, 6, 512 - block_kit::record(format, {1, ""}).size()));
    all.push_back(equalBlocks(210, 6, 512 - block_kit::record(210, {1, ""}).size()).commit());
    all.back().name += " committed";
    return all;
}

/// The blocks of a file of format 210 as a writer saves them with checksums, with a commit after
/// the first `early` of them and one at the end.
inline Original summed(const Original& plain, std::size_t early = 0) {
    const TempFolder folder;
    Original made{plain.name + " summed " + std::to_string(early), {}, {}};
    TarvFileWrite file;
    file.setChecksums(1);
    file.open((folder / "file").c_str());
    for (const Record& record : plain.records) {
        const char* at = plain.bytes.data() + record.from;
        const std::string text(at + 4, 128);
        file.writeBloc(block_kit::made({record.id,
                                        {at + 136, record.to - record.from - 148},
                                        text.substr(0, text.find('\0'))}));
        made.records.push_back(record);
        if (made.records.size() == early) file.commit();
    }
    file.commit();
    file.close();
    made.bytes = folder.read("file");
    std::size_t moved = 0;
    for (std::size_t i = 0; i < made.records.size(); ++i) {
        if (early > 0 && i == early) moved = 180 + 16 * (early + 1) + 148 + 8 * (early + 1);
        made.records[i].from += moved;
        made.records[i].to += moved;
    }
    return made;
}

inline std::vector<Original> summedOriginals() {
    Maker hard("hard", 210);
    const Original plain = addHardBlocks(hard, 210);
    return {summed(equalBlocks(210, 6, 364)), summed(plain), summed(plain, 3)};
}

inline std::vector<Original> originals() {
    std::vector<Original> all = alignedOriginals();
    for (const std::uint32_t format : {210u, 205u, 150u, 100u}) {
        const std::string name = std::to_string(format);
        Maker sound(name, format);
        all.push_back(addHardBlocks(sound, format).commit());
        Maker never(name + " never committed", format);
        all.push_back(addHardBlocks(never, format));
    }
    Maker twice("committed twice", 210);
    twice.block(21, "early").block(22, std::string(90, '\xFF')).commit();
    all.push_back(addHardBlocks(twice, 210).commit());
    Maker onward("written on after a commit", 210);
    addHardBlocks(onward, 210).commit();
    all.push_back(onward.block(21, "late").block(22, "later still").block(23, "last of all"));
    all.push_back(Maker("empty", 210).commit());
    for (const Original& each : summedOriginals()) all.push_back(each);
    all.push_back(summed(Maker("empty", 210)));
    return all;
}

}  // namespace corpus
