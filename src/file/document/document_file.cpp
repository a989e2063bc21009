// The public face of documents. Each operation keeps the session alive, whatever is called.
#include "file/document/recovery.h"
#include "file/document/session.h"
#include "toolbox/document_files.h"

using toolbox::document::Session;

int TvDocumentContent::readRescued(TarvFileRead& file,
                                   const std::vector<TvDocumentLoss>& /*missing*/) {
    return read(file);
}

TvDocumentDecisions::Locked TvDocumentDecisions::locked(const RWCString& /*name*/,
                                                        const TvDocumentHolder& /*holder*/,
                                                        bool /*mayTakeOver*/) {
    return OpenReadOnly;
}
TvDocumentDecisions::Changed TvDocumentDecisions::changedOnDisk(const RWCString& /*name*/,
                                                                RWCString& /*other*/) {
    return CancelChanged;
}
int TvDocumentDecisions::openRescued(const RWCString& /*name*/,
                                     const std::vector<TvDocumentLoss>& /*missing*/) {
    return 0;
}
int TvDocumentDecisions::writeInPlace(const RWCString& /*name*/, const TvDocumentResult& /*why*/) {
    return 0;
}
TvDocumentDecisions::Recovery TvDocumentDecisions::recoverWork(const TvRecoverable& /*work*/) {
    return Later;
}

TvDocumentFile::TvDocumentFile(TvDocumentContent& content, TvDocumentDecisions* decisions)
    : session_(std::make_shared<Session>(content, decisions)) {}

TvDocumentFile::~TvDocumentFile() {
    session_->abandon();
}

TvDocumentResult TvDocumentFile::open(const RWCString& name, How how) {
    const auto session = session_;
    return session->open(name.str(), how);
}

TvDocumentResult TvDocumentFile::close() {
    session_->close();
    return {};
}

TvDocumentResult TvDocumentFile::save() {
    const auto session = session_;
    return session->save();
}

TvDocumentResult TvDocumentFile::saveAs(const RWCString& name) {
    const auto session = session_;
    return session->saveTo(name.str(), true);
}

TvDocumentResult TvDocumentFile::copyTo(const RWCString& name) {
    const auto session = session_;
    return session->saveTo(name.str(), false);
}

TvDocumentResult TvDocumentFile::reload() {
    const auto session = session_;
    return session->reload();
}

TvDocumentResult TvDocumentFile::recover(const TvRecoverable& work) {
    const auto session = session_;
    return session->recover(work);
}

TvDocumentResult TvDocumentFile::autosave() {
    const auto session = session_;
    return session->autosave();
}

int TvDocumentFile::idle() {
    const auto session = session_;
    return session->idle();
}

TvDocumentFile::DiskState TvDocumentFile::changedOnDisk() const {
    return session_->onDisk();
}
RWCString TvDocumentFile::getName() const {
    return RWCString(session_->opened().name);
}
int TvDocumentFile::isReadOnly() const {
    return session_->opened().isReadOnly ? 1 : 0;
}
int TvDocumentFile::hasLock() const {
    return session_->opened().lock.isTaken() ? 1 : 0;
}
int TvDocumentFile::isChanged() const {
    return session_->opened().isChanged ? 1 : 0;
}
void TvDocumentFile::setGenerations(int count) {
    session_->setGenerations(count);
}
void TvDocumentFile::setAutosave(int edits, int seconds) {
    session_->setAutosave(edits, seconds);
}
void TvDocumentFile::edited(int count) {
    session_->edited(count);
}
const TvDocumentResult& TvDocumentFile::lastAutosave() const {
    return session_->lastAutosave();
}

std::vector<TvRecoverable> TvDocumentFile::recoverable(const std::vector<RWCString>& documents) {
    return toolbox::document::recoverable(documents, {});
}

int TvDocumentFile::discard(const TvRecoverable& work) {
    toolbox::DocumentLock lock;
    return toolbox::document::takeUp(work, lock) && toolbox::document::remove(work) ? 1 : 0;
}

void TvDocumentFile::setRecoveryFolder(const RWCString& folder) {
    toolbox::document::setRecoveryFolder(folder.str());
}
RWCString TvDocumentFile::recoveryFolder() {
    return RWCString(toolbox::document::recoveryFolder());
}
