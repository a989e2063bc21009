// Saving: beside, proved, compared with what was opened, backed up, renamed.
#include <utility>

#include "file/document/block_document.h"
#include "file/document/session.h"
#include "file/file_system.h"

namespace toolbox::document {
namespace {

using platform::ErrorCode;

TvDocumentResult failed(Reason reason, const std::string& name) {
    return failure({reason, 0}, name, Doing::writing);
}

/// Copies a damaged file to a name that nobody has, which is returned.
ErrorCode keepDamaged(const std::string& target, std::string& kept) {
    kept = target + ".damaged-" + digitsOfChance();
    const ErrorCode error = files().copy(target.c_str(), kept.c_str(), true);
    return error == ERROR_SUCCESS ? files().flushFolderOf(kept.c_str()) : error;
}

/// Only where nothing can be created beside a file that itself can be written.
bool mayWriteInPlace(const Fault& fault, const std::string& target) {
    return (fault.reason == Reason::noRight || fault.reason == Reason::nameTooLong) &&
           files().exists(target.c_str()) && files().isReadableAndWritable(target.c_str());
}

}  // namespace

ErrorCode backUpDocument(const std::string& name, int generations) {
    if (generations <= 0 || !files().exists(name.c_str())) return ERROR_SUCCESS;
    const std::string newest = APIFile::backupName(name.c_str()).str();
    const auto nameOf = [&](int age) { return age == 1 ? newest : newest + std::to_string(age); };
    for (int age = generations - 1; age >= 1; --age) {
        if (!files().exists(nameOf(age).c_str())) continue;
        const ErrorCode error = files().replace(nameOf(age).c_str(), nameOf(age + 1).c_str());
        if (error != ERROR_SUCCESS) return error;
    }
    return static_cast<ErrorCode>(APIFile::createBak(name.c_str()));
}

TvDocumentResult Session::save() {
    const Turn turn(*this);
    if (!turn.isMine()) return failed(Reason::busy, doc_.name);
    return saveHere(turn);
}

TvDocumentResult Session::saveHere(const Turn& turn) {
    if (doc_.name.empty()) return failed(Reason::noName, {});
    if (doc_.isReadOnly) return failed(Reason::documentReadOnly, doc_.name);
    if (auto lost = lostLock()) return *std::move(lost);
    Saving saving;
    saving.name = doc_.name;
    saving.expected = doc_.mark;
    saving.keepsDamaged = doc_.isDamaged;
    saving.moves = true;
    Mark written;
    TvDocumentResult result = write(turn, saving, written);
    if (result.ok && !turn.hasEnded() && written.isThere) saved(written);
    return result;
}

TvDocumentResult Session::saveTo(const std::string& given, bool moves) {
    const Turn turn(*this);
    if (!turn.isMine()) return failed(Reason::busy, given);
    return saveElsewhere(turn, given, moves);
}

TvDocumentResult Session::saveElsewhere(const Turn& turn, const std::string& given, bool moves) {
    if (given.empty()) return failed(Reason::noName, given);
    const std::string name = fullNameOf(given);
    const bool isHere = !doc_.name.empty() && files().isSameFile(name.c_str(), doc_.name.c_str());
    if (isHere && !doc_.isReadOnly) return saveHere(turn);
    DocumentLock lock;
    TvDocumentResult locked;
    if (this->lock(turn, name, true, lock, locked) == Locking::failed) return locked;
    Saving saving;
    saving.name = name;
    saving.moves = moves;
    saving.keepsDamaged = isHere && doc_.isDamaged;
    if (isHere) saving.expected = doc_.mark;
    const ErrorCode error = isHere ? ERROR_SUCCESS : look(name, {}, saving.expected);
    if (error != ERROR_SUCCESS)
        return failure(faultOf(error, Doing::writing, name), name, Doing::writing);
    Mark written;
    TvDocumentResult result = write(turn, saving, written);
    if (!result.ok || turn.hasEnded() || !written.isThere || !moves) return result;
    doc_.name = name;
    doc_.lock = std::move(lock);
    doc_.isReadOnly = false;
    saved(written);
    return result;
}

/// The document stands in its file.
void Session::saved(const Mark& written) {
    doc_.mark = written;
    doc_.isChanged = doc_.isStale = doc_.isDamaged = false;
    doc_.edits = 0;
    doc_.work.throwAway();
}

/// A result when somebody took the document's lock over.
std::optional<TvDocumentResult> Session::lostLock() const {
    if (!doc_.lock.isTaken() || doc_.lock.isStillOurs()) return std::nullopt;
    const LockReport now = DocumentLock::look(doc_.name);
    if (now.outcome != LockOutcome::held && now.outcome != LockOutcome::elsewhere)
        return std::nullopt;  // it was removed: what is on the disk decides
    TvDocumentResult result = failed(Reason::takenOver, doc_.name);
    result.holder = holderOf(now);
    return result;
}

/// `written` is there once the content is in the file.
TvDocumentResult Session::write(const Turn& turn, Saving& saving, Mark& written) {
    const ErrorCode found = files().followLinks(saving.name.c_str(), saving.target);
    const bool isThere = found == ERROR_SUCCESS;
    Fault fault;
    if (!isThere && found != ERROR_FILE_NOT_FOUND)
        fault = faultOf(found, Doing::writing, saving.name);
    else if (isThere && isReadOnlyFile(saving.target))
        fault = {Reason::noRight, ERROR_ACCESS_DENIED};
    Draft draft;
    if (!fault) {
        fault = draft.create(saving.target, isThere ? saving.target : std::string());
        if (mayWriteInPlace(fault, saving.target))
            return writeInPlace(turn, saving, fault, written);
    }
    if (!fault) fault = draft.fill(content_);
    if (turn.hasEnded()) return failed(Reason::closed, saving.name);
    if (fault) return failure(fault, saving.name, Doing::writing);
    const unsigned before = document_;
    TvDocumentResult result = replace(turn, saving, draft);
    if (result.ok && before == document_ && saving.expected.isThere) written = saving.expected;
    return result;
}

/// Keeps what the draft is about to replace: the damaged file, where it is one, and the backup.
Fault Session::keepOlder(const Saving& saving, TvDocumentResult& result) const {
    if (saving.keepsDamaged && result.kept.isNull() && saving.expected.isThere) {
        std::string kept;
        if (const ErrorCode error = keepDamaged(saving.target, kept))
            return faultOf(error, Doing::writing, kept);
        result.kept = RWCString(kept);
    }
    result.backup = backUpDocument(saving.name, generations_);
    return {};
}

/// Puts the draft in place; when another program has written the file, only after asking.
/// `saving.expected` is the draft's mark afterwards, and not there when something else was done.
TvDocumentResult Session::replace(const Turn& turn, Saving& saving, Draft& draft) {
    constexpr int kTries = 20;
    TvDocumentResult result;
    result.name = RWCString(saving.name);
    std::optional<Mark> older;
    ErrorCode error = ERROR_CANCELLED;
    for (int tries = 0; tries < kTries && error == ERROR_CANCELLED; ++tries) {
        if (auto other = askIfChanged(turn, saving)) {
            saving.expected.isThere = false;
            return *std::move(other);
        }
        // Not twice of the same version: each backup drops the oldest.
        if (!older || !older->isSame(saving.expected))
            if (const Fault fault = keepOlder(saving, result))
                return failure(fault, saving.name, Doing::writing);
        older = saving.expected;
        error = draft.putInPlace([&] { return mayReplace(saving); });
    }
    if (error != ERROR_SUCCESS) {
        const Fault fault = error == ERROR_CANCELLED ? Fault{Reason::inUse, error}
                                                     : faultOf(error, Doing::writing, saving.name);
        result = failure(fault, saving.name, Doing::writing);
        result.kept = RWCString(draft.keep());
        return result;
    }
    saving.expected = draft.mark();
    return result;
}

/// The last look: whether the file is still the one that may be replaced, and the lock ours.
bool Session::mayReplace(const Saving& saving) const {
    Mark now;
    if (saving.name == doc_.name && lostLock()) return false;
    return look(saving.target, saving.expected, now) == ERROR_SUCCESS &&
           (!now.isThere || saving.expected.isSame(now));
}

/// Looks at the disk, and asks as long as it is another file each time. A result when something
/// else than replacing it was done.
std::optional<TvDocumentResult> Session::askIfChanged(const Turn& turn, Saving& saving) {
    for (;;) {
        if (saving.name == doc_.name)
            if (auto lost = lostLock()) return lost;
        Mark now;
        const ErrorCode error = look(saving.name, saving.expected, now);
        if (error != ERROR_SUCCESS)
            return failure(faultOf(error, Doing::writing, saving.name), saving.name,
                           Doing::writing);
        // Where there is nothing, nothing can be lost.
        if (!now.isThere || saving.expected.isSame(now)) return std::nullopt;
        RWCString other;
        const auto choice = decisions_->changedOnDisk(RWCString(saving.name), other);
        if (turn.hasEnded()) return failed(Reason::closed, saving.name);
        switch (choice) {
            case TvDocumentDecisions::Replace:
                saving.expected = now;
                saving.expected.isProved = false;  // how long its list is was not asked
                continue;
            case TvDocumentDecisions::SaveAs:
                return saveElsewhere(turn, other.str(), saving.moves);
            case TvDocumentDecisions::TakeTheirs:
                if (saving.name == doc_.name) return reload(turn);
                break;
            case TvDocumentDecisions::CancelChanged:
                break;
        }
        return failed(Reason::changedOnDisk, saving.name);
    }
}

/// The state goes to the recovery folder first, where it is found whatever happens.
TvDocumentResult Session::writeInPlace(const Turn& turn, Saving& saving, const Fault& why,
                                       Mark& written) {
    TvDocumentResult refused = failure(why, saving.name, Doing::writing);
    const bool isWanted = decisions_->writeInPlace(RWCString(saving.name), refused) != 0;
    if (turn.hasEnded()) return failed(Reason::closed, saving.name);
    if (!isWanted) return refused;
    TvDocumentResult result = saveState(turn, UnsavedWork::Place::recoveryFolder);
    if (!result.ok) return result;
    if (auto other = askIfChanged(turn, saving)) return *std::move(other);
    const ErrorCode error = copyInto(doc_.work.state(), saving.target);
    if (error != ERROR_SUCCESS) {
        result = failure(faultOf(error, Doing::writing, saving.name), saving.name, Doing::writing);
        result.kept = RWCString(doc_.work.state());
        return result;
    }
    (void)markFile(saving.target, written);
    result.name = RWCString(saving.name);
    result.backup = generations_ > 0 ? why.code : ERROR_SUCCESS;
    return result;
}

}  // namespace toolbox::document
