// A block in one read, when its length was guessed right: small ones by way of the stack, large
// ones straight into the buffer that the record then keeps.
#include "file/block/fetch.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <typeinfo>

#include "file/block/parts.h"
#include "file/file_system.h"
#include "file/record/record_parts.h"

namespace toolbox::blocks {
namespace {

/// A block that arrives in this much needs no memory but its data.
constexpr std::uint32_t kSmall = 16 * 1024;

/// Data that is not in memory yet, and where its record begins there.
struct Arrival {
    RecordBuffer buffer;
    std::uint32_t capacity = 0;

    explicit Arrival(std::uint32_t data)
        : buffer(std::max(data, kRoomFrom)), capacity(std::max(data, kRoomFrom)) {}

    /// Where the block has to start for its data to lie right.
    [[nodiscard]] char* start(const Layout& layout) const { return buffer.data() - layout.head(); }
};

/// Whether the file goes on for `n` bytes from `offset`. Little is believed without asking.
bool mayHold(APIFile& file, std::uint64_t offset, std::uint64_t n) {
    if (n <= kAllowance) return true;
    const std::uint64_t size = sizeOf(file);
    return offset <= size && n <= size - offset;
}

/// Takes the words after the data and the description before it.
void label(TarvBlocFile& out, const char* start, std::uint32_t n, const Layout& layout) {
    const char* tail = start + layout.head() + n;
    const auto blockVersion = layout.tail >= 8 ? base::load<std::uint32_t>(tail) : 0;
    const auto recordVersion = layout.tail >= 12 ? base::load<std::uint32_t>(tail + 4) : 0;
    BlockFileParts::label(out, textIn(start + 4, layout.description), blockVersion, recordVersion);
}

/// Gives `out` the data that arrived, by handing it over where that wastes little.
bool keep(TarvBlocFile& out, std::optional<Arrival>& large, const char* data, std::uint32_t n) {
    if (!large || n < kRoomFrom || n < large->capacity / 2) return out.setData(n, data);
    RecordParts::adopt(out, std::move(large->buffer), large->capacity, n);
    return true;
}

std::uint32_t fetchWhole(APIFile& file, const Place& place, const Layout& layout,
                         TarvBlocFile& out) {
    const std::uint32_t frame = layout.head() + layout.tail;
    const auto want =
        static_cast<std::uint32_t>(std::clamp<std::uint64_t>(place.extent, frame, kAllowance));
    char small[kSmall];
    std::optional<Arrival> large;
    if (want > kSmall) large.emplace(want - frame);
    char* start = large ? large->start(layout) : small;

    const std::uint32_t got = readAt(file, place.offset, start, want);
    if (got < layout.head()) return 0;
    if (place.id && base::load<std::uint32_t>(start) != *place.id) return 0;
    const auto n = base::load<std::uint32_t>(start + layout.head() - 4);
    const std::uint64_t whole = std::uint64_t{n} + frame;

    if (place.sum && whole != place.sum->length) return 0;

    // The terminator's value does not matter without a sum: it is there when its first byte is.
    const std::uint64_t least = place.sum ? whole : whole - 3;
    if (least > got) {
        if (got < want || whole > kMostBytes || !mayHold(file, place.offset, least)) return 0;
        Arrival rest(n);
        std::memcpy(rest.start(layout), start, got);
        const auto missing = static_cast<std::uint32_t>(whole) - got;
        char* more = rest.start(layout) + got;
        const std::uint32_t gotMore = readAt(file, place.offset + got, more, missing);
        if (got + std::uint64_t{gotMore} < least) return 0;
        large.emplace(std::move(rest));
        start = large->start(layout);
    }
    if (place.sum && base::crc32c({start, static_cast<std::size_t>(whole)}) != place.sum->sum)
        return 0;
    label(out, start, n, layout);
    return keep(out, large, start + layout.head(), n) ? static_cast<std::uint32_t>(whole) : 0;
}

}  // namespace

std::uint64_t sizeOf(APIFile& file) {
    unsigned long long size = 0;
    return file.size(size) ? size : 0;
}

std::uint32_t readAt(APIFile& file, std::uint64_t offset, char* buffer, std::uint32_t n) {
    if (typeid(file) == typeid(APIFile)) {
        unsigned long got = 0;
        if (!file.readAt(offset, buffer, n, got))
            reportFileError(static_cast<std::uint32_t>(file.Error()));
        return static_cast<std::uint32_t>(got);
    }
    if (offset > kMostBytes || !file.SeekTo(static_cast<long>(offset))) return 0;
    if (n == 0 || !file.read(buffer, n)) return 0;
    const unsigned long end = file.CurOffset();
    if (end == 0xFFFFFFFFul || end < offset) return 0;
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(end - offset, n));
}

std::uint32_t fetch(APIFile& file, const Place& place, const Layout& layout, TarvBlocFile& out) {
    try {
        return fetchWhole(file, place, layout, out);
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

Layout layoutOf(const TarvFile& file) {
    const TarvFileHeader* header = file.getHeader();
    return Layout(header ? static_cast<std::uint32_t>(header->getVersionFile()) : kFormatWritten);
}

}  // namespace toolbox::blocks
