// The keys' lines in the application's profile file.
#pragma once

#include <string>
#include <vector>

#include "toolbox/strings.h"

namespace toolbox::udkey {

class KeyProfile {
  public:
    struct Line {
        RWCString key;
        RWCString record;
    };

    explicit KeyProfile(RWCString path) : path_(std::move(path)) {}

    /// False when the application has no path to give.
    [[nodiscard]] bool isReady() const { return !path_.empty(); }
    /// The record stored for a key; empty when there is none.
    [[nodiscard]] RWCString read(const RWCString& key) const;
    [[nodiscard]] bool write(const std::vector<Line>& lines) const;

  private:
    RWCString path_;
};

}  // namespace toolbox::udkey
