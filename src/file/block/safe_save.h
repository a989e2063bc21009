// Saving beside and putting in place.
#pragma once

#include <memory>
#include <string>

#include "file/replacement.h"
#include "toolbox/block_files.h"

namespace toolbox {

/// A block file that is written beside the one whose place it takes once it is whole. Removed at
/// the end unless it did, or could have but for the rename.
class SafeSave {
  public:
    explicit SafeSave(std::string name) : name_(std::move(name)) {}

    /// Creates the file beside the one that the name leads to, with that one's rights. The file
    /// returned is invalid, with the reason, when there is none: the name is empty, no regular file
    /// or read-only.
    [[nodiscard]] std::unique_ptr<APIFile> create();

    void committed() { committed_ = true; }
    [[nodiscard]] bool isCommitted() const { return committed_; }

    /// Brings the file to the device, reads it back, backs up the one it replaces and takes its
    /// place. When only the rename is refused the user is told where the file was left.
    [[nodiscard]] bool putInPlace();

  private:
    std::string name_;
    Replacement fresh_;
    bool committed_ = false;
};

/// Copies an existing file to its backup name and prints the code of that to the standard output.
void backUp(const char* name);

}  // namespace toolbox
