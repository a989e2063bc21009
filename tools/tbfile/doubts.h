// The names and texts of the doubts about a block.
#pragma once

#include "texts.h"
#include "walk.h"

namespace tbfile {

struct DoubtName {
    const char* json;
    unsigned doubt;
    Text text;
};

inline constexpr unsigned kRepeatedId = 1u << 31;  ///< seen only when it is written

inline constexpr DoubtName kDoubts[] = {
    {"foundBySearch", kFoundBySearch, Text::doubtFound},
    {"lengthRepaired", kLengthRepaired, Text::doubtLength},
    {"terminatorWrong", kTerminatorWrong, Text::doubtTerminator},
    {"otherId", kOtherId, Text::doubtId},
    {"unfollowed", kUnfollowed, Text::doubtUnfollowed},
    {"notIndexed", kNotIndexed, Text::doubtNotIndexed},
    {"repeatedId", kRepeatedId, Text::doubtRepeated},
};

}  // namespace tbfile
