// The state of work that was not saved: a file beside the document, or in the recovery folder, and
// a record in the recovery folder that leads to it.
//
// The record is written before the state and removed after it, so that a state is found whenever
// the program ends. It is a block file whose one block holds two names. A lock on the record says
// that the program still runs.
#pragma once

#include <optional>
#include <string>

#include "file/document/document_lock.h"
#include "file/document/draft.h"

namespace toolbox::document {

/// Names in a record. Empty where there is none.
struct RecordNames {
    std::string document;
    std::string state;
};

/// The names in a record; none when it is damaged.
[[nodiscard]] std::optional<RecordNames> readRecord(const std::string& name);

/// Whether `own` is the name, without folder, of a state of the document `document`.
[[nodiscard]] bool isStateOf(std::string_view own, std::string_view document);

/// Ends of file names: of records, and of states in the recovery folder.
inline constexpr std::string_view kRecordEnd = ".unsaved";
inline constexpr std::string_view kStateEnd = ".state";
/// What follows a document's name in that of a state beside it, before eight digits.
inline constexpr std::string_view kBeside = ".autosave-";

/// The recovery folder, without a separator at its end; empty when the system names none.
[[nodiscard]] std::string recoveryFolder();
void setRecoveryFolder(std::string folder);

/// The unsaved work of one document.
class UnsavedWork {
  public:
    /// Where a state goes.
    enum class Place { beside, recoveryFolder };

    /// There is a state on the disk.
    [[nodiscard]] bool exists() const { return !state_.empty(); }
    [[nodiscard]] const std::string& state() const { return state_; }

    /// Chooses the file for the next state, and makes `draft` beside it. `document` is empty for
    /// one without a name.
    [[nodiscard]] Fault begin(Draft& draft, const std::string& document, Place place);
    /// Has the record lead to the state, and puts that in place; an older one elsewhere goes.
    [[nodiscard]] Fault finish(Draft& draft);
    /// Takes up the work of another program, with the lock of its record.
    void adopt(const TvRecoverable& work, DocumentLock lock);
    /// Removes state and record, if there are any.
    void throwAway();
    /// Leaves them to whoever comes next.
    void leave();

  private:
    void writeRecord();

    std::string digits_;
    std::string record_;  ///< empty while there is none
    std::string state_;
    std::string document_;
    std::string next_;   ///< the state that begin() chose
    DocumentLock lock_;  ///< on the record
};

}  // namespace toolbox::document
