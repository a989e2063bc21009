// The beam is looked up for each value: it may have changed, or be gone, since the keys were given.
#include "project/label_keys.h"

#include "project/open_project.h"
#include "project/project_keys.h"

class LabelKeys::BeamKeys : public TokenizerUDManager {
  public:
    BeamKeys(const OpenProject& work, std::uint32_t beam) : work_(work), beam_(beam) {}

    [[nodiscard]] const BeamResults* results() const {
        return work_.project().beam(beam_) ? work_.results(work_.indexOf(beam_)) : nullptr;
    }

    /// Nothing is kept here: the program's own manager keeps the keys.
    RWCString getProfilePath() override { return {}; }

    int getKeyValue(UINT id, FormatedValue* value) override {
        const BeamResults* const found = results();
        if (!found) return 0;
        const Beam& beam = *work_.project().beam(beam_);
        const Section* const section = work_.sectionOf(beam);
        if (!section || !setBeamValue(id, value, {beam, *section, *found})) return 0;
        widen(*value);
        return 1;
    }

  private:
    const OpenProject& work_;
    std::uint32_t beam_;
};

LabelKeys::LabelKeys(const OpenProject& work) : work_(work) {}

LabelKeys::~LabelKeys() = default;

TokenizerUDManager* LabelKeys::of(std::uint32_t beam) {
    std::unique_ptr<BeamKeys>& keys = beams_[beam];
    if (!keys) keys = std::make_unique<BeamKeys>(work_, beam);
    return keys->results() ? keys.get() : nullptr;
}
