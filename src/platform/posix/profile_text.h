// The text of one profile file: what its lines mean and how entries are changed.
#pragma once

#include <optional>

#include "platform/posix/sectioned_text.h"

namespace toolbox::platform::posix {

/// Strings given and taken are Windows-1252, whatever the file's encoding. A file that begins with
/// the mark of UTF-8 or UTF-16 keeps its encoding; any other file is Windows-1252.
class ProfileText {
  public:
    explicit ProfileText(std::string_view bytes);

    [[nodiscard]] std::optional<std::string> value(std::string_view section,
                                                   std::string_view entry) const;

    /// False when the text is as it was.
    bool set(std::string_view section, std::string_view entry, std::string_view value);
    bool erase(std::string_view section, std::string_view entry);

    /// The file's bytes.
    [[nodiscard]] std::string bytes() const;

  private:
    enum class Encoding { windows1252, utf8, utf16le, utf16be };

    [[nodiscard]] static Encoding encodingOf(std::string_view bytes);
    [[nodiscard]] static std::string decoded(std::string_view bytes, Encoding encoding);
    [[nodiscard]] std::string inside(std::string_view text) const;

    Encoding encoding_;
    SectionedText text_;  ///< UTF-8 unless the file is Windows-1252
};

}  // namespace toolbox::platform::posix
