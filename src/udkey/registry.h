// The declared keys by id and by key string, and what is in force of each.
#pragma once

#include <bitset>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

#include "toolbox/keys.h"

namespace toolbox::udkey {

inline constexpr UINT kNoId = 0xFFFFFFFF;

enum class FormatKind { none, number, real, string };

class KeyEntry {
  public:
    KeyEntry(UINT id, const UDKeyData& data);

    [[nodiscard]] UINT id() const { return id_; }
    /// Of the format in force; it never changes, as only a format of the same class is taken.
    [[nodiscard]] FormatKind kind() const { return kind_; }
    [[nodiscard]] bool hasKeyString() const { return hasKeyString_; }
    [[nodiscard]] const UDKeyData& data() const { return inForce_; }
    [[nodiscard]] UDKeyData& data() { return inForce_; }
    /// Back to what the application declared.
    void reset() { inForce_ = declared_; }

  private:
    UINT id_;
    FormatKind kind_;
    bool hasKeyString_;
    UDKeyData declared_;
    UDKeyData inForce_;
};

class KeyRegistry {
  public:
    /// False for "no format" and for an id or a key string that is there already.
    bool add(UINT id, const UDKeyData& data);
    void clear();

    /// Null when there is none. An entry stays where it is until clear().
    [[nodiscard]] const KeyEntry* find(UINT id) const;
    [[nodiscard]] KeyEntry* find(UINT id);
    [[nodiscard]] const KeyEntry* find(std::string_view key) const;
    [[nodiscard]] bool contains(UINT id) const { return find(id) != nullptr; }

    /// In the order of declaration.
    [[nodiscard]] const std::deque<KeyEntry>& entries() const { return entries_; }
    [[nodiscard]] std::deque<KeyEntry>& entries() { return entries_; }

  private:
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };
    struct IdHash {
        std::size_t operator()(UINT id) const { return UDManager::hashUINT(id); }
    };

    std::deque<KeyEntry> entries_;
    std::unordered_map<UINT, KeyEntry*, IdHash> byId_;
    std::unordered_map<std::string, KeyEntry*, TextHash, std::equal_to<>> byKey_;
    /// First bytes of the key strings: most of what a template holds between its tokens is no key,
    /// and need not be hashed to know it.
    std::bitset<256> firstBytes_;
};

}  // namespace toolbox::udkey
