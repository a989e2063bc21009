// The seam between the library and the system it runs on.
//
// Everything that the library asks of the system goes through the interfaces below. current() names
// the one in use for each service; the host's own is there from the start. A program replaces one
// by storing a pointer to its own implementation (a prompt that writes to a log, say), a test by a
// Replaced<> guard. The library borrows the pointers and never frees what they point to.
//
// Failures are error codes with the meaning they have on Windows (ERROR_FILE_NOT_FOUND...), on
// every system; 0 is success. Names of files are bytes; both '/' and '\' separate folders on every
// system. All calls come from the user-interface thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "toolbox/export.h"
#include "toolbox/win_types.h"

namespace toolbox::platform {

/// A system error code; 0 is success.
using ErrorCode = std::uint32_t;

/// Language of a text. `system` leaves the choice to the system (Windows: the user's language).
enum class Language { system, french, english };

/// String tables: numbered texts of a module.
class TB_API StringResources {
  public:
    virtual ~StringResources() = default;

    /// Copies text `id` of `module` (null: the application) into `out`, cut at size - 1 bytes and
    /// always terminated when size > 0. Returns the bytes copied, 0 when there is no such text
    /// (`out` is then the empty string). A module that has the text in several languages gives the
    /// one asked for; otherwise the one it has.
    virtual int load(HINSTANCE module, unsigned int id, Language language, char* out, int size) = 0;
};

/// What needs the user's eyes.
class TB_API UserPrompt {
  public:
    virtual ~UserPrompt() = default;

    /// Shows a box and returns the button chosen (IDOK...). `flags` are the MB_ flags. Texts are
    /// shown as they stand, never as templates. Where there is no window system the text goes to
    /// the standard error, and the answer is the button that changes nothing: IDCANCEL where there
    /// is one, IDNO to a box with Yes and No, else IDOK.
    virtual int messageBox(HWND owner, const char* text, const char* caption,
                           unsigned int flags) = 0;

    /// Shows `text` and ends the process with exit code 1, without running destructors. Only a
    /// replacement may return; callers then go on as if the call that failed had done nothing.
    virtual void fatalExit(const char* text) = 0;

    /// True when `window` is a live window.
    virtual bool isWindow(HWND window) = 0;

    /// Shows the wait cursor (true) or the arrow (false), where there is a cursor.
    virtual void showWaitCursor(bool wait) = 0;
};

/// An open file; kNoFile when there is none.
using FileHandle = std::uint32_t;
/// No file.
inline constexpr FileHandle kNoFile = 0xFFFFFFFF;

/// What a distance is counted from.
enum class SeekFrom { begin, current, end };

/// What a search for files reports of each.
struct FoundFile {
    std::string name;              ///< without its folder
    std::uint32_t attributes = 0;  ///< FILE_ATTRIBUTE_ bits
    std::uint64_t size = 0;        ///< in bytes; 0 for a folder
    std::int64_t written = 0;      ///< last time: nanoseconds since 1970, UTC; 0 when not told
};

/// Files and folders.
class TB_API FileSystem {
  public:
    virtual ~FileSystem() = default;

    /// Opens as CreateFile does. `access` is GENERIC_READ and/or GENERIC_WRITE, `share` FILE_SHARE_
    /// flags, `disposition` CREATE_NEW to TRUNCATE_EXISTING. `out` is kNoFile on failure. Linux
    /// refuses a second user by advisory locks (flock) where the share modes of both deny
    /// something; one that opens for everything to be shared is not refused there. Files and
    /// devices can be opened; a pipe or socket of the name is refused with ERROR_ACCESS_DENIED and
    /// never waited for.
    virtual ErrorCode open(const char* name, std::uint32_t access, std::uint32_t share,
                           std::uint32_t disposition, FileHandle& out) = 0;
    /// Closes the file, on failure too; the handle means nothing afterwards.
    virtual ErrorCode close(FileHandle file) = 0;

    /// Reads up to `n` bytes at the file's position and advances it. Success with `got` 0 is the
    /// end of the file; `got` below `n` on success means that the end was reached.
    virtual ErrorCode read(FileHandle file, void* buffer, std::uint32_t n, std::uint32_t& got) = 0;

    /// Reads up to `n` bytes at `offset` in one system call. The file's position is unspecified
    /// afterwards: a caller that mixes it with read() seeks first.
    virtual ErrorCode readAt(FileHandle file, std::uint64_t offset, void* buffer, std::uint32_t n,
                             std::uint32_t& got) = 0;

    /// Writes `n` bytes at the file's position and advances it. A full disk may give success with
    /// `written` below `n`: callers compare.
    virtual ErrorCode write(FileHandle file, const void* buffer, std::uint32_t n,
                            std::uint32_t& written) = 0;

    /// Moves the position; `position` is the new one, from the start of the file.
    virtual ErrorCode seek(FileHandle file, std::int64_t distance, SeekFrom from,
                           std::uint64_t& position) = 0;
    /// The size of an open file, whatever its position.
    virtual ErrorCode size(FileHandle file, std::uint64_t& bytes) = 0;

    /// Forces what was written to the device.
    virtual ErrorCode flush(FileHandle file) = 0;

    /// True when a file or folder of that name, or one that matches it with `*` and `?`, exists.
    virtual bool exists(const char* name) = 0;
    /// True when the file or folder exists and may be both read and written.
    virtual bool isReadableAndWritable(const char* name) = 0;
    /// Everything that matches `pattern` (`*` and `?` in its last component), folders included but
    /// for "." and "..". "*.*" is everything. Case counts on Linux; on Windows it does not, and
    /// short names match too ("*.dat" also finds "plan.data").
    virtual std::vector<FoundFile> find(const char* pattern) = 0;

    /// Copies bytes and attributes. An existing `to` is replaced unless `failIfExists`
    /// (ERROR_FILE_EXISTS). A failed copy may leave a partial `to`. A `from` that is no regular
    /// file gives ERROR_ACCESS_DENIED.
    virtual ErrorCode copy(const char* from, const char* to, bool failIfExists) = 0;
    /// Renames, replacing `to` in one step: at every moment `to` is the old file or the new one. A
    /// link of that name is replaced, not followed.
    virtual ErrorCode replace(const char* from, const char* to) = 0;
    /// Renames to a name that nobody has. ERROR_ALREADY_EXISTS: it is taken; of several callers
    /// at once one succeeds. A file system that does not override it looks and then renames, which
    /// two callers may do at once.
    virtual ErrorCode renameNew(const char* from, const char* to) {
        return exists(to) ? ErrorCode{ERROR_ALREADY_EXISTS} : replace(from, to);
    }

    // Which file a name means. A file system that does not override them takes names as they stand.

    /// `full` is the name with its drive or root and all folders, "." and ".." resolved by the text
    /// alone; of any length, and of a file that need not be there. On failure it is `name`.
    virtual ErrorCode fullName(const char* name, std::string& full) {
        full = name ? name : "";
        return ERROR_SUCCESS;
    }
    /// Whether both names lead to one file, through links, hard links and short names where the
    /// files are there; otherwise whether the full names are the same to the system, for which on
    /// Windows case does not count.
    virtual bool isSameFile(const char* one, const char* other) {
        return std::string(one ? one : "") == (other ? other : "");
    }

    // What saving a file as a whole needs: followLinks() finds the file, createLike() makes the new
    // one beside it, flush() and replace() put it in place, flushFolderOf() makes that last. A file
    // system that does not override them follows no links and creates files with default rights.

    /// `target` is the name of the regular file that `name` leads to through symbolic links; `name`
    /// itself when it is no link. ERROR_FILE_NOT_FOUND when there is no file: `target` is then the
    /// name under which opening `name` would create it (on Windows `name`). What is there but no
    /// regular file gives ERROR_ACCESS_DENIED.
    virtual ErrorCode followLinks(const char* name, std::string& target) {
        target = name ? name : "";
        return exists(name) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
    }
    /// Creates a file and opens it for reading and writing, shared as `share` says.
    /// ERROR_FILE_EXISTS when the name is taken, be it by a link that leads nowhere. `like` names
    /// the file whose place the new one will take: the new one has its rights before it has a byte,
    /// and until then nobody else can open it. On Linux these are the permissions without set-id
    /// and sticky bits, the access list, and owner and group where the user may set them (a group
    /// that cannot be set gets no more than everybody has); on Windows the access list. When `like`
    /// is null or not there the new file has default rights.
    virtual ErrorCode createLike(const char* name, const char* like, std::uint32_t share,
                                 FileHandle& out) {
        (void)like;
        return open(name, GENERIC_READ | GENERIC_WRITE, share, CREATE_NEW, out);
    }
    /// Gives an open file the times of last access and writing of another and, on Windows, its
    /// attributes. Nothing where a file system keeps neither.
    virtual ErrorCode copyFacts(FileHandle from, FileHandle to) {
        (void)from, (void)to;
        return ERROR_SUCCESS;
    }
    /// Forces to the device that `name` was created, replaced or removed in its folder.
    virtual ErrorCode flushFolderOf(const char* name) {
        (void)name;
        return ERROR_SUCCESS;
    }

    /// Removes a file; a folder is refused.
    virtual ErrorCode remove(const char* name) = 0;
    /// Creates an empty file with a new name, which begins with up to three characters of `prefix`
    /// and ends with ".TMP" in some case, in the system's folder for temporary files. `name` is its
    /// whole name, empty on failure. Nobody removes the file.
    virtual ErrorCode createTemporary(const char* prefix, std::string& name) = 0;

    // FILE_ATTRIBUTE_ bits of a file or folder. On Linux only FILE_ATTRIBUTE_READONLY
    // can be set, of files.
    virtual ErrorCode attributes(const char* name, std::uint32_t& out) = 0;
    virtual ErrorCode setAttributes(const char* name, std::uint32_t attributes) = 0;

    /// The current folder, without a separator at its end but for a root.
    virtual std::string currentFolder() = 0;
    virtual ErrorCode setCurrentFolder(const char* name) = 0;

    /// Creates a folder with those on the way to it, for this user only. Success when it is there
    /// already. A file system that does not override it makes none.
    virtual ErrorCode createFolder(const char* name) {
        return exists(name) ? ErrorCode{ERROR_SUCCESS} : ErrorCode{ERROR_NOT_SUPPORTED};
    }

    /// Sectors per cluster, bytes per sector and free clusters of the volume with this root path.
    virtual ErrorCode diskFree(const char* root, std::uint32_t& sectorsPerCluster,
                               std::uint32_t& bytesPerSector, std::uint32_t& freeClusters) = 0;

    /// Copies `from` to a new `to`, expanding it when it is compressed with the system's LZ
    /// compression. Returns the bytes written, or a negative LZERROR_ code.
    virtual std::int32_t expandCopy(const char* from, const char* to) = 0;
};

/// What is stored under one name of a profile section; a null value removes the entry.
struct ProfileEntry {
    const char* entry;  ///< never null
    const char* value;  ///< or null
};

/// Texts by section and entry, in profile (initialisation) files:
///     [section]
///     entry=value
///
/// A name without a folder stands for a file in one fixed place: the Windows folder; on other
/// systems the folder `toolbox` in $XDG_CONFIG_HOME, or in ~/.config when that is not set. A file
/// can be any bytes; the first section, and in it the first entry, of a name counts.
///
/// Section and entry names have at least one character, are compared without regard to the case of
/// A to Z and to blanks around them. Names that could not be found again are refused: a line break
/// in a name, an entry with '=' or with '[' as its first character.
///
/// A save leaves comments, unknown lines and their order. On Windows the system decides the rest
/// (it may drop blank lines); elsewhere every other byte stays, the file is replaced in one step
/// (a process that is killed leaves the old file or the new one) and saves of several processes
/// take turns, so none loses another's entry. New lines end as the file's first line does, with CR
/// LF in a new file.
class TB_API ProfileStore {
  public:
    virtual ~ProfileStore() = default;

    /// Copies the text of an entry into `out`, without the blanks around it and then without one
    /// pair of quotes (" or ') around it, cut at size - 1 bytes and terminated when size > 0. True
    /// when the file has the entry, be it empty; otherwise `out` gets `fallback` (null: the empty
    /// string) without blanks at its end and without such quotes. The cost does not grow with the
    /// file where the system does not read it anew for each call, as Windows may.
    virtual bool read(const char* file, const char* section, const char* entry,
                      const char* fallback, char* out, int size) = 0;

    /// What read() tells of each of these entries, uncut, in one go; none for an entry that is not
    /// there. One visit to the file, where a store that does not override it reads each.
    virtual std::vector<std::optional<std::string>> readMany(const char* file, const char* section,
                                                             std::span<const char* const> entries);

    /// Stores one text; null removes the entry. Success means that it is in the file. A value ends
    /// at its first line break; blanks and quotes around it are lost when it is read.
    virtual ErrorCode write(const char* file, const char* section, const char* entry,
                            const char* value) = 0;

    /// Stores several entries of a section as write() does, each. The file is rewritten once (all
    /// entries or none), except on Windows: the system rewrites it for each, and the first failure
    /// ends the operation with the entries before it stored.
    virtual ErrorCode writeMany(const char* file, const char* section,
                                std::span<const ProfileEntry> entries) = 0;
};

/// Typed values by root, key path and name, all compared without regard to case. Paths separate
/// their parts with '\'. On systems without a registry it is a text file in `.reg` notation (the
/// 8-bit form, REGEDIT4), `toolbox/registry.reg` in $XDG_CONFIG_HOME or ~/.config, replaced in one
/// step and shared by processes as profile files are; there the only roots are HKEY_CURRENT_USER
/// and HKEY_LOCAL_MACHINE, both of this user, and names hold no line breaks.
class TB_API RegistryStore {
  public:
    virtual ~RegistryStore() = default;

    /// Stores a value of a REG_ type, with the keys on the way to it. A REG_SZ counts its
    /// terminator.
    virtual ErrorCode write(HKEY root, const char* key, const char* name, std::uint32_t type,
                            const void* data, std::uint32_t size) = 0;

    /// Copies a value into `data`, which has room for `size` bytes. `type` and `size` become those
    /// of the value; a null `data` asks only for them. ERROR_MORE_DATA: the room is too small,
    /// `data` is untouched. ERROR_FILE_NOT_FOUND: there is no such key or value; then `type` and
    /// `size` are 0.
    virtual ErrorCode read(HKEY root, const char* key, const char* name, std::uint32_t& type,
                           void* data, std::uint32_t& size) = 0;
};

/// The paste buffer: the system's clipboard on Windows; elsewhere what this process keeps, which
/// the application reads with text() and data().
class TB_API Clipboard {
  public:
    virtual ~Clipboard() = default;

    /// Replaces the content by a text.
    virtual ErrorCode setText(const char* text) = 0;
    /// The text held; empty when there is none.
    virtual std::string text() = 0;
    /// Replaces the content by bytes, for programs that know the format's name, and by a text for
    /// the others. With an error the content may be lost, but is never one without the other. The
    /// default keeps the text alone.
    virtual ErrorCode setData(const char* /*format*/, std::string_view /*bytes*/,
                              const char* text) {
        return setText(text);
    }
    /// The bytes that setData() of any program put there under that name; empty when there are
    /// none, as by default.
    virtual std::string data(const char* /*format*/) { return {}; }
    /// Replaces the content by a picture, the bytes of an enhanced metafile. Only Windows' own
    /// clipboard takes one.
    virtual ErrorCode setPicture(std::string_view metafile) {
        (void)metafile;
        return ERROR_NOT_SUPPORTED;
    }
};

/// A calendar date of the local clock.
struct LocalDate {
    int year;   ///< with its century
    int month;  ///< 1 to 12
    int day;    ///< 1 to 31
};

/// Facts about the running system.
class TB_API SystemInfo {
  public:
    virtual ~SystemInfo() = default;

    /// The system's text for an error code as the system gives it (Windows ends it with a line
    /// end). Empty when it has none.
    virtual std::string errorText(ErrorCode code) = 0;
    /// Today, by the local clock.
    virtual LocalDate today() = 0;
    /// Seconds since 1970. The standard library's clock on every system; tests set another.
    virtual std::time_t now() { return std::time(nullptr); }
    /// Bytes of address space that the process can still take, whether or not there is memory for
    /// them.
    virtual std::uint64_t availableVirtualMemory() = 0;
    /// The folder for what programs keep for this user, with no separator at its end: on Windows
    /// "toolbox" in the user's local application data, elsewhere the one of ProfileStore. It may
    /// not exist. Empty when the system does not tell.
    virtual std::string settingsFolder() { return {}; }
    /// Milliseconds since some moment; after 0xFFFFFFFF comes 0.
    virtual std::uint32_t clockMilliseconds() { return 0; }
    /// The whole name of the running program's file; empty when the system does not tell.
    virtual std::string programPath() { return {}; }

    // Who runs the program, and where: what a lock tells to others. Names are in Windows-1252, with
    // '?' for characters that it does not have; all are empty where the system does not tell.

    /// The user's name.
    virtual std::string userName() { return {}; }
    /// The machine's name in its network.
    virtual std::string hostName() { return {}; }
    /// What tells machines of one name apart: the same as long as the system stays installed.
    virtual std::string machineIdentity() { return {}; }
    /// Another one each time the machine starts. Empty also where processStart() tells the starts
    /// of the machine apart, as on Windows.
    virtual std::string bootIdentity() { return {}; }
    /// The number of this process.
    virtual std::uint32_t processId() { return 0; }
    /// The moment at which the process of this number started, in the system's own notation: no
    /// other process that has the number before the machine starts anew has the same. None when no
    /// such process runs; a killed one that its parent has not asked for runs no longer. Empty when
    /// one runs, or may run, and the system does not tell more.
    virtual std::optional<std::string> processStart(std::uint32_t /*process*/) { return ""; }
};

/// The services in use. Never null.
struct Services {
    // One service each, borrowed.
    StringResources* strings;
    UserPrompt* prompt;
    FileSystem* files;
    SystemInfo* system;
    ProfileStore* profiles;
    RegistryStore* registry;
    Clipboard* clipboard;
};

/// The one bundle of the process.
TB_API Services& current() noexcept;

/// Puts another implementation in a slot for the guard's lifetime:
/// `Replaced guard(current().files, failingFiles);`
template <class Service>
class Replaced {
  public:
    /// From now on `slot` names the replacement.
    Replaced(Service*& slot, Service& replacement) : slot_(slot), before_(slot) {
        slot_ = &replacement;
    }
    ~Replaced() { slot_ = before_; }
    Replaced(const Replaced&) = delete;
    Replaced& operator=(const Replaced&) = delete;

  private:
    Service*& slot_;
    Service* before_;
};

/// One text of a string table, in the languages the module has it in; null where it has none.
struct StringEntry {
    unsigned int id;      ///< the number of the text
    const char* french;   ///< in Windows-1252
    const char* english;  ///< in Windows-1252
};

#if !defined(_WIN32)
/// Registers a string table as a module and returns its handle, for GMSG::setInstance and the like.
/// The entries are borrowed: they must live as long as the module is used. On Windows a module's
/// texts are its string resources instead.
TB_API HINSTANCE registerStrings(std::span<const StringEntry> entries);

/// Makes a table the application's own, which a null module handle names. The library's supplied
/// texts stand in for the numbers that the table does not have.
TB_API void setApplicationStrings(std::span<const StringEntry> entries);
#endif

}  // namespace toolbox::platform
