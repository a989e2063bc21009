// What a walk through a file tells of.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "corpus.h"
#include "walk.h"

namespace corpus {

class Walked final : public tbfile::Walker {
  public:
    explicit Walked(const std::string& bytes) : Walked(Bytes(bytes)) {}
    explicit Walked(const tbfile::Source& source) {
        tbfile::Window file(source);
        tbfile::Window probe(source);
        const tbfile::Map map = tbfile::readMap(file, probe);
        told_ = map.shape.start();
        const auto end = std::max(source.size(), told_);
        tbfile::Walk(file, probe, map, *this).run();
        gapless_ = gapless_ && told_ == end;
    }

    [[nodiscard]] const std::vector<tbfile::Found>& blocks() const { return blocks_; }
    /// Every byte behind the header belongs to one block, index or loss.
    [[nodiscard]] bool isGapless() const { return gapless_; }

    void block(const tbfile::Found& found) override {
        blocks_.push_back(found);
        pass(found.frame.offset, found.frame.end);
    }
    void index(const tbfile::Frame& frame) override { pass(frame.offset, frame.end); }
    void loss(const tbfile::Loss& loss) override { pass(loss.from, loss.to); }

  private:
    void pass(std::uint64_t from, std::uint64_t to) {
        gapless_ = gapless_ && from == told_ && to > from;
        told_ = to;
    }

    std::vector<tbfile::Found> blocks_;
    std::uint64_t told_ = 0;
    bool gapless_ = true;
};

}  // namespace corpus
