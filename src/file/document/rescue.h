// What can be got back out of a damaged document, as a block file of its own.
#pragma once

#include <string>
#include <vector>

#include "file/document/draft.h"

namespace toolbox::document {

/// The blocks of a damaged file, in the folder for temporary files as long as this lives.
class Rescue {
  public:
    Rescue() = default;
    ~Rescue();
    Rescue(const Rescue&) = delete;
    Rescue& operator=(const Rescue&) = delete;

    /// Walks through the file. `notADocument` when there is no block in it.
    [[nodiscard]] Fault run(const std::string& name);
    /// What was not got back, or not for certain.
    [[nodiscard]] const std::vector<TvDocumentLoss>& missing() const { return missing_; }
    /// Opens the blocks. This has to live as long.
    [[nodiscard]] bool open(TarvFileRead& file) const { return draft_.open(file); }

  private:
    std::string place_;
    Draft draft_;
    std::vector<TvDocumentLoss> missing_;
};

}  // namespace toolbox::document
