// The names and texts of the doubts about a block.
#pragma once

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
    {"repeatedId", kRepeatedId, Text::doubtRepeated},
};

}  // namespace tbfile
