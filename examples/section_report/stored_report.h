// Stores the sections, reads the file back and prints what it holds.
#pragma once

#include <vector>

#include "section.h"
#include "toolbox/dates.h"

/// False, and the reason is printed on standard error, when the file could not be written or read
/// back, or holds other values than `sections`.
[[nodiscard]] bool storeAndReadBack(const char* fileName, const std::vector<Section>& sections,
                                    const TarvDate& date);
