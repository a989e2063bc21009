// The report's values as user-defined keys: the columns of its tables and the words of its labels.
// A user may change a key's description and format; a profile file keeps the changes.
#pragma once

#include <string>
#include <vector>

#include "beam_grid.h"
#include "toolbox/keys.h"

class SectionKeys : public TokenizerUDManager {
  public:
    /// Declares the keys and takes over what the profile file keeps. The static dictionaries of
    /// UDManager exist before and after.
    SectionKeys(const RWCString& profile, const Beam& beam);

    /// How many keys the user has changed in an earlier run.
    [[nodiscard]] UINT restored() const { return restored_; }

    /// Changes the description, or the format ("8", "8.2": columns and decimals), and saves the
    /// key. False, and the key as it was, when there is no such key, the format is not of its
    /// kind, or the profile cannot be written.
    [[nodiscard]] bool describe(const char* key, const char* description);
    [[nodiscard]] bool format(const char* key, const char* format);

    /// The section that the keys' values are of.
    void setCurrent(const Section& section);
    [[nodiscard]] const BeamFigures& figures() const { return figures_; }

    /// Keys of the section table, and of the beam table, in their columns' order.
    static RWTValOrderedVector<UINT> sectionColumns();
    static RWTValOrderedVector<UINT> beamColumns();

    RWCString getProfilePath() override { return profile_; }
    int getKeyValue(UINT id, FormatedValue* value) override;

  private:
    bool keep(UINT id, const UDKeyData& before, int changed);

    RWCString profile_;
    BeamGrid grid_;
    UINT restored_ = 0;
    Section section_;
    BeamFigures figures_;
};
