// Declaring keys.
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
      key_(data.getKeyStr().str()),
      declared_(data),
      current_(data) {}

bool KeyRegistry::add(UINT id, const UDKeyData& data) {
    const RWCString key = data.getKeyStr();
    if (kindOf(*data.getFormat()) == FormatKind::none) return false;
    if (find(id) || find(key.view())) return false;
    KeyEntry& entry = entries_.emplace_back(id, data);
    byId_.add(id, &entry);
    byKey_.add(entry);
    firstBytes_.set(firstByte(key.view()));
    return true;
}

void KeyRegistry::clear() {
    firstBytes_.reset();
    byKey_.clear();
    byId_.clear();
    entries_.clear();
}

}  // namespace toolbox::udkey
