// The sections as tables of fixed-width columns.
#pragma once

#include <vector>

#include "section.h"
#include "section_keys.h"
#include "toolbox/dates.h"

/// The date in words, in English and in French: "14 August 2026", "14 août 2026".
[[nodiscard]] CString dateLine(const TarvDate& date);

/// Two lines of headings, the headers and units of the selected keys, then one line a section,
/// numbered from 1. Windows-1252, '\n' line ends.
[[nodiscard]] CString sectionTable(SectionKeys& keys, const std::vector<Section>& sections);
