// Variable records: growable byte buffers that carry an identifier, a version and a read cursor.
//
// Objects store themselves by appending raw values one after another and read themselves back in
// the same order:
//
//     VarRecord record;
//     record << 'c' << 1 << 2.0;
//     record >> letter >> count >> length;
//
// Values stand in the buffer little-endian, without tags, alignment or padding: char 1 byte, short
// 2, int 4, float 4, double 8, long double 8 (as a double). A string is the bytes the caller names,
// with neither length nor terminator. A record is the unit of storage of a block file
// (block_files.h); it does no file input or output itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "toolbox/export.h"

namespace toolbox {
class RecordParts;

/// Owned bytes. Large ones have room around them for what goes before and after a record's data
/// where it is stored.
class RecordBuffer {
  public:
    RecordBuffer() = default;
    /// Throws std::bad_alloc. The bytes are not initialised.
    explicit RecordBuffer(std::uint32_t capacity);

    /// The first byte; null without a buffer.
    [[nodiscard]] char* data() const { return memory_ ? memory_.get() + start_ : nullptr; }

  private:
    std::unique_ptr<char[]> memory_;
    std::uint32_t start_ = 0;
};
}  // namespace toolbox

/// Identifiers are 32-bit values: where `unsigned long` is wider its upper bytes are dropped.
class TB_API VarRecord {
  public:
    /// Thrown by a read that runs past the data, and where a record would have to hold about
    /// 2 GiB or more, or memory is exhausted. The record is then as it was before the call.
    class TB_API VarRecordException {};

    /// An empty record, version 200, with a buffer of `capacity` bytes; 0 means 1024.
    explicit VarRecord(unsigned int capacity = 0);
    VarRecord(const VarRecord& other);
    /// Copies identifier, version and data. The copy reads from its start, however far the other
    /// had been read.
    VarRecord& operator=(const VarRecord& other);
    virtual ~VarRecord();

    /// Replaces the data by `length` bytes from `source`, which may lie in this record, and
    /// rewinds. With a null `source` the bytes are zeros. Returns 1; 0, with nothing changed, when
    /// the record cannot hold that much.
    int setData(unsigned long length, const void* source);

    /// Appends `n` bytes, which may lie in this record; nothing when `n` is 0 or less.
    void write(const void* bytes, int n);
    /// The same; no terminator is added.
    void writeString(const char* text, int n);

    /// Copies the next `n` bytes to `out` and advances; nothing when `n` is 0 or less. The test for
    /// what is left is `offset <= length - n` in unsigned 32-bit arithmetic, unguarded: an `n`
    /// above the length wraps around and passes. `out` then gets the bytes that there are and zeros
    /// for the rest, and the cursor ends past the data.
    void read(void* out, int n);
    /// The same; no terminator is added.
    void readString(char* text, int n);

    // Each appends one value.
    VarRecord& operator<<(char value);
    VarRecord& operator<<(short value);
    VarRecord& operator<<(int value);
    VarRecord& operator<<(float value);
    VarRecord& operator<<(double value);
    VarRecord& operator<<(long double value);

    // Each reads one value, as read() does.
    VarRecord& operator>>(char& value);
    VarRecord& operator>>(short& value);
    VarRecord& operator>>(int& value);
    VarRecord& operator>>(float& value);
    VarRecord& operator>>(double& value);
    VarRecord& operator>>(long double& value);
    /// Other types have no stored form. Without this, the conversion to int would turn reading one
    /// into a shift of bits.
    template <class T>
    VarRecord& operator>>(T& value) = delete;

    /// Rewinds the reader.
    void begin();
    /// A record with the same identifier and version and the bytes from the cursor to the end.
    VarRecord tail() const;
    /// Appends the other's data; the other may be this record.
    void append(const VarRecord& other);

    // The identifier and the version, which the record only keeps.
    unsigned long getID() const;
    void setID(unsigned long id);
    unsigned int getVersion() const;
    void setVersion(unsigned int version);
    /// Bytes of data held.
    unsigned int getLen() const;
    /// The read cursor: index of the next byte that read gives.
    unsigned int getOffset() const;
    /// The data; the pointer lives until the record changes.
    char* getPData() const;
    /// 1 when the record holds data.
    operator int() const;

  private:
    friend class toolbox::RecordParts;

    /// Makes room for `needed` bytes and half the old capacity; returns the old buffer.
    toolbox::RecordBuffer grow(std::uint64_t needed);

    std::uint32_t capacity_ = 0;
    std::uint32_t length_ = 0;
    std::uint32_t id_ = 0;
    toolbox::RecordBuffer data_;
    std::uint32_t offset_ = 0;
    std::uint32_t version_ = 200;
};
