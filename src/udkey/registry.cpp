#include "udkey/registry.h"

namespace toolbox::udkey {

namespace {

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
    return true;
}

void KeyRegistry::clear() {
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
    const auto found = byKey_.find(key);
    return found == byKey_.end() ? nullptr : found->second;
}

}  // namespace toolbox::udkey
