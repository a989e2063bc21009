// The declared keys by id and by key string, each as declared and as it is.
#pragma once

#include <bitset>
#include <deque>
#include <string>
#include <string_view>

#include "toolbox/keys.h"
#include "udkey/lookup.h"

namespace toolbox::udkey {

inline constexpr UINT kNoId = 0xFFFFFFFF;

enum class FormatKind { none, number, real, string };

class KeyEntry {
  public:
    KeyEntry(UINT id, const UDKeyData& data);

    [[nodiscard]] UINT id() const { return id_; }
    [[nodiscard]] std::string_view key() const { return key_; }
    /// Of the current format; it never changes, as only a format of the same class is taken.
    [[nodiscard]] FormatKind kind() const { return kind_; }
    [[nodiscard]] const UDKeyData& data() const { return current_; }
    [[nodiscard]] UDKeyData& data() { return current_; }
    /// Back to what the application declared.
    void reset() { current_ = declared_; }

  private:
    UINT id_;
    FormatKind kind_;
    std::string key_;  ///< as declared
    UDKeyData declared_;
    UDKeyData current_;
};

class KeyRegistry {
  public:
    /// False for "no format" and for an id or a key string that is there already.
    bool add(UINT id, const UDKeyData& data);
    void clear();

    /// Null when there is none. An entry stays where it is until clear().
    [[nodiscard]] const KeyEntry* find(UINT id) const { return entryOf(byId_.find(id)); }
    [[nodiscard]] KeyEntry* find(UINT id) { return entryOf(byId_.find(id)); }
    [[nodiscard]] const KeyEntry* find(std::string_view key) const {
        return firstBytes_.test(firstByte(key)) ? byKey_.find(key) : nullptr;
    }
    [[nodiscard]] bool contains(UINT id) const { return find(id) != nullptr; }

    /// In the order of declaration.
    [[nodiscard]] const std::deque<KeyEntry>& entries() const { return entries_; }
    [[nodiscard]] std::deque<KeyEntry>& entries() { return entries_; }

  private:
    static KeyEntry* entryOf(KeyEntry* const* found) { return found ? *found : nullptr; }
    /// An empty text counts as beginning with its terminator.
    static std::size_t firstByte(std::string_view text) {
        return text.empty() ? 0 : static_cast<unsigned char>(text.front());
    }

    std::deque<KeyEntry> entries_;
    ById<KeyEntry*> byId_;
    ByKey<KeyEntry> byKey_;
    /// First bytes of the key strings: most of what a template holds between its tokens is no key,
    /// and need not be hashed to know it.
    std::bitset<256> firstBytes_;
};

}  // namespace toolbox::udkey
