// Records lead to states; states beside documents are found by their names as well, for a record
// may be lost, or another user's.
#include "file/document/recovery.h"

#include <algorithm>
#include <set>

#include "file/document/block_document.h"
#include "file/document/unsaved_work.h"
#include "file/file_system.h"
#include "file/replacement.h"

namespace toolbox::document {
namespace {

bool isHeld(const LockReport& report) {
    return report.outcome == LockOutcome::held || report.outcome == LockOutcome::elsewhere;
}

std::string folderOf(const std::string& name) {
    const std::size_t separator = lastSeparator(name);
    return separator == std::string::npos ? std::string() : name.substr(0, separator + 1);
}

class Search {
  public:
    void records() {
        if (recoveryFolder().empty()) return;
        const std::string folder = recoveryFolder() + '/';
        removeLeftovers(folder + '*');
        for (const platform::FoundFile& found :
             files().find((folder + '*' + std::string(kRecordEnd)).c_str()))
            record(folder + found.name);
        for (const platform::FoundFile& found :
             files().find((folder + '*' + std::string(kRecordEnd) + std::string(kLockEnd)).c_str()))
            lockWithoutRecord(folder + found.name);
    }

    /// States beside a document, unless somebody works on it.
    void beside(const std::string& document, bool isOurs) {
        if (!isOurs && isHeld(DocumentLock::look(document))) return;
        const std::string pattern = document + std::string(kBeside) + '*';
        removeLeftovers(pattern);
        for (const platform::FoundFile& found : files().find(pattern.c_str())) {
            const std::string state = folderOf(document) + found.name;
            if (isStateOf(found.name, document)) add(document, state, {});
        }
    }

    [[nodiscard]] std::vector<TvRecoverable> done() {
        std::ranges::sort(items_, {}, &TvRecoverable::saved);
        return std::move(items_);
    }

  private:
    /// Removes the lock of a program that ended before it wrote its record, or after it removed it.
    static void lockWithoutRecord(std::string name) {
        name.resize(name.size() - kLockEnd.size());
        DocumentLock lock;
        if (!files().exists(name.c_str())) (void)lock.take(name);
    }

    void record(const std::string& name) {
        const std::optional<RecordNames> names = readRecord(name);
        DocumentLock lock;
        if (isHeld(lock.take(name))) {
            if (names) seen_.insert(names->state);
            return;
        }
        if (!names)
            add({}, name, name);
        else if (files().exists(names->state.c_str()))
            add(names->document, names->state, name);
        else
            discard(name);  // the program ended before the state was written
    }

    void add(const std::string& document, const std::string& state, const std::string& record) {
        if (!seen_.insert(state).second) return;
        TvRecoverable item;
        item.document = RWCString(document);
        item.state = RWCString(state);
        item.record = RWCString(record);
        describe(item);
        TarvFileRead work;
        item.whole = state != record && !openQuietly(work, state) && isWhole(work);
        if (item.whole && standsIn(document, work)) {
            work.close();
            remove(item);
        } else {
            items_.push_back(item);
        }
    }

    static void describe(TvRecoverable& item) {
        constexpr std::int64_t kPerSecond = 1'000'000'000;
        const auto found = files().find(item.state.c_str());
        if (found.empty()) return;
        item.size = found.front().size;
        item.saved = static_cast<std::time_t>(found.front().written / kPerSecond);
    }

    static bool standsIn(const std::string& document, TarvFileRead& work) {
        TarvFileRead file;
        return !document.empty() && !openQuietly(file, document) && isWhole(file) &&
               holdTheSame(work, file);
    }

    std::set<std::string> seen_;  // states, of running programs too
    std::vector<TvRecoverable> items_;
};

}  // namespace

std::vector<TvRecoverable> recoverable(const std::vector<RWCString>& documents,
                                       const std::string& ours) {
    Search search;
    search.records();
    for (const RWCString& each : documents) {
        std::string full;
        (void)files().fullName(each.c_str(), full);
        search.beside(full, full == ours);
    }
    return search.done();
}

bool remove(const TvRecoverable& work) {
    if (!work.state.isNull()) discard(work.state.str());
    const bool isGone = work.state.isNull() || !files().exists(work.state.c_str());
    if (isGone && !work.record.isNull()) discard(work.record.str());
    return isGone && (work.record.isNull() || !files().exists(work.record.c_str()));
}

bool takeUp(const TvRecoverable& work, DocumentLock& lock) {
    // Without a record the document's own lock decides.
    if (work.record.isNull()) return true;
    return !isHeld(lock.take(work.record.str()));
}

}  // namespace toolbox::document
