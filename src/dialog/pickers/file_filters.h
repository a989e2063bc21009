// File types as a text names them, and the extension that a name gets.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "toolbox/pickers.h"

namespace toolbox::pickers {

/// The types of "Name|*.a;*.b|Name|*.*", without blanks around names and patterns; bars at the end
/// are ignored. None for a text without types, with a name that has no pattern, or with an empty
/// part.
[[nodiscard]] std::optional<std::vector<FileFilter>> parseFilters(std::string_view text);

/// What the system's dialogs take: each name and its patterns ended by a NUL, and one more at the
/// end. Empty for no types.
[[nodiscard]] std::string systemFilter(const std::vector<FileFilter>& filters);

/// Whether a name, without its folder, matches a pattern of '*' and '?'; case does not count.
/// "*.*" matches every name.
[[nodiscard]] bool matchesPattern(std::string_view name, std::string_view pattern);

/// The name under which a file is saved. It stays when it matches a type that stands for an
/// extension, and when it has an extension and the type chosen stands for all files; otherwise it
/// gets the extension of the type chosen, or `extension` where that is one of the type's or the
/// type has none of its own.
[[nodiscard]] std::string withExtension(const std::string& name,
                                        const std::vector<FileFilter>& filters, int chosen,
                                        std::string_view extension);

}  // namespace toolbox::pickers
