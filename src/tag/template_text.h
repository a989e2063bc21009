// Templates with the values of their tokens.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "toolbox/keys.h"
#include "toolbox/tag_layout.h"
#include "udkey/manager_life.h"

namespace toolbox::tag {

/// Expands templates as long as its manager lives, which a value may end; without one they stand
/// as they are.
class TemplateText {
  public:
    /// The manager may be null.
    explicit TemplateText(TokenizerUDManager* keys);
    /// Blanks around values are stripped. What checkTemplate() finds wrong stands as it is and does
    /// not change how the rest is expanded. The text is a copy, for a value may end its owner.
    [[nodiscard]] std::string expand(std::string text);

  private:
    [[nodiscard]] bool canExpand() const { return life_ && !life_->isOver(); }
    void append(std::string_view part, std::string& out);

    TokenizerUDManager* keys_;
    std::optional<udkey::ManagerLife> life_;
};

/// The same manager for all tags, as long as it lives.
[[nodiscard]] TvTagKeys keysOfAll(TokenizerUDManager* keys);

}  // namespace toolbox::tag
