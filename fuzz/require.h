// What ends a fuzz run that finds a fault.
#pragma once

#include <cstdlib>

inline void require(bool holds) {
    if (!holds) std::abort();
}
