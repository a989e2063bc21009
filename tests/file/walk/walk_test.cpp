// What a walk through damaged files finds: every block whose bytes are intact, and none that was
// never there.
#include <gtest/gtest.h>

#include <map>

#include "corpus.h"
#include "truth.h"
#include "walked.h"

using namespace toolbox;
using corpus::Maker;
using corpus::Original;
using corpus::Record;

namespace {

std::vector<WalkFinding> found(const std::string& bytes) {
    const corpus::Walked walked(bytes);
    EXPECT_TRUE(walked.isGapless());
    return walked.blocks();
}

std::string shown(const std::vector<WalkFinding>& blocks) {
    std::string text;
    for (const WalkFinding& f : blocks)
        text += " " + std::to_string(f.frame.id) + "@" + std::to_string(f.frame.offset) + "-" +
                std::to_string(f.frame.end) + "/" + std::to_string(f.doubts);
    return text;
}

const Record* recordAt(const Original& original, std::uint64_t from) {
    for (const Record& record : original.records)
        if (record.from == from) return &record;
    return nullptr;
}

/// How the blocks that were found fall short; empty when they do not.
std::string fault(const Original& original, const std::string& damaged, bool mayInvent) {
    const std::vector<WalkFinding> blocks = found(damaged);
    const auto isFound = [&](const Record& record) {
        return std::ranges::any_of(blocks, [&](const WalkFinding& f) {
            return f.frame.offset == record.from && f.frame.end == record.to &&
                   f.frame.id == record.id;
        });
    };
    for (const Record& record : original.records) {
        const std::size_t n = record.to - record.from;
        const bool intact = damaged.size() >= record.to &&
                            damaged.compare(record.from, n, original.bytes, record.from, n) == 0;
        if (intact && !isFound(record))
            return "lost " + std::to_string(record.id) + ":" + shown(blocks);
    }
    for (const WalkFinding& f : blocks) {
        const Record* record = recordAt(original, f.frame.offset);
        // Of what stood in a block whose head or end is gone nothing tells that it was data.
        if (!record && mayInvent && f.doubts & (kFoundBySearch | kNotIndexed)) continue;
        if (!record) return "invented " + std::to_string(f.frame.id) + ":" + shown(blocks);
        // The identifier of a block that no index names has no second witness.
        const bool asWritten = record->to == f.frame.end &&
                               (record->id == f.frame.id || f.evidence != Evidence::index);
        if (!asWritten && f.doubts == 0)
            return "unmarked " + std::to_string(f.frame.id) + ":" + shown(blocks);
    }
    return {};
}

class FileWalkCorpus : public testing::TestWithParam<Original> {
  protected:
    void check(const std::string& damaged, const std::string& what, bool mayInvent = false) {
        ++cases_;
        const std::string wrong = fault(GetParam(), damaged, mayInvent);
        if (wrong.empty()) return;
        if (++faults_ <= 10) ADD_FAILURE() << what << ": " << wrong;
    }
    void TearDown() override { EXPECT_EQ(faults_, 0) << "of " << cases_ << " cases"; }

    const std::string& whole() { return GetParam().bytes; }

  private:
    int cases_ = 0;
    int faults_ = 0;
};

TEST_P(FileWalkCorpus, Whole) {
    check(whole(), "whole");
    for (const WalkFinding& f : found(whole())) EXPECT_EQ(f.doubts, 0u) << f.frame.offset;
}

TEST_P(FileWalkCorpus, CutOff) {
    const auto cut = [&](std::size_t n) {
        // The length of a block that the file ends in may as well be what is wrong.
        check(whole().substr(0, n), "cut at " + std::to_string(n), true);
    };
    for (std::size_t n = 160; n < whole().size(); n += 3) cut(n);
    for (std::size_t n = whole().find("\xFF\xFF\xFF\xFF", 160); n < whole().size();
         n = whole().find("\xFF\xFF\xFF\xFF", n + 1))
        cut(n + 4);
}

TEST_P(FileWalkCorpus, BitFlipped) {
    const auto flip = [&](std::size_t at, std::size_t bit) {
        std::string bytes = whole();
        bytes[at] = static_cast<char>(bytes[at] ^ (1 << bit));
        check(bytes, "bit " + std::to_string(bit) + " of " + std::to_string(at));
    };
    for (std::size_t at = 0; at < whole().size(); ++at) flip(at, at % 8);
    // Where a block's length stands depends on the format; its words are all flipped bit by bit.
    for (const Record& record : GetParam().records)
        for (const std::size_t word : {std::size_t{0}, std::size_t{68}, std::size_t{132}})
            for (std::size_t bit = 0; bit < 32; ++bit)
                flip(std::min(record.from + word + bit / 8, whole().size() - 1), bit % 8);
}

TEST_P(FileWalkCorpus, Torn) {
    constexpr std::size_t kSector = 512;
    std::uint32_t chance = 1;
    for (std::size_t at = 0; at < whole().size(); at += 128)
        for (const char fill : {'\0', '\xFF', '?', '~'}) {
            std::string bytes = whole();
            for (std::size_t i = at; i < std::min(at + kSector, bytes.size()); ++i) {
                chance = chance * 1664525 + 1013904223;
                bytes[i] = fill == '~' ? static_cast<char>(chance >> 24) : fill;
            }
            check(bytes,
                  std::string("torn at ") + std::to_string(at) + " " +
                      std::to_string(static_cast<int>(fill)),
                  !GetParam().hasIndex);
        }
}

INSTANTIATE_TEST_SUITE_P(Files, FileWalkCorpus, testing::ValuesIn(corpus::originals()),
                         [](const auto& original) {
                             std::string name = original.param.name;
                             std::ranges::replace(name, ' ', '_');
                             return name;
                         });

/// Blocks of a file whose identifiers are 1, 2, 3 and so on, all with data of this length.
Maker equalBlocks(std::uint32_t format, std::uint32_t count, std::size_t length) {
    Maker file(std::to_string(format), format);
    for (std::uint32_t id = 1; id <= count; ++id)
        file.block(id, std::string(length, static_cast<char>('a' + id % 26)),
                   "b" + std::to_string(id));
    return file;
}

std::string changed(const Original& original, std::size_t at, const std::string& bytes) {
    std::string all = original.bytes;
    return all.replace(at, bytes.size(), bytes);
}

std::string repeated(const std::string& bytes, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i) all += bytes;
    return all;
}

/// What is wrong with the identifiers and doubts that were found; empty when nothing is.
std::string differs(const std::string& damaged,
                    const std::vector<std::pair<std::uint32_t, unsigned>>& expected) {
    std::vector<std::pair<std::uint32_t, unsigned>> blocks;
    for (const WalkFinding& f : found(damaged)) blocks.emplace_back(f.frame.id, f.doubts);
    return blocks == expected ? std::string() : shown(found(damaged));
}

constexpr std::size_t kLength = 132;  ///< of a block's data: where it stands in format 210

TEST(FileWalk, AnOverlongLengthDoesNotHideTheBlocksBehindIt) {
    const Original never = equalBlocks(210, 7, 100);
    const Original committed = equalBlocks(210, 7, 100).commit();
    for (const std::size_t damaged : {0u, 2u, 5u})
        for (const std::uint32_t length : {5000u, 70000u, 0x7FFFFF00u}) {
            const std::size_t at = never.records[damaged].from + kLength;
            EXPECT_EQ(fault(never, changed(never, at, block_kit::word(length)), false), "");
            const std::string cut = changed(committed, at, block_kit::word(length));
            EXPECT_EQ(fault(committed, cut.substr(0, committed.records.back().to), false), "");
        }
}

TEST(FileWalk, WhatLooksLikeBlocksInABlockThatTheFileEndsInIsDoubtful) {
    const std::string inner = block_kit::fileOf(210, {{5, "five"}, {6, "six"}, {7, "seven"}});
    const Original file = Maker("inner", 210).block(1, "one").block(2, inner);
    const std::size_t data = file.records[1].from + kLength + 4;
    // Up to where the second of its blocks ends.
    const std::size_t end = data + 160 + 2 * 148 + 4 + 3;
    EXPECT_EQ(
        differs(file.bytes.substr(0, end), {{1, 0}, {5, kFoundBySearch}, {6, kFoundBySearch}}), "");
    EXPECT_EQ(
        differs(file.bytes.substr(0, end + 50), {{1, 0}, {5, kFoundBySearch}, {6, kFoundBySearch}}),
        "");
}

TEST(FileWalk, AWholeBlockIsNotRepairedIntoAnother) {
    // 512 bytes each, so that one bit of a length takes it to the end of another block.
    const Original never = equalBlocks(210, 7, 364);
    const Original oldest = equalBlocks(100, 7, 436);
    const Original committed = equalBlocks(210, 7, 364).commit();
    for (const Original& file : {never, oldest, committed})
        for (const Record& record : file.records)
            for (const char* fill : {"?\0", "\0\0", "\xFF\xFF"})
                EXPECT_EQ(fault(file, changed(file, record.from, repeated({fill, 2}, 68)), false),
                          "");
    Maker small("an empty block before", 210);
    const Original empty =
        small.block(1, std::string(364, 'a')).block(2, "").block(3, std::string(364, 'c'));
    EXPECT_EQ(fault(empty, changed(empty, empty.records[2].from, repeated({"?\0", 2}, 68)), false),
              "");
}

TEST(FileWalk, ALengthThatTakesABlockToTheEndOfAnotherIsNoticed) {
    for (const Original& file :
         {Original(equalBlocks(210, 9, 364)), Original(equalBlocks(150, 9, 436)),
          Original(equalBlocks(210, 9, 364).commit())})
        for (const Record& record : file.records)
            for (unsigned bit = 0; bit < 32; ++bit) {
                const std::size_t at = record.from + (file.name == "150" ? 68 : kLength) + bit / 8;
                const char flipped = static_cast<char>(file.bytes[at] ^ (1 << bit % 8));
                EXPECT_EQ(fault(file, changed(file, at, std::string(1, flipped)), false), "")
                    << record.id << ' ' << bit;
            }
}

TEST(FileWalk, ABlockIsFoundWithoutTheTerminatorBeforeIt) {
    for (const std::uint32_t format : {210u, 205u, 150u, 100u}) {
        const Original file = equalBlocks(format, 9, 100);
        for (std::size_t i = 0; i + 1 < file.records.size(); ++i) {
            std::string bytes = file.bytes;
            const Record& record = file.records[i];
            for (const char fill : {'?', '\0', '\xFF'}) {
                bytes.replace(record.from, record.to - record.from, record.to - record.from, fill);
                EXPECT_EQ(fault(file, bytes, false), "") << format << ' ' << i;
            }
        }
        // Also one that has nothing undamaged beside it.
        std::string islands = file.bytes;
        for (const std::size_t i : {1u, 3u, 5u}) {
            const Record& record = file.records[i];
            islands.replace(record.from, record.to - record.from, record.to - record.from, '?');
        }
        EXPECT_EQ(fault(file, islands, false), "") << format;
    }
}

TEST(FileWalk, AnIndexWithImpossibleEntriesDoesNotHideBlocks) {
    const Original file = equalBlocks(210, 20, 100).commit();
    const std::size_t entries = file.records.back().to + kLength + 4;
    for (const char fill : {'\0', '?', '\xFF'}) {
        std::string bytes = changed(file, entries + 8 * 11, std::string(8 * 9, fill));
        bytes.replace(file.records[10].from + kLength, 4, "????");
        EXPECT_EQ(fault(file, bytes, false), "") << static_cast<int>(fill);
    }
    // Blocks that lead to the next known place are kept even where the index looks undamaged.
    std::string shorter = file.bytes.substr(0, file.records.back().to);
    std::string index;
    for (std::size_t i = 0; i < 11; ++i)
        index += block_kit::word(file.records[i].id) +
                 block_kit::word(static_cast<std::uint32_t>(file.records[i].from));
    shorter += block_kit::record(210, {0xFFFFFFEF, index, "Master index"});
    shorter.replace(file.records[10].from + kLength, 4, "????");
    EXPECT_EQ(fault(file, shorter, false), "");
}

TEST(FileWalk, AnEntryThatNothingConfirmsIsNoCertainty) {
    const Original file = equalBlocks(210, 5, 300).commit();
    const std::size_t inside = file.records[3].from + 200;
    const auto blocksFound = [](const std::string& bytes) {
        std::string ids;
        for (const WalkFinding& f : found(bytes)) ids += std::to_string(f.frame.id);
        return ids;
    };
    std::string less = file.bytes;
    EXPECT_EQ(blocksFound(less.erase(inside, 100)), "1235");
    std::string more = file.bytes;
    EXPECT_EQ(blocksFound(more.insert(inside, 100, 'i')), "12345");
    // Both, so that the index is at its place again.
    std::string moved = file.bytes;
    moved.erase(file.records[1].from + 200, 100).insert(file.records[3].from + 100, 100, 'i');
    EXPECT_NE(blocksFound(moved).find('3'), std::string::npos) << blocksFound(moved);
}

TEST(FileWalk, TheHeadersFormatComesFirst) {
    const std::string inner =
        block_kit::fileOf(210, {{51, "x"}, {52, "x"}, {53, "x"}, {54, "x"}, {55, "x"}});
    const Original file = Maker("", 205).block(1, "one").block(2, inner).block(3, "three");
    EXPECT_EQ(fault(file, changed(file, file.records[0].from, std::string(72, '?')), false), "");
    const Original one = Maker("", 205).block(1, "one block", "alone");
    EXPECT_EQ(fault(one, changed(one, 152, "????????"), false), "");
}

/// Counts what is read.
class Counted final : public FileSource {
  public:
    explicit Counted(std::string bytes) : bytes_(std::move(bytes)) {}
    [[nodiscard]] std::uint64_t size() const override { return bytes_.size(); }
    std::size_t readAt(std::uint64_t offset, char* buffer, std::size_t n) const override {
        const std::size_t got = bytes_.readAt(offset, buffer, n);
        read += got;
        return got;
    }
    mutable std::uint64_t read = 0;

  private:
    corpus::Bytes bytes_;
};

/// The bytes that a walk reads, each counted as often as it is read.
std::uint64_t readFor(const std::string& bytes) {
    const Counted source(bytes);
    EXPECT_TRUE(corpus::Walked(source).isGapless());
    return source.read;
}

TEST(FileWalk, DamagedBytesThatLookLikeMoreThanTheyAre) {
    Maker hardMaker("hard", 205);
    const Original hard = corpus::addHardBlocks(hardMaker, 205);
    const Original committed = hardMaker.commit();
    // Ones over the format version look like a header of version 100.
    EXPECT_EQ(fault(committed, changed(committed, 91, std::string(134, '\xFF')), true), "");
    // A block whose head is intact, with a block as data and damage on both sides.
    const Record& seven = hard.records[6];
    const Record& nine = hard.records[8];
    std::string around = changed(hard, seven.from + 68, "?");
    around[nine.from - 2] = '?';
    EXPECT_EQ(fault(hard, around, true), "");
    // Ones that end in zeros.
    const Original zeros =
        Maker("zeros", 210).block(1, "one").block(2, std::string(500, '\0')).block(3, "three");
    const Record& two = zeros.records[1];
    EXPECT_EQ(fault(zeros, changed(zeros, two.from - 100, std::string(400, '\xFF')), true), "");
    // A length that ends at the end of the index.
    const Original last = equalBlocks(210, 6, 100).commit();
    const auto over = static_cast<std::uint32_t>(last.bytes.size() - last.records[5].to + 100);
    const std::string longer = changed(last, last.records[5].from + kLength, block_kit::word(over));
    EXPECT_EQ(fault(last, longer, false), "");
    // One block that is all that is left, of every format.
    for (const std::uint32_t format : {210u, 205u, 150u, 100u}) {
        const Original alone = equalBlocks(format, 2, 30);
        const std::size_t end = alone.records[0].to;
        EXPECT_EQ(fault(alone, changed(alone, 85, std::string(end - 85, '?')), true), "") << format;
    }
}

TEST(FileWalk, ReadsNoMoreForEachBlockOfALargerFile) {
    const std::string garbage = repeated({"?\0", 2}, 72);
    const auto twoPlaces = [&](const Original& file) {
        std::string bytes = changed(file, 160, garbage);
        return bytes.replace(file.records[file.records.size() - 2].from, garbage.size(), garbage);
    };
    const auto noTerminators = [](const Original& file) {
        std::string bytes = file.bytes;
        for (const Record& record : file.records) bytes.replace(record.to - 4, 4, "????");
        return bytes;
    };
    const auto otherIds = [](const Original& file) {
        std::string bytes = file.bytes;
        for (const Record& record : file.records) bytes[record.from + 2] ^= 1;
        return bytes;
    };
    constexpr std::uint32_t kFew = 5000;
    for (const std::size_t length : {0u, 100u, 1000u}) {
        const auto of = [&](std::uint32_t count, const auto& damage) {
            return readFor(damage(equalBlocks(210, count, length)));
        };
        const auto ofIndexed = [&](std::uint32_t count, const auto& damage) {
            return readFor(damage(equalBlocks(210, count, length).commit()));
        };
        EXPECT_LT(of(2 * kFew, twoPlaces), 3 * of(kFew, twoPlaces)) << length;
        EXPECT_LT(of(2 * kFew, noTerminators), 3 * of(kFew, noTerminators)) << length;
        EXPECT_LT(ofIndexed(2 * kFew, twoPlaces), 3 * ofIndexed(kFew, twoPlaces)) << length;
        EXPECT_LT(ofIndexed(2 * kFew, noTerminators), 3 * ofIndexed(kFew, noTerminators)) << length;
        EXPECT_LT(ofIndexed(2 * kFew, otherIds), 3 * ofIndexed(kFew, otherIds)) << length;
    }
}

TEST(FileWalk, LosesAndInventsNothingInTheDamageThatMatters) {
    std::uint32_t seed = 7;
    const auto chance = [&](std::size_t below) {
        seed = seed * 1664525 + 1013904223;
        return (seed >> 8) % below;
    };
    // All but bytes of chance: those can make an index without entries into a block.
    for (const std::size_t kind : {0u, 1u, 3u, 4u, 5u, 6u, 8u})
        for (const Original& original : corpus::originals())
            for (int i = 0; i < 5; ++i) {
                corpus::Damaged file(original);
                corpus::damage(file, original, kind, chance);
                const corpus::Truth truth = corpus::truthOf(original, file);
                EXPECT_TRUE(truth.lost.empty() && truth.invented.empty())
                    << original.name << ", " << corpus::kDamages[kind] << i << truth.told;
            }
}

std::uint32_t formatOf(const std::string& bytes) {
    const corpus::Bytes source(bytes);
    return TarvFileWalk(source).map().shape.format;
}

TEST(FileWalk, AHeaderThatLooksUndamagedIsBelieved) {
    // Length 12 read as 16 makes a whole block of format version 150.
    const Original one = Maker("", 205).block(1, "twelve bytes").commit();
    const std::string longer = changed(one, one.records[0].from + 68, block_kit::word(16));
    EXPECT_EQ(formatOf(longer), 205u);
    EXPECT_FALSE(corpus::Walked(longer).isSound());
    // The only block, its head damaged, holds a file of another format.
    const std::string inner = block_kit::fileOf(210, {{51, "x"}, {52, "x"}, {53, "x"}});
    const Original holder = Maker("", 205).block(1, inner).commit();
    const std::string headless = changed(holder, 160 + 10, std::string(62, '?'));
    EXPECT_EQ(formatOf(headless), 205u);
    // Its first sector is zeroed: the index at the end tells the layout.
    const std::string torn =
        changed(Maker("", 205).block(1, "a").block(2, inner).commit(), 0, std::string(512, '\0'));
    EXPECT_EQ(formatOf(torn), 200u);  // laid out like 205
}

TEST(FileWalk, ASupersededIndexDoesNotDisplaceWholeBlocks) {
    Maker maker("", 210);
    corpus::addHardBlocks(maker, 210).commit();
    const std::size_t old = Original(maker).records.back().to;
    const Original twice = maker.block(21, std::string(300, '\xFF')).block(22, "late").commit();
    EXPECT_EQ(fault(twice, changed(twice, old + kLength, block_kit::word(0xFFFFFFFF)), false), "");
}

TEST(FileWalk, EndsWhenAskedTo) {
    const Original file = equalBlocks(210, 20, 100).commit();
    const corpus::Bytes source(file.bytes);
    int told = 0;
    EXPECT_EQ(TarvFileWalk(source).run([&](const WalkFinding&) { return ++told < 3; }), 0);
    EXPECT_EQ(told, 3);
    const TarvFileWalk stopped(source, [](std::uint64_t) { return false; });
    EXPECT_EQ(stopped.run([](const WalkFinding&) { return true; }), 0);
}

TEST(FileReader, ReadsLittleMoreThanOnceForWhoGoesThroughBlocks) {
    for (const std::size_t length : {0u, 27u, 65u, 422u, 880u, 1500u}) {
        const Original original = equalBlocks(210, 3000, length).commit();
        const Counted source(original.bytes);
        FileReader file(source);
        const BlockShape shape;
        for (const Record& record : original.records) {
            const BlockFrame frame = frameAt(file, shape, record.from, source.size());
            EXPECT_EQ(labelOf(file, shape, frame).version, 3u);
        }
        EXPECT_LT(source.read, source.size() + source.size() / 4) << length;
    }
}

TEST(FileReader, GivesUpWhenTheFileBecameShorter) {
    class Short final : public FileSource {
      public:
        [[nodiscard]] std::uint64_t size() const override { return 8 * FileReader::kMost; }
        std::size_t readAt(std::uint64_t offset, char* buffer, std::size_t n) const override {
            if (offset >= FileReader::kMost) return 0;
            std::memset(buffer, 0, n);
            return n;
        }
    };
    const Short source;
    FileReader file(source, FileReader::Reads::everything);
    EXPECT_NE(file.at(0, 1), nullptr);
    EXPECT_EQ(file.at(5 * FileReader::kMost, 1), nullptr);
    EXPECT_TRUE(file.hasStopped());
    EXPECT_FALSE(file.finish());
}

}  // namespace
