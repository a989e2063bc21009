// The registry's file: keys and typed values in .reg notation.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/posix/sectioned_text.h"

namespace toolbox::platform::posix {

struct RegistryValue {
    std::uint32_t type = 0;
    std::string data;
};

/// Keys are whole paths with their root's name. What a person added to the file by hand, comments
/// and unknown lines too, stays.
class RegistryText {
  public:
    explicit RegistryText(std::string_view bytes);

    /// Nothing when there is no such value or its text is not in the notation.
    [[nodiscard]] std::optional<RegistryValue> value(std::string_view key,
                                                     std::string_view name) const;
    /// False when the text is as it was.
    bool set(std::string_view key, std::string_view name, const RegistryValue& value);

    [[nodiscard]] std::string bytes() const { return text_.text(); }

  private:
    SectionedText text_;
};

}  // namespace toolbox::platform::posix
