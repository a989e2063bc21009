// The insides of TvDocumentFile: one document, what is known of its file, and its operations.
//
// Operations call the application, which may close the document or destroy the TvDocumentFile. A
// Turn knows: whoever holds one asks it after each call, and touches the document no more once it
// has ended. The session itself lives as long as an operation runs.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "file/document/document_lock.h"
#include "file/document/draft.h"
#include "file/document/unsaved_work.h"
#include "toolbox/document_files.h"

namespace toolbox::document {

/// The document that is open.
struct Opened {
    std::string name;  ///< full; empty while it has none
    Mark mark;         ///< of its file, when that was read or written last
    DocumentLock lock;
    UnsavedWork work;
    bool isReadOnly = false;
    bool isDamaged = false;  ///< its file is one that was rescued, and must be kept
    bool isChanged = false;
    bool isStale = false;      ///< there were edits since the state was saved
    int edits = 0;             ///< so many
    std::uint32_t oldest = 0;  ///< when the first of them was, in milliseconds
};

class Session;

/// The time of one operation.
class Turn {
  public:
    explicit Turn(Session& session);
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    /// False while another operation of the session waits for the application.
    [[nodiscard]] bool isMine() const { return isMine_; }
    /// The document was closed meanwhile.
    [[nodiscard]] bool hasEnded() const;

  private:
    Session& session_;
    unsigned document_;
    bool isMine_;
};

class Session {
  public:
    Session(TvDocumentContent& content, TvDocumentDecisions* decisions);

    [[nodiscard]] TvDocumentResult open(const std::string& given, TvDocumentFile::How how);
    [[nodiscard]] TvDocumentResult recover(const TvRecoverable& work);
    [[nodiscard]] TvDocumentResult reload();
    [[nodiscard]] TvDocumentResult save();
    /// Saves under another name, which the document has afterwards if it `moves`.
    [[nodiscard]] TvDocumentResult saveTo(const std::string& given, bool moves);
    [[nodiscard]] TvDocumentResult autosave();
    /// A clean end.
    void close();
    /// The end without close(): unsaved work stays.
    void abandon();

    [[nodiscard]] TvDocumentFile::DiskState onDisk() const;
    [[nodiscard]] const Opened& opened() const { return doc_; }
    [[nodiscard]] const TvDocumentResult& lastAutosave() const { return lastAutosave_; }
    void setGenerations(int count);
    void setAutosave(int edits, int seconds);
    void edited(int count);
    [[nodiscard]] int idle();

  private:
    friend class Turn;

    /// A save on its way to a file.
    struct Saving {
        std::string name;    ///< as people know it
        std::string target;  ///< where its links lead
        Mark expected;       ///< what is to be replaced
        bool keepsDamaged = false;
        bool moves = false;  ///< for SaveAs: the document takes the other name
    };
    /// What came of asking for a lock.
    enum class Locking { ours, none, theirs, failed };

    // session_open.cpp
    [[nodiscard]] Locking lock(const Turn& turn, const std::string& name, bool saves,
                               DocumentLock& lock, TvDocumentResult& result);
    [[nodiscard]] bool offerWork(const Turn& turn, Opened& next, TvDocumentResult& result);
    [[nodiscard]] TvDocumentResult read(const Turn& turn, Opened& next, bool rescues);
    [[nodiscard]] TvDocumentResult readWhole(const Turn& turn, Opened& next, TarvFileRead& file);
    [[nodiscard]] TvDocumentResult readRescued(const Turn& turn, Opened& next, bool rescues,
                                               bool isBlockFile);
    [[nodiscard]] TvDocumentResult readWork(const Turn& turn, Opened& next,
                                            const TvRecoverable& work, DocumentLock lock);
    [[nodiscard]] TvDocumentResult reload(const Turn& turn);

    // session_save.cpp
    [[nodiscard]] TvDocumentResult saveHere(const Turn& turn);
    [[nodiscard]] TvDocumentResult saveElsewhere(const Turn& turn, const std::string& given,
                                                 bool moves);
    [[nodiscard]] std::optional<TvDocumentResult> lostLock() const;
    [[nodiscard]] TvDocumentResult write(const Turn& turn, Saving& saving, Mark& written);
    [[nodiscard]] TvDocumentResult replace(const Turn& turn, Saving& saving, Draft& draft);
    [[nodiscard]] Fault keepOlder(const Saving& saving, TvDocumentResult& result) const;
    [[nodiscard]] bool mayReplace(const Saving& saving) const;
    [[nodiscard]] std::optional<TvDocumentResult> askIfChanged(const Turn& turn, Saving& saving);
    [[nodiscard]] TvDocumentResult writeInPlace(const Turn& turn, Saving& saving, const Fault& why,
                                                Mark& written);
    void saved(const Mark& written);

    // session_autosave.cpp
    [[nodiscard]] TvDocumentResult saveState(const Turn& turn, UnsavedWork::Place place);

    TvDocumentContent& content_;
    TvDocumentDecisions* decisions_;
    TvDocumentDecisions silent_;
    Opened doc_;
    TvDocumentResult lastAutosave_;
    unsigned document_ = 0;  ///< counts the documents that were open
    bool isBusy_ = false;
    int generations_ = 1;
    int autosaveEdits_ = 50;
    int autosaveSeconds_ = 60;
    std::uint32_t refreshed_ = 0;  ///< when the lock gave its last sign of life
};

/// Copies the file to its backup name, and makes room for that among the older ones. 0 when it is
/// there, when there is nothing to copy, and when `generations` is 0.
[[nodiscard]] platform::ErrorCode backUpDocument(const std::string& name, int generations);

/// The name from the root on.
[[nodiscard]] std::string fullNameOf(const std::string& name);

}  // namespace toolbox::document
