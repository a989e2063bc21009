// Sections in a block file, one block each.
//
// A section's identifier is its number in the table, from 1. A block's data is the designation in
// 16 bytes, padded with zeros, then the section's numbers as doubles in the order of the columns;
// every block is a multiple of 4 bytes long, so the file can be searched for lost ones.
#pragma once

#include <optional>
#include <vector>

#include "section.h"
#include "toolbox/block_files.h"

/// Writes all sections to a new file of that name, dated `date`; an older file stays as its
/// backup. False when not all of it was written.
[[nodiscard]] bool saveSections(const char* fileName, const std::vector<Section>& sections,
                                const TarvDate& date);

/// The section with this identifier; nothing when the file has none that is whole.
[[nodiscard]] std::optional<Section> fetchSection(TarvFileRead& file, unsigned long id);
