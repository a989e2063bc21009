// The registry as applications see it: declaring keys, restoring and saving them, their fields,
// and walking them.
#include <optional>

#include "udkey/key_profile.h"
#include "udkey/shared.h"
#include "udkey/watchers.h"

namespace udkey = toolbox::udkey;
using udkey::KeyEntry;
using udkey::KeyProfile;
using udkey::ready;
using udkey::Shared;
using udkey::shared;
using udkey::told;

namespace {

/// The entry of an id or a key string, or null.
template <class Name>
const KeyEntry* findKey(const Name& name) {
    const Shared* all = shared().get();
    return all ? all->keys.find(name) : nullptr;
}

KeyEntry* findReadyKey(UINT id) {
    Shared* all = ready();
    return all ? all->keys.find(id) : nullptr;
}

template <class Name>
UDKeyData dataOf(const Name& name) {
    const KeyEntry* entry = findKey(name);
    return entry ? entry->data() : UDKeyData();
}

/// One text of a key; empty for an unknown key.
template <class Name>
RWCString textOf(const Name& name, RWCString (UDKeyData::*text)() const) {
    const KeyEntry* entry = findKey(name);
    return entry ? (entry->data().*text)() : RWCString();
}

/// Takes over a stored record; one that is not valid leaves the key as it was.
bool restore(KeyEntry& entry, const std::optional<std::string>& record) {
    if (!record || record->empty()) return false;
    UDKeyData restored = entry.data();
    if (!restored.restoreStringData(*record)) return false;
    entry.data() = restored;
    return true;
}

KeyProfile::Line lineOf(const KeyEntry& entry) {
    return {entry.data().getKeyStr(), entry.data().saveStringData()};
}

}  // namespace

UDManager::UDManager() : state_(std::make_shared<udkey::ManagerState>()) {}

UDManager::UDManager(const UDManager& other)
    : state_(std::make_shared<udkey::ManagerState>(*other.state_)) {}

UDManager::~UDManager() {
    state_->managerIsGone = true;
}

UDManager& UDManager::operator=(const UDManager& other) {
    if (this != &other) *state_ = *other.state_;
    return *this;
}

int UDManager::isUDManager() {
    return 1;
}

int UDManager::isTokenizeUDManager() {
    return 0;
}

RWCString UDManager::getKeyUnits(UINT) {
    return {};
}

void UDManager::initStaticVars() {
    if (!shared()) shared() = std::make_unique<Shared>();
}

void UDManager::destroyStaticVars() {
    const bool wereThere = shared() != nullptr;
    shared().reset();
    told(wereThere);
}

int UDManager::addKey(UINT id, UDKeyData& data) {
    Shared* all = shared().get();
    return told(all && !all->initialized && all->keys.add(id, data));
}

UINT UDManager::initUDApp() {
    if (!shared() || shared()->initialized) return 0;
    const KeyProfile profile(getProfilePath());
    Shared* all = shared().get();  // only here: the application ran
    if (!all || all->initialized || !profile.isReady()) return 0;
    all->initialized = true;
    const auto records = profile.read(all->keys.entries());
    UINT restored = 0;
    auto record = records.begin();
    for (KeyEntry& entry : all->keys.entries()) restored += restore(entry, *record++);
    resetMatching();
    told(1);
    return restored;
}

int UDManager::freeUDApp() {
    Shared* all = ready();
    if (!all) return 0;
    *all = Shared();
    *state_ = udkey::ManagerState();
    return told(1);
}

int UDManager::isInitialized() const {
    return ready() != nullptr;
}

int UDManager::saveKey(UINT id) {
    const KeyProfile profile(getProfilePath());
    const KeyEntry* entry = findKey(id);
    return entry && KeyProfile::isSavable(*entry) && profile.write({lineOf(*entry)});
}

int UDManager::saveAllKeys() {
    const KeyProfile profile(getProfilePath());
    const Shared* all = shared().get();
    if (!all) return 0;
    std::vector<KeyProfile::Line> lines;
    lines.reserve(all->keys.entries().size());
    for (const KeyEntry& entry : all->keys.entries())
        if (KeyProfile::isSavable(entry)) lines.push_back(lineOf(entry));
    return profile.write(lines) && lines.size() == all->keys.entries().size();
}

RWTValOrderedVector<UINT> UDManager::getUnsavableKeys() const {
    RWTValOrderedVector<UINT> ids;
    const Shared* all = shared().get();
    if (!all) return ids;
    for (const KeyEntry& entry : all->keys.entries())
        if (!KeyProfile::isSavable(entry)) ids.append(entry.id());
    return ids;
}

int UDManager::resetKey(UINT id) {
    KeyEntry* entry = findReadyKey(id);
    if (!entry) return 0;
    entry->reset();
    return told(1);
}

int UDManager::contains(UINT id) const {
    return findKey(id) != nullptr;
}

UINT UDManager::getId(const RWCString& key) const {
    const KeyEntry* entry = ready() ? findKey(key.view()) : nullptr;
    return entry ? entry->id() : udkey::kNoId;
}

RWCString UDManager::getKey(UINT id) const {
    return textOf(id, &UDKeyData::getKeyStr);
}

UDKeyData UDManager::getKeyData(UINT id) const {
    return dataOf(id);
}

UDKeyData UDManager::getKeyData(const RWCString& key) const {
    return dataOf(key.view());
}

RWCString UDManager::getKeyDesc(UINT id) const {
    return textOf(id, &UDKeyData::getDescStr);
}

RWCString UDManager::getKeyDesc(const RWCString& key) const {
    return textOf(key.view(), &UDKeyData::getDescStr);
}

RWCString UDManager::getHeaderStr(UINT id) const {
    return textOf(id, &UDKeyData::getHeaderStr);
}

RWCString UDManager::getHeaderStr(const RWCString& key) const {
    return textOf(key.view(), &UDKeyData::getHeaderStr);
}

RWCString UDManager::getUnitsStr(UINT id) {
    RWCString units = textOf(id, &UDKeyData::getUnitsStr);
    return units == "TVUNITS" ? getKeyUnits(id) : units;
}

int UDManager::getKeyFormat(UINT id, FormatType& out) const {
    const KeyEntry* entry = findKey(id);
    if (!entry) return 0;
    out.setFormat(*entry->data().getFormat());
    return 1;
}

int UDManager::setKeyDesc(UINT id, const RWCString& description) {
    KeyEntry* entry = findReadyKey(id);
    if (!entry) return 0;
    entry->data().setDescStr(description);
    return told(1);
}

int UDManager::setKeyFormat(UINT id, const FormatType& format) {
    KeyEntry* entry = findReadyKey(id);
    if (!entry) return 0;
    const std::string_view kept = entry->data().getFormat()->getClassName();
    if (kept != format.getClassName()) return 0;
    entry->data().setFormat(format);
    return told(1);
}

toolbox::KeywordIterator UDManager::getKeywordIterator() {
    return {};
}

/// The entry that an iterator stands on, or null. `index` is counted from 1.
static const KeyEntry* entryAt(std::size_t index, std::uint64_t filling) {
    const Shared* all = shared().get();
    if (!all || index == 0 || all->filling != filling) return nullptr;
    const auto& entries = all->keys.entries();
    return index <= entries.size() ? &entries[index - 1] : nullptr;
}

int toolbox::KeywordIterator::operator()() {
    if (next_ == 0 && shared()) filling_ = shared()->filling;
    if (!entryAt(next_ + 1, filling_)) return 0;
    ++next_;
    return 1;
}

UINT toolbox::KeywordIterator::key() const {
    const KeyEntry* entry = entryAt(next_, filling_);
    return entry ? entry->id() : udkey::kNoId;
}

const UDKeyData& toolbox::KeywordIterator::value() const {
    static const UDKeyData none;
    const KeyEntry* entry = entryAt(next_, filling_);
    return entry ? entry->data() : none;
}
