// Opening: the lock first, then unsaved work, then the file, whole or rescued.
#include <utility>

#include "file/document/block_document.h"
#include "file/document/recovery.h"
#include "file/document/rescue.h"
#include "file/document/session.h"
#include "file/file_system.h"

namespace toolbox::document {
namespace {

TvDocumentResult closedResult(const std::string& name) {
    return failure({Reason::closed, 0}, name, Doing::reading);
}

/// Has the content read with `call`, and tells what it says of the file of that name.
template <class Call>
Fault readBy(const std::string& name, Call call) {
    int read = TvDocumentContent::NotRead;
    platform::ErrorCode error = ERROR_SUCCESS;
    {
        const HeldFileErrors held;
        read = call();
        error = held.first();
    }
    if (read == TvDocumentContent::NewerVersion) return {Reason::newerVersion, 0};
    if (read != TvDocumentContent::Done)
        return error != ERROR_SUCCESS ? faultOf(error, Doing::reading, name)
                                      : Fault{Reason::notADocument, 0};
    // The content took no notice of it: it was a file of its own, of which the user shall know.
    reportFileError(error);
    return {};
}

}  // namespace

TvDocumentResult Session::open(const std::string& given, TvDocumentFile::How how) {
    const Turn turn(*this);
    const std::string name = given.empty() ? given : fullNameOf(given);
    if (!turn.isMine()) return failure({Reason::busy, 0}, name, Doing::reading);
    if (!doc_.name.empty() || doc_.isChanged)
        return failure({Reason::alreadyOpen, 0}, doc_.name, Doing::reading);
    if (name.empty()) return failure({Reason::noName, 0}, name, Doing::reading);
    std::string target;
    const platform::ErrorCode found = files().followLinks(name.c_str(), target);
    if (found != ERROR_SUCCESS)
        return failure(faultOf(found, Doing::reading, name), name, Doing::reading);

    Opened next;
    next.name = name;
    next.isReadOnly = how == TvDocumentFile::ReadOnly;
    TvDocumentResult locked;
    if (!next.isReadOnly) {
        const Locking locking = lock(turn, name, false, next.lock, locked);
        if (locking == Locking::failed) return locked;
        next.isReadOnly = locking == Locking::theirs;
    }
    if (!next.isReadOnly && !files().isReadableAndWritable(target.c_str())) {
        next.isReadOnly = true;
        locked.reason = Reason::documentReadOnly;
        locked.name = RWCString(name);
    }
    TvDocumentResult result;
    if (next.isReadOnly || !offerWork(turn, next, result))
        result =
            turn.hasEnded() ? closedResult(name) : read(turn, next, how == TvDocumentFile::Rescued);
    if (!result.ok) return result;
    doc_ = std::move(next);
    if (locked.reason == Reason::done) return result;
    locked.missing = std::move(result.missing);
    return locked;
}

/// Takes the lock of a document, and asks where somebody else has it. `result` says why it failed,
/// or whose it is.
Session::Locking Session::lock(const Turn& turn, const std::string& name, bool saves,
                               DocumentLock& lock, TvDocumentResult& result) {
    LockReport report = lock.take(name);
    for (;;) {
        if (report.outcome == LockOutcome::impossible) return Locking::none;
        if (lock.isTaken()) return Locking::ours;
        const bool mayTakeOver = report.outcome == LockOutcome::elsewhere;
        const TvDocumentHolder holder = holderOf(report);
        auto choice = decisions_->locked(RWCString(name), holder, mayTakeOver);
        result = failure({Reason::inUse, 0}, name, saves ? Doing::writing : Doing::reading);
        result.holder = holder;
        if (turn.hasEnded()) {
            result.reason = Reason::closed;
            return Locking::failed;
        }
        if (choice == TvDocumentDecisions::TakeOver && mayTakeOver) {
            report = lock.takeOver(name, report.holder);
            continue;
        }
        if (choice == TvDocumentDecisions::CancelLocked || saves) return Locking::failed;
        result.ok = true;
        return Locking::theirs;
    }
}

/// Asks about unsaved work of the document; true when the document was opened from it, or could not
/// be, or was closed: `result` says so.
bool Session::offerWork(const Turn& turn, Opened& next, TvDocumentResult& result) {
    for (const TvRecoverable& work : recoverable({RWCString(next.name)}, next.name)) {
        if (!work.whole || !files().isSameFile(work.document.c_str(), next.name.c_str())) continue;
        const auto choice = decisions_->recoverWork(work);
        if (turn.hasEnded()) break;
        if (choice == TvDocumentDecisions::Later) continue;
        DocumentLock lock;
        if (!takeUp(work, lock)) continue;
        if (choice == TvDocumentDecisions::Recover) {
            result = readWork(turn, next, work, std::move(lock));
            return true;
        }
        (void)remove(work);
    }
    if (!turn.hasEnded()) return false;
    result = closedResult(next.name);
    return true;
}

/// Reads the file of `next`, and marks it. Somebody may replace it meanwhile: it is read again.
TvDocumentResult Session::read(const Turn& turn, Opened& next, bool rescues) {
    constexpr int kTries = 5;
    TvDocumentResult result;
    for (int tries = 0; tries < kTries; ++tries) {
        TarvFileRead file;
        const Fault fault = openQuietly(file, next.name);
        if (fault.code != ERROR_SUCCESS) return failure(fault, next.name, Doing::reading);
        platform::ErrorCode error = look(next.name, extentOf(file), next.mark);
        if (error != ERROR_SUCCESS)
            return failure(faultOf(error, Doing::reading, next.name), next.name, Doing::reading);
        const bool isSound = !fault && isWhole(file);
        result = isSound ? readWhole(turn, next, file) : readRescued(turn, next, rescues, !fault);
        Mark now;
        error = look(next.name, next.mark, now);
        const bool isSettled = error != ERROR_SUCCESS || next.mark.isSame(now);
        if (isSettled || !result.ok || turn.hasEnded()) break;
    }
    return result;
}

TvDocumentResult Session::readWhole(const Turn& turn, Opened& next, TarvFileRead& file) {
    const Fault fault = readBy(next.name, [&] { return content_.read(file); });
    if (turn.hasEnded()) return closedResult(next.name);
    next.isDamaged = next.isChanged = false;
    return fault ? failure(fault, next.name, Doing::reading) : TvDocumentResult();
}

TvDocumentResult Session::readRescued(const Turn& turn, Opened& next, bool rescues,
                                      bool isBlockFile) {
    Rescue rescue;
    if (const Fault fault = rescue.run(next.name)) {
        const bool isNothing = fault.reason == Reason::notADocument && isBlockFile;
        return failure(isNothing ? Fault{Reason::damaged, 0} : fault, next.name, Doing::reading);
    }
    TvDocumentResult result = failure({Reason::damaged, 0}, next.name, Doing::reading);
    result.missing = rescue.missing();
    if (!rescues && !decisions_->openRescued(RWCString(next.name), result.missing))
        return turn.hasEnded() ? closedResult(next.name) : result;
    if (turn.hasEnded()) return closedResult(next.name);
    TarvFileRead file;
    if (!rescue.open(file)) return result;
    const Fault fault =
        readBy(next.name, [&] { return content_.readRescued(file, result.missing); });
    if (turn.hasEnded()) return closedResult(next.name);
    if (fault) return failure(fault, next.name, Doing::reading);
    result.ok = true;
    next.isDamaged = next.isChanged = next.isStale = result.ok;
    return result;
}

TvDocumentResult Session::readWork(const Turn& turn, Opened& next, const TvRecoverable& work,
                                   DocumentLock lock) {
    TarvFileRead file;
    const std::string state = work.state.str();
    const Fault fault = openQuietly(file, state);
    if (fault) return failure(fault, state, Doing::reading);
    if (!isWhole(file)) return failure({Reason::damaged, 0}, state, Doing::reading);
    TvDocumentResult result = readWhole(turn, next, file);
    result.name = work.state;
    if (!result.ok) return result;
    // The document itself: what a save will find there.
    if (!next.name.empty()) {
        const bool isSound = markFile(next.name, next.mark);
        next.isDamaged = next.mark.isThere && !isSound;
    }
    next.isChanged = true;
    next.work.adopt(work, std::move(lock));
    return {};
}

TvDocumentResult Session::recover(const TvRecoverable& work) {
    const Turn turn(*this);
    const std::string name = work.document.str();
    if (!turn.isMine()) return failure({Reason::busy, 0}, name, Doing::reading);
    if (!doc_.name.empty() || doc_.isChanged)
        return failure({Reason::alreadyOpen, 0}, doc_.name, Doing::reading);
    DocumentLock record;
    if (!takeUp(work, record)) return failure({Reason::inUse, 0}, work.state.str(), Doing::reading);
    Opened next;
    next.name = name;
    TvDocumentResult locked;
    if (!name.empty()) {
        const Locking locking = lock(turn, name, false, next.lock, locked);
        if (locking == Locking::failed) return locked;
        next.isReadOnly = locking == Locking::theirs;
    }
    TvDocumentResult result = readWork(turn, next, work, std::move(record));
    if (!result.ok) return result;
    doc_ = std::move(next);
    return locked.reason == Reason::done ? result : locked;
}

TvDocumentResult Session::reload() {
    const Turn turn(*this);
    if (!turn.isMine()) return failure({Reason::busy, 0}, doc_.name, Doing::reading);
    return reload(turn);
}

TvDocumentResult Session::reload(const Turn& turn) {
    if (doc_.name.empty()) return failure({Reason::noName, 0}, {}, Doing::reading);
    Opened next;
    next.name = doc_.name;
    TvDocumentResult result = read(turn, next, false);
    if (!result.ok || turn.hasEnded()) return result;
    doc_.work.throwAway();
    next.work = std::move(doc_.work);
    next.lock = std::move(doc_.lock);
    next.isReadOnly = doc_.isReadOnly;
    doc_ = std::move(next);
    return result;
}

}  // namespace toolbox::document
