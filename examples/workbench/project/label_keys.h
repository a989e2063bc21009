// The values of beams as keys of their labels.
#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "toolbox/keys.h"

class OpenProject;

/// One manager for each beam, made when it is first asked for. Which keys there are is up to
/// ProjectKeys; here a number that its format is too narrow for is shown whole.
class LabelKeys {
  public:
    /// The project is borrowed.
    explicit LabelKeys(const OpenProject& work);
    ~LabelKeys();
    LabelKeys(const LabelKeys&) = delete;
    LabelKeys& operator=(const LabelKeys&) = delete;

    /// The keys of a beam, with the values that it has when they are fetched. Null for one without
    /// results. They live as long as this object.
    [[nodiscard]] TokenizerUDManager* of(std::uint32_t beam);

  private:
    class BeamKeys;

    const OpenProject& work_;
    std::map<std::uint32_t, std::unique_ptr<BeamKeys>> beams_;
};
