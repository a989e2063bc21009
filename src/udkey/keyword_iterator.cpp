#include "udkey/shared.h"

namespace toolbox {

namespace {

/// The entry at an index counted from 1, or null.
const udkey::KeyEntry* entryAt(std::size_t index) {
    const udkey::Shared* all = udkey::shared().get();
    if (!all || index == 0 || index > all->keys.entries().size()) return nullptr;
    return &all->keys.entries()[index - 1];
}

}  // namespace

int KeywordIterator::operator()() {
    if (!entryAt(next_ + 1)) return 0;
    ++next_;
    return 1;
}

UINT KeywordIterator::key() const {
    const udkey::KeyEntry* entry = entryAt(next_);
    return entry ? entry->id() : udkey::kNoId;
}

const UDKeyData& KeywordIterator::value() const {
    static const UDKeyData none;
    const udkey::KeyEntry* entry = entryAt(next_);
    return entry ? entry->data() : none;
}

}  // namespace toolbox
