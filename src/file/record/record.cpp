// A record's buffer: how it grows, what fits, and the reader that wraps around.
#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "file/record/record_parts.h"

using toolbox::RecordBuffer;

RecordBuffer::RecordBuffer(std::uint32_t capacity)
    : memory_(new char[capacity + (capacity >= kRoomFrom ? kRoomBefore + kRoomAfter : 0)]),
      start_(capacity >= kRoomFrom ? kRoomBefore : 0) {}

namespace {

constexpr std::uint32_t kUsualCapacity = 1024;
/// The most that a record holds; a buffer of 2 GiB does not fit in a 32-bit process at all.
constexpr std::uint64_t kMost = 0x7FFF0000;

RecordBuffer allocate(std::uint64_t capacity) {
    if (capacity > kMost) throw VarRecord::VarRecordException();
    try {
        return RecordBuffer(static_cast<std::uint32_t>(capacity));
    } catch (const std::bad_alloc&) {
        throw VarRecord::VarRecordException();
    }
}

}  // namespace

VarRecord::VarRecord(unsigned int capacity)
    : capacity_(capacity == 0 ? kUsualCapacity : capacity), data_(allocate(capacity_)) {}

VarRecord::VarRecord(const VarRecord& other) {
    *this = other;
}

VarRecord& VarRecord::operator=(const VarRecord& other) {
    if (this == &other) return *this;
    if (!setData(other.length_, other.data_.data())) throw VarRecordException();
    id_ = other.id_;
    version_ = other.version_;
    return *this;
}

VarRecord::~VarRecord() = default;

int VarRecord::setData(unsigned long length, const void* source) {
    if (length > kMost) return 0;
    const auto size = static_cast<std::uint32_t>(length);
    const std::uint32_t capacity = std::max(size, kUsualCapacity);
    RecordBuffer fresh;
    // The usual small buffer is used again: most blocks are small and come one after another.
    const bool reuses = data_.data() && capacity == capacity_ && capacity == kUsualCapacity;
    if (!reuses) try {
            fresh = allocate(capacity);
        } catch (const VarRecordException&) {
            return 0;
        }
    char* to = reuses ? data_.data() : fresh.data();
    if (size > 0) source ? std::memmove(to, source, size) : std::memset(to, 0, size);
    if (!reuses) data_ = std::move(fresh);
    capacity_ = capacity;
    length_ = size;
    offset_ = 0;
    return 1;
}

RecordBuffer VarRecord::grow(std::uint64_t needed) {
    if (needed > kMost) throw VarRecordException();
    // The spare half is given up before the data is refused.
    const std::uint64_t capacity = std::min(needed + capacity_ / 2, kMost);
    RecordBuffer fresh = allocate(capacity);
    if (length_ > 0) std::memcpy(fresh.data(), data_.data(), length_);
    capacity_ = static_cast<std::uint32_t>(capacity);
    return std::exchange(data_, std::move(fresh));
}

void VarRecord::write(const void* bytes, int n) {
    if (n <= 0) return;
    const auto count = static_cast<std::uint32_t>(n);
    const std::uint64_t needed = std::uint64_t{length_} + count;
    RecordBuffer before;  // `bytes` may lie in it
    if (needed > capacity_) before = grow(needed);
    std::memmove(data_.data() + length_, bytes, count);
    length_ += count;
}

void VarRecord::read(void* out, int n) {
    if (n <= 0) return;
    const auto count = static_cast<std::uint32_t>(n);
    if (!data_.data() || offset_ > length_ - count) throw VarRecordException();
    const std::uint32_t there = offset_ < length_ ? std::min(count, length_ - offset_) : 0;
    if (there > 0) std::memcpy(out, data_.data() + offset_, there);
    if (count > there) std::memset(static_cast<char*>(out) + there, 0, count - there);
    offset_ += count;
}

void VarRecord::writeString(const char* text, int n) {
    write(text, n);
}

void VarRecord::readString(char* text, int n) {
    read(text, n);
}

void VarRecord::begin() {
    offset_ = 0;
}

VarRecord VarRecord::tail() const {
    VarRecord rest;
    const std::uint32_t from = std::min(offset_, length_);
    if (!rest.setData(length_ - from, length_ > from ? data_.data() + from : nullptr))
        throw VarRecordException();
    rest.id_ = id_;
    rest.version_ = version_;
    return rest;
}

void VarRecord::append(const VarRecord& other) {
    write(other.getPData(), static_cast<int>(other.getLen()));
}

unsigned long VarRecord::getID() const {
    return id_;
}

void VarRecord::setID(unsigned long id) {
    id_ = static_cast<std::uint32_t>(id);
}

unsigned int VarRecord::getVersion() const {
    return version_;
}

void VarRecord::setVersion(unsigned int version) {
    version_ = version;
}

unsigned int VarRecord::getLen() const {
    return length_;
}

unsigned int VarRecord::getOffset() const {
    return offset_;
}

char* VarRecord::getPData() const {
    return data_.data();
}

VarRecord::operator int() const {
    return length_ > 0 && data_.data();
}
