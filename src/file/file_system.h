// The file system in use, parts of file names, and reports of failures: what the sources of this
// folder share.
#pragma once

#include <string>
#include <string_view>

#include "toolbox/platform.h"

namespace toolbox {

/// Asked for at each call, so that a replaced file system also serves files that are open already.
[[nodiscard]] inline platform::FileSystem& files() {
    return *platform::current().files;
}

/// Index of the last '/' or '\'; npos when there is none.
[[nodiscard]] inline std::size_t lastSeparator(std::string_view path) {
    return path.find_last_of("/\\");
}

/// True for a file that is there and has the read-only attribute.
[[nodiscard]] bool isReadOnlyFile(const std::string& name);

/// Shows the system's text for a code through the message service; nothing when there is no text,
/// or when it is held back.
void reportFileError(platform::ErrorCode code);

/// Holds reports of failures back for the time of its scope, for one who tells of them in another
/// way. The innermost has them.
class HeldFileErrors {
  public:
    HeldFileErrors();
    ~HeldFileErrors();
    HeldFileErrors(const HeldFileErrors&) = delete;
    HeldFileErrors& operator=(const HeldFileErrors&) = delete;

    /// The first failure held back; 0 when there was none.
    [[nodiscard]] platform::ErrorCode first() const { return first_; }

  private:
    friend void reportFileError(platform::ErrorCode code);

    platform::ErrorCode first_ = ERROR_SUCCESS;
    HeldFileErrors* outer_;
};

}  // namespace toolbox
