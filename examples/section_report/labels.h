// Labels: one template, expanded for each section.
#pragma once

#include <vector>

#include "section_keys.h"

/// One line for each section. Tokens that are no keys stay as they are, and are reported.
[[nodiscard]] CString labels(SectionKeys& keys, const RWCString& text,
                             const std::vector<Section>& sections);

/// The selected keys with what they stand for: "$F$  Deflection at midspan, mm".
[[nodiscard]] CString legend(SectionKeys& keys);
