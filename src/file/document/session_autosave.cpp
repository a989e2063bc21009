// When the state is due, and where it goes.
#include "file/document/session.h"
#include "toolbox/platform.h"

namespace toolbox::document {
namespace {

constexpr std::uint32_t kPerSecond = 1000;
constexpr std::uint32_t kRefresh = 60 * kPerSecond;

/// Milliseconds of a clock that nobody sets.
std::uint32_t ticks() {
    return platform::current().system->clockMilliseconds();
}

}  // namespace

void Session::edited(int count) {
    if (count <= 0) return;
    doc_.isChanged = true;
    if (!doc_.isStale) doc_.oldest = ticks();
    doc_.isStale = true;
    doc_.edits = count < autosaveEdits_ ? doc_.edits + count : autosaveEdits_;
}

int Session::idle() {
    if (isBusy_) return 1;
    const std::uint32_t now = ticks();
    if (doc_.lock.isTaken() && now - refreshed_ >= kRefresh) {
        refreshed_ = now;
        doc_.lock.refresh();
    }
    const bool enough = autosaveEdits_ > 0 && doc_.edits >= autosaveEdits_;
    const bool late = autosaveSeconds_ > 0 &&
                      (now - doc_.oldest) / kPerSecond >= static_cast<unsigned>(autosaveSeconds_);
    if (!doc_.isStale || (!enough && !late)) return 1;
    return autosave().ok;
}

TvDocumentResult Session::autosave() {
    const Turn turn(*this);
    if (!turn.isMine()) return failure({Reason::busy, 0}, doc_.name, Doing::writing);
    if (!doc_.isChanged || (!doc_.isStale && doc_.work.exists())) return {};
    const bool isBeside = !doc_.name.empty() && !doc_.isReadOnly;
    TvDocumentResult result;
    result.ok = false;
    if (isBeside) result = saveState(turn, UnsavedWork::Place::beside);
    const bool goesOn = !turn.hasEnded() && result.reason != Reason::contentRefused;
    if (!result.ok && goesOn) result = saveState(turn, UnsavedWork::Place::recoveryFolder);
    if (turn.hasEnded()) return failure({Reason::closed, 0}, result.name.str(), Doing::writing);
    // After a failure the next try comes when as many edits, or as much time, have gone by again.
    doc_.edits = 0;
    doc_.oldest = ticks();
    doc_.isStale = !result.ok;
    lastAutosave_ = result;
    return result;
}

TvDocumentResult Session::saveState(const Turn& turn, UnsavedWork::Place place) {
    Draft draft;
    const std::string name = doc_.name;
    const int edits = doc_.edits;
    Fault fault = doc_.work.begin(draft, name, place);
    if (!fault) fault = draft.fill(content_);
    if (turn.hasEnded()) return failure({Reason::closed, 0}, name, Doing::writing);
    if (!fault) fault = doc_.work.finish(draft);
    if (fault) return failure(fault, name, Doing::writing);
    doc_.isStale = doc_.edits != edits;
    return {};
}

}  // namespace toolbox::document
