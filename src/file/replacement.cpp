// Names of chance, what killed programs left, and the rename that puts a new file in place.
#include "file/replacement.h"

#include <algorithm>
#include <random>
#include <utility>

#include "file/file_system.h"
#include "platform/scoped_file.h"

namespace toolbox {

using platform::ErrorCode;

namespace {

constexpr std::string_view kWriting = ".~save-";
constexpr std::string_view kKept = ".saved-";
constexpr std::size_t kDigits = 8;
constexpr std::string_view kHexDigits = "0123456789abcdef";

/// Whether a new file has such a name until it is in place.
bool isWriting(std::string_view name) {
    if (name.size() < kWriting.size() + kDigits) return false;
    const std::string_view end = name.substr(name.size() - kWriting.size() - kDigits);
    return end.starts_with(kWriting) &&
           end.find_first_not_of(kHexDigits, kWriting.size()) == std::string_view::npos;
}

}  // namespace

std::string digitsOfChance() {
    std::random_device chance;
    std::string digits(kDigits, '0');
    std::ranges::generate(digits, [&] { return kHexDigits[chance() % kHexDigits.size()]; });
    return digits;
}

void removeLeftovers(const std::string& target) {
    constexpr std::uint32_t kShare = FILE_SHARE_READ | FILE_SHARE_DELETE;
    const std::string pattern = target + std::string(kWriting) + '*';
    for (const platform::FoundFile& found : files().find(pattern.c_str())) {
        if (!isWriting(found.name)) continue;
        const std::string name = target.substr(0, lastSeparator(target) + 1) + found.name;
        // Locked until it is gone, so that nobody begins to write it.
        const platform::ScopedFile unused(files(), name.c_str(), GENERIC_READ, kShare,
                                          OPEN_EXISTING);
        if (unused.valid()) discard(name);
    }
}

void discard(const std::string& name) {
    if (!files().exists(name.c_str())) return;
    if (isReadOnlyFile(name)) files().setAttributes(name.c_str(), FILE_ATTRIBUTE_NORMAL);
    files().remove(name.c_str());
}

Replacement::~Replacement() {
    if (!file_) return;
    file_.reset();  // Windows removes no open file
    discard(name_);
}

ErrorCode Replacement::create(const std::string& target, const char* like, std::uint32_t share) {
    target_ = target;
    removeLeftovers(target);
    constexpr int kTries = 100;
    ErrorCode error = ERROR_FILE_EXISTS;
    // Who removes leftovers may have taken the file for one, and refuse or remove it.
    const auto isTaken = [&] {
        return error == ERROR_FILE_EXISTS || error == ERROR_SHARING_VIOLATION;
    };
    for (int tries = 0; tries < kTries && isTaken(); ++tries) {
        name_ = target + std::string(kWriting) + digitsOfChance();
        error = files().createLike(name_.c_str(), like, share | FILE_SHARE_DELETE, handle_);
    }
    if (error == ERROR_SUCCESS) file_ = std::make_shared<SharedFile>(handle_);
    return error;
}

std::unique_ptr<APIFile> Replacement::apiFile(ErrorCode error) const {
    std::unique_ptr<APIFile> file(new APIFile());
    file->error_ = error;
    if (!file_) return file;
    file->handle_ = handle_;
    file->file_ = file_;
    file->name_ = name_;
    file->access_ = GENERIC_READ | GENERIC_WRITE;
    file->share_ = FILE_SHARE_DELETE;
    return file;
}

ErrorCode Replacement::replaceTarget(const std::function<bool()>& mayReplace) {
    constexpr std::chrono::milliseconds kPause{50};
    return patiently(kPause, [&] {
        if (mayReplace && !mayReplace()) return ErrorCode{ERROR_CANCELLED};
        const ErrorCode refused = files().replace(name_.c_str(), target_.c_str());
        // Windows says so of a target that is open; a read-only one is so for good.
        return refused == ERROR_ACCESS_DENIED && !isReadOnlyFile(target_)
                   ? ErrorCode{ERROR_SHARING_VIOLATION}
                   : refused;
    });
}

ErrorCode Replacement::putInPlace(const std::function<bool()>& mayReplace) {
    const ErrorCode error = replaceTarget(mayReplace);
    if (error == ERROR_SUCCESS) file_.reset();  // readers are refused up to here
    return error;
}

std::shared_ptr<SharedFile> Replacement::putInPlaceOpen(bool onlyNew, ErrorCode& error) {
    error = onlyNew ? files().renameNew(name_.c_str(), target_.c_str()) : replaceTarget({});
    return error == ERROR_SUCCESS ? std::exchange(file_, nullptr) : nullptr;
}

std::string Replacement::keep() {
    // Under its present name the next save would take it for a leftover.
    const std::string kept = target_ + std::string(kKept) + digitsOfChance();
    if (!files().exists(kept.c_str()) &&
        files().replace(name_.c_str(), kept.c_str()) == ERROR_SUCCESS)
        name_ = kept;
    file_.reset();
    return name_;
}

}  // namespace toolbox
