// Finding what programs that ended badly have left.
#pragma once

#include <string>
#include <vector>

#include "file/document/document_lock.h"
#include "toolbox/document_files.h"

namespace toolbox::document {

/// TvDocumentFile::recoverable. `ours` is a document whose lock the caller holds; empty: none.
[[nodiscard]] std::vector<TvRecoverable> recoverable(const std::vector<RWCString>& documents,
                                                     const std::string& ours);

/// Takes work up, so that nobody else does: false when somebody has.
[[nodiscard]] bool takeUp(const TvRecoverable& work, DocumentLock& lock);

/// Removes the files of work that was taken up; false when one is still there.
bool remove(const TvRecoverable& work);

}  // namespace toolbox::document
