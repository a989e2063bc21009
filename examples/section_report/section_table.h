// The sections as tables of fixed-width columns and as labels. All texts are in Windows-1252 with
// '\n' line ends.
#pragma once

#include <vector>

#include "section.h"
#include "section_keys.h"

/// Two lines of headings, the headers and units of the selected keys, then one line per section,
/// numbered from 1.
[[nodiscard]] CString sectionTable(SectionKeys& keys, const std::vector<Section>& sections);

/// The selected keys with what they stand for: "$F$  Deflection at midspan, mm".
[[nodiscard]] CString legend(SectionKeys& keys);

/// One line for each section. Tokens that are not keys stay as they are, and are reported.
[[nodiscard]] CString labels(SectionKeys& keys, const RWCString& text,
                             const std::vector<Section>& sections);
