// Sets of characters, as the rules of validated texts name them.
#pragma once

#include "toolbox/export.h"
#include "toolbox/strings.h"

/// A set of characters, defined by a text: "[[09]]" is every character from 0 to 9, any other
/// character is itself, and so is a '[' that no second one follows. The ends of an interval are in
/// order as signed bytes. A definition with a malformed interval is not valid; the set then holds
/// what precedes that interval.
class TB_API TvCharSet {
  public:
    TvCharSet() = default;                                             ///< the empty set
    TvCharSet(const CString& definition) : definition_(definition) {}  ///< see the class

    /// Returns the new definition.
    CString operator=(const CString& definition);

    /// The text as it was set.
    [[nodiscard]] const CString& definition() const { return definition_; }

    /// True when the whole definition can be read.
    [[nodiscard]] bool isValid() const;

    /// Every character, in the order of the definition, repeated where it repeats.
    [[nodiscard]] CString getDetailedCharsSet() const;

    /// The set in words, for a user: 'a', '0' to '9' and 'z'. The words are resource texts 1097
    /// between the ends of an interval and 1095 ("and"), or 1096 ("or") with `useAlternative`,
    /// before the last item. That word replaces the last comma of the text, even a ',' that is
    /// itself the last item.
    [[nodiscard]] CString getFriendlyCharsSet(bool useAlternative) const;

    /// True when the character is in the set, directly or through an interval.
    [[nodiscard]] bool charIsInSet(char c) const;
    [[nodiscard]] bool allStringCharsAreInSet(const CString& text) const;       ///< true for ""
    [[nodiscard]] bool atLeastOneStringCharIsInSet(const CString& text) const;  ///< false for ""

    /// The character itself, or the name of a control character and of character 255: "{NUL}". The
    /// names of 14 to 17 and 26 are not the usual ones: "{ST}" for 15.
    [[nodiscard]] static CString getVisibleChar(const char& c);

  private:
    bool getNextCharOrInterval(int& index, CString& piece) const;

    CString definition_;
};
