// Block files: any number of identified blocks in one binary file.
//
// A block is a VarRecord with a description and a version. A file begins with a header, goes on
// with the blocks in the order in which they were written, and ends with the master index, a block
// that maps identifiers to offsets; the header tells where it lies. docs/block-file-format.md has
// the layout byte for byte.
//
//     TarvFileWrite file;                          TarvFileRead file;
//     file.open("plan.dat");                       file.open("plan.dat");
//     TarvBlocFile block;                          TarvBlocFile block;
//     block.setID(7);                              if (file.getBloc(7, block))
//     block << 1 << 2.0;                               block >> count >> length;
//     file.writeBloc(block);
//     if (!file.commit()) ...the save failed
//     file.close();
//
// Operations return 1 for success and 0 for failure; failures of the system are shown to the user
// by the file underneath. Identifiers and offsets are 32-bit values: where `unsigned long` is
// wider, an identifier's upper bytes are dropped and an offset that does not fit is refused. A file
// is never made larger than 2147483647 bytes, the last offset that TVFile::SeekTo takes on every
// system.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "toolbox/dates.h"
#include "toolbox/export.h"
#include "toolbox/files.h"
#include "toolbox/records.h"
#include "toolbox/strings.h"

class TarvFile;

namespace toolbox {
class BlockFileParts;
class BlockLookup;
class BlockOutput;
class FileChecksums;
class OwnedFile;
class SafeSave;

/// What a file's list of checksums says of one block.
struct BlockSum {
    std::uint32_t id;      ///< its identifier
    std::uint32_t offset;  ///< of its first byte
    std::uint32_t length;  ///< of the whole block, identifier to terminator; 0: sum not known
    std::uint32_t sum;     ///< CRC-32C of these bytes

    /// Whether the sum is known; where it is not, the list only says where the block is.
    [[nodiscard]] bool isKnown() const { return length != 0; }
};
}  // namespace toolbox

/// The fixed start of a block file: what the application says about the file, three dates and where
/// the master index lies. A plain value.
class TB_API TarvFileHeader {
  public:
    /// Version, mask and index offset 0, no description, all dates today, format version 100.
    TarvFileHeader();
    TarvFileHeader(const TarvFileHeader&);
    TarvFileHeader& operator=(const TarvFileHeader&);
    virtual ~TarvFileHeader();

    /// Reads at the file's position, which is after the header then. 0 when the header is
    /// not whole or not well formed; fields may then have changed. Takes format version 100 as
    /// well, whose header is 4 bytes shorter.
    virtual int read(TarvFile& file);
    /// Writes at the file's position. The format version written is 210, whatever was
    /// read. A description is cut to 128 bytes.
    virtual int write(TarvFile& file);
    /// Bytes that write() takes: 160.
    virtual unsigned long getLen() const;

    /// The application's own version of the contents.
    unsigned long getVersion() const;
    /// Bit 0: every block is a multiple of 4 bytes long, so that lost blocks can be searched for.
    unsigned long getMask() const;
    // What the application says about the file, as last set or read.
    RWCString getDescription() const;
    TarvDate getdateCreation() const;
    TarvDate getTimeStamp() const;
    TarvDate getnetDate() const;
    /// 0 while nothing was committed.
    unsigned long getOffsetMasterNdx() const;
    /// The format version as last read; 100 in a header that was not read.
    unsigned long getVersionFile() const;

    // Only store the value; write() puts it into the file.
    void setVersion(unsigned long version);
    void setMask(unsigned long mask);
    void setDescription(const RWCString& description);
    void setdateCreation(const TarvDate& date);
    void setTimeStamp(const TarvDate& date);
    void setnetDate(const TarvDate& date);
    void setOffsetMasterNdx(unsigned long offset);

  private:
    friend class toolbox::BlockFileParts;

    std::uint32_t mask_ = 0;
    TarvDate dateCreation_;
    RWCString description_;
    TarvDate netDate_;
    TarvDate timeStamp_;
    std::uint32_t version_ = 0;
    std::uint32_t offsetMasterNdx_ = 0;
    std::uint32_t versionFile_ = 100;
};

/// One block: a record with a description and a version of its own.
class TB_API TarvBlocFile : public VarRecord {
  public:
    /// Block version 210, no description; the record as VarRecord's constructor leaves it.
    TarvBlocFile();
    TarvBlocFile(const TarvBlocFile& other);
    using VarRecord::operator=;
    using VarRecord::read;
    using VarRecord::write;

    /// Copies the record, the description and the block version.
    virtual TarvBlocFile& operator=(const TarvBlocFile& other);

    /// Reads block `id` from `file`: the one at `offset` when its identifier is `id`; else, when
    /// `search` is 1, the first one that findBloc finds from the file's start. On failure the
    /// description and the versions may have changed. The terminator's value is not checked.
    virtual int read(unsigned long id, TarvFile& file, unsigned long offset, int search);
    /// Writes the block at the file's position.
    virtual int write(TarvFile& file) const;
    /// Bytes that the block takes in a file: its data and 148 more.
    virtual unsigned long getBlocLen() const;
    /// Searches word by word from `offset` for the end of a block followed by `id`. Returns the
    /// position after the identifier, where the file then stands, or 0. Data that holds such a pair
    /// of words is taken for a block.
    virtual unsigned long findBloc(unsigned long id, TarvFile& file, unsigned long offset);
    /// Reads the rest of a block from the position after its identifier, in the layout that the
    /// format version of the file's header asks for (without a header, 210).
    virtual int readBloc(TarvFile& file);

    // The version of the record (VarRecord), then that of the block, which says how it is laid out
    // in the file.
    unsigned int getVersionVarrec() const;
    void setVersionVarrec(unsigned int version);
    unsigned int getVersion() const;
    void setVersion(unsigned int version);
    RWCString getDescription() const;
    /// A description of more than 128 bytes is cut when it is written.
    void setDescription(const RWCString& description);

  private:
    friend class toolbox::BlockFileParts;

    std::uint32_t version_ = 210;
    RWCString description_;
};

/// A block's place in the file.
struct BlocItem {
    std::uint32_t id;      ///< of the block
    std::uint32_t offset;  ///< of its first byte, from the start of the file
};

/// The master index: the places of the blocks, in writing order, and a cursor to walk them.
/// Identifiers are found without walking, however many there are.
class TB_API TarvFileIndex : public TarvBlocFile {
  public:
    TarvFileIndex();
    TarvFileIndex(const TarvFileIndex& other);
    TarvFileIndex& operator=(const TarvFileIndex& other);
    ~TarvFileIndex() override;
    using TarvBlocFile::getBlocLen;
    using TarvBlocFile::operator=;
    using TarvBlocFile::read;
    using TarvBlocFile::write;
    using VarRecord::getOffset;
    using VarRecord::setData;

    /// Reads as a block, then replaces the entries by those in the data. On failure they stay.
    int read(unsigned long id, TarvFile& file, unsigned long offset, int search) override;
    /// Packs the entries and writes the block. An index without entries writes the data
    /// that the record last held.
    virtual int write(TarvFile& file);
    /// Packs the entries into the record; without entries the data stays.
    virtual int setData();

    // Each moves the cursor and gives the identifier there; 0 when there is no such entry, and then
    // neither changes.
    virtual int getFirstID(unsigned long& id);
    virtual int getNextID(unsigned long& id);
    virtual int getPrevID(unsigned long& id);
    virtual int getLastID(unsigned long& id);

    /// Appends an entry; 0, and nothing changes, when the identifier has one already.
    int addBloc(unsigned long id, unsigned long offset);
    /// Offset of the first entry with this identifier; 0 when there is none.
    unsigned long getOffset(unsigned long id) const;
    /// Removes the entries; returns 1.
    int flushIndex();
    /// Entries as last read from a file or set; addBloc does not count.
    unsigned long getNbrItem() const;
    /// Sets that number, and with it what getBlocLen() gives.
    void setNbrItem(unsigned long count);
    /// Bytes that an index of getNbrItem() entries takes in a file.
    unsigned long getBlocLen();

  private:
    friend class toolbox::BlockFileParts;

    void takePacked(std::uint64_t fileSize);
    void unpack();

    bool packed_ = false;  ///< the entries are still those in the record, items_ is not made yet
    std::int32_t current_ = 0;
    std::vector<BlocItem> items_;
    std::uint32_t nbrItem_ = 0;
    std::unique_ptr<toolbox::BlockLookup> lookup_;
};

/// An open block file: the file, its header and its index. Copies share all three, which live until
/// the last of them lets go.
class TB_API TarvFile {
  public:
    /// What a block file is open for.
    enum FileType { NotOpen, OpenForReading, OpenForWriting };

    TarvFile();
    TarvFile(const TarvFile&);
    TarvFile& operator=(const TarvFile&);
    virtual ~TarvFile();

    /// See the classes that read and write.
    virtual int open(const RWCString& name) = 0;
    virtual int open(const char* name) = 0;
    /// Lets go of the file, the header and the index; returns 1.
    virtual int close();
    // Replaces the header or the index by a copy of the argument.
    virtual void setHeader(const TarvFileHeader& header);
    virtual void setIndex(const TarvFileIndex& index);

    /// For the other string types, which convert both to RWCString and to const char*.
    template <toolbox::AnyString Text>
    int open(const Text& name) {
        return open(name.c_str());
    }

    /// The file, or null; it stays this object's. Asking a file open for writing for it makes it
    /// write each block at once from then on, in order with what the caller writes there itself.
    APIFile* getFile() const;
    /// Stores the pointer and owns the file from then on; give one file to one object. A file held
    /// before is not closed: it is the caller's.
    void setFile(APIFile* file);
    // The header and the index, or null; they stay this object's.
    TarvFileHeader* getHeader() const;
    TarvFileIndex* getIndex() const;
    // Let go of the header or the index; copies of this object keep theirs.
    void freeHeader();
    void freeIndex();
    /// What the file is open for. Setting it opens nothing.
    FileType getFileType() const;
    void setFileType(FileType type);
    // 1 when the file is open for reading, for writing, for either.
    int canRead() const;
    int canWrite() const;
    int isOpen() const;

  private:
    friend class toolbox::BlockFileParts;

    std::shared_ptr<toolbox::OwnedFile> file_;
    std::shared_ptr<TarvFileHeader> header_;
    std::shared_ptr<TarvFileIndex> index_;
    FileType fileType_ = NotOpen;
    std::shared_ptr<toolbox::BlockOutput> output_;  ///< what a file open for writing writes through
};

/// Reads block files of every format version: their layout changed at 200 and 210
/// (docs/block-file-format.md).
class TB_API TarvFileRead : public virtual TarvFile {
  public:
    TarvFileRead();
    TarvFileRead(const TarvFileRead&);
    TarvFileRead& operator=(const TarvFileRead&);
    ~TarvFileRead() override;
    using TarvFile::open;

    /// Reads the header and the index; where the index is not at its place it is searched for. 0,
    /// and the object is closed, when either is missing. 1 when the object is open already, which
    /// then keeps its file. A file, header or index set before is used.
    int open(const RWCString& name) override;
    int open(const char* name) override;
    int close() override;

    /// Fetches a block; 0, and `out` stays, when it is not there or not whole. Where the header's
    /// mask has bit 0 a block that is not at its place is searched for. An identifier
    /// that the index does not have is tried at offset 0, where the header's version stands.
    ///
    /// Where the file has a list of checksums that is whole and not outdated
    /// (TarvFileWrite::setChecksums), a block must be where the list says and have the sum listed
    /// there, and nothing is searched for; what the list does not name is not there. A block that
    /// is listed without a sum is fetched as in a file without a list.
    int getBloc(unsigned long id, TarvBlocFile& out);

    /// What the file's list of checksums says of the file.
    enum ChecksumState {
        NoChecksums,        ///< it has none
        ChecksumsCurrent,   ///< it fits the file's header and index
        ChecksumsOutdated,  ///< a program that does not know it copied the file or wrote it on
        ChecksumsDamaged    ///< the list, the index or the header is damaged
    };
    /// Reads the list at the first call since opening, getBloc() included; says nothing of the
    /// blocks. NoChecksums when the file is not open for reading.
    ChecksumState getChecksumState();

    /// Why a block could not be had.
    enum BlocFault {
        NoFault,       ///< the last getBloc() gave 1, or there was none since opening
        NotThere,      ///< it is not there, or not whole
        WrongChecksum  ///< its place is there, but holds something else than was written
    };
    /// Of the last getBloc().
    BlocFault getBlocFault() const;

  private:
    const toolbox::FileChecksums* checksums();
    bool fetchFound(std::uint32_t id, TarvBlocFile& block);
    bool fetchProved(std::uint32_t id, const toolbox::FileChecksums& list, TarvBlocFile& block);

    std::uint64_t size_ = 0;  ///< of the file, at opening
    BlocFault fault_ = NoFault;
    std::shared_ptr<const toolbox::FileChecksums> checksums_;  ///< once they were looked for
};

/// Writes block files in format version 210, in one pass: open, blocks, commit, close.
///
/// Blocks are gathered and leave in large pieces, so that an error may show later than at the block
/// it belongs to, but at commit at the latest: once a write failed, every further block and commit
/// gives 0.
class TB_API TarvFileWrite : public virtual TarvFile {
  public:
    TarvFileWrite();
    TarvFileWrite(const TarvFileWrite&);
    TarvFileWrite& operator=(const TarvFileWrite&);
    ~TarvFileWrite() override;
    using TarvFile::open;

    /// Copies an existing file to its backup name (APIFile::backupName) and prints the code of that
    /// to the standard output; goes on when it fails. (With safe saving, close() does so.) Then
    /// empties or creates the file and writes a header. 0 when the object is open already or the
    /// file cannot be written; the object then counts as open. A file set before gets no backup,
    /// and a header, at its start, when it is empty; otherwise it is used as it stands.
    int open(const RWCString& name) override;
    int open(const char* name) override;
    /// Lets go of the file, which keeps what was written. 0 when the object is not open for
    /// writing, or when blocks that writeBloc had accepted were lost by a failed write, whenever
    /// that showed. Does not commit.
    int close() override;

    /// Appends the index and points the header at it; 1 when all of the file up to here was
    /// written. May be called again, after further blocks.
    virtual int commit();
    /// Appends a block; 0 when one with its identifier was written before, when the file would grow
    /// past 2147483647 bytes with its index, or when writing fails. Whatever happens, a block whose
    /// length is not a multiple of 4 clears bit 0 of the header's mask.
    virtual int writeBloc(const TarvBlocFile& block);

    /// The name that open() was last called with.
    RWCString getFileName() const;

    /// Safe saving, for the next open: on, the file is written beside the one that the name leads
    /// to through links, under that name followed by ".~save-" and eight digits, with the rights of
    /// the file that it replaces; close() puts it in place. It brings the file to the device, reads
    /// it back (header, index, both ends of every block), makes the backup, whose code it prints as
    /// open() does, renames, and brings the folder to the device. An existing file is whole under
    /// its name until the new one, whole, has that name; several writers of one file do not disturb
    /// each other, and the last to close wins.
    ///
    /// open() gives 0 at once for an empty name, a read-only file and what is no regular file.
    /// close() returns 1 when the new file is in place. Without a successful commit since open,
    /// after a failed write or when the file does not read back, it removes what was written and
    /// returns 0. A rename that is refused because somebody has the file open (Windows) is tried
    /// again for half a second; when it fails for good what was written stays beside, under the
    /// file's name followed by ".saved-" and eight digits, a message names it, and close() gives 0.
    void setSafeSave(int on);

    /// Checksums, from now on. On, each commit writes a list with the CRC-32C of every block, of
    /// the index and of the header, as a block with the identifier 0xFFFFFFEE, which writeBloc()
    /// then refuses to others; the list of an earlier commit is superseded. Known are the sums of
    /// blocks that were written while this was on; others (also those of a file that was set, and
    /// of a class that writes itself in its own way) are listed without one. Off: no list from the
    /// next open on; a file that is open and has kept sums keeps them.
    void setChecksums(int on);

  private:
    int create();
    int finish(bool written);
    bool keepsSums();
    bool writeChecksums(std::uint32_t at);

    RWCString name_;
    int safe_ = 0;
    int checksums_ = 0;
    std::shared_ptr<toolbox::SafeSave> save_;
};
