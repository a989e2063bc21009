// Who works on a document: a file beside it that says so to every other program.
//
// The lock of "plan.dat" is "plan.dat.lock": a text in UTF-8 that says who has it, where and since
// when. It is there, whole, from the first moment, held open with a share mode that lets others
// read it and not write, and removed at the end. Where the folder's file system keeps share modes,
// the system itself knows whether the holder lives; where it does not, the process that the text
// names tells it, on the machine that the text names.
//
// A lock whose holder has ended on this machine was left by a crash: the next one takes it over
// without asking. Of a lock from another machine, or one that cannot be read, nobody can tell that:
// a person decides, by its age. No clock decides anything.
//
// All names of a document lead to one lock: symbolic links are followed, on Windows case does not
// count and short names are spelled out. A hard link is a document of its own, which it becomes
// anyway with the first save.
//
// What remains: a program that does not look for locks is not held up. Where share modes mean
// nothing, a release may remove the lock of somebody who took it over in the same moment.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "file/shared_file.h"
#include "toolbox/platform.h"

namespace toolbox {

namespace locks {
struct LockPlace;
}  // namespace locks

/// What follows a document's name in that of its lock.
inline constexpr std::string_view kLockEnd = ".lock";

/// Who holds a lock, or held it. Texts are in Windows-1252 and empty where they are not known.
struct LockHolder {
    std::string user;           ///< the user's name
    std::string host;           ///< the machine's name
    std::string machine;        ///< SystemInfo::machineIdentity()
    std::string boot;           ///< SystemInfo::bootIdentity()
    std::uint32_t process = 0;  ///< the process, on that machine
    std::string start;          ///< SystemInfo::processStart() of it
    /// 32 digits of chance, which tell a lock from every other. Of a lock that cannot be read: what
    /// its bytes give, after a '?'.
    std::string token;
    std::int64_t taken = 0;  ///< seconds since 1970, by the clock of that machine
    std::int64_t seen = 0;   ///< last sign of life, in the same way; of an unreadable lock its
                             ///< file's time; 0 when neither is known

    /// False of a lock that cannot be read: then there are only `token` and `seen`.
    [[nodiscard]] bool isKnown() const { return !token.empty() && token.front() != '?'; }
};

/// What was found, or came of taking a lock.
enum class LockOutcome {
    free,        ///< nobody has it
    taken,       ///< it is ours; nobody had it
    takenOver,   ///< it is ours; `holder` had left it
    left,        ///< left by a crash on this machine: take() takes it over
    held,        ///< by `holder`, who lives, as far as this machine can tell
    elsewhere,   ///< by `holder` on another machine, or nobody knows by whom: takeOver() takes it
    impossible,  ///< no lock can be had here, as `error` says: a read-only folder, a full disk...
};

/// One answer of a lock.
struct LockReport {
    LockOutcome outcome = LockOutcome::free;
    LockHolder holder;      ///< of `takenOver`, `left`, `held` and `elsewhere`
    std::int64_t age = -1;  ///< seconds since `holder.seen` by this machine's clock, which may
                            ///< differ from the other's; 0 for a time to come, -1 when not known
    platform::ErrorCode error = 0;  ///< of `impossible`
};

/// The lock of one document, from take() to release().
class DocumentLock {
  public:
    DocumentLock() = default;
    /// Releases it.
    ~DocumentLock() { release(); }
    DocumentLock(DocumentLock&& other) noexcept { swap(other); }
    DocumentLock& operator=(DocumentLock&& other) noexcept {
        swap(other);
        return *this;
    }
    DocumentLock(const DocumentLock&) = delete;
    DocumentLock& operator=(const DocumentLock&) = delete;

    /// Takes the lock of a document, which need not exist; one that was left by a crash on this
    /// machine is taken over. `taken`, `takenOver`, `held`, `elsewhere` or `impossible`. An
    /// own lock is released before, also when another document's cannot be had.
    [[nodiscard]] LockReport take(const std::string& document);

    /// As take(), and takes over the lock of another machine, or an unreadable one, too, when it is
    /// the one that a person saw: its token is `seen.token`. Nobody takes over what the system
    /// itself knows to be held.
    [[nodiscard]] LockReport takeOver(const std::string& document, const LockHolder& seen);

    /// `free`, `left`, `held` (by this process too), `elsewhere`, or `impossible` when the document
    /// can have no lock, as a folder. Changes nothing.
    [[nodiscard]] static LockReport look(const std::string& document);

    /// True between a take() that gave it and release().
    [[nodiscard]] bool isTaken() const { return file_ != nullptr; }
    /// Whether the lock beside the document is still this one: false when somebody took it over or
    /// removed it, and while the folder cannot be reached. To be asked before each save.
    [[nodiscard]] bool isStillOurs() const;
    /// The lock's file, with its folders; empty when there is none.
    [[nodiscard]] const std::string& fileName() const { return name_; }

    /// Writes a sign of life, from which others count the lock's age; nothing when it is not ours.
    /// For now and then: a minute between two is plenty.
    void refresh() const;

    /// Removes the lock, unless it is somebody else's by now. One that could not be removed (the
    /// folder is gone) is taken over by the next who comes on this machine.
    void release();

  private:
    /// What came of writing a lock. A race was lost to somebody who did the same: look again.
    struct Attempt {
        platform::ErrorCode error;
        bool isRace;
    };

    /// take() by the lock's own name. `allowed`: a token that may be taken over besides what was
    /// left.
    LockReport takeNamed(const locks::LockPlace& place, const std::string& allowed);
    /// Takes over what was found. `free` when it was tried, as `attempt` then says; otherwise what
    /// keeps from it.
    LockReport replace(const locks::LockPlace& place, const LockReport& found,
                       const std::string& allowed, Attempt& attempt);
    /// Writes a lock of ours and gives it its name; on success the lock is taken. `isNew`: there
    /// must be none.
    Attempt put(const locks::LockPlace& place, bool isNew);
    void swap(DocumentLock& other) noexcept;

    std::string name_;
    std::string token_;
    std::shared_ptr<SharedFile> file_;  ///< open as long as the lock is ours
};

}  // namespace toolbox
