// The keys' lines in the application's profile file.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "toolbox/strings.h"
#include "udkey/registry.h"

namespace toolbox::udkey {

class KeyProfile {
  public:
    struct Line {
        RWCString key;
        RWCString record;
    };

    explicit KeyProfile(RWCString path) : path_(std::move(path)) {}

    /// False for a key string that no line can have as its name.
    [[nodiscard]] static bool isSavable(const KeyEntry& key);

    /// False when the application has no path to give.
    [[nodiscard]] bool isReady() const { return !path_.empty(); }
    /// The record of each key, in their order; none where there is no line.
    [[nodiscard]] std::vector<std::optional<std::string>> read(
        const std::deque<KeyEntry>& keys) const;
    [[nodiscard]] bool write(const std::vector<Line>& lines) const;

  private:
    RWCString path_;
};

}  // namespace toolbox::udkey
