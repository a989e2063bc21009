// Dates of a header as texts.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tbfile {

/// A day number as 2001-04-30; empty when it is no date.
[[nodiscard]] std::string dayText(std::int32_t day);
/// The day number of such a text.
[[nodiscard]] std::optional<std::int32_t> dayOf(std::string_view text);

}  // namespace tbfile
