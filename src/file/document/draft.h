// A new version of a document, beside the file whose place it takes once it is proved to be whole.
#pragma once

#include <functional>
#include <string>

#include "file/document/mark.h"
#include "file/document/reasons.h"
#include "file/replacement.h"

namespace toolbox::document {

/// Removed at the end unless it was put in place or kept.
class Draft {
  public:
    /// Creates the file for the place of `target`, with the rights of the file `like`; an empty
    /// `like` is none.
    [[nodiscard]] Fault create(const std::string& target, const std::string& like);
    /// Has the content write, adds index and checksums, brings all to the device, and reads every
    /// block back. The content may destroy itself.
    [[nodiscard]] Fault fill(TvDocumentContent& content);

    /// Opens what was written for reading. The draft has to live as long.
    [[nodiscard]] bool open(TarvFileRead& file) const;
    /// What tells the file from others.
    [[nodiscard]] const Mark& mark() const { return mark_; }

    /// Gives the file the target's name; see Replacement::putInPlace. What is kept lies beside,
    /// when the rename is refused.
    [[nodiscard]] platform::ErrorCode putInPlace(const std::function<bool()>& mayReplace = {});
    /// Leaves it to the user, and returns its name.
    [[nodiscard]] std::string keep() { return fresh_.keep(); }

  private:
    [[nodiscard]] Fault prove();

    Replacement fresh_;
    Mark mark_;
};

/// Copies the bytes of a file into another one, which is there, and brings them to the device.
[[nodiscard]] platform::ErrorCode copyInto(const std::string& from, const std::string& to);

}  // namespace toolbox::document
