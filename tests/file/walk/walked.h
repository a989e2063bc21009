// What a walk through a file tells of.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "corpus.h"
#include "toolbox/file_walk.h"

namespace corpus {

class Walked {
  public:
    explicit Walked(const std::string& bytes) : Walked(Bytes(bytes)) {}
    explicit Walked(const toolbox::FileSource& source) {
        const TarvFileWalk walk(source);
        const std::uint64_t start = walk.map().start;
        std::uint64_t told = start;
        isGapless_ = walk.run([&](const toolbox::WalkFinding& found) {
            findings_.push_back(found);
            const bool follows = found.from == told && found.to > told;
            told = found.to;
            return follows;
        }) == 1;
        isGapless_ = isGapless_ && told == std::max(source.size(), start);
        for (const toolbox::WalkFinding& found : findings_)
            if (found.kind == toolbox::WalkFinding::Kind::block) blocks_.push_back(found);
    }

    [[nodiscard]] const std::vector<toolbox::WalkFinding>& findings() const { return findings_; }
    [[nodiscard]] const std::vector<toolbox::WalkFinding>& blocks() const { return blocks_; }
    /// The blocks, for the reader of a report.
    [[nodiscard]] std::string shown() const {
        std::string text;
        for (const toolbox::WalkFinding& found : blocks_)
            text += " " + std::to_string(found.frame.id) + "@" + std::to_string(found.from) + "-" +
                    std::to_string(found.to) + "/" + std::to_string(found.doubts);
        return text;
    }
    /// Every byte after the header belongs to one finding.
    [[nodiscard]] bool isGapless() const { return isGapless_; }
    /// Neither a doubt nor a loss was told.
    [[nodiscard]] bool isSound() const {
        return std::ranges::none_of(findings_, [](const toolbox::WalkFinding& found) {
            return found.isLoss() || found.doubts != 0;
        });
    }

  private:
    std::vector<toolbox::WalkFinding> findings_;
    std::vector<toolbox::WalkFinding> blocks_;
    bool isGapless_ = true;
};

}  // namespace corpus
