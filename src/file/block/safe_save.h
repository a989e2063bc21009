// Saving beside and putting in place.
#pragma once

#include <string>

#include "toolbox/block_files.h"

namespace toolbox {

/// A file that is written beside the one whose place it takes once it is whole. Removed at the end
/// unless it did.
class SafeSave {
  public:
    explicit SafeSave(std::string target);
    ~SafeSave();
    SafeSave(const SafeSave&) = delete;
    SafeSave& operator=(const SafeSave&) = delete;

    [[nodiscard]] const std::string& besideName() const { return beside_; }
    /// The file beside is this save's from now on: it was created.
    void created() { created_ = true; }
    void committed() { committed_ = true; }
    [[nodiscard]] bool isCommitted() const { return committed_; }

    /// Reads the closed file beside back, backs up the target and takes its place.
    [[nodiscard]] bool putInPlace();

  private:
    std::string target_;
    std::string beside_;
    bool created_ = false;
    bool committed_ = false;
};

/// Copies an existing file to its backup name and prints the code of that to the standard output.
void backUp(const char* name);

/// Whether a block file reads back: its header, its index and both ends of every block.
[[nodiscard]] bool readsBack(const char* name);

}  // namespace toolbox
