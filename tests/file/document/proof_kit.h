// What the programs of the proofs share.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "file/document/plan_kit.h"

namespace proof_kit {

using namespace plan_kit;

inline constexpr int kVersions = 3;

/// Every call and each size; samples of them where that takes minutes: under Wine and sanitizers.
#if defined(_WIN32) || defined(__SANITIZE_ADDRESS__)
inline constexpr bool kThorough = false;
#else
inline constexpr bool kThorough = true;
#endif

/// The content of a version, 0 to 9; another length each.
inline std::string versionText(int version) {
    std::string text;
    for (int word = 0; word <= version; ++word) text += "v00" + std::to_string(version);
    return text;
}

/// The version of a content; -1 for anything else.
inline int versionOf(const std::string& text) {
    const int version = text.empty() ? -1 : text.back() - '0';
    return version >= 0 && text == versionText(version) ? version : -1;
}

/// Four characters that no other program of a proof, and no other number below 4096, gives.
inline std::string wordOf(std::uint32_t process, int number) {
    constexpr std::size_t kNumbers = 4096;
    constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+-";
    std::size_t value = process % kNumbers * kNumbers + static_cast<std::size_t>(number);
    std::string word;
    for (; word.size() < kWord; value /= kDigits.size()) word += kDigits[value % kDigits.size()];
    return word;
}

}  // namespace proof_kit
