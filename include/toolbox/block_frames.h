// The anatomy of block files: what their bytes say, read and written without believing any of them.
//
// TarvFileRead (block_files.h) is for programs that open a file they trust. These are the pieces
// for programs that look at a file whatever state it is in: where its bytes come from (FileSource,
// FileReader), how the blocks of a format version are laid out (BlockShape), what stands at a place
// (BlockFrame, BlockLabel), what the header says (BlockFileHeader), and the bytes that a writer
// puts down. file_walk.h puts them together. docs/block-file-format.md has the layout byte for
// byte.
//
// Nothing here shows a message. Offsets count from the start of the file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "toolbox/block_files.h"
#include "toolbox/export.h"
#include "toolbox/platform.h"

namespace toolbox {

class BlockLookup;

/// Bytes that are only ever read: a file, or something that stands for one.
class TB_API FileSource {
  public:
    virtual ~FileSource() = default;

    /// In bytes; the same at every call.
    [[nodiscard]] virtual std::uint64_t size() const = 0;
    /// Reads up to `n` bytes at `offset` and returns how many there were; fewer than `n` only where
    /// the bytes end. An implementation may report failures by an exception of its own, which
    /// passes through to the caller of whatever reads.
    virtual std::size_t readAt(std::uint64_t offset, char* buffer, std::size_t n) const = 0;
};

/// A file of the system's, open for reading as long as the object lives; others may read it too. A
/// part that the device cannot read counts as absent.
class TB_API SystemFileSource final : public FileSource {
  public:
    /// Opens the file; error() tells how that went.
    explicit SystemFileSource(const char* name);
    ~SystemFileSource() override;
    SystemFileSource(const SystemFileSource&) = delete;
    SystemFileSource& operator=(const SystemFileSource&) = delete;

    /// Why there is no file to read; 0 when there is one. Without one the size is 0.
    [[nodiscard]] platform::ErrorCode error() const { return error_; }
    [[nodiscard]] std::uint64_t size() const override { return size_; }
    std::size_t readAt(std::uint64_t offset, char* buffer, std::size_t n) const override;

  private:
    platform::FileHandle file_ = platform::kNoFile;
    platform::ErrorCode error_;
    std::uint64_t size_ = 0;
};

/// Reads a source here and there with few calls: keeps a part of it, of at most kMost bytes.
class TB_API FileReader {
  public:
    /// Told how far reading has come, in bytes from the start; false stops the reader.
    using Progress = std::function<bool(std::uint64_t done)>;
    /// How much is read: what is asked for, or also all that lies between, so that a part that the
    /// device cannot read is found.
    enum class Reads { whatIsAsked, everything };

    /// The source has to live as long as the reader.
    explicit FileReader(const FileSource& source, Reads reads = Reads::whatIsAsked,
                        Progress progress = {});

    /// `n` bytes at `offset`, at most kMost; null when the source ends before, or once the reader
    /// has stopped. Valid until the next call.
    [[nodiscard]] const char* at(std::uint64_t offset, std::size_t n);
    /// The longest piece from `offset` on that is at hand, up to `most` bytes; 0 at the end and
    /// once the reader has stopped.
    [[nodiscard]] std::size_t piece(std::uint64_t offset, std::uint64_t most, const char*& bytes);
    /// With Reads::everything reads up to the end. False when the reader has stopped.
    bool finish();

    /// Of the source, in bytes.
    [[nodiscard]] std::uint64_t size() const { return size_; }
    /// Whether Progress asked for an end, or, with Reads::everything, the source became shorter
    /// than it was. A stopped reader gives nothing more.
    [[nodiscard]] bool hasStopped() const { return stopped_; }

    static constexpr std::size_t kMost = 256 * 1024;  ///< bytes that at() can give at once

  private:
    static constexpr std::size_t kSmall = 1024;

    void load(std::uint64_t offset, std::size_t n);
    void loadNext();
    void loadFor(std::uint64_t offset, std::size_t n);

    const FileSource& source_;
    std::uint64_t size_;
    Reads reads_;
    Progress progress_;
    std::unique_ptr<char[]> bytes_;
    std::uint64_t start_ = 0;
    std::size_t held_ = 0;
    std::size_t ahead_ = kSmall;  ///< how much is read at once
    std::uint64_t asked_ = 0;     ///< end of what was asked for last
    std::uint64_t furthest_ = 0;  ///< end of what was read, when everything is
    bool stopped_ = false;
};

/// The identifier of the master index.
inline constexpr std::uint32_t kMasterIndexId = 0xFFFFFFEF;
/// The identifier of the list of checksums.
inline constexpr std::uint32_t kChecksumListId = 0xFFFFFFEE;
/// The word that ends every block.
inline constexpr std::uint32_t kBlockTerminator = 0xFFFFFFFF;

/// How the blocks of a format version are laid out. All numbers but the version are bytes.
struct TB_API BlockShape {
    /// Any number; those between versions that are known are laid out as the one below.
    explicit BlockShape(std::uint32_t formatVersion);
    /// Format version 210, the one that is written.
    BlockShape() : BlockShape(210) {}

    std::uint32_t format;       ///< format version
    std::uint32_t start;        ///< of the header, and with that the place of the first block
    std::uint32_t description;  ///< of a block's description
    std::uint32_t head;         ///< of a block before its data
    std::uint32_t tail;         ///< of a block after its data

    /// Bytes of a block beside its data.
    [[nodiscard]] std::uint32_t around() const { return head + tail; }
    /// Whether this is the layout that writers use: that of format version 210.
    [[nodiscard]] bool isWritten() const { return description == 128 && tail == 12; }
};

/// What stands at a place, taken for a block: what surrounds its data, and whether it holds
/// together.
struct BlockFrame {
    std::uint64_t offset = 0;  ///< its first byte
    std::uint64_t end = 0;     ///< where its length says that it ends
    std::uint32_t id = 0;      ///< 0 when the file ends within the head
    std::uint32_t length = 0;  ///< of the data
    bool hasHead = false;      ///< everything before the data is there
    bool fits = false;         ///< it ends within the file, or before the limit that was set
    bool terminated = false;   ///< and does so with a terminator
    bool padded = false;       ///< after the text of its description there are only zeros
    /// Nothing contradicts that a writer wrote this head: it is padded, and its length is one that
    /// a file can have. Data rarely looks so.
    bool plausible = false;

    /// It is all there, up to its terminator.
    [[nodiscard]] bool isWhole() const { return fits && terminated; }
    /// Its identifier is that of the master index.
    [[nodiscard]] bool isIndex() const { return id == kMasterIndexId; }
    /// Its identifier and its length are those of a list of checksums.
    [[nodiscard]] bool isChecksumList() const {
        return id == kChecksumListId && length >= kLeastListBytes && length % kListStep == 0;
    }

    static constexpr std::uint32_t kLeastListBytes = 48;  ///< of a list's data: one row
    static constexpr std::uint32_t kListStep = 16;        ///< bytes of a row more
};

/// The texts and numbers of a whole frame. What the format version does not have is 0.
struct BlockLabel {
    std::string description;          ///< Windows-1252
    std::uint32_t version = 0;        ///< of the block
    std::uint32_t recordVersion = 0;  ///< of the record in it
};

/// What stands at `offset`, taken for a block that must end at `limit` at the latest. Reads its
/// label too, where one is given and the block fits.
[[nodiscard]] TB_API BlockFrame frameAt(FileReader& file, const BlockShape& shape,
                                        std::uint64_t offset, std::uint64_t limit,
                                        BlockLabel* label = nullptr);
/// The label of a frame that fits.
[[nodiscard]] TB_API BlockLabel labelOf(FileReader& file, const BlockShape& shape,
                                        const BlockFrame& frame);

/// The CRC-32C of `n` bytes at `offset`, or of what stands before them too, whose sum is `before`.
/// None when the source ends before, or once the reader has stopped.
[[nodiscard]] TB_API std::optional<std::uint32_t> sumAt(FileReader& file, std::uint64_t offset,
                                                        std::uint64_t n, std::uint32_t before = 0);

/// What can be wrong with a header: it is not all there, it does not end with its terminator, its
/// format version is unknown, its description is not followed by zeros, a date is none.
enum class HeaderFault { tooShort, terminator, format, description, date };

/// The header of a block file, as far as it can be read.
struct TB_API BlockFileHeader {
    std::uint32_t version = 0;            ///< the format version as it stands there
    std::uint32_t mask = 0;               ///< bit 0: see wholeWords()
    std::string description;              ///< Windows-1252
    std::array<std::int32_t, 3> dates{};  ///< creation, time stamp, net: day numbers, -1 for none
    std::uint32_t indexOffset = 0;        ///< where the master index is said to be; 0: nowhere
    BlockShape shape;                     ///< what the header says
    std::vector<HeaderFault> faults;      ///< each at most once

    /// Whether it has that fault.
    [[nodiscard]] bool has(HeaderFault fault) const;
    /// TarvFileRead accepts it.
    [[nodiscard]] bool isReadable() const {
        return !has(HeaderFault::tooShort) && !has(HeaderFault::terminator);
    }
    /// Every block is said to be a multiple of 4 bytes long (bit 0 of the mask).
    [[nodiscard]] bool wholeWords() const { return (mask & 1) != 0; }
};

/// What is missing reads as 0.
[[nodiscard]] TB_API BlockFileHeader readHeader(FileReader& file);

// The bytes that a writer of format version 210 puts down.

/// A header; its shape is not looked at.
[[nodiscard]] TB_API std::array<char, 160> headerBytes(const BlockFileHeader& header);
/// What stands before the data of a block. A description is cut to 128 bytes.
[[nodiscard]] TB_API std::array<char, 136> blockHead(std::uint32_t id, std::string_view description,
                                                     std::uint32_t length);
/// What stands after the data of a block.
[[nodiscard]] TB_API std::array<char, 12> blockTail(std::uint32_t version,
                                                    std::uint32_t recordVersion);

/// The CRC-32C of bytes; `before` is the sum of what stands before them.
[[nodiscard]] TB_API std::uint32_t sumOf(std::span<const char> bytes, std::uint32_t before = 0);
/// What a list of checksums is made of.
struct ListedFile {
    std::span<const char, 160> header;  ///< as it will be; the offset of the index does not count
    std::span<const char> index;        ///< the whole block that follows the list
    std::span<const BlockSum> rows;     ///< one for each entry of the index, in its order
    std::uint32_t offset = 0;           ///< where the list will be
};
/// The whole block with a list, from its identifier to its terminator.
[[nodiscard]] TB_API std::vector<char> checksumList(const ListedFile& file);
/// Bytes of the block with a list of so many rows.
[[nodiscard]] TB_API std::uint64_t checksumListBytes(std::uint64_t rows);

/// Finds entries by their identifiers, also in lists that name one more than once: the first
/// counts, as for readers. In constant time, whatever the identifiers. The list is the caller's, is
/// given at each call and may only grow in between.
class TB_API EntryFinder {
  public:
    EntryFinder();
    ~EntryFinder();
    EntryFinder(EntryFinder&&) noexcept;             ///< the other may only be assigned to then
    EntryFinder& operator=(EntryFinder&&) noexcept;  ///< the same

    /// Position of the first entry with this identifier.
    [[nodiscard]] std::optional<std::uint32_t> find(std::span<const BlocItem> entries,
                                                    std::uint32_t id);
    /// To be told of an entry that is about to be appended to `entries`; false when its identifier
    /// is there already.
    [[nodiscard]] bool add(std::span<const BlocItem> entries, std::uint32_t id);

  private:
    std::unique_ptr<BlockLookup> lookup_;
};

}  // namespace toolbox
