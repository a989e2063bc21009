#include "toolbox/processes.h"

void Secs2HMS(long seconds, int* h, int* m, int* s) {
    constexpr long kHour = 3600;
    constexpr long kMinute = 60;
    *h = static_cast<int>(seconds / kHour);
    *m = static_cast<int>(seconds % kHour / kMinute);
    *s = static_cast<int>(seconds % kMinute);
}
