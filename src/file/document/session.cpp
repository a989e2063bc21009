// Turns, the end of a document, and what can be asked about it.
#include "file/document/session.h"

#include <algorithm>
#include <utility>

#include "file/file_system.h"

namespace toolbox::document {

Turn::Turn(Session& session)
    : session_(session), document_(session.document_), isMine_(!session.isBusy_) {
    if (isMine_) session_.isBusy_ = true;
}

Turn::~Turn() {
    if (isMine_) session_.isBusy_ = false;
}

bool Turn::hasEnded() const {
    return session_.document_ != document_;
}

Session::Session(TvDocumentContent& content, TvDocumentDecisions* decisions)
    : content_(content), decisions_(decisions ? decisions : &silent_) {}

void Session::close() {
    ++document_;
    doc_.work.throwAway();
    doc_ = Opened();
}

void Session::abandon() {
    if (!doc_.isChanged) return close();
    ++document_;
    doc_.work.leave();
    doc_ = Opened();
}

TvDocumentFile::DiskState Session::onDisk() const {
    if (doc_.name.empty()) return TvDocumentFile::SameOnDisk;
    Mark now;
    const platform::ErrorCode error = look(doc_.name, doc_.mark, now);
    // What cannot be looked at is not known to be another file.
    const bool isGone = error == ERROR_SUCCESS ? !now.isThere
                                               : faultOf(error, Doing::reading, doc_.name).reason ==
                                                     Reason::folderGone;
    if (isGone)
        return doc_.mark.isThere ? TvDocumentFile::GoneFromDisk : TvDocumentFile::SameOnDisk;
    if (error != ERROR_SUCCESS || doc_.mark.isSame(now)) return TvDocumentFile::SameOnDisk;
    return TvDocumentFile::OtherOnDisk;
}

void Session::setGenerations(int count) {
    constexpr int kMost = 99;
    generations_ = std::clamp(count, 0, kMost);
}

void Session::setAutosave(int edits, int seconds) {
    autosaveEdits_ = std::max(edits, 0);
    autosaveSeconds_ = std::max(seconds, 0);
}

std::string fullNameOf(const std::string& name) {
    std::string full;
    (void)files().fullName(name.c_str(), full);
    return full;
}

}  // namespace toolbox::document
