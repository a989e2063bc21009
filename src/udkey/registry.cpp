#include "udkey/registry.h"

namespace toolbox::udkey {

namespace {

/// An empty text counts as beginning with its terminator.
std::size_t firstByte(std::string_view text) {
    return text.empty() ? 0 : static_cast<unsigned char>(text.front());
}

FormatKind kindOf(const FormatType& format) {
    if (format.isReal()) return FormatKind::real;
    if (format.isNumber()) return FormatKind::number;
    return format.isString() ? FormatKind::string : FormatKind::none;
}

}  // namespace

KeyEntry::KeyEntry(UINT id, const UDKeyData& data)
    : id_(id),
      kind_(kindOf(*data.getFormat())),
      hasKeyString_(!data.getKeyStr().empty()),
      declared_(data),
      inForce_(data) {}

bool KeyRegistry::add(UINT id, const UDKeyData& data) {
    const RWCString key = data.getKeyStr();
    if (kindOf(*data.getFormat()) == FormatKind::none) return false;
    if (find(id) || find(key.view())) return false;
    KeyEntry& entry = entries_.emplace_back(id, data);
    byId_.emplace(id, &entry);
    byKey_.emplace(key.str(), &entry);
    firstBytes_.set(firstByte(key.view()));
    return true;
}

void KeyRegistry::clear() {
    firstBytes_.reset();
    byKey_.clear();
    byId_.clear();
    entries_.clear();
}

const KeyEntry* KeyRegistry::find(UINT id) const {
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : found->second;
}

KeyEntry* KeyRegistry::find(UINT id) {
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : found->second;
}

const KeyEntry* KeyRegistry::find(std::string_view key) const {
    if (!firstBytes_.test(firstByte(key))) return nullptr;
    const auto found = byKey_.find(key);
    return found == byKey_.end() ? nullptr : found->second;
}

}  // namespace toolbox::udkey
