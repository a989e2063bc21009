// The names and texts of the doubts about a block.
#pragma once

#include <optional>

#include "commands/parts.h"
#include "terminal/texts.h"

namespace tbfile {

struct DoubtName {
    const char* json;
    unsigned doubt;
    Text text;
};

inline constexpr unsigned kRepeatedId = 1u << 31;  ///< seen only when it is written

inline constexpr DoubtName kDoubts[] = {
    {"foundBySearch", toolbox::kFoundBySearch, Text::doubtFound},
    {"lengthRepaired", toolbox::kLengthRepaired, Text::doubtLength},
    {"terminatorWrong", toolbox::kTerminatorWrong, Text::doubtTerminator},
    {"otherId", toolbox::kOtherId, Text::doubtId},
    {"unfollowed", toolbox::kUnfollowed, Text::doubtUnfollowed},
    {"notIndexed", toolbox::kNotIndexed, Text::doubtNotIndexed},
    {"wrongChecksum", toolbox::kWrongSum, Text::doubtChecksum},
    {"repeatedId", kRepeatedId, Text::doubtRepeated},
};

/// What is wrong with a list of checksums, or what it says to be wrong beside the blocks.
struct ChecksumFault {
    const char* json;
    Text text;  ///< %1 is the offset of the list
};

[[nodiscard]] inline std::optional<ChecksumFault> faultOf(const ChecksumMap& list) {
    if (list.state == TarvFileRead::ChecksumsOutdated)
        return ChecksumFault{"checksumsOutdated", Text::findOutdated};
    if (list.isUnreadable()) return ChecksumFault{"checksumsDamaged", Text::findListDamaged};
    if (list.state == TarvFileRead::ChecksumsDamaged)
        return ChecksumFault{"checksumsDiffer", Text::findListDiffers};
    return std::nullopt;
}

}  // namespace tbfile
