// Unsaved work in words.
#pragma once

#include "toolbox/document_files.h"

namespace toolbox::documents {

/// The document's name, or that it has none.
[[nodiscard]] CString nameOf(const TvRecoverable& work);
/// Local time, "2026-08-01 14:05", or that it is not known.
[[nodiscard]] CString timeOf(const TvRecoverable& work);
/// In kilobytes, at least 1.
[[nodiscard]] CString sizeOf(const TvRecoverable& work);

}  // namespace toolbox::documents
