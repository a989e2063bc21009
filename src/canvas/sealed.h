// Bytes that are stored in a record and known again: a signature, then what the check sum covers (a
// version, a head of a fixed size, the number of bytes, the bytes), then the check sum.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/codec.h"
#include "canvas/check_sum.h"
#include "toolbox/records.h"

namespace toolbox::canvas {

/// Of one kind of stored bytes.
struct Seal {
    std::int32_t signature = 0;
    std::int32_t version = 0;
    std::size_t headSize = 0;

    /// Bytes before the stored ones.
    [[nodiscard]] constexpr std::size_t start() const { return 12 + headSize; }
};

/// What became of opening it.
enum class Opening {
    open,
    foreign,  ///< another signature, or none
    cutShort,
    newer,   ///< stored by a newer version, which may go on in another way
    altered  ///< the check sum does not match
};

struct Opened {
    std::string_view head;
    std::string_view bytes;
    std::size_t size = 0;  ///< of all of it
};

/// All of it or nothing: a record that cannot hold the whole shall not hold a part. Throws
/// VarRecordException as records do.
inline void seal(VarRecord& record, const Seal& kind, std::string_view head,
                 std::string_view bytes) {
    VarRecord whole;
    whole << int{kind.signature} << int{kind.version};
    whole.write(head.data(), static_cast<int>(head.size()));
    whole << static_cast<int>(bytes.size());
    whole.write(bytes.data(), static_cast<int>(bytes.size()));
    whole << static_cast<int>(checkSum({whole.getPData() + 4, whole.getLen() - 4U}));
    record.append(whole);
}

/// Opens what `stored` begins with; `out` borrows it, and is untouched unless it is open.
[[nodiscard]] inline Opening openSealed(std::string_view stored, const Seal& kind, Opened& out) {
    const char* const from = stored.data();
    if (stored.size() < 4 || base::load<std::int32_t>(from) != kind.signature)
        return Opening::foreign;
    if (stored.size() < kind.start()) return Opening::cutShort;
    const auto version = base::load<std::int32_t>(from + 4);
    if (version > kind.version) return Opening::newer;
    const auto length = base::load<std::uint32_t>(from + 8 + kind.headSize);
    const std::size_t rest = stored.size() - kind.start();
    if (rest < 4 || length > rest - 4) return Opening::cutShort;
    const std::size_t end = kind.start() + length;
    if (version != kind.version ||
        checkSum(stored.substr(4, end - 4)) != base::load<std::uint32_t>(from + end))
        return Opening::altered;
    out = {stored.substr(8, kind.headSize), stored.substr(kind.start(), length), end + 4};
    return Opening::open;
}

/// What the record holds from its cursor on.
[[nodiscard]] inline std::string_view restOf(const VarRecord& record) {
    const char* const data = record.getPData();
    const std::size_t offset = record.getOffset();
    if (!data || offset >= record.getLen()) return {};
    return {data + offset, record.getLen() - offset};
}

/// Moves the record's cursor behind what was opened.
inline void pass(VarRecord& record, const Opened& opened) {
    std::string skipped(opened.size, '\0');
    record.read(skipped.data(), static_cast<int>(skipped.size()));
}

}  // namespace toolbox::canvas
