// What the result table shows and copies.
#pragma once

#include <string>
#include <vector>

#include "project/document.h"
#include "toolbox/keys.h"

/// A beam's value of a key, printed by the key's format, without blanks around it. A beam without
/// results shows its name and section only. `row` is the beam's index in the project.
[[nodiscard]] CString cellText(Document& document, std::size_t row, UINT key);

/// Header and units of a key: "M [kNm]".
[[nodiscard]] CString headingOf(UDManager& keys, UINT key);

/// Rows with tabs between the cells and a line end after each, below a line of headings.
[[nodiscard]] std::string tableText(Document& document, const std::vector<UINT>& keys,
                                    const std::vector<std::size_t>& rows);
