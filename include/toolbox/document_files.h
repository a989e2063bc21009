// Documents: the file that an application edits for its user, kept so that nothing is ever lost.
//
// TvDocumentFile stands between the application's content and the disk. It opens, locks, saves,
// backs up, keeps the state of unsaved work beside the document and finds it again after a crash.
// The content is written to and read from a block file (block_files.h).
//
//     class Plan : public TvDocumentContent { ...write and read... };
//
//     Plan plan;
//     TvDocumentFile document(plan);            // a second argument answers questions
//     TvDocumentResult opened = document.open("plan.dat");
//     if (!opened) say(opened.text());          // a sentence in the user's language
//     plan.change();
//     document.edited();                        // after each edit
//     document.idle();                          // in the message loop: saves the state when due
//     if (!document.save()) ...
//     document.close();                         // a clean end: the state is thrown away
//
// What a person has to decide is asked through TvDocumentDecisions. Without one, or where it does
// not override, the answer is the one that loses nothing: read-only instead of taking a lock over,
// no replacement of what somebody else wrote, no writing in place, no recovery without being asked.
//
// What is saved has a list of checksums (TarvFileWrite::setChecksums), is written beside, read
// back, and renamed: at every moment the document is the old one or the new one, whole. Before the
// rename the file on the disk is compared with the one that was opened. Between that look and the
// rename lies a moment in which a program that takes no lock may still write: its version is then
// replaced, and no backup has it.
//
// The application's operations and decisions may do anything, destroy, close or open the
// TvDocumentFile included. What was under way then ends with the reason `closed`, and nothing was
// replaced. While an operation waits in one of them another one of the same object that reads or
// writes gives `busy`.
//
// Names are bytes in Windows-1252, as in files.h. Times are shown to people and decide nothing: the
// clock may be wrong. All calls come from the user-interface thread.
#pragma once

#include <cstdint>
#include <ctime>
#include <memory>
#include <optional>
#include <vector>

#include "toolbox/block_files.h"
#include "toolbox/export.h"
#include "toolbox/platform.h"
#include "toolbox/strings.h"

namespace toolbox::document {
class Session;
}  // namespace toolbox::document

class TvDocumentFile;

/// Who has a document open.
struct TvDocumentHolder {
    RWCString user;              ///< empty when not known
    RWCString machine;           ///< empty when not known
    unsigned long process = 0;   ///< its number on that machine; 0 when not known
    std::time_t since = 0;       ///< by that machine's clock; 0 when not known
    long age = -1;               ///< seconds since its lock was last written; -1 when not known
    bool onThisMachine = false;  ///< the program runs here: its lock is never taken over
};

/// Something that a damaged file has lost, or that may not be what was written.
struct TvDocumentLoss {
    /// What is known of it.
    enum Kind {
        Missing,   ///< bytes that no block could be made of
        Doubtful,  ///< a block that was kept though something about it is wrong
        CutOff,    ///< a block that the file ends in
        Index,     ///< the master index or the list of checksums; no block is lost by that
    };
    Kind kind = Missing;              ///< see there
    std::optional<std::uint32_t> id;  ///< of the block, where it is known
    std::uint64_t from = 0;           ///< its first byte in the file
    std::uint64_t to = 0;             ///< the byte after its last

    /// One line for a list, in the language of GMSG.
    [[nodiscard]] TB_API RWCString text() const;
};

/// How an operation on a document ended.
struct TvDocumentResult {
    /// Why. `done` alone says that there is nothing to tell.
    enum Reason {
        done,
        cancelled,         ///< the decision was to do nothing
        closed,            ///< the application closed or destroyed the document meanwhile
        busy,              ///< another operation of the same document waits for the application
        alreadyOpen,       ///< a document is open: close it first
        noName,            ///< the document has no name yet, or the name given is empty
        notThere,          ///< there is no such file
        folderGone,        ///< its folder, drive or share is not there
        nameTooLong,       ///< more characters than the system takes (259 on Windows)
        badName,           ///< what the system takes for no name of a file
        noRight,           ///< the user may not read or write it
        mediumReadOnly,    ///< the disk is write-protected
        documentReadOnly,  ///< it was opened read-only: save it under another name
        inUse,             ///< somebody has it open; `holder` says who, where that is known
        takenOver,         ///< somebody took the lock over: save under another name
        changedOnDisk,     ///< another program wrote the file since it was opened
        diskFull,          ///< no room, or the user's quota is used up
        tooLarge,          ///< more than a block file, or the file system, can hold
        deviceFailed,      ///< the disk or the network could not read or write
        noMemory,          ///< not enough memory
        damaged,           ///< not whole; open it rescued
        notADocument,      ///< no block file, or the application does not know what it holds
        newerVersion,      ///< a later version of the application wrote it
        contentRefused,    ///< the application's write() gave 0
        other,             ///< see `code`
    };

    bool ok = true;                         ///< what was asked for was done
    Reason reason = done;                   ///< with `ok`, what there is to tell all the same
    toolbox::platform::ErrorCode code = 0;  ///< of the system; 0 when it was not the cause
    RWCString name;                         ///< the file that it is about
    /// Where the state that could not be put in place lies, or the damaged original; empty when
    /// there is no such file.
    RWCString kept;
    /// The backup could not be made, though the document was saved; 0 when it was.
    toolbox::platform::ErrorCode backup = 0;
    /// Of the lock, with `inUse` and `takenOver`.
    std::optional<TvDocumentHolder> holder;
    /// After the document was opened rescued, or found damaged.
    std::vector<TvDocumentLoss> missing;
    /// The operation tried to read; what is on the disk was not touched.
    bool reading = false;

    /// Same as `ok`.
    explicit operator bool() const { return ok; }
    /// What happened, what was kept and where, what to do next: sentences in the language of GMSG.
    /// Empty for a success of which there is nothing to tell.
    [[nodiscard]] TB_API RWCString text() const;
};

/// What an application edits, as the document sees it.
class TB_API TvDocumentContent {
  public:
    virtual ~TvDocumentContent() = default;

    /// What read() found. Any other number counts as NotRead.
    enum ReadResult : int { NotRead = 0, Done = 1, NewerVersion = 2 };

    /// Writes all that the application wants to find again. The file is open, keeps checksums and
    /// is committed and closed by the caller; header and blocks are the application's, but for the
    /// identifiers that block_files.h keeps. 0 when it cannot. Called for every save, copy and
    /// autosave; must not change the content.
    virtual int write(TarvFileWrite& file) = 0;
    /// Replaces the content by that of a file, which is open and whole: every block that its index
    /// names can be had. Unless it returns Done the content must be what it was before.
    virtual int read(TarvFileRead& file) = 0;
    /// The same from what could be got back out of a damaged file; `missing` says what was not. By
    /// default read().
    virtual int readRescued(TarvFileRead& file, const std::vector<TvDocumentLoss>& missing);
};

/// Unsaved work that a program which ended badly has left.
struct TvRecoverable {
    RWCString document;      ///< full name of the document; empty for one that had no name yet
    RWCString state;         ///< full name of the file that holds the work
    RWCString record;        ///< what leads to it, in the recovery folder; empty when that is lost
    std::time_t saved = 0;   ///< when the state was saved, to be shown; 0 when not known
    std::uint64_t size = 0;  ///< of the state, in bytes
    bool whole = false;      ///< it can be opened; the others can only be looked at or thrown away
};

/// What a person decides. Each default loses nothing.
class TB_API TvDocumentDecisions {
  public:
    virtual ~TvDocumentDecisions() = default;

    /// What to do about a document that somebody has open.
    enum Locked { OpenReadOnly, TakeOver, CancelLocked };
    /// `mayTakeOver` is false when its holder is alive on this machine; TakeOver then counts as
    /// OpenReadOnly. For a name that is to be saved to, OpenReadOnly counts as CancelLocked. By
    /// default OpenReadOnly.
    virtual Locked locked(const RWCString& name, const TvDocumentHolder& holder, bool mayTakeOver);

    /// What to do about a file that is no longer the one that was opened.
    enum Changed { Replace, SaveAs, TakeTheirs, CancelChanged };
    /// At a save. Replace puts the other's version into the backup, where there are backups, and
    /// replaces it; SaveAs saves under the name put into `other`; TakeTheirs reads what is on the
    /// disk, and the unsaved work is gone. By default CancelChanged.
    virtual Changed changedOnDisk(const RWCString& name, RWCString& other);

    /// Whether to open what could be got back out of a damaged file. The file itself is not
    /// touched, and is kept when the document is saved later. By default 0.
    virtual int openRescued(const RWCString& name, const std::vector<TvDocumentLoss>& missing);

    /// Whether to write into the file itself, because no file can be made beside it (`why`). What
    /// is to be saved is in the recovery folder, whole, until it stands in the file; but a reader
    /// may meanwhile see half of it. By default 0.
    virtual int writeInPlace(const RWCString& name, const TvDocumentResult& why);

    /// What to do about unsaved work of a document that is being opened.
    enum Recovery { Recover, Later, ThrowAway };
    /// Recover opens it as a changed document. By default Later: the document is opened as it is on
    /// the disk, and the unsaved work stays. Asked for whole ones only.
    virtual Recovery recoverWork(const TvRecoverable& work);
};

/// One document and its file.
class TB_API TvDocumentFile {
  public:
    /// A document without a name, not changed. Content and decisions are borrowed and have to live
    /// as long; without decisions the defaults hold.
    explicit TvDocumentFile(TvDocumentContent& content, TvDocumentDecisions* decisions = nullptr);
    /// Lets go of the lock. Without a close() before, work that was not saved stays recoverable:
    /// its state as it was last written.
    ~TvDocumentFile();
    TvDocumentFile(const TvDocumentFile&) = delete;
    TvDocumentFile& operator=(const TvDocumentFile&) = delete;

    /// How a document is opened. Whole also takes a damaged one when the decision is so.
    enum How { Whole, ReadOnly, Rescued };
    /// Opens the document of that name and has the content read it. Takes the lock, but for
    /// ReadOnly; where somebody else has it the document may be opened read-only, with the reason
    /// `inUse` and the holder. Where no lock can be made (a folder that cannot be written) it is
    /// opened all the same. Rescued opens what can be got back out of a damaged file, with
    /// `missing`, and the document then counts as changed; a whole file is opened as usual. On
    /// failure this is as it was, and so is the content.
    TvDocumentResult open(const RWCString& name, How how = Whole);
    /// A clean end: lets go of the lock, throws away the state, and this is a document without a
    /// name that was not changed. Does not save and does not ask: changes are lost.
    TvDocumentResult close();

    /// Saves under the document's name, changed or not.
    TvDocumentResult save();
    /// Saves under another name, which is the document's from then on, with its lock; the old file
    /// stays as it was last saved. An existing file of that name is replaced, and backed up as by
    /// save(); when somebody has it open, `locked` is asked. A lock on the old name hinders
    /// nothing.
    TvDocumentResult saveAs(const RWCString& name);
    /// Writes a copy; the document keeps its name and counts as changed if it did.
    TvDocumentResult copyTo(const RWCString& name);
    /// Reads the document again from the disk; unsaved work is gone.
    TvDocumentResult reload();

    /// What one look at the disk finds.
    enum DiskState { SameOnDisk, OtherOnDisk, GoneFromDisk };
    /// Whether the file is the one that was opened or saved last: its size, its header, and its end
    /// with the list of checksums; the time where it has no such list. For a window that is
    /// activated: one file is opened and read at two places. SameOnDisk without a name.
    [[nodiscard]] DiskState changedOnDisk() const;

    /// Full name; empty while there is none.
    [[nodiscard]] RWCString getName() const;
    /// 1 when save() would give `documentReadOnly`: opened so, or somebody else has the lock.
    [[nodiscard]] int isReadOnly() const;
    /// 1 while this holds the document's lock.
    [[nodiscard]] int hasLock() const;
    /// 1 when there is work that was not saved.
    [[nodiscard]] int isChanged() const;

    /// How many older versions stay beside the document: plan.bak (APIFile::backupName), plan.bak2
    /// and so on, the newest first. 1 from the start, 0 for none, at most 99.
    void setGenerations(int count);

    /// When the state is saved: after so many edits, or once the oldest unsaved edit is so many
    /// seconds old; 0 turns either off. 50 edits and 60 seconds from the start.
    void setAutosave(int edits, int seconds);
    /// Tells of an edit, or of several.
    void edited(int count = 1);
    /// Saves the state when it is due; to be called from the message loop whenever it has nothing
    /// to do. 0 when the state was due and could not be saved: lastAutosave() says why, and the
    /// next try is made when it is due again.
    int idle();
    /// Saves the state at once, beside the document under its name followed by ".autosave-" and
    /// eight digits, or in the recovery folder where the document has no name, is read-only or
    /// nothing can be made beside it. Nothing to do while the document is not changed. The document
    /// itself is not touched.
    TvDocumentResult autosave();
    /// Result of the last time that the state was saved; `done` before.
    [[nodiscard]] const TvDocumentResult& lastAutosave() const;

    /// Unsaved work that programs of this user have left, and what lies beside these documents,
    /// oldest first. Every whole one whose content differs from its document's is in it, whatever
    /// the dates say, and every one that is not whole. Not in it is work of programs that still
    /// run. Work that stands in its document is thrown away.
    [[nodiscard]] static std::vector<TvRecoverable> recoverable(
        const std::vector<RWCString>& documents = {});
    /// Opens unsaved work as a changed document of its name, with its lock, as open() does; save()
    /// then writes the document. The work itself stays until the document is saved, closed, or its
    /// state saved anew. `inUse` when a program has taken it up already.
    TvDocumentResult recover(const TvRecoverable& work);
    /// Throws unsaved work away; 1 when it is gone.
    static int discard(const TvRecoverable& work);

    /// The folder with the records of unsaved work, and the work that cannot lie beside its
    /// document. From the start it is the program's own below the user's settings
    /// (platform::SystemInfo::settingsFolder). An empty name restores that. It is made when needed.
    static void setRecoveryFolder(const RWCString& folder);
    static RWCString recoveryFolder();

  private:
    std::shared_ptr<toolbox::document::Session> session_;  ///< outlives this where it calls back
};
