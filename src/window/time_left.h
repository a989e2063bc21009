// How long a job still takes: pure arithmetic, without windows.
#pragma once

#include <optional>

namespace toolbox::window {

/// Before that many seconds have gone by nothing can be told.
inline constexpr long kTimeLeftFrom = 5;

/// Seconds that the remaining parts take at the pace of the complete ones, rounded up to what such
/// a guess is good for: 5 seconds below a minute, 30 below 10 minutes, whole minutes from there on.
/// Nothing at the start of the job, before its first part is complete, and at its end.
[[nodiscard]] inline std::optional<long> timeLeft(long elapsed, int complete, int parts) {
    if (elapsed < kTimeLeftFrom || complete <= 0 || complete >= parts) return {};
    constexpr double kLongest = 359999;  // 99:59:59
    const double left = static_cast<double>(elapsed) * (parts - complete) / complete;
    if (left > kLongest) return {};
    const auto seconds = static_cast<long>(left);
    const long step = seconds < 60 ? 5 : seconds < 600 ? 30 : 60;
    return (seconds / step + 1) * step;
}

}  // namespace toolbox::window
