// What a walk through damaged files finds: every block whose bytes are intact, and none that was
// never there.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "corpus.h"
#include "walked.h"

using namespace toolbox;
using corpus::equalBlocks;
using corpus::Maker;
using corpus::Original;
using corpus::Record;

namespace {

bool isAt(const WalkFinding& found, const Record& record, std::size_t moved = 0) {
    return found.frame.offset == record.from + moved && found.frame.end == record.to + moved;
}

/// How the blocks that are found fall short; empty when they do not. Unless it `mayInvent`, no
/// block is told, be it with a doubt, where none was written.
std::string fault(const Original& original, const std::string& damaged, bool mayInvent) {
    const corpus::Walked walked(damaged);
    bool isGood = walked.isGapless();
    for (const WalkFinding& found : walked.blocks()) {
        bool isWritten = false, isStart = false;
        for (const Record& record : original.records) {
            isStart |= record.from == found.frame.offset;
            // The identifier of a block that no index names has no second witness.
            isWritten |= isAt(found, record) &&
                         (found.frame.id == record.id || found.evidence != Evidence::index);
        }
        const unsigned marks = isStart ? ~0u : kFoundBySearch | kNotIndexed;
        const bool isMarked = (found.doubts & marks) != 0;
        isGood &= (isWritten || isMarked) && (isStart || !isMarked || mayInvent);
    }
    for (const Record& record : original.records) {
        const std::size_t n = record.to - record.from;
        const bool isIntact = record.to <= damaged.size() &&
                              damaged.compare(record.from, n, original.bytes, record.from, n) == 0;
        isGood &= !isIntact || std::ranges::any_of(walked.blocks(), [&](const WalkFinding& found) {
            return isAt(found, record);
        });
    }
    return isGood ? std::string() : walked.isGapless() ? "found" + walked.shown() : "a gap";
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
    EXPECT_TRUE(corpus::Walked(whole()).isSound());
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

TEST_P(FileWalkCorpus, LosesNothingBesideBytesPutIn) {
    const std::size_t n = 5;
    std::vector<std::size_t> places;
    for (std::size_t at = 160; at < whole().size(); at += 37) places.push_back(at);
    for (const Record& record : GetParam().records)  // and within the terminators
        for (std::size_t k = 1; k < 4; ++k) places.push_back(record.to - k);
    for (const std::size_t at : places) {
        std::string bytes = whole();
        const corpus::Walked walked(bytes.insert(at, n, 'i'));
        const bool isTornEnd = std::ranges::any_of(GetParam().records, [&](const Record& record) {
            return record.to - 4 < at && at < record.to;
        });
        for (const Record& record : GetParam().records) {
            if (record.from < at && record.to > at) continue;
            // Before version 200 nothing tells a block that ends in ones from damaged bytes.
            const bool isOld = block_kit::wordAt(whole(), 152) - 200 > 10;
            if (isOld && isTornEnd && record.id == 4 && record.from < at + 4) continue;
            const std::size_t moved = record.from < at ? 0 : n;
            EXPECT_TRUE(std::ranges::any_of(
                walked.blocks(),
                [&](const WalkFinding& found) { return isAt(found, record, moved); }))
                << record.id << ", put in at " << at << walked.shown();
        }
    }
}

using AlignedFile = FileWalkCorpus;

TEST_P(AlignedFile, Overwritten) {
    // Whole blocks, or heads alone; each, or every second, so that none has an intact one beside
    // it.
    for (const std::string& fill : {std::string("?\0", 2), std::string("\xFF")})
        for (const std::size_t most : {std::size_t{136}, whole().size()}) {
            std::string islands = whole();
            bool isOdd = false;
            for (const Record& record : GetParam().records) {
                const std::size_t n = std::min(most, record.to - record.from);
                const std::string gone = repeated(fill, n).substr(0, n);
                check(changed(GetParam(), record.from, gone), "gone " + std::to_string(record.id));
                if (isOdd) islands.replace(record.from, n, gone);
                isOdd = !isOdd;
            }
            check(islands, "every second");
        }
}

std::string nameOf(const testing::TestParamInfo<Original>& original) {
    std::string name = original.param.name;
    std::ranges::replace(name, ' ', '_');
    return name;
}
INSTANTIATE_TEST_SUITE_P(Files, FileWalkCorpus, testing::ValuesIn(corpus::originals()), nameOf);
INSTANTIATE_TEST_SUITE_P(Files, AlignedFile, testing::ValuesIn(corpus::alignedOriginals()), nameOf);

constexpr std::size_t kLength = 132;  ///< of a block's data: where it stands in format 210

TEST(FileWalk, WhatLooksLikeBlocksInABlockThatTheFileEndsInIsDoubtful) {
    const std::string inner = block_kit::fileOf(210, {{5, "five"}, {6, "six"}, {7, "seven"}});
    const Original file = Maker("inner", 210).block(1, "one").block(2, inner);
    const std::size_t data = file.records[1].from + kLength + 4;
    // Up to where the second of its blocks ends.
    const std::size_t end = data + 160 + 2 * 148 + 4 + 3;
    for (const std::size_t size : {end, end + 50}) {
        std::vector<std::pair<std::uint32_t, unsigned>> blocks;
        const corpus::Walked walked(file.bytes.substr(0, size));
        for (const WalkFinding& f : walked.blocks()) blocks.emplace_back(f.frame.id, f.doubts);
        const std::vector<std::pair<std::uint32_t, unsigned>> expected = {
            {1, 0}, {5, kFoundBySearch}, {6, kFoundBySearch}};
        EXPECT_EQ(blocks, expected);
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
}

TEST(FileWalk, AnEntryThatNothingConfirmsIsNoCertainty) {
    const Original file = equalBlocks(210, 5, 300).commit();
    const std::size_t inside = file.records[3].from + 200;
    const auto blocksFound = [](const std::string& bytes) {
        std::string ids;
        const corpus::Walked walked(bytes);
        for (const WalkFinding& f : walked.blocks()) ids += std::to_string(f.frame.id);
        return ids;
    };
    std::string less = file.bytes;
    EXPECT_EQ(blocksFound(less.erase(inside, 100)), "1235");
    std::string more = file.bytes;
    EXPECT_EQ(blocksFound(more.insert(inside, 100, 'i')), "12345");
}

/// A walk's findings in short: blocks that are proved by their identifiers, with "+" where they are
/// misplaced, "*" where the frame is not theirs, "?" where there is a doubt, "." where the list
/// does not name them; "-" and the identifier of a block that is lost.
std::string toldOf(const std::string& bytes) {
    std::string told;
    const corpus::Walked walked(bytes);
    EXPECT_TRUE(walked.isGapless());
    for (const WalkFinding& found : walked.findings()) {
        const std::string id = found.id ? std::to_string(*found.id) : "";
        if (found.kind == WalkFinding::Kind::damaged) told += "-" + id + " ";
        if (found.kind != WalkFinding::Kind::block) continue;
        told += id + (found.isMisplaced ? "+" : "") + (found.isReframed ? "*" : "") +
                (found.doubts != 0 ? "?" : "") +
                (found.evidence == Evidence::checksum ? " " : ". ");
    }
    return told;
}

TEST(FileWalk, GoesByTheListOfChecksums) {
    const Original file = corpus::summed(equalBlocks(210, 6, 100));
    const auto from = [&](std::size_t id) { return file.records[id - 1].from; };
    const auto end = [&](std::size_t id) { return file.records[id - 1].to; };
    const std::size_t list = end(6), index = list + 180 + 16 * 7;
    using Damage = std::function<void(std::string&)>;
    const struct {
        const char* what;
        const char* told;
        Damage damage;
    } cases[] = {
        {"nothing", "1 2 3 4 5 6 ", [](std::string&) {}},
        {"data", "1 2 3? 4 5 6 ", [&](std::string& b) { b[from(3) + 140] ^= 1; }},
        {"description", "1 2 3? 4 5 6 ", [&](std::string& b) { b[from(3) + 5] ^= 1; }},
        {"identifier", "1 2 3* 4 5 6 ", [&](std::string& b) { b[from(3) + 1] ^= 1; }},
        {"length", "1 2 3* 4 5 6 ", [&](std::string& b) { b.replace(from(3) + 132, 4, "lost"); }},
        {"terminator", "1 2 3* 4 5 6 ", [&](std::string& b) { b.replace(end(3) - 4, 4, "lost"); }},
        {"length and data", "1 2 3*? 4 5 6 ",
         [&](std::string& b) { b.replace(from(3) + 132, 6, "damage"); }},
        {"head and data", "1 2 -3 4 5 6 ",
         [&](std::string& b) { b.replace(from(3), 140, std::string(140, '?')); }},
        {"two in a row", "1 2 -3 -4 5 6 ",
         [&](std::string& b) { b.replace(from(3), 400, std::string(400, '\0')); }},
        {"exchanged", "1 4+ 3 2+ 5 6 ",
         [&](std::string& b) {
             std::swap_ranges(b.begin() + static_cast<std::ptrdiff_t>(from(2)),
                              b.begin() + static_cast<std::ptrdiff_t>(end(2)),
                              b.begin() + static_cast<std::ptrdiff_t>(from(4)));
         }},
        {"moved within", "1 2*? - 3+ 4+ -5 6 ",
         [&](std::string& b) {
             b.erase(from(5) + 140, 5);
             b.insert(from(2) + 140, 5, 'i');
         }},
        {"no index", "1 2 3? 4 5 6 ",
         [&](std::string& b) {
             b[from(3) + 140] ^= 1;
             b.replace(index, b.size() - index, b.size() - index, '\0');
         }},
        {"neither index nor header", "1 2 3? 4 5 6 ",
         [&](std::string& b) {
             b[from(3) + 140] ^= 1;
             b.replace(index, b.size() - index, b.size() - index, '\0');
             b.replace(0, 156, 156, '?');
         }},
        {"list", "1. 2. 3. 4. 5. 6. ",
         [&](std::string& b) { b[from(3) + 140] ^= 1, b[list + 150] ^= 1; }},
        {"an outdated list", "1. 2. 3. 4. 5. 6. ",
         [&](std::string& b) {
             b[from(3) + 140] ^= 1;
             const std::string again = b.substr(index);
             b.replace(148, 4, block_kit::word(static_cast<std::uint32_t>(b.size())));
             b += again;
         }},
        {"written on", "1 2 -3 4 5 6 50. 3+ ",
         [&](std::string& b) {
             const std::string third = b.substr(from(3), end(3) - from(3));
             b.replace(from(3), 144, 144, '?');
             b += block_kit::record(210, {50, "late"}) + third;
         }},
    };
    for (const auto& [what, told, damage] : cases) {
        std::string bytes = file.bytes;
        damage(bytes);
        EXPECT_EQ(toldOf(bytes), told) << what;
    }
}

TEST(FileWalk, FindsABlockThatBeginsAByteAfterWhatLooksLikeOne) {
    // With the byte before it the second block looks like an empty one, too.
    Maker maker("late", 210);
    maker.block(1, std::string(100, 'a')).block(2, "").block(3, std::string(100, 'c'));
    const Original file = maker.block(4, "d").commit();
    std::string bytes = file.bytes;
    const Record &first = file.records[0], &second = file.records[1], &third = file.records[2];
    bytes[second.to - 5] = '\xFF';  // of the record's version
    bytes.replace(third.from, 140, 140, '?');
    bytes.erase(third.from + 10, 5);
    bytes.replace(first.to - 4, 4, "????").insert(first.from + 140, 5, 'i');
    const corpus::Walked walked(bytes);
    EXPECT_TRUE(std::ranges::any_of(walked.blocks(), [&](const WalkFinding& found) {
        return isAt(found, second, 5) && found.frame.id == 2;
    })) << walked.shown();
}

/// The bytes that a walk reads, each counted as often as it is read.
std::uint64_t readFor(const std::string& bytes) {
    const corpus::Bytes source(bytes);
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
    using Damage = std::function<void(std::string&, const Record&, bool)>;
    const std::pair<const char*, Damage> damages[] = {
        {"garbage at two places",
         [&](std::string& bytes, const Record& record, bool isAtAnEnd) {
             if (isAtAnEnd) bytes.replace(record.from, garbage.size(), garbage);
         }},
        {"other identifiers",
         [](std::string& bytes, const Record& record, bool) { bytes[record.from + 2] ^= 1; }},
    };
    const auto of = [](const Damage& damage, std::uint32_t count, std::size_t length,
                       bool indexed) {
        Maker maker = equalBlocks(210, count, length);
        const Original file = indexed ? maker.commit() : maker;
        std::string bytes = file.bytes;
        for (const Record& record : file.records)
            damage(bytes, record, record.id == 1 || record.id == count - 1);
        return readFor(bytes);
    };
    for (const auto& [what, damage] : damages)
        for (const std::size_t length : {0u, 1000u})
            for (const bool indexed : {false, true})
                EXPECT_LT(of(damage, 10000, length, indexed), 3 * of(damage, 5000, length, indexed))
                    << what << ' ' << length << ' ' << indexed;
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
