// Files: binary files, text files held in memory, and utilities on files and folders.
//
// TVFile is an open binary file with typed reads and writes; APIFile is the one on the system's own
// files. Both report with ints: 1 success, 0 failure. The last error code stays in the object (the
// codes of Windows, on every system) and failures of read and write are shown to the user through
// the message service. Names of files are bytes; '/' and '\' both separate folders, on every
// system.
#pragma once

#include <concepts>
#include <cstdint>
#include <list>
#include <memory>

#include "toolbox/export.h"
#include "toolbox/strings.h"
#include "toolbox/win_types.h"

namespace toolbox {

/// The types that TVFile reads and writes.
template <class T>
concept FileValue = std::same_as<T, char> || std::same_as<T, short> || std::same_as<T, int> ||
    std::same_as<T, long> || std::same_as<T, unsigned char> || std::same_as<T, unsigned short> ||
    std::same_as<T, unsigned int> || std::same_as<T, unsigned long> || std::same_as<T, float> ||
    std::same_as<T, double>;

class Replacement;
class SharedFile;

}  // namespace toolbox

/// An open binary file, abstract.
class TB_API TVFile {
  public:
    virtual ~TVFile();

    /// The GENERIC_ rights asked for at opening.
    [[nodiscard]] virtual unsigned long Access() const;
    /// The position in bytes from the start; 0xFFFFFFFF on failure.
    virtual unsigned long CurOffset() = 0;
    /// 1 when the stored error is the end-of-file code, 38.
    [[nodiscard]] virtual int Eof() const = 0;
    /// 1 when the file holds no bytes.
    virtual int IsEmpty() = 0;
    /// Moves the position to `offset` bytes from the start.
    virtual int SeekTo(long offset) = 0;
    // Move the position to the first byte, and past the last one.
    virtual int SeekToBegin();
    virtual int SeekToEnd() = 0;
    /// Reads `n` bytes at the position and advances it; 0 when nothing could be read.
    virtual int read(void* buffer, unsigned long n) = 0;
    /// Writes `n` bytes at the position and advances it; 0 unless all were written.
    virtual int write(const void* buffer, unsigned long n) = 0;

    // One read or write each, little-endian. `long` takes 4 bytes in the file on every system;
    // where it is wider, reading extends the sign and writing drops the upper bytes. An array's
    // count is in elements. After a short read the rest is zero.
    template <toolbox::FileValue T>
    int Read(T& value) {
        return Read(&value, 1);
    }
    template <toolbox::FileValue T>
    int Read(T* array, unsigned long count) {
        if constexpr (kWiderInMemory<T>)
            return readLongs(array, count);
        else
            return readElements(array, count, sizeof(T));
    }
    template <toolbox::FileValue T>
    int Write(const T& value) {
        return Write(&value, 1);
    }
    template <toolbox::FileValue T>
    int Write(const T* array, unsigned long count) {
        if constexpr (kWiderInMemory<T>)
            return writeLongs(array, count);
        else
            return writeElements(array, count, sizeof(T));
    }

    /// 1 when a file is open.
    [[nodiscard]] int isValid() const;
    /// The last error code of the system, 0 when none. It stays until the next failure or
    /// ClearErr(); a read that ends at the end of the file sets it to 0.
    [[nodiscard]] unsigned long Error() const;
    /// Sets the last error code to 0.
    void ClearErr();
    /// 1 when a file is open, without error, not at its end.
    [[nodiscard]] int good() const;
    /// The name that the file was opened with.
    [[nodiscard]] RWCString GetName() const;

  protected:
    TVFile() = default;
    TVFile(const TVFile&) = default;
    TVFile& operator=(const TVFile&) = default;

    /// No file handle.
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    std::uint32_t handle_ = kNone;  ///< the system's file handle
    RWCString name_;                ///< as opened
    std::uint32_t error_ = 0;       ///< what Error() answers
    std::uint32_t access_ = 0;      ///< GENERIC_ rights
    std::uint32_t share_ = 0;       ///< FILE_SHARE_ flags

  private:
    template <class T>
    static constexpr bool kWiderInMemory = std::integral<T> && sizeof(T) > 4;

    int fits(unsigned long count, unsigned long size);
    template <class Long>
    int readWide(Long* array, unsigned long count);
    template <class Long>
    int writeWide(const Long* array, unsigned long count);
    int readElements(void* array, unsigned long count, unsigned long size);
    int writeElements(const void* array, unsigned long count, unsigned long size);
    int readLongs(long* array, unsigned long count);
    int readLongs(unsigned long* array, unsigned long count);
    int writeLongs(const long* array, unsigned long count);
    int writeLongs(const unsigned long* array, unsigned long count);
};

/// A file of the system. Reads and writes go straight to the system, nothing is buffered.
///
/// Copies share the open file, its position included; each has its own error code. The file is
/// closed when the last of them goes.
class TB_API APIFile : public TVFile {
  public:
    /// Opens with GENERIC_ rights, FILE_SHARE_ flags and a disposition from CREATE_NEW to
    /// TRUNCATE_EXISTING. On failure isValid() is 0 and Error() says why; nothing is shown.
    /// On Linux sharing stands on file locks: it binds the programs that use this library.
    APIFile(const char* name, unsigned long access, unsigned long share, unsigned long disposition);
    APIFile(const APIFile& other);
    APIFile& operator=(const APIFile& other);
    ~APIFile() override;

    /// Positions of 0xFFFFFFFF and more do not fit: failure.
    unsigned long CurOffset() override;
    [[nodiscard]] int Eof() const override;
    int IsEmpty() override;
    /// An offset that 32 bits do not hold is refused.
    int SeekTo(long offset) override;
    /// Fails where the end does not fit in 32 bits; the position is the end all the same.
    int SeekToEnd() override;
    /// A read that gives fewer bytes than asked succeeds; the rest of `buffer` is zero. One that
    /// gives none fails, also when none were asked for. Failures are shown, but for the end of the
    /// file, which has no error code: Error() and Eof() are then 0.
    int read(void* buffer, unsigned long n) override;
    /// A short write is a failure: ERROR_DISK_FULL when the system gave no code. Failures are
    /// shown.
    int write(const void* buffer, unsigned long n) override;

    /// 1 when a file or folder of that name, or one that matches it with '*' and '?', exists.
    static int Exists(const char* name);

    /// 1 when writing is impossible: the file exists and may not be read and written, or its folder
    /// may not, or no file can be made in it (tried with "tmp123yz.$$$", or another name where that
    /// one is taken; the file is removed). The folder is the name up to its last separator; a name
    /// without one is taken for the folder itself, so that a bare file name gives 1 and a bare
    /// folder name tells of the folder.
    static int isReadOnly(const char* name);

    /// Copies the file, with its rights, to backupName(name) and returns 0, or the error code. The
    /// copy is made beside, under that name followed by ".~save-" and eight digits, and renamed: a
    /// failure leaves an older backup as it was, and a link of the backup's name is replaced, not
    /// followed. Regular files only: a folder, pipe or device gives ERROR_ACCESS_DENIED.
    static unsigned long createBak(const char* name);

    /// plan.dat gives plan.bak, a.b gives a.bak, x gives x.bak, plan.data gives plan.data.bak: when
    /// the last '.' has at most three characters after it, ".bak" takes its place, otherwise it is
    /// appended. The rule ignores path separators: "d.v\f" gives "d.bak".
    static RWCString backupName(const char* name);

    // The following neither show anything nor move the position that the operations above see. They
    // return 1, or 0 with the error stored.

    /// Reads up to `n` bytes at `offset` in one system call. `got` below `n` on success means that
    /// the file ends there; unlike read(), 0 bytes are a success and what was not read is left
    /// alone.
    int readAt(unsigned long long offset, void* buffer, unsigned long n, unsigned long& got);
    /// The file's size in bytes; 0 on failure.
    int size(unsigned long long& bytes);
    /// Forces what was written to the device.
    int flush();

  private:
    friend class toolbox::Replacement;

    APIFile();
    int failed(std::uint32_t code);

    std::shared_ptr<toolbox::SharedFile> file_;  ///< shared with copies; null when not open
};

/// A text file in memory, as a list of lines. Lines hold any bytes but line feeds: a NUL is an
/// ordinary character, and the '\r' of a CR-LF file stays in its line and is written back, on every
/// system.
class TB_API Iofile {
  public:
    /// Reads nothing yet. A name of more than 259 characters is cut there.
    explicit Iofile(const char* name);
    virtual ~Iofile();
    Iofile(const Iofile&);
    Iofile& operator=(const Iofile&);

    // The file that the next readFile() or writeFile() means, at most 259 characters of its name.
    void setFileName(const char* name);
    const char* getFileName() const;

    /// Appends the file's lines; one of more than 511 characters becomes several. Sets the modified
    /// flag. 0 when the file cannot be opened or read; the lines are then as before.
    int readFile();
    // Creates or empties the file and writes every line with a line feed after it. 0 when any of
    // it fails. The modified flag stays. saveFile does the same.
    int writeFile();
    int saveFile();

    // Appends a copy of the line as it stands and sets the modified flag; always 1.
    int addLine(const toolbox::ByteString& line);
    int addLine(const char* line);
    /// Expands tabs first; 0, and nothing is added, when getLengthLine would refuse the line.
    int addLine(const char* line, int tabSize);
    /// The same with an empty line.
    int addBlankLine();

    /// Line `n`, from 0; the empty string past the end.
    RWCString getLine(unsigned int n) const;
    /// The same, so that getLine(0) names the first line and is no null pointer.
    RWCString getLine(int n) const { return getLine(static_cast<unsigned int>(n)); }
    /// Copies line `n` to `out`, which has room for it, and returns `out`; null, `out` emptied,
    /// past the end. Lines from a file need 512 bytes at most.
    char* getLine(unsigned int n, char* out) const;
    /// The next line, from the first on; null, `out` emptied, past the end.
    char* getLine(char* out) const;

    /// How many lines there are.
    unsigned int getNumLine() const;
    /// Length of the widest line since clear().
    int getMaxWidth() const;
    /// All lines, in their order; valid while this object lives.
    const std::list<RWCString>& getListOfString() const;
    /// Replaces the lines and sets the modified flag; the widest length and the cursor of
    /// getLine(out) stay.
    void setListOfString(const std::list<RWCString>& lines);
    /// Removes every line.
    void clear();

    /// Expands the tabs in place and returns the length. Every tab becomes tabSize + 1
    /// blanks, wherever it stands. 0, nothing changed, for a line of more than 511 characters and
    /// for a tab size outside 1 to 32767.
    int getLengthLine(toolbox::ByteString& line, int tabSize) const;
    /// `line` has room for the expanded text.
    int getLengthLine(char* line, int tabSize) const;

  protected:
    /// The expansion: 1, or 0 when it refuses the line.
    int tab2Space(toolbox::ByteString& line, int tabSize) const;

    static constexpr unsigned int kNameRoom = 260;  ///< of fileName_, the terminator included

    std::list<RWCString> lines_;  ///< in their order
    unsigned char modified_ = 0;  ///< non-zero once lines were changed
    char fileName_[kNameRoom];    ///< never without its terminator
    int maxWidth_ = 0;            ///< what getMaxWidth() answers
    mutable std::uint32_t nextLine_ =
        0;  ///< the line that getLine(out) gives next; no part of the text

  private:
    const RWCString* lineAt(unsigned int n) const;
    void append(RWCString line);

    // The line fetched last: walking the list from its start for each would be quadratic.
    mutable std::list<RWCString>::const_iterator place_;
    mutable std::uint32_t placeNumber_ = kNoPlace;
    static constexpr std::uint32_t kNoPlace = 0xFFFFFFFF;
};

/// Free bytes of a drive: sectors per cluster times bytes per sector times free clusters, in 32
/// bits, so that 4 GiB and more wrap. 0 on failure. On Linux, which has no drives, any
/// letter is the volume of the current folder.
TB_API unsigned long GetDiskFree(char drive);

/// Copies the current folder to `out`, which has room for 260 characters, the terminator included;
/// the empty string when it does not fit or is gone. Returns 1 or 0.
TB_API int GetCurDir(char* out);
/// Makes a folder the current one; 1 on success. The second argument is not used.
TB_API int SelectDir(const char* dir, void* unused);

/// Splits at the last separator, which goes to neither part. Without one `dir` is empty and `file`
/// the whole path. Both have room for the path.
TB_API void SepDirFile(const char* path, char* dir, char* file);

/// As APIFile::Exists.
TB_API int ExistsFile(const char* name);

/// The name with its drive or root and all folders, "." and ".." resolved by the text alone; of any
/// length. The name itself where the system cannot tell.
TB_API RWCString FullFileName(const char* name);
/// 1 when both names lead to one file, through links and short names where the files are there;
/// otherwise when the full names are the same to the system (on Windows case does not count).
TB_API int IsSameFile(const char* one, const char* other);

/// Sum of the sizes of all files that match ('*' and '?' in the last part of the name): low word
/// plus high word of each, in 32 bits, so that files over 4 GiB count wrongly. 0 when
/// none match.
TB_API unsigned long GetFileSize(const char* pattern);

/// Copies `from` to a new file, with its attributes; a file compressed with Windows' LZ compression
/// is expanded. Returns the bytes written, 0 when `to` exists (nothing is changed), or a negative
/// LZERROR_ code (no `to` is left).
TB_API long FileCopy(const char* from, const char* to);

/// Deletes the files that match, under the wait cursor. Each is deleted by its bare
/// name, so in the current folder, wherever the pattern looked.
TB_API void KillFile(const char* pattern);
