// The room around the data of large records, and the way to it for those who store records.
#pragma once

#include <cstdint>
#include <utility>

#include "toolbox/records.h"

namespace toolbox {

/// Bytes before and after the data of a large buffer. Whoever stores a record puts there what goes
/// around the data: it then leaves and arrives in one piece, without being copied.
inline constexpr std::uint32_t kRoomBefore = 136;
inline constexpr std::uint32_t kRoomAfter = 12;
/// The capacity from which a buffer has room.
inline constexpr std::uint32_t kRoomFrom = 16 * 1024;

/// A record's buffer.
class RecordParts {
  public:
    [[nodiscard]] static const RecordBuffer& buffer(const VarRecord& record) {
        return record.data_;
    }
    /// Makes `buffer` the record's data and rewinds it.
    static void adopt(VarRecord& record, RecordBuffer buffer, std::uint32_t capacity,
                      std::uint32_t length) {
        record.data_ = std::move(buffer);
        record.capacity_ = capacity;
        record.length_ = length;
        record.offset_ = 0;
    }
};

}  // namespace toolbox
