// The parsed contents of the shared text files used last.
#pragma once

#include <algorithm>
#include <list>
#include <string>

#include "platform/posix/shared_file.h"

namespace toolbox::platform::posix {

/// `Document` is made from a file's bytes and gives them back with bytes(). A file is read again
/// only when it may have changed since.
template <class Document>
class DocumentCache {
  public:
    /// The contents of a file, those of an empty one when it cannot be read; `error` tells. Valid
    /// until the next call.
    Document& load(const std::string& path, ErrorCode& error) {
        // Before reading, so that a change in between shows as one.
        const FileStamp now = stampOf(path);
        auto kept = std::find_if(kept_.begin(), kept_.end(),
                                 [&](const Kept& file) { return file.path == path; });
        if (kept != kept_.end() && kept->stamp.stillHolds(now)) {
            error = kept->error;
            kept_.splice(kept_.begin(), kept_, kept);
            return kept_.front().document;
        }
        if (kept != kept_.end()) kept_.erase(kept);
        if (kept_.size() == kMostFiles) kept_.pop_back();
        std::string bytes;
        error = readWhole(path, bytes);
        kept_.push_front({path, now, error, Document(bytes)});
        return kept_.front().document;
    }

    /// Changes a file by `edit`, which returns false when it changed nothing. `create` says whether
    /// a missing file is made.
    template <class Edit>
    ErrorCode save(const std::string& path, bool create, Edit edit) {
        ReplaceLock lock;
        if (const ErrorCode error = lock.acquire(path, create); error != ERROR_SUCCESS)
            return error;
        ErrorCode error = ERROR_SUCCESS;
        Document& document = load(path, error);
        if (error != ERROR_SUCCESS) return error;
        if (!edit(document)) return ERROR_SUCCESS;
        error = lock.replace(document.bytes());
        if (error == ERROR_SUCCESS)
            kept_.front().stamp = stampOf(path);
        else
            kept_.pop_front();
        return error;
    }

  private:
    static constexpr std::size_t kMostFiles = 4;

    struct Kept {
        std::string path;
        FileStamp stamp;
        ErrorCode error;
        Document document;
    };
    std::list<Kept> kept_;  ///< used last first
};

}  // namespace toolbox::platform::posix
