// What a walk through damaged files finds: every block whose bytes are intact, and none that was
// never there.
#include <gtest/gtest.h>

#include <map>

#include "corpus.h"
#include "walk.h"

using namespace tbfile;
using corpus::Original;
using corpus::Record;

namespace {

class Blocks final : public Walker {
  public:
    explicit Blocks(std::uint64_t start) : told(start) {}
    void block(const Found& found) override {
        blocks.push_back(found);
        pass(found.frame.offset, found.frame.end);
    }
    void index(const Frame& frame) override { pass(frame.offset, frame.end); }
    void loss(const Loss& loss) override { pass(loss.from, loss.to); }

    std::vector<Found> blocks;
    std::uint64_t told;
    bool gapless = true;

  private:
    void pass(std::uint64_t from, std::uint64_t to) {
        gapless = gapless && from == told && to > from;
        told = to;
    }
};

std::vector<Found> found(const std::string& bytes) {
    const corpus::Bytes source(bytes);
    Window file(source);
    Window probe(source);
    const Map map = readMap(file, probe);
    Blocks walker(map.shape.start());
    Walk(file, probe, map, walker).run();
    EXPECT_TRUE(walker.gapless &&
                walker.told == std::max<std::uint64_t>(bytes.size(), map.shape.start()))
        << "every byte belongs to one block, index or loss";
    return walker.blocks;
}

std::string shown(const std::vector<Found>& blocks) {
    std::string text;
    for (const Found& f : blocks)
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
    const std::vector<Found> blocks = found(damaged);
    const auto isFound = [&](const Record& record) {
        return std::ranges::any_of(blocks, [&](const Found& f) {
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
    for (const Found& f : blocks) {
        const Record* record = recordAt(original, f.frame.offset);
        // Of what stood in a block whose head is gone nothing tells that it was data.
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

class RecoverCorpus : public testing::TestWithParam<Original> {
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

TEST_P(RecoverCorpus, Whole) {
    check(whole(), "whole");
    for (const Found& f : found(whole())) EXPECT_EQ(f.doubts, 0u) << f.frame.offset;
}

TEST_P(RecoverCorpus, CutOff) {
    const auto cut = [&](std::size_t n) {
        check(whole().substr(0, n), "cut at " + std::to_string(n));
    };
    for (std::size_t n = 160; n < whole().size(); n += 3) cut(n);
    for (std::size_t n = whole().find("\xFF\xFF\xFF\xFF", 160); n < whole().size();
         n = whole().find("\xFF\xFF\xFF\xFF", n + 1))
        cut(n + 4);
}

TEST_P(RecoverCorpus, BitFlipped) {
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

TEST_P(RecoverCorpus, Torn) {
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

INSTANTIATE_TEST_SUITE_P(Files, RecoverCorpus, testing::ValuesIn(corpus::originals()),
                         [](const auto& original) {
                             std::string name = original.param.name;
                             std::ranges::replace(name, ' ', '_');
                             return name;
                         });

}  // namespace
