// A lock gets its name as a whole file, already open: a fresh one by a rename that succeeds for one
// of several, one that takes another's place by a rename that replaces it.
//
// Taking over is looking and replacing, which several could do at once. So it is done under a lock
// of its own, which is named after the token of the one that is replaced, and after a second look:
// a token never comes back, so who had looked before the replacement finds another one. That lock
// is of the same kind: who is killed under it leaves one that is taken over in the same way.
#include "file/document/document_lock.h"

#include <thread>
#include <utility>

#include "file/document/lock_file.h"
#include "file/document/lock_text.h"
#include "file/file_system.h"
#include "file/replacement.h"

namespace toolbox {

using platform::ErrorCode;

namespace {

/// Stands for the token of any lock.
constexpr const char* kAnybody = "*";

LockReport impossible(ErrorCode error) {
    LockReport report;
    report.outcome = LockOutcome::impossible;
    report.error = error;
    return report;
}

/// Whether a rename failed because of what others did in the same moment. A name that is being
/// removed is refused by Windows; one that is replaced was tried for long already.
bool isRace(ErrorCode error, bool isNew) {
    return error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_NOT_FOUND ||
           (isNew && (error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION));
}

bool mayTakeOver(const LockReport& found, const std::string& allowed) {
    if (found.outcome == LockOutcome::left) return true;
    return found.outcome == LockOutcome::elsewhere &&
           (allowed == kAnybody || allowed == found.holder.token);
}

ErrorCode writeWhole(SharedFile& file, const std::string& text) {
    std::uint32_t written = 0;
    const auto size = static_cast<std::uint32_t>(text.size());
    const ErrorCode error = file.write(text.data(), size, written);
    return error == ERROR_SUCCESS && written < size ? ErrorCode{ERROR_DISK_FULL} : error;
}

}  // namespace

LockReport DocumentLock::take(const std::string& document) {
    return takeOver(document, {});
}

LockReport DocumentLock::takeOver(const std::string& document, const LockHolder& seen) {
    release();
    const locks::LockPlace place = locks::placeOf(document);
    if (place.error != ERROR_SUCCESS) return impossible(place.error);
    LockReport report = takeNamed(place, seen.token);
    if (report.outcome == LockOutcome::takenOver) locks::removeTakingsOver(place.name);
    return report;
}

LockReport DocumentLock::look(const std::string& document) {
    const locks::LockPlace place = locks::placeOf(document);
    return place.error == ERROR_SUCCESS ? locks::reportOf(place.name) : impossible(place.error);
}

LockReport DocumentLock::takeNamed(const locks::LockPlace& place, const std::string& allowed) {
    constexpr int kTries = 50;
    constexpr std::chrono::milliseconds kPause{10};
    Attempt attempt{ERROR_SHARING_VIOLATION, true};
    for (int tries = 0; tries < kTries && attempt.isRace; ++tries) {
        LockReport found = locks::reportOf(place.name);
        if (found.outcome == LockOutcome::free) {
            attempt = put(place, true);
            found.outcome = LockOutcome::taken;
        } else if (mayTakeOver(found, allowed)) {
            LockReport other = replace(place, found, allowed, attempt);
            if (other.outcome != LockOutcome::free) return other;
            found.outcome = LockOutcome::takenOver;
        } else {
            return found;
        }
        if (isTaken()) return found;
        std::this_thread::sleep_for(kPause);
    }
    return impossible(attempt.error);
}

LockReport DocumentLock::replace(const locks::LockPlace& place, const LockReport& found,
                                 const std::string& allowed, Attempt& attempt) {
    DocumentLock turn;
    locks::LockPlace turnPlace = place;
    turnPlace.name = locks::nameOfTakingOver(place.name, found.holder.token);
    const bool wasDecided = found.outcome == LockOutcome::elsewhere;
    LockReport other = turn.takeNamed(turnPlace, wasDecided ? kAnybody : allowed);
    if (!turn.isTaken()) return other;
    const LockReport now = locks::reportOf(place.name);
    const bool isSame = now.outcome == found.outcome && now.holder.token == found.holder.token;
    attempt = isSame ? put(place, false) : Attempt{ERROR_ALREADY_EXISTS, true};
    return {};
}

DocumentLock::Attempt DocumentLock::put(const locks::LockPlace& place, bool isNew) {
    Replacement fresh;
    const LockHolder holder = locks::ourselves();
    const char* like = place.like.empty() ? nullptr : place.like.c_str();
    ErrorCode error = fresh.create(place.name, like, FILE_SHARE_READ);
    if (error == ERROR_SUCCESS) error = writeWhole(fresh.file(), locks::textOf(holder));
    // After a power failure the name shall not lead to an empty file.
    if (error == ERROR_SUCCESS) error = fresh.file().flush();
    if (error != ERROR_SUCCESS) return {error, false};
    locks::remember(holder.token);  // from the rename on others may look at it
    file_ = fresh.putInPlaceOpen(isNew, error);
    if (!file_) {
        locks::forget(holder.token);
        return {error, isRace(error, isNew)};
    }
    name_ = place.name;
    token_ = holder.token;
    return {ERROR_SUCCESS, false};
}

bool DocumentLock::isStillOurs() const {
    return isTaken() && locks::reportOf(name_).holder.token == token_;
}

void DocumentLock::refresh() const {
    if (!isStillOurs()) return;
    const std::string line = locks::seenLine(platform::current().system->now());
    std::uint64_t place = 0;
    const auto back = -static_cast<std::int64_t>(line.size());
    if (file_->seek(back, platform::SeekFrom::end, place) == ERROR_SUCCESS)
        (void)writeWhole(*file_, line);
}

void DocumentLock::release() {
    if (!isTaken()) return;
    // While it is open: nobody can take it for one that was left.
    if (isStillOurs()) discard(name_);
    file_.reset();
    locks::forget(token_);
    name_.clear();
    token_.clear();
}

void DocumentLock::swap(DocumentLock& other) noexcept {
    std::swap(name_, other.name_);
    std::swap(token_, other.token_);
    std::swap(file_, other.file_);
}

}  // namespace toolbox
