// The values of a beam as user-defined keys: the columns of the result table and the words of the
// labels. The user changes descriptions and formats; a profile file keeps the changes.
#pragma once

#include "declared_keys.h"
#include "project/beam_results.h"
#include "toolbox/keys.h"

/// Stands where a number should.
inline constexpr const char* kTooNarrow = "####";

/// What the values of a beam are computed from.
struct BeamValues {
    const Beam& beam;
    const Section& section;
    const BeamResults& results;
};

/// The value of a key, for UDManager::getKeyValue(); 0 for an unknown key.
int setBeamValue(UINT id, FormatedValue* value, const BeamValues& of);
/// Gives a number that its format is too narrow for a wide one.
void widen(FormatedValue& value);

class ProjectKeys : public TokenizerUDManager {
  public:
    /// Declares the keys in the language of the message service and takes over what the profile
    /// file keeps. The static dictionaries of UDManager exist before and after.
    explicit ProjectKeys(const RWCString& profile);
    ~ProjectKeys() override;

    /// The beam that the keys' values are of; borrowed until the next call.
    void setCurrent(const Beam& beam, const Section& section, const BeamResults& results);

    /// All keys, in the order of their declaration, which is that of their identifiers, from 1.
    static RWTValOrderedVector<UINT> all();
    /// Those that the result table shows before the user chooses others.
    static RWTValOrderedVector<UINT> usualColumns();

    /// The key strings of the selection, "NAME SECTION L": how settings keep the columns.
    [[nodiscard]] RWCString columnsText() const;
    /// Selects the keys of such a text, in its order; unknown words count as nothing, and a text
    /// without any key as the usual columns.
    void selectColumns(const RWCString& text);

    /// In place of saveKey(): a description that is the declared one is not kept, so that it
    /// follows the language of the program. 0 when the profile could not be written.
    int save(UINT id);

    // How the program shows values: a number that its format is too narrow for, and would print
    // with half of its exponent, is kTooNarrow.

    /// The current value of a key, printed by its format, without blanks around it.
    [[nodiscard]] RWCString shown(UINT id);
    /// Another value, of the kind of the key's format.
    [[nodiscard]] RWCString shown(UINT id, FormatedValue& value);

    RWCString getProfilePath() override { return profile_; }
    int getKeyValue(UINT id, FormatedValue* value) override;

  private:
    RWCString profile_;
    const Beam* beam_ = nullptr;
    const Section* section_ = nullptr;
    const BeamResults* results_ = nullptr;
};
