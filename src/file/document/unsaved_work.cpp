// Records, the places of states, and the order in which both come and go.
#include "file/document/unsaved_work.h"

#include <utility>

#include "file/document/block_document.h"
#include "file/file_system.h"

namespace toolbox::document {
namespace {

using platform::ErrorCode;

constexpr unsigned long kNamesBlock = 1;
constexpr std::size_t kDigits = 8;

std::string& chosenFolder() {
    static std::string folder;
    return folder;
}

/// A record as the content of a file.
class Record final : public TvDocumentContent {
  public:
    Record() = default;
    explicit Record(RecordNames names) : names_(std::move(names)) {}

    [[nodiscard]] const RecordNames& names() const { return names_; }

    int write(TarvFileWrite& file) override {
        TarvBlocFile block;
        block.setID(kNamesBlock);
        put(block, names_.document);
        put(block, names_.state);
        return file.writeBloc(block);
    }

    int read(TarvFileRead& file) override {
        TarvBlocFile block;
        if (!file.getBloc(kNamesBlock, block)) return NotRead;
        return get(block, names_.document) && get(block, names_.state) ? Done : NotRead;
    }

  private:
    static void put(TarvBlocFile& block, const std::string& text) {
        const int n = static_cast<int>(text.size());
        block << n;
        block.writeString(text.data(), n);
    }
    /// False when the block does not go on for so long.
    static bool get(TarvBlocFile& block, std::string& text) {
        int n = 0;
        if (block.getLen() - block.getOffset() < sizeof n) return false;
        block >> n;
        if (n < 0 || static_cast<unsigned>(n) > block.getLen() - block.getOffset()) return false;
        text.assign(static_cast<std::size_t>(n), '\0');
        block.readString(text.data(), n);
        return true;
    }

    RecordNames names_;
};

platform::ErrorCode makeFolder(const std::string& folder) {
    return folder.empty() ? ErrorCode{ERROR_PATH_NOT_FOUND} : files().createFolder(folder.c_str());
}

std::string programName() {
    std::string path = platform::current().system->programPath();
    path.erase(0, path.find_last_of("/\\") + 1);
    const std::size_t dot = path.rfind('.');
    if (dot != std::string::npos && dot > 0) path.resize(dot);
    return path.empty() ? "program" : path;
}

}  // namespace

std::string recoveryFolder() {
    if (!chosenFolder().empty()) return chosenFolder();
    const std::string settings = platform::current().system->settingsFolder();
    return settings.empty() ? settings : settings + "/recovery/" + programName();
}

void setRecoveryFolder(std::string folder) {
    chosenFolder() = std::move(folder);
}

std::optional<RecordNames> readRecord(const std::string& name) {
    TarvFileRead file;
    Record record;
    if (openQuietly(file, name) || !isWhole(file) || record.read(file) != TvDocumentContent::Done)
        return std::nullopt;
    return record.names();
}

bool isStateOf(std::string_view own, std::string_view document) {
    document.remove_prefix(document.find_last_of("/\\") + 1);
    return own.size() == document.size() + kBeside.size() + kDigits && own.starts_with(document) &&
           own.substr(document.size()).starts_with(kBeside);
}

/// A record can be written where the recovery folder can. Without one the state is found all the
/// same when its document is opened.
void UnsavedWork::writeRecord() {
    if (record_.empty()) {
        const std::string folder = recoveryFolder();
        if (makeFolder(folder) != ERROR_SUCCESS) return;
        record_ = folder + '/' + digits_ + std::string(kRecordEnd);
        (void)lock_.take(record_);
    }
    Record content({document_, next_});
    Draft draft;
    if (!draft.create(record_, {}) && !draft.fill(content)) (void)draft.putInPlace();
}

Fault UnsavedWork::begin(Draft& draft, const std::string& document, Place place) {
    if (digits_.empty()) digits_ = digitsOfChance();
    const std::string beside = document + std::string(kBeside) + digits_;
    const std::string away = recoveryFolder() + '/' + digits_ + std::string(kStateEnd);
    next_ = place == Place::beside ? beside : away;
    if (place == Place::recoveryFolder) {
        const platform::ErrorCode error = makeFolder(recoveryFolder());
        if (error != ERROR_SUCCESS) return faultOf(error, Doing::writing, next_);
    }
    document_ = document;
    return draft.create(next_, document);
}

Fault UnsavedWork::finish(Draft& draft) {
    if (record_.empty() || next_ != state_) writeRecord();
    const platform::ErrorCode error = draft.putInPlace();
    if (error != ERROR_SUCCESS) return faultOf(error, Doing::writing, next_);
    const std::string older = std::exchange(state_, next_);
    if (!older.empty() && older != state_) discard(older);
    return {};
}

void UnsavedWork::adopt(const TvRecoverable& work, DocumentLock lock) {
    record_ = work.record.str();
    state_ = work.state.str();
    lock_ = std::move(lock);
}

void UnsavedWork::throwAway() {
    if (!state_.empty()) discard(state_);
    if (!record_.empty()) discard(record_);
    leave();
}

void UnsavedWork::leave() {
    lock_.release();
    record_.clear();
    state_.clear();
}

}  // namespace toolbox::document
