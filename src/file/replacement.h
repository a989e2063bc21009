// Writing a file beside the one whose place it takes.
//
// A reader sees the old file or the new one, whole, whatever happens to the writer. The new file's
// name ends in a number of chance, so that writers of one file do not meet and nobody can lay a
// trap under it; it is created, never opened, and locked until it has the target's name.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "file/shared_file.h"
#include "toolbox/files.h"

namespace toolbox {

/// Eight digits that nobody can guess.
[[nodiscard]] std::string digitsOfChance();

/// Removes a file of our own, read-only or not, if it is there.
void discard(const std::string& name);

/// Removes what programs that were killed left beside the file `target`, in whose name `*` stands
/// for anything, when they wrote its successor. What nobody has locked nobody writes.
void removeLeftovers(const std::string& target);

/// Repeats a call, up to ten times in all, while it fails with ERROR_SHARING_VIOLATION: somebody
/// has the file open, maybe for a moment only.
template <class Call>
platform::ErrorCode patiently(std::chrono::milliseconds pause, Call call) {
    for (int again = 9;; --again) {
        const platform::ErrorCode error = call();
        if (error != ERROR_SHARING_VIOLATION || again == 0) return error;
        std::this_thread::sleep_for(pause);
    }
}

class Replacement {
  public:
    Replacement() = default;
    /// Removes the file unless it is in place or kept.
    ~Replacement();
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    /// Creates the file for the place of `target`, with the rights of the file `like` (null: those
    /// of a new file), for others to `share`. Removes what killed programs left of earlier ones.
    [[nodiscard]] platform::ErrorCode create(const std::string& target, const char* like,
                                             std::uint32_t share = 0);

    [[nodiscard]] const std::string& target() const { return target_; }
    /// The file, while it is open.
    [[nodiscard]] SharedFile& file() { return *file_; }
    /// The same file for the application; invalid, with `error`, when there is none.
    [[nodiscard]] std::unique_ptr<APIFile> apiFile(platform::ErrorCode error = ERROR_SUCCESS) const;

    /// Gives the file the target's name and closes it. When somebody has the target open the rename
    /// is tried again for half a second. On failure the file stays open. `mayReplace` is asked
    /// immediately before each try; when it says no the end is ERROR_CANCELLED.
    [[nodiscard]] platform::ErrorCode putInPlace(const std::function<bool()>& mayReplace = {});
    /// As putInPlace(), and leaves the file open for the caller; null on failure. `onlyNew`: there
    /// must be no file of that name (ERROR_ALREADY_EXISTS).
    [[nodiscard]] std::shared_ptr<SharedFile> putInPlaceOpen(bool onlyNew,
                                                             platform::ErrorCode& error);
    /// Closes the file and leaves it to the user, beside the target, under the name returned.
    [[nodiscard]] std::string keep();

  private:
    [[nodiscard]] platform::ErrorCode replaceTarget(const std::function<bool()>& mayReplace);

    std::string target_;
    std::string name_;
    platform::FileHandle handle_ = platform::kNoFile;
    std::shared_ptr<SharedFile> file_;  ///< null before create() and once the file is closed
};

}  // namespace toolbox
