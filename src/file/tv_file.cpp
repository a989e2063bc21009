// Typed reads and writes. Where `long` is wider than the file's 4 bytes it is converted, each array
// in one call to the system.
#include <memory>
#include <new>

#include "base/codec.h"
#include "toolbox/files.h"

namespace {

using toolbox::base::load;
using toolbox::base::OnDiskT;
using toolbox::base::store;

/// Makes values of the memory's width from those of the file, read to the start of the same array.
template <class Long>
void widenInPlace(Long* array, unsigned long count) {
    using Stored = OnDiskT<Long>;
    const auto* bytes = reinterpret_cast<const std::byte*>(array);
    // From the end: an element lies on top of later ones of the file.
    while (count-- > 0) array[count] = Long{load<Stored>(bytes + count * sizeof(Stored))};
}

/// The file's form of an array; null when there is no memory for it.
template <class Long>
std::unique_ptr<std::byte[]> narrowed(const Long* array, unsigned long count) {
    using Stored = OnDiskT<Long>;
    std::unique_ptr<std::byte[]> bytes(new (std::nothrow) std::byte[count * sizeof(Stored)]);
    for (unsigned long i = 0; bytes && i < count; ++i)
        store(bytes.get() + i * sizeof(Stored), static_cast<Stored>(array[i]));
    return bytes;
}

}  // namespace

TVFile::~TVFile() = default;

unsigned long TVFile::Access() const {
    return access_;
}

int TVFile::SeekToBegin() {
    return SeekTo(0);
}

int TVFile::isValid() const {
    return handle_ != kNone;
}

unsigned long TVFile::Error() const {
    return error_;
}

void TVFile::ClearErr() {
    error_ = ERROR_SUCCESS;
}

int TVFile::good() const {
    return isValid() && error_ == ERROR_SUCCESS && !Eof();
}

RWCString TVFile::GetName() const {
    return name_;
}

int TVFile::readElements(void* array, unsigned long count, unsigned long size) {
    return fits(count, size) ? read(array, count * size) : 0;
}

int TVFile::writeElements(const void* array, unsigned long count, unsigned long size) {
    return fits(count, size) ? write(array, count * size) : 0;
}

int TVFile::fits(unsigned long count, unsigned long size) {
    constexpr unsigned long kMost = 0xFFFFFFFFul;
    if (count <= kMost / size) return 1;
    error_ = ERROR_INVALID_PARAMETER;
    return 0;
}

template <class Long>
int TVFile::readWide(Long* array, unsigned long count) {
    constexpr unsigned long kSize = sizeof(OnDiskT<Long>);
    if (!fits(count, kSize)) return 0;
    const int result = read(array, count * kSize);
    widenInPlace(array, count);
    return result;
}

template <class Long>
int TVFile::writeWide(const Long* array, unsigned long count) {
    constexpr unsigned long kSize = sizeof(OnDiskT<Long>);
    if (!fits(count, kSize)) return 0;
    const auto bytes = narrowed(array, count);
    if (bytes) return write(bytes.get(), count * kSize);
    error_ = ERROR_NOT_ENOUGH_MEMORY;
    return 0;
}

int TVFile::readLongs(long* array, unsigned long count) {
    return readWide(array, count);
}

int TVFile::readLongs(unsigned long* array, unsigned long count) {
    return readWide(array, count);
}

int TVFile::writeLongs(const long* array, unsigned long count) {
    return writeWide(array, count);
}

int TVFile::writeLongs(const unsigned long* array, unsigned long count) {
    return writeWide(array, count);
}
