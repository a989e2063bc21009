// Windows attributes of files, made from their mode bits, and their time of writing.
#pragma once

#include <sys/stat.h>

#include <cstdint>

#include "toolbox/win_types.h"

namespace toolbox::platform::posix {

inline constexpr mode_t kWriteBits = S_IWUSR | S_IWGRP | S_IWOTH;

/// A file that nobody may write has the read-only attribute. It binds everybody, as on Windows:
/// also a user whom the mode bits do not bind.
[[nodiscard]] inline bool isReadOnly(const struct stat& facts) {
    return !S_ISDIR(facts.st_mode) && (facts.st_mode & kWriteBits) == 0;
}

[[nodiscard]] inline std::uint32_t attributesOf(const struct stat& facts) {
    std::uint32_t attributes = 0;
    if (S_ISDIR(facts.st_mode)) attributes |= FILE_ATTRIBUTE_DIRECTORY;
    if (isReadOnly(facts)) attributes |= FILE_ATTRIBUTE_READONLY;
    return attributes ? attributes : static_cast<std::uint32_t>(FILE_ATTRIBUTE_NORMAL);
}

/// FoundFile::written.
[[nodiscard]] inline std::int64_t writtenAt(const struct stat& facts) {
    constexpr std::int64_t kPerSecond = 1'000'000'000;
    return std::int64_t{facts.st_mtim.tv_sec} * kPerSecond + facts.st_mtim.tv_nsec;
}

}  // namespace toolbox::platform::posix
